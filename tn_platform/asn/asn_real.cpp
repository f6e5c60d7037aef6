#include "tn_platform/asn/asn_real.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <ostream>

namespace {

// The shortest text that reads back as `value` (finite): "1.5", "1e+100".
std::string ShortestText(double value) {
  char text[32];
  const auto result = std::to_chars(text, text + sizeof text, value);
  return std::string(text, result.ptr);
}

// A decimal number of the decimal forms: [blanks][sign]digits[(.|,)digits][(E|e)[sign]digits].
bool ReadDecimal(std::string_view text, double& value) {
  std::size_t at = 0;
  while (at < text.size() && text[at] == ' ') ++at;
  std::string number;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
    if (text[at] == '-') number.push_back('-');
    ++at;
  }
  bool digits = false;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (c >= '0' && c <= '9') {
      digits = true;
      number.push_back(c);
    } else if (c == '.' || c == ',' || c == 'e' || c == 'E' || c == '+' || c == '-') {
      number.push_back(c == ',' ? '.' : c);
    } else {
      return false;
    }
  }
  if (!digits) return false;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  return result.ec == std::errc() && result.ptr == number.data() + number.size();
}

}  // namespace

bool AsnReal::operator==(const AsnReal& other) const {
  if (std::isnan(m_value) || std::isnan(other.m_value)) return std::isnan(m_value) && std::isnan(other.m_value);
  return m_value == other.m_value && std::signbit(m_value) == std::signbit(other.m_value);
}

unsigned AsnReal::Encode(unsigned char* content) const {
  if (std::isnan(m_value)) {
    content[0] = 0x42;
    return 1;
  }
  if (std::isinf(m_value)) {
    content[0] = m_value > 0 ? 0x40 : 0x41;
    return 1;
  }
  if (m_value == 0) {
    if (!std::signbit(m_value)) return 0;
    content[0] = 0x43;
    return 1;
  }
  // |value| = mantissa * 2^exponent, the mantissa odd.
  int binaryExponent = 0;
  const double fraction = std::frexp(std::fabs(m_value), &binaryExponent);
  auto mantissa = static_cast<std::uint64_t>(std::ldexp(fraction, 53));
  long long exponent = binaryExponent - 53;
  while ((mantissa & 1) == 0) {
    mantissa >>= 1;
    ++exponent;
  }
  const unsigned exponentOctets = AsnIntegerOctets(exponent);
  unsigned char* out = content;
  *out++ = static_cast<unsigned char>(0x80 | (m_value < 0 ? 0x40 : 0) | (exponentOctets - 1));
  out = AsnWriteInteger(out, exponent, exponentOctets);
  unsigned mantissaOctets = 1;
  while (mantissaOctets < 8 && (mantissa >> (8 * mantissaOctets)) != 0) ++mantissaOctets;
  for (unsigned i = mantissaOctets; i-- > 0;) *out++ = static_cast<unsigned char>(mantissa >> (8 * i));
  return static_cast<unsigned>(out - content);
}

unsigned long AsnReal::ContentLength() const {
  unsigned char content[16];
  return Encode(content);
}

unsigned char* AsnReal::WriteContent(unsigned char* out) const { return out + Encode(out); }

