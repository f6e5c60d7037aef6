#include "tools/velkor/text_forms.h"

#include <cstddef>
#include <vector>

#include "tools/velkor/io.h"

namespace velkor {

namespace {

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

int Base64Digit(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+' || c == '-') return 62;  // '-' and '_': the URL-safe alphabet
  if (c == '/' || c == '_') return 63;
  return -1;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsSeparator(char c) { return IsBlank(c) || c == ':' || c == ',' || c == ';'; }

// A character for a message: itself when printable, else its code in hex.
std::string ShownCharacter(char c) {
  const unsigned code = static_cast<unsigned char>(c);
  if (code >= 0x20 && code < 0x7F) return "'" + std::string(1, c) + "'";
  static const char kDigits[] = "0123456789ABCDEF";
  return std::string("octet 0x") + kDigits[code >> 4] + kDigits[code & 0x0F];
}

// "line 2, column 7" of position `at` of `text`.
std::string PlaceOf(std::string_view text, std::size_t at) {
  std::size_t line = 1;
  std::size_t lineStart = 0;
  for (std::size_t i = 0; i < at; ++i) {
    if (text[i] == '\n') {
      ++line;
      lineStart = i + 1;
    }
  }
  return "line " + std::to_string(line) + ", column " + std::to_string(at - lineStart + 1);
}

// One line of a dump: where its octets are, as [begin, end) of the text.
struct Span {
  std::size_t begin;
  std::size_t end;
};

// The first line of a dump starts with an offset of zeros ("00000000:",
// "0000000"), which no record's hex starts with (00 is end-of-contents).
bool IsDump(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && IsBlank(text[i])) ++i;
  std::size_t zeros = 0;
  while (i + zeros < text.size() && text[i + zeros] == '0') ++zeros;
  const std::size_t after = i + zeros;
  return zeros >= 6 && after < text.size() && (text[after] == ':' || text[after] == ' ' || text[after] == '\t');
}

// The octet columns of every line of a dump: after the offset, up to the text
// column (xxd: two blanks; hexdump -C: '|'; od -c style: '>').
std::vector<Span> DumpColumns(std::string_view text) {
  std::vector<Span> spans;
  std::size_t lineStart = 0;
  while (lineStart < text.size()) {
    std::size_t lineEnd = text.find('\n', lineStart);
    if (lineEnd == std::string_view::npos) lineEnd = text.size();
    const std::string_view line = text.substr(lineStart, lineEnd - lineStart);
    std::size_t i = 0;
    while (i < line.size() && IsBlank(line[i])) ++i;
    while (i < line.size() && HexDigit(line[i]) >= 0) ++i;  // the offset
    const bool xxd = i < line.size() && line[i] == ':';
    if (xxd) ++i;
    while (i < line.size() && (line[i] == ' ' || line[i] == '\t')) ++i;
    std::size_t end = line.size();
    if (xxd) {
      const std::size_t gap = line.find("  ", i);
      if (gap != std::string_view::npos) end = gap;
    } else {
      const std::size_t column = line.find_first_of("|>", i);
      if (column != std::string_view::npos) end = column;
    }
    spans.push_back({lineStart + i, lineStart + end});
    lineStart = lineEnd + 1;
  }
  return spans;
}

// Appends the octets of the hex in text[begin, end) to `bytes`.
void DecodeHexSpan(std::string_view text, Span span, std::string& bytes, int& high) {
  for (std::size_t i = span.begin; i < span.end; ++i) {
    const char c = text[i];
    if (IsSeparator(c)) continue;
    // "0x" before an octet; "0x5" stands for 05.
    if (c == '0' && i + 1 < span.end && (text[i + 1] == 'x' || text[i + 1] == 'X') && high < 0) {
      std::size_t digits = 0;
      while (i + 2 + digits < span.end && HexDigit(text[i + 2 + digits]) >= 0) ++digits;
      if (digits == 1) {
        bytes.push_back(static_cast<char>(HexDigit(text[i + 2])));
        i += 2;
        continue;
      }
      if (digits > 1) {
        ++i;
        continue;
      }
    }
    const int digit = HexDigit(c);
    if (digit < 0) {
      const unsigned code = static_cast<unsigned char>(c);
      ThrowBadInput("bad hex: " + ShownCharacter(c) + " at " + PlaceOf(text, i) + " is not a hex digit" +
                    (code < 0x20 || code >= 0x7F ? " (binary input? leave out --hex)" : ""));
    }
    if (high < 0) {
      high = digit;
    } else {
      bytes.push_back(static_cast<char>((high << 4) | digit));
      high = -1;
    }
  }
}

bool LooksLikeHex(std::string_view input) {
  std::size_t digits = 0;
  for (const char c : input) {
    if (HexDigit(c) >= 0) {
      ++digits;
    } else if (!IsSeparator(c) && c != 'x' && c != 'X') {
      return false;
    }
  }
  return digits >= 4;
}

bool LooksLikeBase64(std::string_view input) {
  if (input.substr(0, 11) == "-----BEGIN ") return true;
  std::size_t digits = 0;
  for (const char c : input) {
    if (Base64Digit(c) >= 0) {
      ++digits;
    } else if (!IsBlank(c) && c != '=') {
      return false;
    }
  }
  return digits >= 4;
}

}  // namespace

std::string DecodeHex(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 2);
  int high = -1;
  if (IsDump(text)) {
    for (const Span span : DumpColumns(text)) DecodeHexSpan(text, span, bytes, high);
  } else {
    DecodeHexSpan(text, Span{0, text.size()}, bytes, high);
  }
  if (high >= 0) ThrowBadInput("bad hex: odd number of hex digits");
  return bytes;
}

std::string DecodeBase64(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3);
  unsigned bits = 0;
  int count = 0;  // bits not yet in an octet
  bool padded = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if ((i == 0 || text[i - 1] == '\n') && text.substr(i, 5) == "-----") {  // an armour line
      const std::size_t end = text.find('\n', i);
      i = end == std::string_view::npos ? text.size() : end;
      continue;
    }
    if (IsBlank(c)) continue;
    if (c == '=') {
      padded = true;
      continue;
    }
    const int digit = Base64Digit(c);
    if (digit < 0 || padded) {
      ThrowBadInput("bad Base64: " + ShownCharacter(c) + " at " + PlaceOf(text, i) +
                    (digit < 0 ? " is not a Base64 digit" : " follows the padding"));
    }
    bits = (bits << 6) | static_cast<unsigned>(digit);
    count += 6;
    if (count >= 8) {
      count -= 8;
      bytes.push_back(static_cast<char>((bits >> count) & 0xFF));
    }
  }
  if (count >= 6) ThrowBadInput("bad Base64: the text ends inside an octet");
  return bytes;
}

std::string EncodeHex(std::string_view bytes) {
  static const char kDigits[] = "0123456789abcdef";
  std::string text;
  text.reserve(bytes.size() * 2);
  for (const char c : bytes) {
    const unsigned octet = static_cast<unsigned char>(c);
    text.push_back(kDigits[octet >> 4]);
    text.push_back(kDigits[octet & 0x0F]);
  }
  return text;
}

std::string TextFormHint(std::string_view input) {
  if (LooksLikeHex(input) || IsDump(input)) return " (the input looks like hex text: add --hex)";
  if (LooksLikeBase64(input)) return " (the input looks like Base64 text: add --base64)";
  return "";
}

}  // namespace velkor
