// JSON text itself, for the runtime's JSON reader: blanks, punctuation,
// literals, numbers, strings and keys, read in place from a span of text,
// and the errors about the text, placed at their octet. The reader's grammar
// (asn_json_reader.cpp) builds on it. Internal to the runtime.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_text_codes.h"
#include "tn_platform/asn/asn_value_io.h"

namespace asn_json_text {

// JSON nesting that no member plan explains (a comment's value) is refused
// beyond this. Values are limited by the levels their BER opens instead
// (AsnJsonGrammar), which their JSON nesting need not match.
constexpr unsigned kMaxJsonDepth = AsnDecodeLimits::kMaxDepth;

constexpr const asn_text::HexDigitValues& kHexValues = asn_text::kHexDigits;

inline bool IsBlank(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }
inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }

using asn_text::AppendUtf8;

// Octets of a string by what the string reader does with them: 0 copied as
// they are, else a closing quote, an escape, a control character or the
// start of a multi-octet UTF-8 sequence.
enum StringOctet : unsigned char { kPlain, kQuote, kEscape, kControl, kMultiOctet };
struct StringOctets {
  unsigned char classes[256];
  constexpr StringOctets() : classes() {
    for (int i = 0; i < 256; ++i) classes[i] = i < 0x20 ? kControl : i >= 0x80 ? kMultiOctet : kPlain;
    classes[static_cast<unsigned char>('"')] = kQuote;
    classes[static_cast<unsigned char>('\\')] = kEscape;
  }
};
constexpr StringOctets kStringOctets;

// Member names are short: compared with two loads that may overlap (the
// first and the last 4 or 8 octets), a longer name eight octets a step.
inline bool SameName(std::string_view name, const char* text) {
  std::size_t size = name.size();
  const char* known = name.data();
  if (size >= 4 && size <= 8) {
    std::uint32_t a[2];
    std::uint32_t b[2];
    std::memcpy(&a[0], known, 4);
    std::memcpy(&a[1], known + size - 4, 4);
    std::memcpy(&b[0], text, 4);
    std::memcpy(&b[1], text + size - 4, 4);
    return ((a[0] ^ b[0]) | (a[1] ^ b[1])) == 0;
  }
  for (; size >= 8; size -= 8, known += 8, text += 8) {
    std::uint64_t a;
    std::uint64_t b;
    std::memcpy(&a, known, 8);
    std::memcpy(&b, text, 8);
    if (a != b) return false;
  }
  for (; size > 0; --size) {
    if (*known++ != *text++) return false;
  }
  return true;
}

// True when none of the `size` octets at `at` is a control character, a
// backslash or beyond ASCII: text that stands in a JSON string as it is,
// checked eight octets a step.
inline bool IsPlainAscii(const char* at, std::size_t size) {
  constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
  constexpr std::uint64_t kHighs = 0x8080808080808080ULL;
  for (; size >= 8; size -= 8, at += 8) {
    std::uint64_t word;
    std::memcpy(&word, at, 8);
    const std::uint64_t backslashes = word ^ (kOnes * '\\');
    const std::uint64_t below = (word - kOnes * 0x20) & ~word & kHighs;
    if ((below | (word & kHighs) | ((backslashes - kOnes) & ~backslashes & kHighs)) != 0) return false;
  }
  for (; size > 0; --size, ++at) {
    if (kStringOctets.classes[static_cast<unsigned char>(*at)] != kPlain) return false;
  }
  return true;
}

// The text a reader reads: its state is copied in and, when a value is read
// whole, copied back.
class JsonText {
 public:
  JsonText(const char* begin, const char* at, const char* end, std::size_t base, bool jer, bool& endedEarly,
           std::string& scratch, std::string& key)
      : m_begin(begin),
        m_at(at),
        m_end(end),
        m_base(base),
        m_jer(jer),
        m_endedEarly(endedEarly),
        m_scratch(scratch),
        m_key(key) {}

  const char* At() const { return m_at; }

  [[noreturn]] void FailAt(const char* at, const std::string& what) {
    if (at >= m_end) {
      m_endedEarly = true;
      throw new AsnDecodeError(m_base + static_cast<std::size_t>(m_end - m_begin), "the text ends inside the value");
    }
    throw new AsnDecodeError(m_base + static_cast<std::size_t>(at - m_begin), what);
  }
  [[noreturn]] void Fail(const std::string& what) { FailAt(m_at, what); }

