// Our whole-value decode against asn1c's (fuzz/differential/differential.h):
// the first octet picks one of the nine types, the rest is the input. An
// unexplained verdict aborts with what each side said; at exit a
// "fuzz-summary:" line (which scripts/fuzz.sh shows) counts the verdicts.
#include <map>

#include "fuzz/differential/differential.h"
#include "fuzz/fuzz_common.h"

namespace {

struct VerdictCounts {
  std::map<std::string, unsigned long long> counts;
  ~VerdictCounts() {
    std::string line = "fuzz-summary: verdicts";
    for (const auto& [verdict, count] : counts) line += " " + verdict + " " + std::to_string(count);
    std::fprintf(stderr, "%s\n", line.c_str());
  }
};

VerdictCounts verdictCounts;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const DifferentialVerdict verdict = CompareDecoders(data[0] % kDifferentialTypeCount, bytes);
  if (!verdict.explained) {
    std::fprintf(stderr, "unexplained disagreement: %s\n", verdict.details.c_str());
    std::abort();
  }
  ++verdictCounts.counts[verdict.verdict];
  return 0;
}
