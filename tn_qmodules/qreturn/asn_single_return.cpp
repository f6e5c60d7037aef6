#include "tn_qmodules/qreturn/asn_single_return.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

void AsnSingleReturn::DescribeMembers(AsnMemberLines<AsnSingleReturn>& lines) {
  using Record = AsnSingleReturn;
  lines.Add("success", &Record::success);
  lines.Add("retCode", &Record::retCode, 0);
}

namespace {
const bool s_singleReturnCatalogued =
    AsnCatalogue::Add({"AsnSingleReturn", "qreturn", &CreateAsnValue<AsnSingleReturn>, ""});
}  // namespace
