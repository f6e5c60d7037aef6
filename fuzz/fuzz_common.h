// What the fuzz targets share: the standard headers every one uses, the
// catalogue type an input's first octet picks, and the checks every refusal
// and every accepted value must pass.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tn_platform/asn/asn_ber_reader.h"
#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/asn_value_notation.h"
#include "tn_qmodules/asn_catalogue.h"
#include "tn_velkor/ns_velkor.h"

inline const std::vector<AsnCatalogueEntry>& FuzzCatalogue() {
  static const std::vector<AsnCatalogueEntry> entries = AsnCatalogue::All();
  if (entries.empty()) {
    std::fprintf(stderr, "the catalogue is empty: the interface modules are not linked\n");
    std::abort();
  }
  return entries;
}

// The octet modulo the number of types, in the catalogue's order (module,
// then name): a type added to the catalogue shifts the choice of the seeds
// that follow it, which costs coverage until the next merge but never a
// false finding.
inline const AsnCatalogueEntry& FuzzChooseType(std::uint8_t octet) {
  return FuzzCatalogue()[octet % FuzzCatalogue().size()];
}

// Runs `read` on an input of `size` octets: it accepts (null), or refuses
// with an AsnDecodeError placed inside the input or at its end, its path
// starting with `typeName`. Any other refusal aborts.
template <class Read>
std::unique_ptr<AsnDecodeError> FuzzRefusal(std::string_view typeName, std::size_t size, Read&& read) {
  try {
    read();
    return nullptr;
  } catch (CSM_Exception* raw) {
    std::unique_ptr<CSM_Exception> error(raw);
    auto* located = dynamic_cast<AsnDecodeError*>(error.get());
    if (located == nullptr || located->Offset() > size || located->Path().rfind(typeName, 0) != 0) {
      std::fprintf(stderr, "a refusal not placed in the input or not on a %.*s path: %s\n",
                   static_cast<int>(typeName.size()), typeName.data(), error->Message().c_str());
      std::abort();
    }
    error.release();
    return std::unique_ptr<AsnDecodeError>(located);
  }
}

// Decodes `bytes` into `value`; false when FuzzRefusal finds them refused.
inline bool FuzzDecode(AsnType& value, std::string_view bytes) {
  return FuzzRefusal(value.typeName(), bytes.size(), [&] { AsnDecodeValue(value, bytes); }) == nullptr;
}

// Our encoding of a value survives itself: it decodes to a new value (which
// is returned) that encodes to the same octets.
inline std::unique_ptr<AsnType> FuzzReencoded(const AsnType& value) {
  const std::string once = AsnEncodeValue(value);
  const AsnCatalogueEntry* type = AsnCatalogue::Find(value.typeName());
  if (type == nullptr) std::abort();
  std::unique_ptr<AsnType> again(type->create());
  if (!FuzzDecode(*again, once) || AsnEncodeValue(*again) != once) std::abort();
  return again;
}

// Whether two printed values (value notation, or indented JSON) hold the
// same lines, in any order and without their trailing commas: DER puts the
// elements of a SET OF in order, so a value and its re-encoding may list
// them differently, while a lost or changed value changes a line.
inline bool FuzzSameLines(const std::string& a, const std::string& b) {
  const auto lines = [](const std::string& text) {
    std::vector<std::string> found;
    std::size_t start = 0;
    while (start <= text.size()) {
      std::size_t end = text.find('\n', start);
      if (end == std::string::npos) end = text.size();
      std::string line = text.substr(start, end - start);
      if (!line.empty() && line.back() == ',') line.pop_back();
      found.push_back(std::move(line));
      start = end + 1;
    }
    std::sort(found.begin(), found.end());
    return found;
  };
  return lines(a) == lines(b);
}

// Walks `bytes` with the structure reader behind velkor dump, keeping `shown`
// content octets, and calls `onItem` on each item. Returns the error the walk
// breaks on (null when it is complete); `breakItem` gets the item it was in.
template <class OnItem>
std::unique_ptr<AsnDecodeError> FuzzWalk(std::string_view bytes, std::size_t shown, std::size_t& breakItem,
                                         OnItem&& onItem) {
  AsnBerReader reader(AsnBytesSource(bytes), shown);
  AsnBerItem item;
  try {
    while (reader.Next(item)) onItem(item);
    return nullptr;
  } catch (AsnDecodeError* raw) {
    breakItem = reader.ItemStart();
    return std::unique_ptr<AsnDecodeError>(raw);
  }
}

// The input after its first octet, decoded as BER and read as JSON in both
// forms, each time into a new value `create(octet)` makes; every value one
// of them accepts must pass `stable(octet, value)`.
template <class Create, class Stable>
int FuzzValueReaders(const std::uint8_t* data, std::size_t size, Create&& create, Stable&& stable) {
  if (size == 0) return 0;
  const std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  const auto decoded = create(data[0]);
  if (FuzzDecode(*decoded, rest)) stable(data[0], *decoded);
  for (const AsnJsonForm form : {AsnJsonForm::kReadable, AsnJsonForm::kJer}) {
    const auto read = create(data[0]);
    if (FuzzRefusal(read->typeName(), rest.size(), [&] { AsnReadJson(*read, rest, form); }) == nullptr) {
      stable(data[0], *read);
    }
  }
  return 0;
}

// A value a reader accepted is stable: its DER decodes to the same DER, its
// JSON in either form reads back to it (into a value made by `create`, and
// straight to BER), and it prints as value notation.
template <class Create>
void FuzzStable(const AsnType& value, Create&& create) {
  const std::string der = AsnEncodeValue(value);
  const std::unique_ptr<AsnType> again(create());
  if (!FuzzDecode(*again, der) || AsnEncodeValue(*again) != der) std::abort();
  AsnToValueNotation(value);
  for (const AsnJsonForm form : {AsnJsonForm::kReadable, AsnJsonForm::kJer}) {
    const std::string json = AsnToJson(value, form);
    const std::unique_ptr<AsnType> read(create());
    AsnReadJson(*read, json, form);  // an exception here escapes: a finding
    if (AsnEncodeValue(*read) != der || AsnJsonToBer(*create(), json, form) != der) std::abort();
  }
}
