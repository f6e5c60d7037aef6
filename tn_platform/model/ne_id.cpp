#include "tn_platform/model/ne_id.h"

namespace ns_utilmib {

bool IsNeID(unsigned long id) { return id >= 1 && id <= 0xFFFFFFUL; }

}  // namespace ns_utilmib
