#include "tn_qmodules/qinventoryfiber/qasn_fiber_info_template.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

namespace qinventoryfiber {

void QAsnFiberInfoTemplate::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnFiberInfoTemplate;
  using Column = qcommon::QAsnColumn;
  const Record probe;
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column1), "column1", 0), true);
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column2), "column2", 1), true);
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column3), "column3", 2), true);
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column4), "column4", 3), true);
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column5), "column5", 4), true);
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column6), "column6", 5), true);
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column7), "column7", 6), true);
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column8), "column8", 7), true);
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column9), "column9", 8), true);
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column10), "column10", 9), true);
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column11), "column11", 10), true);
  DescribeRecordMember<Column>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::column12), "column12", 11), true);
}

namespace {
const bool s_catalogued =
    AsnCatalogue::Add({"QAsnFiberInfoTemplate", "qinventoryfiber", &CreateAsnValue<QAsnFiberInfoTemplate>, ""});
}  // namespace

}  // namespace qinventoryfiber
