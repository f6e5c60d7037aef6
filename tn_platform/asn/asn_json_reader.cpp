#include "tn_platform/asn/asn_json_reader.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_text_codes.h"
#include "tn_platform/asn/asn_value_kind.h"

namespace {

// JSON nesting that no member plan explains (a comment's value) is refused
// beyond this, as BER nesting is.
constexpr unsigned kMaxJsonDepth = AsnDecodeLimits::kMaxDepth;

constexpr const asn_text::HexDigitValues& kHexValues = asn_text::kHexDigits;

bool IsBlank(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t Utf8Length(const char* at, const char* end) {
  unsigned code = 0;
  return asn_text::Utf8Length(at, end, &code);
}

void AppendUtf8(std::string& out, unsigned code) {
  if (code < 0x80) {
    out.push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (code >> 6)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else if (code < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (code >> 12)));
    out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (code >> 18)));
    out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  }
}

// The members of one record already given, for the refusal of repeats and
// the check of mandatory members.
class GivenMembers {
 public:
  explicit GivenMembers(std::size_t count) {
    if (count > 64) m_more.assign(count, false);
  }
  // Marks member `index`; false when it was marked already.
  bool Mark(std::size_t index) {
    if (!m_more.empty()) {
      if (m_more[index]) return false;
      m_more[index] = true;
      return true;
    }
    const std::uint64_t bit = std::uint64_t{1} << index;
    if (m_bits & bit) return false;
    m_bits |= bit;
    return true;
  }
  bool Has(std::size_t index) const { return m_more.empty() ? (m_bits >> index) & 1 : m_more[index]; }

 private:
  std::uint64_t m_bits = 0;
  std::vector<bool> m_more;  // records of more than 64 members
};

}  // namespace

AsnJsonReader::AsnJsonReader(std::string_view text, AsnJsonForm form, std::size_t base)
    : m_begin(text.data()),
      m_at(text.data()),
      m_end(text.data() + text.size()),
      m_base(base),
      m_jer(form == AsnJsonForm::kJer) {}

void AsnReadJson(AsnType& value, std::string_view text, AsnJsonForm form) {
  AsnJsonReader reader(text, form);
  try {
    reader.ReadValue(value);
    if (reader.Peek() != '\0' || reader.Offset() != text.size()) reader.Fail("content after the value");
  } catch (AsnDecodeError* error) {
    error->AddTypeName(value.typeName());
    throw;
  }
}

// ---- errors ------------------------------------------------------------------

void AsnJsonReader::FailAt(const char* at, const std::string& what) {
  if (at >= m_end) {
    m_endedEarly = true;
    throw new AsnDecodeError(m_base + static_cast<std::size_t>(m_end - m_begin), "the text ends inside the value");
  }
  throw new AsnDecodeError(m_base + static_cast<std::size_t>(at - m_begin), what);
}

void AsnJsonReader::Fail(const std::string& what) { FailAt(m_at, what); }

// What stands at the current place, for messages ("an array").
std::string AsnJsonReader::FoundText() {
  switch (Peek()) {
    case '{': return "an object";
    case '[': return "an array";
    case '"': return "a string";
    case 't':
    case 'f': return "a boolean";
    case 'n': return "null";
    case '\0': return "the end of the text";
    default: break;
  }
  if (*m_at == '-' || IsDigit(*m_at)) return "a number";
  return "'" + std::string(1, *m_at) + "'";
}

void AsnJsonReader::FailExpected(const char* expected) {
  if (m_at >= m_end) FailAt(m_at, "");
  Fail(std::string("expected ") + expected + ", found " + FoundText());
}

// ---- structure -----------------------------------------------------------------

void AsnJsonReader::SkipBlanks() {
  while (m_at != m_end && IsBlank(*m_at)) ++m_at;
}

char AsnJsonReader::Peek() {
  SkipBlanks();
  return m_at == m_end ? '\0' : *m_at;
}

void AsnJsonReader::Consume(char expected, const char* what) {
  if (Peek() != expected) FailExpected(what);
  ++m_at;
}

void AsnJsonReader::ExpectLiteral(const char* literal) {
  const std::size_t length = std::strlen(literal);
  for (std::size_t i = 0; i < length; ++i) {
    if (m_at + i >= m_end) FailAt(m_end, "");
    if (m_at[i] != literal[i]) Fail("malformed literal (expected " + std::string(literal) + ")");
  }
  m_at += length;
}

void AsnJsonReader::ReadValue(AsnType& value) { Read(AsnKindOf(value), value); }

