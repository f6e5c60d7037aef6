#include "platform/qmodules/qasn_link_info_list.h"

#include "platform/asn/asn_catalogue.h"

namespace qinventorylinkexterior {

AsnType* QAsnLinkInfoList::Clone() const { return new QAsnLinkInfoList(*this); }

namespace {
const bool s_catalogued = AsnCatalogue::Add(
    {"QAsnLinkInfoList", "qinventorylinkexterior", &CreateAsnValue<QAsnLinkInfoList>, "QAsnLinkInfo"});
}  // namespace

}  // namespace qinventorylinkexterior