  // What stands at the current place, for messages: the kind of a JSON
  // value, else the character itself.
  std::string FoundText() {
    switch (Peek()) {
      case '{': return "an object";
      case '[': return "an array";
      case '"': return "a string";
      case 't':
      case 'f': return "a boolean";
      case 'n': return "null";
      default: break;
    }
    if (m_at == m_end) return "the end of the text";
    if (*m_at == '-' || IsDigit(*m_at)) return "a number";
    const unsigned char octet = static_cast<unsigned char>(*m_at);
    unsigned code = 0;
    const std::size_t length = octet >= 0x20 ? asn_text::Utf8Length(m_at, m_end, &code) : 0;
    if (length == 0 || octet == 0x7F) {
      static const char kDigits[] = "0123456789ABCDEF";
      return std::string("the octet 0x") + kDigits[octet >> 4] + kDigits[octet & 0x0F];
    }
    return "'" + std::string(m_at, length) + "'";
  }
  [[noreturn]] void FailExpected(const char* expected) {
    if (m_at >= m_end) FailAt(m_at, "");
    Fail(std::string("expected ") + expected + ", found " + FoundText());
  }

  void SkipBlanks() {
    // Compact text has no blanks: one comparison settles the common case.
    while (m_at != m_end && static_cast<unsigned char>(*m_at) <= ' ' && IsBlank(*m_at)) ++m_at;
  }
  char Peek() {
    SkipBlanks();
    return m_at == m_end ? '\0' : *m_at;
  }
  void Consume(char expected, const char* what) {
    if (Peek() != expected) FailExpected(what);
    ++m_at;
  }
  // Enters an object or array, past its opening bracket; leaves it past its
  // closing one.
  void Enter() { ++m_at; }
  void Leave() { ++m_at; }

  void ExpectLiteral(const char* literal) {
    const std::size_t length = std::strlen(literal);
    for (std::size_t i = 0; i < length; ++i) {
      if (m_at + i >= m_end) FailAt(m_end, "");
      if (m_at[i] != literal[i]) Fail("malformed literal (expected " + std::string(literal) + ")");
    }
    m_at += length;
  }

  bool ReadBool() {
    const char c = Peek();
    if (c == 't') {
      ExpectLiteral("true");
      return true;
    }
    if (c == 'f') {
      ExpectLiteral("false");
      return false;
    }
    FailExpected("true or false");
  }

  // A JSON number (or, readable, a string holding one) without fraction or
  // exponent, read exactly: the magnitude in 64 bits, overflow noted.
  long long ReadInteger(long long min, long long max) {
    const char quote = Peek();
    const bool quoted = quote == '"' && !m_jer;
    const char* const start = m_at;
    if (quoted) ++m_at;
    const char* const numberStart = m_at;
    const bool negative = m_at != m_end && *m_at == '-';
    if (negative) ++m_at;
    if (m_at == m_end) FailAt(m_at, "");
    if (!IsDigit(*m_at)) {
      m_at = start;
      if (quoted) FailAt(start, "expected an integer, found the string " + StringToken(start));
      FailExpected("an integer");
    }
    std::uint64_t magnitude = 0;
    bool overflow = false;
    if (*m_at == '0') {
      ++m_at;
      if (m_at != m_end && IsDigit(*m_at)) Fail("a number does not start with 0");
    } else {
      // Below kSafe no digit can overflow: the exact test (a division) is
      // left for the rare long number.
      constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
      constexpr std::uint64_t kSafe = (kMax - 9) / 10;
      while (m_at != m_end && IsDigit(*m_at)) {
        const unsigned digit = static_cast<unsigned>(*m_at - '0');
        if (magnitude > kSafe && magnitude > (kMax - digit) / 10) overflow = true;
        magnitude = magnitude * 10 + digit;
        ++m_at;
      }
    }
    if (m_at != m_end && (*m_at == '.' || *m_at == 'e' || *m_at == 'E')) {
      FailAt(start, "expected an integer, found a number with a fraction or exponent");
    }
    const char* const numberEnd = m_at;
    if (quoted) {
      if (m_at == m_end) FailAt(m_at, "");
      if (*m_at != '"') FailAt(start, "expected an integer, found a string that is no integer");
      ++m_at;
    }
    const std::uint64_t limit = negative ? static_cast<std::uint64_t>(-(min + 1)) + 1 : static_cast<std::uint64_t>(max);
    if (overflow || magnitude > limit) {
      FailAt(start, "integer " + std::string(numberStart, numberEnd) + " out of range (" + std::to_string(min) +
                        " to " + std::to_string(max) + ")");
    }
    return negative ? static_cast<long long>(0 - magnitude) : static_cast<long long>(magnitude);
  }

