// Error offsets as a property. Valid encodings of catalogued types
// (tests/ber/offset_samples.golden) are made malformed on purpose (cut, given
// extra octets, wrong tags, tags in the high form, inserted items,
// non-minimal integers, changed lengths), each knowing from this test's own
// reading of the octets which item it breaks. Every one must be refused with
// its error placed exactly at that item, or at the end of the input for a cut
// one. Long-form lengths that are not minimal must decode to the same value.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "test_bytes.h"
#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/asn_catalogue.h"

namespace {

using test_bytes::Hex;
using test_bytes::ToHex;

// One item (tag, length, value) of a definite-length encoding.
struct Tlv {
  std::string identifier;   // the identifier octets
  std::string content;      // a primitive item's content octets
  std::vector<Tlv> items;   // a constructed item's items
  unsigned zeroLengthOctets = 0;  // written in front of a long-form length

  // Where Encode() and Place() put it.
  std::size_t offset = 0;
  std::size_t headerSize = 0;
  std::size_t size = 0;

  bool Constructed() const { return (identifier[0] & 0x20) != 0; }
  std::size_t End() const { return offset + size; }
  std::size_t ContentStart() const { return offset + headerSize; }
};

unsigned Octet(const std::string& bytes, std::size_t at) { return static_cast<unsigned char>(bytes.at(at)); }

// Reads the item starting at `at` and moves `at` past it.
Tlv Read(const std::string& bytes, std::size_t& at) {
  Tlv item;
  std::size_t tagEnd = at + 1;
  if ((Octet(bytes, at) & 0x1F) == 0x1F) {
    while ((Octet(bytes, tagEnd++) & 0x80) != 0) {
    }
  }
  item.identifier = bytes.substr(at, tagEnd - at);
  at = tagEnd;
  std::size_t length = Octet(bytes, at++);
  if ((length & 0x80) != 0) {
    const unsigned octets = length & 0x7F;
    length = 0;
    for (unsigned i = 0; i < octets; ++i) length = (length << 8) | Octet(bytes, at++);
  }
  const std::size_t end = at + length;
  if (item.Constructed()) {
    while (at < end) item.items.push_back(Read(bytes, at));
  } else {
    item.content = bytes.substr(at, length);
    at = end;
  }
  return item;
}

// Encodes `item` (lengths minimal unless asked otherwise) and records sizes.
std::string Encode(Tlv& item) {
  std::string content = item.content;
  if (item.Constructed()) {
    content.clear();
    for (Tlv& inner : item.items) content += Encode(inner);
  }
  const std::string header = item.identifier + test_bytes::LengthOctets(content.size(), item.zeroLengthOctets);
  item.headerSize = header.size();
  item.size = header.size() + content.size();
  return header + content;
}

void Place(Tlv& item, std::size_t at) {
  item.offset = at;
  at += item.headerSize;
  for (Tlv& inner : item.items) {
    Place(inner, at);
    at += inner.size;
  }
}

std::string EncodePlaced(Tlv& root) {
  const std::string bytes = Encode(root);
  Place(root, 0);
  return bytes;
}

// An item by its path of item indexes from the root.
using Path = std::vector<std::size_t>;

Tlv& At(Tlv& root, const Path& path) {
  Tlv* item = &root;
  for (const std::size_t index : path) item = &item->items[index];
  return *item;
}

void CollectPaths(const Tlv& item, Path& path, std::vector<Path>& paths) {
  paths.push_back(path);
  for (std::size_t i = 0; i < item.items.size(); ++i) {
    path.push_back(i);
    CollectPaths(item.items[i], path, paths);
    path.pop_back();
  }
}

constexpr std::size_t kDecodes = ~std::size_t{0};

struct Mutation {
  std::string kind;
  std::string bytes;
  std::size_t expected;  // the error's offset, or kDecodes
};

// `bytes` with the length of `item` set to `length`, written in as many
// length octets as it has; false when it does not fit in them.
bool WithLength(std::string& bytes, const Tlv& item, std::size_t length) {
  const std::size_t at = item.offset + item.identifier.size();
  const std::size_t octets = item.headerSize - item.identifier.size();
  if (octets == 1) {
    if (length >= 128) return false;
    bytes[at] = static_cast<char>(length);
    return true;
  }
  if (octets - 1 < sizeof(std::size_t) && length >> (8 * (octets - 1)) != 0) return false;
  for (std::size_t i = octets - 1, rest = length; i >= 1; --i, rest >>= 8) bytes[at + i] = static_cast<char>(rest & 0xFF);
  return true;
}

// Every mutation of `valid` (a DER encoding) and the offset its error must have.
std::vector<Mutation> Mutations(const std::string& valid) {
  std::size_t end = 0;
  Tlv root = Read(valid, end);
  EXPECT_EQ(EncodePlaced(root), valid) << "the sample is not DER";
  std::vector<Path> paths;
  Path path;
  CollectPaths(root, path, paths);

  std::vector<Mutation> out;
  // Cut anywhere: the error is where the input ends.
  for (std::size_t size = 0; size < valid.size(); ++size) out.push_back({"cut", valid.substr(0, size), size});
  // Octets after the value: the first of them.
  for (const char* tail : {"00", "05 00", "30 00", "FF"}) out.push_back({"extra octets", valid + Hex(tail), valid.size()});

  for (const Path& at : paths) {
    const Tlv& original = At(root, at);
    // Rewrites the item with `change`, encodes the whole again and expects
    // the error at the item.
    const auto rewritten = [&](const std::string& kind, auto change) {
      Tlv copy = root;
      change(At(copy, at));
      const std::string bytes = EncodePlaced(copy);
      out.push_back({kind, bytes, At(copy, at).offset});
    };

    // A tag no catalogued type has anywhere, and the other form of a tag.
    rewritten("wrong tag", [](Tlv& t) { t.identifier = Hex("05"); });
    const unsigned first = Octet(original.identifier, 0);
    if (original.identifier.size() == 1 && (first == 0x30 || first == 0x02 || first == 0x01)) {
      rewritten("other form", [first](Tlv& t) { t.identifier = std::string(1, static_cast<char>(first ^ 0x20)); });
    }
    // A tag number below 31 in the high form.
    if (original.identifier.size() == 1) {
      rewritten("high tag form",
                [first](Tlv& t) { t.identifier = {static_cast<char>(first | 0x1F), static_cast<char>(first & 0x1F)}; });
    }
    // An INTEGER with a redundant leading octet.
    if (original.identifier == Hex("02")) {
      rewritten("non-minimal INTEGER",
                [](Tlv& t) { t.content.insert(0, 1, (Octet(t.content, 0) & 0x80) != 0 ? '\xFF' : '\0'); });
    }
    // An item inserted before each item of a constructed one, and after the last.
    if (original.Constructed()) {
      for (std::size_t i = 0; i <= original.items.size(); ++i) {
        Tlv copy = root;
        Tlv& holder = At(copy, at);
        holder.items.insert(holder.items.begin() + static_cast<std::ptrdiff_t>(i), Tlv{Hex("05"), "", {}});
        const std::string bytes = EncodePlaced(copy);
        out.push_back({"inserted item", bytes, At(copy, at).items[i].offset});
      }
    }
    // Long-form lengths that are not minimal decode as the minimal ones do.
    for (const unsigned zeros : {1u, 8u}) {
      rewritten("long form", [zeros](Tlv& t) { t.zeroLengthOctets = zeros; });
      out.back().expected = kDecodes;
    }

    // Lengths changed in place.
    const std::size_t length = original.size - original.headerSize;
    if (original.identifier == Hex("02") || original.identifier == Hex("01")) {
      std::string bytes = valid;
      if (WithLength(bytes, original, 0)) out.push_back({"no content", bytes, original.offset});
    }
    if (at.empty()) {  // the whole value longer than the input: the input is cut
      for (const std::size_t more : {1, 3}) {
        std::string bytes = valid;
        if (WithLength(bytes, original, length + more)) out.push_back({"longer value", bytes, valid.size()});
      }
    } else {  // longer than what its holder has left for it
      Path holderPath(at.begin(), at.end() - 1);
      const Tlv& holder = At(root, holderPath);
      for (const std::size_t more : {1, 3}) {
        std::string bytes = valid;
        if (WithLength(bytes, original, length + (holder.End() - original.End()) + more)) {
          out.push_back({"longer item", bytes, original.offset});
        }
      }
    }
    // A constructed item ending inside one of its items: that item runs past it.
    for (const Tlv& inner : original.items) {
      for (const std::size_t cut : {inner.offset + 1, inner.End() - 1}) {
        if (cut <= inner.offset || cut >= inner.End()) continue;
        std::string bytes = valid;
        if (WithLength(bytes, original, cut - original.ContentStart())) {
          out.push_back({"shorter holder", bytes, inner.offset});
        }
      }
    }
  }
  return out;
}

TEST(DecodeOffsets, EveryMalformedInputNamesTheItemItBreaks) {
  std::size_t inputs = 0, misses = 0;
  // Reports the first 25 misses, so that one fault does not flood the log.
  const auto miss = [&misses](const Mutation& m, const std::string& message) {
    if (++misses > 25) return;
    ADD_FAILURE() << m.kind << ": " << ToHex(m.bytes.substr(0, 48)) << (m.bytes.size() > 48 ? " ..." : "") << " -> "
                  << message << " (expected "
                  << (m.expected == kDecodes ? std::string("to decode") : "offset " + std::to_string(m.expected))
                  << ")";
  };
  for (const std::vector<std::string>& sample : test_bytes::Golden("ber/offset_samples.golden")) {
    SCOPED_TRACE(sample[0]);
    AsnType* (*const create)() = AsnCatalogue::Find(sample[0])->create;
    const std::string valid = Hex(sample[1]);
    for (const Mutation& m : Mutations(valid)) {
      ++inputs;
      const std::unique_ptr<AsnType> value(create());
      try {
        AsnDecodeValue(*value, m.bytes);
        if (m.expected != kDecodes) miss(m, "decoded");
        else if (AsnEncodeValue(*value) != valid) miss(m, "decoded to another value");
      } catch (CSM_Exception* raw) {
        const std::unique_ptr<CSM_Exception> error(raw);
        const auto* located = dynamic_cast<const AsnDecodeError*>(error.get());
        if (located == nullptr || located->Offset() != m.expected) miss(m, error->Message());
      }
    }
  }
  EXPECT_GT(inputs, 1000u);
  EXPECT_EQ(misses, 0u) << "of " << inputs << " inputs";
}

}  // namespace
