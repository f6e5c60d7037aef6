// Our whole-value decode against the code asn1c generates from qcommon.asn
// (fuzz/differential/): the first octet picks one of the nine types, the rest
// is the input both decoders read. Both accepting with different DER, or one
// side accepting for no reason allowed_verdicts.txt gives, aborts with what
// each side said.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "fuzz/differential/differential.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const DifferentialVerdict verdict = CompareDecoders(data[0] % kDifferentialTypeCount, bytes);
  if (!verdict.explained) {
    std::fprintf(stderr, "unexplained disagreement: %s\n", verdict.details.c_str());
    std::abort();
  }
  return 0;
}
