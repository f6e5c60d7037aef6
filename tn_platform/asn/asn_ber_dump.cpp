#include "tn_platform/asn/asn_ber_dump.h"

#include <charconv>
#include <cstdint>

#include "tn_platform/asn/asn_octs.h"

namespace {

// Output is gathered and written in runs of about this size.
constexpr std::size_t kFlushAt = 64 * 1024;

void AppendNumber(std::string& out, std::uint64_t number, std::size_t width = 0) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  const auto count = static_cast<std::size_t>(end - digits);
  if (count < width) out.append(width - count, ' ');
  out.append(digits, count);
}

void AppendTag(std::string& out, AsnTag tag) {
  static const char* const kClassNames[] = {"[UNIVERSAL ", "[APPLICATION ", "[", "[PRIVATE "};
  out += kClassNames[TagFirstOctet(tag) >> 6];
  const unsigned number = TagNumber(tag);
  AppendNumber(out, number);
  out += TagIsConstructed(tag) ? "] constructed" : "] primitive";
  if (TagClassOf(tag) != AsnTagClass::kUniversal) return;
  if (const char* name = UniversalTagName(number)) {
    out += " (";
    out += name;
    out += ')';
  }
}

void AppendOctets(std::string& out, std::string_view octets) {
  if (AsnOctetsAreText(octets)) {
    out += '"';
    for (const char c : octets) {
      if (c == '"') out += '"';
      out += c;
    }
    out += '"';
    return;
  }
  static const char kHex[] = "0123456789ABCDEF";
  out += '\'';
  for (const char c : octets) {
    const auto octet = static_cast<unsigned char>(c);
    out += kHex[octet >> 4];
    out += kHex[octet & 0x0F];
  }
  out += "'H";
}

void AppendContent(std::string& out, const AsnBerItem& item) {
  const std::string_view content = item.content;
  if (TagClassOf(item.tag) == AsnTagClass::kUniversal) {
    const unsigned number = TagNumber(item.tag);
    if (number == 2 && item.length != 0 && item.length <= 8) {
      const std::int64_t value =
          AsnReadInteger(reinterpret_cast<const unsigned char*>(content.data()), content.size());
      if (value < 0) {
        out += '-';
        AppendNumber(out, 0 - static_cast<std::uint64_t>(value));
      } else {
        AppendNumber(out, static_cast<std::uint64_t>(value));
      }
      return;
    }
    if (number == 1 && item.length == 1) {
      out += content[0] != 0 ? "TRUE" : "FALSE";
      return;
    }
  }
  if (item.length <= kAsnDumpContentShown) {
    AppendOctets(out, content);
    return;
  }
  AppendOctets(out, content.substr(0, kAsnDumpContentShown));
  out += "...";
}

}  // namespace

void AsnAppendDumpLine(std::string& out, const AsnBerItem& item) {
  AppendNumber(out, item.offset, 6);
  out += ' ';
  AppendNumber(out, item.headerLength, 3);
  out += "  ";
  out.append(2 * std::size_t{item.depth}, ' ');
  if (item.endOfContents) {
    out += "end-of-contents\n";
    return;
  }
  AppendTag(out, item.tag);
  if (item.indefinite) {
    out += ", length indefinite\n";
    return;
  }
  out += ", length ";
  AppendNumber(out, item.length);
  if (!TagIsConstructed(item.tag)) {
    out += ": ";
    AppendContent(out, item);
  }
  out += '\n';
}

std::size_t AsnDumpBer(AsnByteSource source, std::ostream& os,
                       const std::function<void(std::size_t values, std::size_t offset)>& onTopLevel) {
  AsnBerReader reader(std::move(source), kAsnDumpContentShown + 1);
  std::string text;
  std::size_t items = 0;
  std::size_t values = 0;
  AsnBerItem item;
  try {
    while (reader.Next(item)) {
      ++items;
      if (item.depth == 0 && onTopLevel) onTopLevel(++values, item.offset);
      AsnAppendDumpLine(text, item);
      if (text.size() >= kFlushAt) {
        os.write(text.data(), static_cast<std::streamsize>(text.size()));
        text.clear();
      }
    }
  } catch (...) {
    os.write(text.data(), static_cast<std::streamsize>(text.size()));
    throw;
  }
  os.write(text.data(), static_cast<std::streamsize>(text.size()));
  return items;
}
