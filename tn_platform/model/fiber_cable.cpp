#include "tn_platform/model/fiber_cable.h"

#include <cmath>

namespace ns_utilmib {

bool TEFiberCable::FixInvalidFiberParam() {
  bool changed = false;
  if (!std::isfinite(doubleValue) || doubleValue < 0.0) {
    doubleValue = 1.0;
    changed = true;
  }
  if (!std::isfinite(floatValue)) {
    floatValue = -0.1f;
    changed = true;
  }
  if (hybridMaxCapacity < -1) {
    hybridMaxCapacity = -1;
    changed = true;
  }
  return changed;
}

}  // namespace ns_utilmib
