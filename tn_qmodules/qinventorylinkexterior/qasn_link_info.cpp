#include "tn_qmodules/qinventorylinkexterior/qasn_link_info.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

namespace qinventorylinkexterior {

void QAsnLinkInfo::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnLinkInfo;
  using qcommon::QAsnUniResID;
  const Record probe;
  DescribeRecordMember<QAsnUniResID>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::linkResID), "linkResID", -1), false);
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strText1), "strText1", -1).CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strText2), "strText2", -1).CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strText3), "strText3", -1).CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strText4), "strText4", -1).CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::tinyValue1), "tinyValue1", -1)
      .CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::tinyValue2), "tinyValue2", -1)
      .CaptureTypeInfor<AsnTinyInt>();
  DescribeRecordMember<QAsnUniResID>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::srcResID), "srcResID", -1), false);
  DescribeRecordMember<QAsnUniResID>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::dstResID), "dstResID", -1), false);
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::tinyValue3), "tinyValue3", -1)
      .CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::tinyValue4), "tinyValue4", -1)
      .CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::spareValue), "spareValue", -1)
      .CaptureTypeInfor<AsnOcts>();
  DescribeListMember<qcommon::QAsnNVSList>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::attrList), "attrList", 0), "qcommon::QAsnNVSList",
      true);
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::intValue1), "intValue1", -1).CaptureTypeInfor<AsnInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::intValue2), "intValue2", -1).CaptureTypeInfor<AsnInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::intValue3), "intValue3", -1).CaptureTypeInfor<AsnInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strText5), "strText5", -1).CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strText6), "strText6", -1).CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strText7), "strText7", -1).CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::tinyValue5), "tinyValue5", -1)
      .CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::optTinyValue), "optTinyValue", 1)
      .CaptureTypeInfor<refl::MayNullPointer<AsnTinyInt>>();
}

namespace {
const bool s_catalogued =
    AsnCatalogue::Add({"QAsnLinkInfo", "qinventorylinkexterior", &CreateAsnValue<QAsnLinkInfo>, ""});
}  // namespace

}  // namespace qinventorylinkexterior
