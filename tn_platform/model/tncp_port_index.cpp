#include "tn_platform/model/tncp_port_index.h"

#include "tn_platform/model/described_fields.h"

namespace ns_utilmib {

void TNCPPortIndex::Init() { *this = TNCPPortIndex(); }

bool TNCPPortIndex::operator<(const TNCPPortIndex& other) const { return FieldsLess(*this, other); }

bool TNCPPortIndex::operator==(const TNCPPortIndex& other) const { return FieldsEqual(*this, other); }

}  // namespace ns_utilmib
