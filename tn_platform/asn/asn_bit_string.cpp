#include "tn_platform/asn/asn_bit_string.h"

#include <cstring>
#include <ostream>
#include <vector>

#include "tn_platform/asn/asn_text_codes.h"

void AsnBitString::Set(const void* data, std::size_t bits) {
  m_octets.assign(static_cast<const char*>(data), (bits + 7) / 8);
  m_unused = static_cast<unsigned char>(m_octets.size() * 8 - bits);
  if (m_unused != 0) m_octets.back() = static_cast<char>(m_octets.back() & (0xFF << m_unused));
}

bool AsnBitString::Bit(std::size_t index) const {
  if (index >= BitCount()) return false;
  return (static_cast<unsigned char>(m_octets[index / 8]) >> (7 - index % 8)) & 1;
}

void AsnBitString::SetBit(std::size_t index, bool value) {
  if (index >= BitCount()) {
    if (!value) return;
    m_octets.resize(index / 8 + 1, '\0');
    m_unused = static_cast<unsigned char>(7 - index % 8);
  }
  const auto mask = static_cast<unsigned char>(0x80 >> (index % 8));
  auto& octet = reinterpret_cast<unsigned char&>(m_octets[index / 8]);
  octet = value ? (octet | mask) : (octet & ~mask);
}

std::size_t AsnBitString::EncodedBits() const {
  std::size_t count = 0;
  NamedBits(count);
  if (count == 0) return BitCount();
  std::size_t bits = BitCount();
  while (bits > 0 && !Bit(bits - 1)) --bits;
  return bits;
}

unsigned long AsnBitString::ContentLength() const { return 1 + (EncodedBits() + 7) / 8; }

unsigned char* AsnBitString::WriteContent(unsigned char* out) const {
  const std::size_t bits = EncodedBits();
  const std::size_t octets = (bits + 7) / 8;
  *out++ = static_cast<unsigned char>(octets * 8 - bits);
  if (octets != 0) std::memcpy(out, m_octets.data(), octets);
  return out + octets;
}

void AsnBitString::AssignFrom(const AsnPrimitive& other) {
  const auto& source = static_cast<const AsnBitString&>(other);
  m_octets = source.m_octets;
  m_unused = source.m_unused;
}

void AsnBitString::DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) {
  const std::size_t at = buf.ItemStart();
  std::string scratch;
  std::vector<asn_primitive::Segment> segments;
  const std::string_view content =
      asn_primitive::ReadOctets(buf, tag, length, kUniversalTag, "BIT STRING", scratch, &segments);
  if (!TagIsConstructed(tag)) segments.push_back({at, 0});
  // Each segment starts with its count of unused bits; only the last may have any.
  std::string octets;
  unsigned unused = 0;
  for (std::size_t i = 0; i < segments.size(); ++i) {
    const std::size_t begin = segments[i].contentStart;
    const std::size_t end = i + 1 < segments.size() ? segments[i + 1].contentStart : content.size();
    if (begin == end) asn_primitive::Refuse(segments[i].itemStart, "BIT STRING without its unused-bits octet");
    unused = static_cast<unsigned char>(content[begin]);
    if (unused > 7) {
      asn_primitive::Refuse(segments[i].itemStart, "BIT STRING with " + std::to_string(unused) + " unused bits (at most 7)");
    }
    if (unused != 0 && end - begin == 1) asn_primitive::Refuse(segments[i].itemStart, "BIT STRING of no bits with unused bits");
    if (unused != 0 && i + 1 < segments.size()) {
      asn_primitive::Refuse(segments[i].itemStart, "BIT STRING segment with unused bits before the last segment");
    }
    octets.append(content.substr(begin + 1, end - begin - 1));
  }
  if (segments.empty()) unused = 0;
  m_octets.swap(octets);
  m_unused = static_cast<unsigned char>(unused);
  if (m_unused != 0) m_octets.back() = static_cast<char>(m_octets.back() & (0xFF << m_unused));
}

void AsnBitString::Print(std::ostream& os, unsigned long, bool) const {
  std::size_t count = 0;
  const AsnNamedBit* names = NamedBits(count);
  if (count != 0) {
    // { name, name } when every set bit has a name.
    std::string list;
    bool named = true;
    for (std::size_t bit = 0; bit < BitCount() && named; ++bit) {
      if (!Bit(bit)) continue;
      named = false;
      for (std::size_t i = 0; i < count; ++i) {
        if (names[i].bit == bit) {
          list += (list.empty() ? " " : ", ") + std::string(names[i].name);
          named = true;
        }
      }
    }
    if (named) {
      os << '{' << list << (list.empty() ? "}" : " }");
      return;
    }
  }
  os << '\'';
  for (std::size_t bit = 0; bit < EncodedBits(); ++bit) os << (Bit(bit) ? '1' : '0');
  os << "'B";
}

void AsnBitString::WriteJson(AsnJsonOut& out) const {
  const std::size_t written = EncodedBits();
  if (!out.Jer()) {
    std::string bits;
    for (std::size_t bit = 0; bit < written; ++bit) bits.push_back(Bit(bit) ? '1' : '0');
    out.String(bits);
    return;
  }
  out.BeginObject();
  out.Key("value");
  out.Hex(m_octets.substr(0, (written + 7) / 8));
  out.Key("length");
  out.Integer(static_cast<long long>(written));
  out.EndObject();
}

void AsnBitString::ReadJson(AsnJsonIn& in) {
  if (!in.Jer()) {
    if (in.Peek() != AsnJsonIn::Token::kString) in.FailExpected("a string of 0 and 1");
    const std::string bits = in.String();
    AsnBitString read;
    for (std::size_t i = 0; i < bits.size(); ++i) {
      if (bits[i] != '0' && bits[i] != '1') in.Fail("a bit string holds only 0 and 1");
    }
    read.m_octets.assign((bits.size() + 7) / 8, '\0');
    read.m_unused = static_cast<unsigned char>(read.m_octets.size() * 8 - bits.size());
    for (std::size_t i = 0; i < bits.size(); ++i) read.SetBit(i, bits[i] == '1');
    AssignFrom(read);
    return;
  }
  if (in.Peek() != AsnJsonIn::Token::kObject) in.FailExpected("{\"value\": ..., \"length\": ...}");
  in.BeginObject();
  std::string hex;
  long long length = -1;
  bool haveValue = false;
  for (std::string key; in.NextKey(key);) {
    if (key == "value" && !haveValue) {
      if (in.Peek() != AsnJsonIn::Token::kString) in.FailExpected("a string of hex digits");
      hex = in.String();
      haveValue = true;
    } else if (key == "length" && length < 0) {
      length = in.Integer(0, 0x7FFFFFFF);
    } else {
      in.Fail("a bit string has only \"value\" and \"length\", each once");
    }
  }
  if (!haveValue || length < 0) in.Fail("a bit string needs \"value\" and \"length\"");
  std::string octets;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    const int high = asn_text::kHexDigits.values[static_cast<unsigned char>(hex[i])];
    const int low = asn_text::kHexDigits.values[static_cast<unsigned char>(hex[i + 1])];
    if ((high | low) < 0) in.Fail("\"value\" is not hex digits");
    octets.push_back(static_cast<char>(high << 4 | low));
  }
  if (hex.size() % 2 != 0) in.Fail("\"value\" has an odd number of hex digits");
  const auto bits = static_cast<std::size_t>(length);
  if ((bits + 7) / 8 != octets.size()) in.Fail("\"length\" " + std::to_string(bits) + " does not fit \"value\"");
  Set(octets.data(), bits);
}