void AsnJsonReader::Read(AsnMemberKind kind, AsnType& value) {
  switch (kind) {
    case AsnMemberKind::kOcts:
      ReadOcts(static_cast<AsnOcts&>(value));
      break;
    case AsnMemberKind::kTinyInt:
      static_cast<AsnTinyInt&>(value).Set(static_cast<int>(
          ReadInteger(std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max())));
      break;
    case AsnMemberKind::kInt:
      static_cast<AsnInt&>(value).Set(
          ReadInteger(std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max()));
      break;
    case AsnMemberKind::kBool:
      static_cast<AsnBool&>(value).Set(ReadBool());
      break;
    case AsnMemberKind::kList:
      ReadList(static_cast<AsnListBase&>(value));
      break;
    case AsnMemberKind::kRecord:
      ReadRecord(static_cast<AsnSequence&>(value));
      break;
  }
}

void AsnJsonReader::ReadRecord(AsnSequence& record) {
  const AsnRecordPlan& plan = record.Plan();
  const std::vector<AsnMemberStep>& members = plan.members;
  void* const base = &record;
  const char* const start = (SkipBlanks(), m_at);
  if (Peek() != '{') FailExpected("an object");
  ++m_at;
  if (++m_depth > kMaxJsonDepth) FailAt(start, "nested too deeply");
  GivenMembers given(members.size());
  std::size_t next = 0;  // members mostly come in order: the next one is tried first
  if (Peek() != '}') {
    for (;;) {
      if (Peek() != '"') FailExpected("a member name");
      const char* const keyAt = m_at;
      const std::string_view key = ReadKey();
      Consume(':', "':'");
      std::size_t index = next;
      if (index >= members.size() || key != members[index].name) {
        index = 0;
        while (index < members.size() && key != members[index].name) ++index;
      }
      if (index == members.size()) {
        if (!m_jer && key.substr(0, 2) == "//") {  // a comment
          SkipValue(m_depth);
        } else {
          FailAt(keyAt, std::string(plan.className) + " has no member \"" + std::string(key) + "\"");
        }
      } else {
        const AsnMemberStep& member = members[index];
        try {
          if (!given.Mark(index)) FailAt(keyAt, "given twice");
          if (Peek() == 'n') {
            if (m_jer) Fail("null is no value in JER (leave an absent member out)");
            if (!member.optional) Fail("missing (a mandatory member)");
            ExpectLiteral("null");
            member.ResetIn(base);
          } else {
            Read(member.kind, *member.ValueOrCreateIn(base));
          }
        } catch (AsnDecodeError* error) {
          error->AddMember(member.name);
          throw;
        }
        next = index + 1;
      }
      const char c = Peek();
      if (c == '}') break;
      if (c != ',') FailExpected("',' or '}'");
      ++m_at;
    }
  }
  ++m_at;
  --m_depth;
  for (std::size_t index = 0; index < members.size(); ++index) {
    if (given.Has(index)) continue;
    const AsnMemberStep& member = members[index];
    if (member.optional) {
      member.ResetIn(base);
      continue;
    }
    auto* error = new AsnDecodeError(m_base + static_cast<std::size_t>(start - m_begin), "missing (a mandatory member)");
    error->AddMember(member.name);
    throw error;
  }
}

void AsnJsonReader::ReadList(AsnListBase& list) {
  const char* const start = (SkipBlanks(), m_at);
  if (Peek() != '[') FailExpected("an array");
  ++m_at;
  if (++m_depth > kMaxJsonDepth) FailAt(start, "nested too deeply");
  if (Peek() == ']') {
    ++m_at;
    --m_depth;
    return;
  }
  AsnMemberKind kind = AsnMemberKind::kRecord;
  for (unsigned long index = 0;; ++index) {
    try {
      AsnType& element = list.AppendElement();
      if (index == 0) kind = AsnKindOf(element);  // every element is of one type
      Read(kind, element);
    } catch (AsnDecodeError* error) {
      error->AddIndex(index);
      throw;
    }
    const char c = Peek();
    if (c == ']') break;
    if (c != ',') FailExpected("',' or ']'");
    ++m_at;
  }
  ++m_at;
  --m_depth;
}

// ---- values ------------------------------------------------------------------------

