// The structured types (tests/structured_types.h: tags of every class and
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

void ReadJson(std::uint8_t pick, std::string_view text, AsnJsonForm form) {
  const std::unique_ptr<AsnType> value(Create(pick));
  if (FuzzRefusal(value->typeName(), text.size(), [&] { AsnReadJson(*value, text, form); }) == nullptr) {
    Stable(pick, *value);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::unique_ptr<AsnType> value(Create(data[0]));
  if (FuzzDecode(*value, rest)) Stable(data[0], *value);
  ReadJson(data[0], rest, AsnJsonForm::kReadable);
  ReadJson(data[0], rest, AsnJsonForm::kJer);
  return 0;
}