  // The content of the string at the current place: in the text when it
  // holds no escape (UTF-8 checked), else decoded into the scratch string.
  std::string_view ReadStringContent() {
    const char* const start = m_at + 1;
    // Mostly plain ASCII up to the closing quote.
    const auto* close = static_cast<const char*>(std::memchr(start, '"', static_cast<std::size_t>(m_end - start)));
    if (close != nullptr && IsPlainAscii(start, static_cast<std::size_t>(close - start))) {
      m_at = close + 1;
      return std::string_view(start, static_cast<std::size_t>(close - start));
    }
    const char* run = start;
    for (;;) {
      while (run != m_end && kStringOctets.classes[static_cast<unsigned char>(*run)] == kPlain) ++run;
      if (run == m_end) FailAt(run, "");
      const unsigned char octetClass = kStringOctets.classes[static_cast<unsigned char>(*run)];
      if (octetClass == kQuote) {
        m_at = run + 1;
        return std::string_view(start, static_cast<std::size_t>(run - start));
      }
      if (octetClass != kMultiOctet) break;
      unsigned code = 0;
      const std::size_t length = asn_text::Utf8Length(run, m_end, &code);
      if (length == 0) FailAt(run, "invalid UTF-8 in a string");
      run += length;
    }
    ReadString(m_scratch);  // escapes, or a control character refused
    return m_scratch;
  }

  // Reads the string at the current place into `text`, escapes decoded.
  void ReadString(std::string& text) {
    ++m_at;  // the opening quote
    text.clear();
    for (;;) {
      const char* run = m_at;
      while (run != m_end && kStringOctets.classes[static_cast<unsigned char>(*run)] == kPlain) ++run;
      text.append(m_at, run);
      m_at = run;
      if (m_at == m_end) FailAt(m_at, "");
      const unsigned char c = static_cast<unsigned char>(*m_at);
      if (c == '"') {
        ++m_at;
        return;
      }
      if (c < 0x20) Fail("control character in a string (write it as an escape)");
      if (c >= 0x80) {
        unsigned code = 0;
        const std::size_t length = asn_text::Utf8Length(m_at, m_end, &code);
        if (length == 0) Fail("invalid UTF-8 in a string");
        text.append(m_at, length);
        m_at += length;
        continue;
      }
      ReadEscape(text);
    }
  }

  // The digits of the hex string at the current place, checked: in the text
  // when it holds no escape, else decoded into the key string.
  std::string_view ReadHexDigits() {
    const char* const start = m_at;
    ++m_at;  // the opening quote
    const char* run = m_at;
    while (run != m_end && *run != '"' && *run != '\\') ++run;
    if (run == m_end) FailAt(run, "");
    std::string_view digits(m_at, static_cast<std::size_t>(run - m_at));
    const bool escaped = *run == '\\';
    if (escaped) {  // escaped digits are still digits
      m_at = start;
      ReadString(m_key);
      digits = m_key;
    } else {
      m_at = run + 1;
    }
    for (std::size_t i = 0; i < digits.size(); ++i) {
      if (kHexValues.values[static_cast<unsigned char>(digits[i])] < 0) {
        FailAt(escaped ? start : start + 1 + i, "'" + std::string(1, digits[i]) + "' is not a hex digit");
      }
    }
    if (digits.size() % 2 != 0) FailAt(start, "odd number of hex digits");
    return digits;
  }

  // A member name: read in place unless escaped.
  std::string_view ReadKey() {
    const char* const start = m_at + 1;
    const char* run = start;
    while (run != m_end && kStringOctets.classes[static_cast<unsigned char>(*run)] == kPlain) ++run;
    if (run != m_end && *run == '"') {
      m_at = run + 1;
      return std::string_view(start, static_cast<std::size_t>(run - start));
    }
    ReadString(m_key);
    return m_key;
  }
  // True when the key at the current place (its opening quote) is `name`
  // exactly, written without escapes.
  bool KeyIs(std::string_view name) const {
    return static_cast<std::size_t>(m_end - m_at) > name.size() + 1 && m_at[name.size() + 1] == '"' &&
           SameName(name, m_at + 1);
  }
  void SkipKey(std::string_view name) { m_at += name.size() + 2; }

