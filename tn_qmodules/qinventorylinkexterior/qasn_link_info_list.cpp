#include "tn_qmodules/qinventorylinkexterior/qasn_link_info_list.h"

#include "tn_platform/asn/asn_catalogue.h"

namespace qinventorylinkexterior {

AsnType* QAsnLinkInfoList::Clone() const { return new QAsnLinkInfoList(*this); }

namespace {
const bool s_catalogued =
    AsnCatalogue::Add({"QAsnLinkInfoList", "qinventorylinkexterior", &CreateAsnValue<QAsnLinkInfoList>, "QAsnLinkInfo",
                       &CreateAsnValue<QAsnLinkInfo>});
}  // namespace

}  // namespace qinventorylinkexterior
