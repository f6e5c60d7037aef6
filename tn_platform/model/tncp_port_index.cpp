#include "tn_platform/model/tncp_port_index.h"

#include <tuple>

namespace ns_utilmib {
namespace {

auto Fields(const TNCPPortIndex& index) {
  return std::tie(index.level1ID, index.level2ID, index.level3ID, index.level4ID, index.level3SubID, index.level2SubID,
                  index.strIndexText);
}

}  // namespace

void TNCPPortIndex::Init() { *this = TNCPPortIndex(); }

bool TNCPPortIndex::operator<(const TNCPPortIndex& other) const { return Fields(*this) < Fields(other); }

bool TNCPPortIndex::operator==(const TNCPPortIndex& other) const { return Fields(*this) == Fields(other); }

}  // namespace ns_utilmib
