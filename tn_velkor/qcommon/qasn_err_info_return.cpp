#include "tn_velkor/qcommon/qasn_err_info_return.h"

#include "tn_velkor/asn/value_type_descriptions.h"

namespace qcommon {

void QAsnErrInfoReturn::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnErrInfoReturn;
  const Record probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::retCode), "retCode", -1).CaptureTypeInfor<AsnTinyInt>();
  DescribeListMember<QAsnErrInfoList>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::errInfoList), "errInfoList", 0),
      "qcommon::QAsnErrInfoList", true);
}

}  // namespace qcommon
