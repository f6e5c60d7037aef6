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
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_value_notation.h"

namespace {

std::unique_ptr<AsnType> Create(std::uint8_t pick) {
  const auto& types = structured_types::StructuredTypes();
  auto type = types.begin();
  std::advance(type, pick % types.size());
  return std::unique_ptr<AsnType>(type->second());
}

void Stable(std::uint8_t pick, const AsnType& value) {
  const std::string der = AsnEncodeValue(value);
  const std::unique_ptr<AsnType> again(Create(pick));
  if (!FuzzDecode(*again, der) || AsnEncodeValue(*again) != der) std::abort();
  AsnToValueNotation(value);
  for (const AsnJsonForm form : {AsnJsonForm::kReadable, AsnJsonForm::kJer}) {
    const std::string json = AsnToJson(value, form);
    const std::unique_ptr<AsnType> read(Create(pick));
    AsnReadJson(*read, json, form);  // an exception here escapes: a finding
    if (AsnEncodeValue(*read) != der || AsnJsonToBer(*Create(pick), json, form) != der) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return FuzzValueReaders(data, size, [](std::uint8_t pick) { return Create(pick); }, Stable);
}
