// tn_asn1c_bench: our codec against asn1c's generated code on the same
// workloads in one run (workloads.h). Each figure is measured in pairs, one
// sample of each codec back to back, alternating which goes first; the ratio
// printed is the median of the per-pair ratios ours / asn1c (below 1: ours is
// faster), beside each codec's median time per element and the goal. Then
// the allocator calls per decoded element of each codec.
//
//   tn_asn1c_bench [pairs [figure]]   (default 11 pairs; figure: only the
//                                      figures whose name contains it)
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <malloc.h>
#include <string>
#include <vector>

#include "tests/memory/allocation_count.h"
#include "bench/side_by_side/workloads.h"

namespace side_by_side {

WorkloadTexts::WorkloadTexts() {
  char text[32];
  for (int i = 0; i < kListElements; ++i) {
    std::snprintf(text, sizeof text, "attr%05d", i);
    names[i] = text;
    std::snprintf(text, sizeof text, "value-%010d", i);
    values[i] = text;
    std::snprintf(text, sizeof text, "obj%05d", i);
    objNames[i] = text;
  }
}

const WorkloadTexts& Texts() {
  static const WorkloadTexts texts;
  return texts;
}

namespace {

using Pass = void (Workloads::*)();

struct Figure {
  const char* name;
  Pass pass;
  int elements;  // per pass
  double goal;   // largest acceptable ratio
};

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

// Nanoseconds per element of `passes` passes.
double Sample(Workloads& codec, Pass pass, int passes, int elements) {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < passes; ++i) (codec.*pass)();
  const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - start;
  return took.count() / passes / elements;
}

// Enough passes for a sample of about 20 ms of the slower codec.
int CalibratePasses(Workloads& ours, Workloads& theirs, Pass pass, int elements) {
  for (int passes = 1;; passes *= 2) {
    const double slower =
        std::max(Sample(ours, pass, passes, elements), Sample(theirs, pass, passes, elements)) * passes * elements;
    if (slower >= 20e6 || passes >= (1 << 22)) return passes;
  }
}

double AllocationsPerElement(Workloads& codec, Pass pass, int elements) {
  const unsigned long long before = AllocationCount();
  (codec.*pass)();
  return static_cast<double>(AllocationCount() - before) / elements;
}

bool SameBytes(const char* what, const std::string& ours, const std::string& theirs) {
  if (ours == theirs) return true;
  std::printf("warning: %s: our encoding (%zu octets) differs from asn1c's (%zu octets)\n", what, ours.size(),
              theirs.size());
  return false;
}

int Run(int pairs, const std::string& only) {
  // Our encodings are the input both decoders read; asn1c's DER must agree.
  ReferenceEncodings input;
  auto ours = MakeOurWorkloads(input);
  ours->EncodeNvs();
  ours->EncodeErrInfo();
  ours->EncodeUniResId();
  input = {ours->EncodedNvs(), ours->EncodedErrInfo(), ours->EncodedUniResId()};
  auto theirs = MakeAsn1cWorkloads(input);
  theirs->EncodeNvs();
  theirs->EncodeErrInfo();
  theirs->EncodeUniResId();
  SameBytes("NVS list", input.nvs, theirs->EncodedNvs());
  SameBytes("ErrInfo list", input.errInfo, theirs->EncodedErrInfo());
  SameBytes("UniResID", input.uniResId, theirs->EncodedUniResId());

  const Figure figures[] = {
      {"NVS list encode", &Workloads::EncodeNvs, kListElements, 0.065},
      {"ErrInfo list encode", &Workloads::EncodeErrInfo, kListElements, 0.04},
      {"UniResID encode", &Workloads::EncodeUniResId, 1, 0.075},
      {"NVS list decode", &Workloads::DecodeNvs, kListElements, 0.3},
      {"ErrInfo list decode", &Workloads::DecodeErrInfo, kListElements, 0.25},
      {"UniResID decode + free", &Workloads::DecodeUniResId, 1, 0.3},
      {"NVS list build", &Workloads::BuildNvs, kListElements, 0.25},
      {"ErrInfo list build", &Workloads::BuildErrInfo, kListElements, 0.25},
      {"UniResID round trip", &Workloads::RoundTripUniResId, 1, 0.18},
  };

  std::printf("%-24s %12s %12s %8s %6s\n", "figure (ns/element)", "ours", "asn1c", "ratio", "goal");
  int missed = 0;
  for (const Figure& figure : figures) {
    if (std::string(figure.name).find(only) == std::string::npos) continue;
    const int passes = CalibratePasses(*ours, *theirs, figure.pass, figure.elements);
    std::vector<double> ourTimes, theirTimes, ratios;
    for (int pair = 0; pair < pairs; ++pair) {
      double our, their;
      if (pair % 2 == 0) {
        our = Sample(*ours, figure.pass, passes, figure.elements);
        their = Sample(*theirs, figure.pass, passes, figure.elements);
      } else {
        their = Sample(*theirs, figure.pass, passes, figure.elements);
        our = Sample(*ours, figure.pass, passes, figure.elements);
      }
      ourTimes.push_back(our);
      theirTimes.push_back(their);
      ratios.push_back(our / their);
    }
    const double ratio = Median(ratios);
    const bool met = ratio <= figure.goal;
    missed += met ? 0 : 1;
    std::printf("%-24s %12.2f %12.2f %8.3f %6.3f%s\n", figure.name, Median(ourTimes), Median(theirTimes), ratio,
                figure.goal, met ? "" : "  (goal missed)");
  }

  std::printf("\n%-24s %12s %12s\n", "allocations per element", "ours", "asn1c");
  const Figure decodes[] = {{"NVS list decode", &Workloads::DecodeNvs, kListElements, 0},
                            {"ErrInfo list decode", &Workloads::DecodeErrInfo, kListElements, 0},
                            {"UniResID decode + free", &Workloads::DecodeUniResId, 1, 0}};
  for (const Figure& figure : decodes) {
    const double our = AllocationsPerElement(*ours, figure.pass, figure.elements);
    const double their = AllocationsPerElement(*theirs, figure.pass, figure.elements);
    std::printf("%-24s %12.2f %12.2f%s\n", figure.name, our, their, our <= their + 0.005 ? "" : "  (more than asn1c)");
  }
  std::printf("\n%d of %zu ratios miss their goal\n", missed, std::size(figures));
  return 0;
}

}  // namespace
}  // namespace side_by_side

int main(int argc, char** argv) {
  // Freed memory stays with the process: otherwise glibc hands the top of the
  // heap back to the system after each pass over a list and faults it in again
  // on the next, and which codec pays for that depends on the order of passes.
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  const int pairs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 11;
  return side_by_side::Run(pairs, argc > 2 ? argv[2] : "");
}
