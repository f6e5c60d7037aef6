#include "tn_qmodules/qinventoryport/qasn_port_use_state_list.h"

#include "tn_platform/asn/asn_catalogue.h"

namespace qinventoryport {

AsnType* QAsnPortUseStateList::Clone() const { return new QAsnPortUseStateList(*this); }

namespace {
const bool s_catalogued =
    AsnCatalogue::Add({"QAsnPortUseStateList", "qinventoryport", &CreateAsnValue<QAsnPortUseStateList>,
                       "QAsnPortUseState", &CreateAsnValue<QAsnPortUseState>});
}  // namespace

}  // namespace qinventoryport
