// What leaky_exports.cpp declares, all but one function (a comment naming
// it does not count): UndeclaredHelper.
#pragma once
#include <string>

namespace ns_velkor {
namespace fiber_detail {
int Helper(int value);
}  // namespace fiber_detail
template <class T>
std::string Convert2Str(T value);
}  // namespace ns_velkor