void AsnReal::DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) {
  const std::size_t at = buf.ItemStart();
  const std::string_view content = asn_primitive::ReadPrimitive(buf, tag, length, "REAL");
  if (content.empty()) {
    m_value = 0.0;
    return;
  }
  const auto* octets = reinterpret_cast<const unsigned char*>(content.data());
  const unsigned first = octets[0];
  if ((first & 0xC0) == 0x40) {
    if (content.size() != 1) asn_primitive::Refuse(at, "REAL special value with more than one octet");
    switch (first) {
      case 0x40: m_value = HUGE_VAL; return;
      case 0x41: m_value = -HUGE_VAL; return;
      case 0x42: m_value = std::nan(""); return;
      case 0x43: m_value = -0.0; return;
      default: asn_primitive::Refuse(at, "REAL special value " + std::to_string(first) + " is reserved");
    }
  }
  if ((first & 0x80) == 0) {
    const unsigned form = first & 0x3F;
    if (form < 1 || form > 3) asn_primitive::Refuse(at, "REAL decimal form " + std::to_string(form) + " is reserved");
    double value = 0;
    if (!ReadDecimal(content.substr(1), value)) asn_primitive::Refuse(at, "REAL decimal form is no number");
    m_value = value;
    return;
  }
  // Binary: sign, base, scale factor, exponent format, exponent, mantissa.
  const unsigned baseCode = (first >> 4) & 0x03;
  if (baseCode == 3) asn_primitive::Refuse(at, "REAL base code 3 is reserved");
  const unsigned scale = (first >> 2) & 0x03;
  std::size_t exponentAt = 1;
  std::size_t exponentOctets = (first & 0x03) + 1;
  if ((first & 0x03) == 3) {
    if (content.size() < 2) asn_primitive::Refuse(at, "REAL content ends inside the exponent");
    exponentOctets = octets[1];
    exponentAt = 2;
    if (exponentOctets == 0) asn_primitive::Refuse(at, "REAL exponent of no octets");
  }
  if (exponentAt + exponentOctets > content.size()) asn_primitive::Refuse(at, "REAL content ends inside the exponent");
  if (exponentAt + exponentOctets == content.size()) asn_primitive::Refuse(at, "REAL without mantissa octets");
  if (exponentOctets > 8) asn_primitive::Refuse(at, "REAL exponent beyond 64 bits");
  long long exponent = AsnReadInteger(octets + exponentAt, exponentOctets);
  double mantissa = 0;
  for (std::size_t i = exponentAt + exponentOctets; i < content.size(); ++i) mantissa = mantissa * 256 + octets[i];
  const int bitsPerDigit = baseCode == 0 ? 1 : baseCode == 1 ? 3 : 4;
  // Far beyond a double's range either way: clamp, the result is 0 or infinite alike.
  exponent = std::max(-100000LL, std::min(100000LL, exponent));
  const double value = std::ldexp(mantissa, static_cast<int>(exponent * bitsPerDigit + scale));
  m_value = (first & 0x40) != 0 ? -value : value;
}

void AsnReal::Print(std::ostream& os, unsigned long, bool) const {
  if (std::isnan(m_value)) {
    os << "NOT-A-NUMBER";
  } else if (std::isinf(m_value)) {
    os << (m_value > 0 ? "PLUS-INFINITY" : "MINUS-INFINITY");
  } else if (m_value == 0 && std::signbit(m_value)) {
    os << "-0";
  } else {
    // A realnumber takes no '+' in its exponent.
    std::string text = ShortestText(m_value);
    const std::size_t plus = text.find("e+");
    if (plus != std::string::npos) text.erase(plus + 1, 1);
    const std::size_t e = text.find('e');
    if (e != std::string::npos) text[e] = 'E';
    os << text;
  }
}

void AsnReal::WriteJson(AsnJsonOut& out) const {
  if (std::isnan(m_value)) {
    out.String("NaN");
  } else if (std::isinf(m_value)) {
    out.String(m_value > 0 ? "INF" : "-INF");
  } else if (m_value == 0 && std::signbit(m_value)) {
    out.String("-0");
  } else {
    out.Number(ShortestText(m_value));
  }
}

void AsnReal::ReadJson(AsnJsonIn& in) {
  if (in.Peek() == AsnJsonIn::Token::kString) {
    const std::string text = in.String();
    if (text == "INF") {
      m_value = HUGE_VAL;
    } else if (text == "-INF") {
      m_value = -HUGE_VAL;
    } else if (text == "NaN") {
      m_value = std::nan("");
    } else if (text == "-0") {
      m_value = -0.0;
    } else {
      in.Fail("a REAL string is \"INF\", \"-INF\", \"NaN\" or \"-0\"");
    }
    return;
  }
  if (in.Peek() != AsnJsonIn::Token::kNumber) in.FailExpected("a number");
  const std::string text = in.Number();
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc() || std::isinf(value)) in.Fail("number " + text + " is beyond a REAL's range");
  m_value = value;
}
