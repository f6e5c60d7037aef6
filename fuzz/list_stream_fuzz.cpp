// The list stream readers against the whole-value codecs. The first octet
// picks a list type of the catalogue, the second how the input arrives (bit
// 0: BER or JER text; the rest: octets per read, 1 to 128); the rest is the
// input. The BER reader must refuse exactly what AsnDecodeValue refuses, with
// the same message, and give the same elements; the JER reader, fed the text
// a few octets at a time, must accept a JSON array exactly when the whole-text
// reader does, and give the same octets.
#include <optional>

#include "fuzz/fuzz_common.h"
#include "tests/trickle_source.h"
#include "tn_platform/asn/asn_ber_list_reader.h"
#include "tn_platform/asn/asn_json_list_reader.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_list_base.h"

namespace {

const std::vector<AsnCatalogueEntry>& Lists() {
  static const std::vector<AsnCatalogueEntry> lists = [] {
    std::vector<AsnCatalogueEntry> found;
    for (const AsnCatalogueEntry& entry : FuzzCatalogue()) {
      if (entry.createElement != nullptr) found.push_back(entry);
    }
    if (found.empty()) std::abort();
    return found;
  }();
  return lists;
}

// The list's own tag: a list type tagged EXPLICIT (two tags) is not streamed.
std::optional<AsnTag> ListTag(const AsnCatalogueEntry& type) {
  const std::unique_ptr<AsnType> value(type.create());
  const AsnTagChain tags = static_cast<const AsnListBase&>(*value).OwnTags();
  if (tags.Wrapped()) return std::nullopt;
  return tags.Outer();
}

// The elements read by `reader`, gathered into a list of `type` and encoded
// (a SET OF in DER order), or the message of its refusal (prefixed "!").
template <class Reader, class Next>
std::string Streamed(Reader& reader, const AsnCatalogueEntry& type, Next next) {
  const std::unique_ptr<AsnType> list(type.create());
  auto& elements = static_cast<AsnListBase&>(*list);
  try {
    while (const AsnType* element = next(reader)) AsnDecodeValue(elements.AppendElement(), AsnEncodeValue(*element));
  } catch (CSM_Exception* raw) {
    const std::unique_ptr<CSM_Exception> error(raw);
    return "!" + error->Message();
  }
  return AsnEncodeValue(*list);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const AsnCatalogueEntry& type = Lists()[data[0] % Lists().size()];
  const std::optional<AsnTag> tag = ListTag(type);
  if (!tag) return 0;
  const bool text = (data[1] & 1) != 0;
  const std::size_t step = 1 + (data[1] >> 1);
  const std::string_view input(reinterpret_cast<const char*>(data) + 2, size - 2);

  const std::unique_ptr<AsnType> whole(type.create());
  const std::unique_ptr<AsnDecodeError> refusal = FuzzRefusal(type.name, input.size(), [&] {
    if (text) {
      AsnReadJson(*whole, input, AsnJsonForm::kJer);
    } else {
      AsnDecodeValue(*whole, input);
    }
  });
  const std::string expected = refusal ? "!" + refusal->Message() : AsnEncodeValue(*whole);

  if (!text) {
    AsnBerListReader reader(Trickle(input, step), type.createElement, type.name, *tag);
    if (Streamed(reader, type, [](AsnBerListReader& r) { return r.Next(); }) != expected) std::abort();
    return 0;
  }
  const std::size_t first = input.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos || input[first] != '[') return 0;  // JSON Lines: no whole-text twin
  AsnJsonListReader reader(Trickle(input, step), AsnJsonForm::kJer, type.createElement, type.name);
  reader.ReadInsideList();
  std::unique_ptr<AsnType> held;
  const std::string streamed = Streamed(reader, type, [&held](AsnJsonListReader& r) {
    held = r.Next();
    return held.get();
  });
  // Messages may word a syntax fault differently; acceptance and octets may not differ.
  if ((streamed[0] == '!') != (expected[0] == '!')) std::abort();
  if (streamed[0] != '!' && streamed != expected) std::abort();
  return 0;
}
