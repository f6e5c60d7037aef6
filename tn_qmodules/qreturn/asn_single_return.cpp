#include "tn_qmodules/qreturn/asn_single_return.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

void AsnSingleReturn::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = AsnSingleReturn;
  const Record probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::success), "success", -1).CaptureTypeInfor<AsnBool>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::retCode), "retCode", 0)
      .CaptureTypeInfor<refl::MayNullPointer<AsnInt>>();
}

namespace {
const bool s_singleReturnCatalogued =
    AsnCatalogue::Add({"AsnSingleReturn", "qreturn", &CreateAsnValue<AsnSingleReturn>, ""});
}  // namespace