  // Skips any JSON value (a comment's) at `depth` levels inside it.
  void SkipValue(unsigned depth = 0) {
    const char c = Peek();
    if (depth >= kMaxJsonDepth) Fail("nested too deeply");
    if (c == '"') {
      ReadString(m_key);
    } else if (c == '{' || c == '[') {
      const char close = c == '{' ? '}' : ']';
      ++m_at;
      if (Peek() == close) {
        ++m_at;
        return;
      }
      for (;;) {
        if (c == '{') {
          if (Peek() != '"') FailExpected("a member name");
          ReadString(m_key);
          Consume(':', "':'");
        }
        SkipValue(depth + 1);
        const char after = Peek();
        if (after == close) break;
        if (after != ',') FailExpected(c == '{' ? "',' or '}'" : "',' or ']'");
        ++m_at;
      }
      ++m_at;
    } else if (c == 't') {
      ExpectLiteral("true");
    } else if (c == 'f') {
      ExpectLiteral("false");
    } else if (c == 'n') {
      ExpectLiteral("null");
    } else if (c == '-' || IsDigit(c)) {
      SkipNumber();
    } else {
      FailExpected("a JSON value");
    }
  }

 protected:
  const char* m_begin;
  const char* m_at;
  const char* m_end;
  std::size_t m_base;
  const bool m_jer;
  bool& m_endedEarly;
  std::string& m_scratch;
  std::string& m_key;

 public:
  void SkipNumber() {
    if (*m_at == '-') ++m_at;
    if (m_at == m_end || !IsDigit(*m_at)) FailExpected("a digit");
    if (*m_at == '0') {
      ++m_at;
    } else {
      while (m_at != m_end && IsDigit(*m_at)) ++m_at;
    }
    if (m_at != m_end && *m_at == '.') {
      ++m_at;
      if (m_at == m_end || !IsDigit(*m_at)) FailExpected("a digit");
      while (m_at != m_end && IsDigit(*m_at)) ++m_at;
    }
    if (m_at != m_end && (*m_at == 'e' || *m_at == 'E')) {
      ++m_at;
      if (m_at != m_end && (*m_at == '+' || *m_at == '-')) ++m_at;
      if (m_at == m_end || !IsDigit(*m_at)) FailExpected("a digit");
      while (m_at != m_end && IsDigit(*m_at)) ++m_at;
    }
  }

 private:
  // The string token starting at `start` as it stands, for messages (a long
  // one cut short).
  std::string StringToken(const char* start) const {
    constexpr std::size_t kLongest = 40;
    const char* close = start + 1;
    while (close != m_end && *close != '"' && static_cast<std::size_t>(close - start) < kLongest) {
      close += *close == '\\' && close + 1 != m_end ? 2 : 1;
    }
    if (close != m_end && *close == '"') return std::string(start, close + 1);
    return std::string(start, close) + "...";
  }

  void ReadEscape(std::string& text) {
    if (m_at + 1 >= m_end) FailAt(m_end, "");
    const char kind = m_at[1];
    const char* const escape = m_at;
    m_at += 2;
    switch (kind) {
      case '"': text.push_back('"'); break;
      case '\\': text.push_back('\\'); break;
      case '/': text.push_back('/'); break;
      case 'b': text.push_back('\b'); break;
      case 'f': text.push_back('\f'); break;
      case 'n': text.push_back('\n'); break;
      case 'r': text.push_back('\r'); break;
      case 't': text.push_back('\t'); break;
      case 'u': {
        const auto unit = [&]() {
          unsigned value = 0;
          for (int i = 0; i < 4; ++i) {
            if (m_at == m_end) FailAt(m_at, "");
            const int digit = kHexValues.values[static_cast<unsigned char>(*m_at)];
            if (digit < 0) FailAt(escape, "malformed \\u escape");
            value = (value << 4) | static_cast<unsigned>(digit);
            ++m_at;
          }
          return value;
        };
        unsigned code = unit();
        if (code >= 0xDC00 && code <= 0xDFFF) FailAt(escape, "lone surrogate in a \\u escape");
        if (code >= 0xD800 && code <= 0xDBFF) {
          if (m_end - m_at < 2) FailAt(m_end, "");
          if (m_at[0] != '\\' || m_at[1] != 'u') FailAt(escape, "lone surrogate in a \\u escape");
          m_at += 2;
          const unsigned low = unit();
          if (low < 0xDC00 || low > 0xDFFF) FailAt(escape, "lone surrogate in a \\u escape");
          code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
        }
        AppendUtf8(text, code);
        break;
      }
      default:
        FailAt(escape, "malformed escape in a string");
    }
  }
};

}  // namespace asn_json_text

