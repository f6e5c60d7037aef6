#include "tn_platform/asn/asn_ber_dump.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <memory>

#include "tn_platform/asn/asn_octs.h"

namespace {

// Output is gathered and written in runs of about this size.
constexpr std::size_t kFlushAt = 64 * 1024;

// The most characters one line takes: offset and header length (20 digits
// each), indent, a tag's text, the length, and content of
// kAsnDumpContentShown octets shown as hex or as text with every quote doubled.
constexpr std::size_t kMaxLine = 20 + 1 + 20 + 2 + 2 * AsnOpenValues::kMaxDepth + 128 + 30 +
                                 4 * kAsnDumpContentShown + 16;

// Writes `number` right-aligned in `width` columns at `out`; returns the end.
char* PutNumber(char* out, std::uint64_t number, std::size_t width = 0) {
  std::size_t count = 1;
  for (std::uint64_t rest = number; rest >= 10; rest /= 10) ++count;
  for (std::size_t i = count; i < width; ++i) *out++ = ' ';
  char* digit = out + count;
  do {
    *--digit = static_cast<char>('0' + number % 10);
    number /= 10;
  } while (number != 0);
  return out + count;
}

char* Put(char* out, std::string_view text) {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

// "[UNIVERSAL 16] constructed (SEQUENCE)", "[2] primitive", ...
std::string TagText(AsnTag tag) {
  static const char* const kClassNames[] = {"[UNIVERSAL ", "[APPLICATION ", "[", "[PRIVATE "};
  const unsigned number = TagNumber(tag);
  std::string text = kClassNames[TagFirstOctet(tag) >> 6] + std::to_string(number);
  text += TagIsConstructed(tag) ? "] constructed" : "] primitive";
  if (TagClassOf(tag) == AsnTagClass::kUniversal) {
    if (const char* name = UniversalTagName(number)) text = text + " (" + name + ")";
  }
  return text;
}

// True for octets every one of which is printable ASCII other than '"'.
bool PlainText(std::string_view octets) {
  for (const char c : octets) {
    if (c < 0x20 || c > 0x7E || c == '"') return false;
  }
  return true;
}

char* PutOctets(char* out, std::string_view octets) {
  if (PlainText(octets) || AsnOctetsAreText(octets)) {
    *out++ = '"';
    for (const char c : octets) {
      if (c == '"') *out++ = '"';
      *out++ = c;
    }
    *out++ = '"';
    return out;
  }
  static const char kHex[] = "0123456789ABCDEF";
  *out++ = '\'';
  for (const char c : octets) {
    const auto octet = static_cast<unsigned char>(c);
    *out++ = kHex[octet >> 4];
    *out++ = kHex[octet & 0x0F];
  }
  *out++ = '\'';
  *out++ = 'H';
  return out;
}

char* PutContent(char* out, const AsnBerItem& item) {
  const std::string_view content = item.content;
  if (TagClassOf(item.tag) == AsnTagClass::kUniversal) {
    const unsigned number = TagNumber(item.tag);
    if (number == 2 && item.length != 0 && item.length <= 8) {
      const std::int64_t value =
          AsnReadInteger(reinterpret_cast<const unsigned char*>(content.data()), content.size());
      if (value < 0) *out++ = '-';
      return PutNumber(out, value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value));
    }
    if (number == 1 && item.length == 1) return Put(out, content[0] != 0 ? "TRUE" : "FALSE");
  }
  if (item.length <= kAsnDumpContentShown) return PutOctets(out, content);
  return Put(PutOctets(out, content.substr(0, kAsnDumpContentShown)), "...");
}

// The text of the tags seen last: a dump repeats a few tags many times.
struct TagTexts {
  AsnTag tags[4] = {};
  std::string texts[4];
  unsigned next = 0;

  const std::string& Of(AsnTag tag) {
    for (unsigned i = 0; i < 4; ++i) {
      if (tags[i] == tag && !texts[i].empty()) return texts[i];
    }
    const unsigned slot = next++ % 4;
    tags[slot] = tag;
    texts[slot] = TagText(tag);
    return texts[slot];
  }
};

// Writes the line of `item` at `out` (room for kMaxLine characters); returns the end.
char* PutLine(char* out, const AsnBerItem& item, TagTexts& tags) {
  out = PutNumber(out, item.offset, 6);
  *out++ = ' ';
  out = PutNumber(out, item.headerLength, 3);
  const std::size_t indent = 2 + 2 * std::size_t{std::min(item.depth, AsnOpenValues::kMaxDepth)};
  std::memset(out, ' ', indent);
  out += indent;
  if (item.endOfContents) return Put(out, "end-of-contents\n");
  out = Put(out, tags.Of(item.tag));
  if (item.indefinite) return Put(out, ", length indefinite\n");
  out = PutNumber(Put(out, ", length "), item.length);
  if (!TagIsConstructed(item.tag)) out = PutContent(Put(out, ": "), item);
  *out++ = '\n';
  return out;
}

}  // namespace

void AsnAppendDumpLine(std::string& out, const AsnBerItem& item) {
  TagTexts tags;
  char line[kMaxLine];
  out.append(line, static_cast<std::size_t>(PutLine(line, item, tags) - line));
}

std::size_t AsnDumpBer(AsnByteSource source, std::ostream& os,
                       const std::function<void(std::size_t values, std::size_t offset)>& onTopLevel) {
  AsnBerReader reader(std::move(source), kAsnDumpContentShown + 1);
  const std::unique_ptr<char[]> text(new char[kFlushAt + kMaxLine]);
  char* at = text.get();
  const auto flush = [&] {
    os.write(text.get(), at - text.get());
    at = text.get();
  };
  std::size_t items = 0;
  std::size_t values = 0;
  AsnBerItem item;
  TagTexts tags;
  try {
    while (reader.Next(item)) {
      ++items;
      if (item.depth == 0 && onTopLevel) onTopLevel(++values, item.offset);
      at = PutLine(at, item, tags);
      if (at - text.get() >= static_cast<std::ptrdiff_t>(kFlushAt)) flush();
    }
  } catch (...) {
    flush();
    throw;
  }
  flush();
  return items;
}
