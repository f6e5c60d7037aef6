// The runtime's strict JSON reader in JER (`velkor encode --jer`): the first
// octet picks a catalogue type, the rest is the text. A refusal must be an
// AsnDecodeError whose path starts with the type name and whose offset lies
// in the text. What it accepts must be stable: written back as JER (one line
// and indented), it reads to the same BER octets, and those octets decode and
// write the same JER.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "fuzz/fuzz_catalogue.h"
#include "fuzz/fuzz_decode.h"
#include "fuzz/fuzz_json.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const AsnCatalogueEntry& type = FuzzChooseType(data[0]);
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  FuzzJsonReadsStably(type, text, AsnJsonForm::kJer);
  return 0;
}
