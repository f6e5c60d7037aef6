// A library that exports what tn_velkor must not: the symbol check has to
// refuse it (test check_exports_refuses_leaks).
#include <string>

namespace ns_velkor {
namespace fiber_detail {
__attribute__((visibility("default"))) int Helper(int value) { return value + 1; }
}  // namespace fiber_detail
template <class T>
__attribute__((visibility("default"))) std::string Convert2Str(T value) {
  return std::to_string(value);
}
template std::string Convert2Str<int>(int);
}  // namespace ns_velkor

// Declared in no header: the check given the headers beside this file
// (leaky_exports.h, whose comment names it) must name it (test check_exports_refuses_undeclared).
__attribute__((visibility("default"))) int UndeclaredHelper(int value) { return value - 1; }
