#include "tn_platform/asn/asn_big_int.h"

#include <algorithm>
#include <cstring>
#include <ostream>
#include <vector>

namespace {

// Two's-complement negation of big-endian octets, in place.
void Negate(std::string& octets) {
  unsigned carry = 1;
  for (std::size_t i = octets.size(); i-- > 0;) {
    const unsigned sum = (~static_cast<unsigned char>(octets[i]) & 0xFFu) + carry;
    octets[i] = static_cast<char>(sum & 0xFF);
    carry = sum >> 8;
  }
}

// Drops leading octets that only repeat the sign.
void Minimise(std::string& octets) {
  std::size_t drop = 0;
  while (drop + 1 < octets.size()) {
    const auto head = static_cast<unsigned char>(octets[drop]);
    const auto next = static_cast<unsigned char>(octets[drop + 1]);
    if (!((head == 0x00 && (next & 0x80) == 0) || (head == 0xFF && (next & 0x80) != 0))) break;
    ++drop;
  }
  octets.erase(0, drop);
}

}  // namespace

void AsnBigInt::Set(long long value) {
  const unsigned octets = AsnIntegerOctets(value);
  m_content.resize(octets);
  AsnWriteInteger(reinterpret_cast<unsigned char*>(&m_content[0]), value, octets);
}

bool AsnBigInt::SetContent(std::string_view octets) {
  const auto* data = reinterpret_cast<const unsigned char*>(octets.data());
  if (AsnCheckInteger(data, octets.size(), octets.size()) != AsnIntegerFault::kNone) return false;
  m_content.assign(octets);
  return true;
}

std::string AsnBigInt::ToDecimal() const {
  const bool negative = (static_cast<unsigned char>(m_content[0]) & 0x80) != 0;
  std::string magnitude = m_content;
  if (negative) Negate(magnitude);
  // Repeated division by 10^9 of the big-endian magnitude.
  std::vector<unsigned char> digits(magnitude.begin(), magnitude.end());
  std::string text;
  for (;;) {
    unsigned long long remainder = 0;
    bool zero = true;
    for (unsigned char& octet : digits) {
      const unsigned long long current = (remainder << 8) | octet;
      octet = static_cast<unsigned char>(current / 1000000000ULL);
      remainder = current % 1000000000ULL;
      zero = zero && octet == 0;
    }
    std::string chunk = std::to_string(remainder);
    if (!zero) chunk.insert(0, 9 - chunk.size(), '0');
    text.insert(0, chunk);
    if (zero) break;
  }
  return negative ? "-" + text : text;
}

bool AsnBigInt::SetDecimal(std::string_view text) {
  const bool negative = !text.empty() && text[0] == '-';
  const std::string_view digits = text.substr(negative ? 1 : 0);
  if (digits.empty() || (digits[0] == '0' && digits.size() > 1)) return false;
  // Magnitude, big-endian, one spare octet for the sign.
  std::string magnitude(1, '\0');
  for (const char c : digits) {
    if (c < '0' || c > '9') return false;
    unsigned carry = static_cast<unsigned>(c - '0');
    for (std::size_t i = magnitude.size(); i-- > 0;) {
      const unsigned product = static_cast<unsigned char>(magnitude[i]) * 10u + carry;
      magnitude[i] = static_cast<char>(product & 0xFF);
      carry = product >> 8;
    }
    if (carry != 0) magnitude.insert(0, 1, static_cast<char>(carry));
    if (static_cast<unsigned char>(magnitude[0]) != 0) magnitude.insert(0, 1, '\0');
  }
  if (negative) Negate(magnitude);
  Minimise(magnitude);
  m_content.swap(magnitude);
  return true;
}

unsigned char* AsnBigInt::WriteContent(unsigned char* out) const {
  std::memcpy(out, m_content.data(), m_content.size());
  return out + m_content.size();
}

void AsnBigInt::DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) {
  const std::size_t at = buf.ItemStart();
  const std::string_view content = asn_primitive::ReadPrimitive(buf, tag, length, "INTEGER");
  if (content.empty()) asn_primitive::Refuse(at, "INTEGER without content octets");
  if (!SetContent(content)) asn_primitive::Refuse(at, "INTEGER content is not minimal");
}

void AsnBigInt::Print(std::ostream& os, unsigned long, bool) const { os << ToDecimal(); }

void AsnBigInt::WriteJson(AsnJsonOut& out) const {
  if (out.Jer()) {
    out.Number(ToDecimal());
  } else {
    out.String(ToDecimal());
  }
}

void AsnBigInt::ReadJson(AsnJsonIn& in) {
  const AsnJsonIn::Token token = in.Peek();
  std::string text;
  if (token == AsnJsonIn::Token::kNumber) {
    text = in.Number();
  } else if (token == AsnJsonIn::Token::kString && !in.Jer()) {
    text = in.String();
  } else {
    in.FailExpected("an integer");
  }
  if (!SetDecimal(text)) in.Fail("expected an integer, found " + text);
}
