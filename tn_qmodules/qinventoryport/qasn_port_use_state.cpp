#include "tn_qmodules/qinventoryport/qasn_port_use_state.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

namespace qinventoryport {

void QAsnPortUseState::DescribeMembers(AsnMemberLines<QAsnPortUseState>& lines) {
  using Record = QAsnPortUseState;
  lines.Add("portIndex", &Record::portIndex);
  lines.Add("useState", &Record::useState);
}

namespace {
const bool s_catalogued =
    AsnCatalogue::Add({"QAsnPortUseState", "qinventoryport", &CreateAsnValue<QAsnPortUseState>, ""});
}  // namespace

}  // namespace qinventoryport
