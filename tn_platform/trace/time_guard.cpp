#include "tn_platform/trace/time_guard.h"

#include "tn_platform/trace/trace_sink.h"

namespace NSTE_util {

TESimpleTimeGuard::TESimpleTimeGuard(const std::string& label)
    : m_label(label), m_start(std::chrono::steady_clock::now()) {}

TESimpleTimeGuard::~TESimpleTimeGuard() {
  const auto elapsed =
      std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - m_start).count();
  try {
    ns_utility::EmitTrace(
        ns_utility::TraceLine{"", "TIME", "", 0, 1, m_label + " took " + std::to_string(elapsed) + " us"});
  } catch (...) {
    // A destructor must not throw; a lost timing line is harmless.
  }
}

}  // namespace NSTE_util
