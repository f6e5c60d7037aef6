// NSTE_util::TESimpleTimeGuard: times the scope it lives in and, when
// destroyed, writes "<label> took <N> us" to the trace sink under the
// category "TIME" (level 1).
#pragma once
#pragma GCC visibility push(default)

#include <chrono>
#include <string>

namespace NSTE_util {

class TESimpleTimeGuard {
 public:
  explicit TESimpleTimeGuard(const std::string& label);
  ~TESimpleTimeGuard();
  TESimpleTimeGuard(const TESimpleTimeGuard&) = delete;
  TESimpleTimeGuard& operator=(const TESimpleTimeGuard&) = delete;

 private:
  std::string m_label;
  std::chrono::steady_clock::time_point m_start;
};

}  // namespace NSTE_util
#pragma GCC visibility pop
