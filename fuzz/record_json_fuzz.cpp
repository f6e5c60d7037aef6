// The runtime's JSON reader and writer in the readable form (`velkor encode`
// and `decode --json`): the first octet picks a catalogue type, the rest is
// JSON text. A refusal must be a located AsnDecodeError; what is accepted must
// be stable: written back (one line and indented) it reads to the same BER
// octets and the same text, and those octets decode to the same JSON.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/fuzz_catalogue.h"
#include "fuzz/fuzz_json.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const AsnCatalogueEntry& type = FuzzChooseType(data[0]);
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  FuzzJsonReadsStably(type, text, AsnJsonForm::kReadable);
  return 0;
}