bool AsnJsonReader::ReadBool() {
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

long long AsnJsonReader::ReadInteger(long long min, long long max) {
  // A JSON number (or, readable, a string holding one) without fraction or
  // exponent, read exactly: the magnitude in 64 bits, overflow noted.
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
    if (quoted) Fail("expected an integer, found the string " + std::string(start, std::min<std::size_t>(m_end - start, 24)));
    FailExpected("an integer");
  }
  std::uint64_t magnitude = 0;
  bool overflow = false;
  if (*m_at == '0') {
    ++m_at;
    if (m_at != m_end && IsDigit(*m_at)) Fail("a number does not start with 0");
  } else {
    while (m_at != m_end && IsDigit(*m_at)) {
      const unsigned digit = static_cast<unsigned>(*m_at - '0');
      if (magnitude > (std::numeric_limits<std::uint64_t>::max() - digit) / 10) overflow = true;
      magnitude = magnitude * 10 + digit;
      ++m_at;
    }
  }
  if (m_at != m_end && (*m_at == '.' || *m_at == 'e' || *m_at == 'E')) {
    FailAt(start, "expected an integer, found a number with a fraction or exponent");
  }
  const std::string text(numberStart, m_at);
  if (quoted) {
    if (m_at == m_end) FailAt(m_at, "");
    if (*m_at != '"') FailAt(start, "expected an integer, found a string that is no integer");
    ++m_at;
  }
  const std::uint64_t limit = negative ? static_cast<std::uint64_t>(-(min + 1)) + 1 : static_cast<std::uint64_t>(max);
  if (overflow || magnitude > limit) {
    FailAt(start, "integer " + text + " out of range (" + std::to_string(min) + " to " + std::to_string(max) + ")");
  }
  return negative ? static_cast<long long>(0 - magnitude) : static_cast<long long>(magnitude);
}

void AsnJsonReader::ReadOcts(AsnOcts& octets) {
  const char c = Peek();
  if (m_jer) {
    if (c != '"') FailExpected("a string of hex digits");
    ReadHexString(m_scratch);
  } else if (c == '"') {
    ReadString(m_scratch);
  } else if (c == '{') {
    // {"hex": "..."}: the readable form of octets that are not text.
    const char* const start = m_at;
    ++m_at;
    if (Peek() != '"' || ReadKey() != "hex") FailAt(start, "expected a string or {\"hex\": \"...\"}");
    Consume(':', "':'");
    if (Peek() != '"') FailExpected("a string of hex digits");
    ReadHexString(m_scratch);
    if (Peek() != '}') FailAt(start, "expected a string or {\"hex\": \"...\"}");
    ++m_at;
  } else {
    FailExpected("a string or {\"hex\": \"...\"}");
  }
  octets.Set(m_scratch.data(), m_scratch.size());
}

void AsnJsonReader::ReadHexString(std::string& octets) {
  const char* const start = m_at;
  ++m_at;  // the opening quote
  octets.clear();
  const char* run = m_at;
  while (run != m_end && *run != '"' && *run != '\\') ++run;
  if (run == m_end) FailAt(run, "");
  std::string_view digits(m_at, static_cast<std::size_t>(run - m_at));
  if (*run == '\\') {  // escaped digits are still digits
    m_at = start;
    ReadString(m_key);
    digits = m_key;
  } else {
    m_at = run + 1;
  }
  const bool escaped = digits.data() == m_key.data();
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (kHexValues.values[static_cast<unsigned char>(digits[i])] < 0) {
      const char* at = escaped ? start : start + 1 + i;
      FailAt(at, "'" + std::string(1, digits[i]) + "' is not a hex digit");
    }
  }
  if (digits.size() % 2 != 0) FailAt(start, "odd number of hex digits");
  octets.resize(digits.size() / 2);
  char* write = octets.data();
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    *write++ = static_cast<char>((kHexValues.values[static_cast<unsigned char>(digits[i])] << 4) |
                                 kHexValues.values[static_cast<unsigned char>(digits[i + 1])]);
  }
}

void AsnJsonReader::ReadString(std::string& text) {
  ++m_at;  // the opening quote
  text.clear();
  for (;;) {
    const char* run = m_at;
    while (run != m_end) {
      const unsigned char c = static_cast<unsigned char>(*run);
      if (c == '"' || c == '\\' || c < 0x20 || c >= 0x80) break;
      ++run;
    }
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
      const std::size_t length = Utf8Length(m_at, m_end);
      if (length == 0) Fail("invalid UTF-8 in a string");
      text.append(m_at, length);
      m_at += length;
      continue;
    }
    // An escape.
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
}

std::string_view AsnJsonReader::ReadKey() {
  // Keys are member names: plain text, read in place unless escaped.
  const char* const start = m_at + 1;
  const char* run = start;
  while (run != m_end && *run != '"' && *run != '\\' && static_cast<unsigned char>(*run) >= 0x20 &&
         static_cast<unsigned char>(*run) < 0x80)
    ++run;
  if (run != m_end && *run == '"') {
    m_at = run + 1;
    return std::string_view(start, static_cast<std::size_t>(run - start));
  }
  ReadString(m_key);
  return m_key;
}

void AsnJsonReader::SkipValue(unsigned depth) {
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
    // Any JSON number.
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
  } else {
    FailExpected("a JSON value");
  }
}
