#include "tn_platform/model/link_mgr_model.h"

#include "tn_platform/model/described_fields.h"

namespace ns_utilmib {

void CLinkMgrModel::Init() { *this = CLinkMgrModel(); }

bool CLinkMgrModel::operator==(const CLinkMgrModel& other) const { return FieldsEqual(*this, other); }

}  // namespace ns_utilmib
