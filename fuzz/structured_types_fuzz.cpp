// The structured types (tests/structured/structured.asn: tags of every class and
// mode, CHOICE, DEFAULT, extensible records and CHOICEs, SET, SET OF): the
// first octet picks a type, the rest is read as BER and as JSON text in both
// forms. A refusal is a located AsnDecodeError; what is accepted is stable:
// its DER decodes to the same DER, its JSON in either form reads back to it
// (into a value and straight to BER), and it prints as value notation.
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>

#include "fuzz/fuzz_common.h"
#include "tests/structured_types.h"

namespace {

std::unique_ptr<AsnType> Create(std::uint8_t pick) {
  const auto& types = structured_types::StructuredTypes();
  auto type = types.begin();
  std::advance(type, pick % types.size());
  return std::unique_ptr<AsnType>(type->second());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto stable = [](std::uint8_t pick, const AsnType& value) {
    FuzzStable(value, [pick] { return Create(pick); });
  };
  return FuzzValueReaders(data, size, [](std::uint8_t pick) { return Create(pick); }, stable);
}
