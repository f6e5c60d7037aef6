#include "platform/qmodules/qasn_err_info_return.h"

#include "platform/asn/asn_catalogue.h"
#include "platform/qmodules/module_type_descriptions.h"

namespace qcommon {

void QAsnErrInfoReturn::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnErrInfoReturn;
  const Record probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::retCode), "retCode", -1).CaptureTypeInfor<AsnTinyInt>();
  qmodules::DescribeListMember<QAsnErrInfoList>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::errInfoList), "errInfoList", 0),
      "qcommon::QAsnErrInfoList", true);
}

namespace {
const bool s_errInfoReturnCatalogued =
    AsnCatalogue::Add({"QAsnErrInfoReturn", "qcommon", &CreateAsnValue<QAsnErrInfoReturn>, ""});
}  // namespace

}  // namespace qcommon
