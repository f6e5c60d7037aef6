#include "tn_platform/asn/asn_int.h"

#include <string>

namespace asn_integer {

unsigned long EncodeContent(AsnBuf& buf, std::int64_t value) {
  // Write octets from the least significant up, and stop once the rest is
  // pure sign extension of the octet just written (minimal form, X.690 8.3.2).
  auto rest = static_cast<std::uint64_t>(value);
  unsigned long count = 0;
  for (;;) {
    const auto octet = static_cast<unsigned char>(rest);
    buf.PutByteRvs(octet);
    ++count;
    const bool negative = (octet & 0x80) != 0;
    rest = static_cast<std::uint64_t>(static_cast<std::int64_t>(rest) >> 8);
    if (count == 8 || rest == (negative ? ~std::uint64_t{0} : 0)) return count;
  }
}

std::int64_t DecodeContent(AsnBuf& buf, unsigned long length, unsigned maxOctets, std::size_t itemStart) {
  // The messages are built on the failing paths only.
  const auto fail = [itemStart](const std::string& what) { AsnThrowDecodeError(itemStart, what); };
  if (length == kIndefiniteLength) fail("indefinite length on an INTEGER");
  if (length == 0) fail("INTEGER without content octets");
  const unsigned char* octets = buf.GetSeg(length);
  if (octets == nullptr) BDecLenPastInput(buf, length);
  if (length > 1 &&
      ((octets[0] == 0x00 && (octets[1] & 0x80) == 0) || (octets[0] == 0xFF && (octets[1] & 0x80) != 0))) {
    fail("INTEGER content is not minimal");
  }
  if (length > maxOctets) {
    fail("INTEGER of " + std::to_string(length) + " octets does not fit (at most " + std::to_string(maxOctets) + ")");
  }
  std::uint64_t value = (octets[0] & 0x80) ? ~std::uint64_t{0} : 0;
  for (unsigned long i = 0; i < length; ++i) value = (value << 8) | octets[i];
  return static_cast<std::int64_t>(value);
}

}  // namespace asn_integer

namespace {
// Decodes a complete INTEGER whose content must fit in `maxOctets` octets.
std::int64_t DecodeInteger(AsnBuf& buf, unsigned long& bytesDecoded, unsigned maxOctets) {
  const AsnHeader header = BDecHeader(buf, bytesDecoded, kTagInteger);
  if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, kTagInteger, buf);
  const std::int64_t value = asn_integer::DecodeContent(buf, header.length, maxOctets, header.start);
  bytesDecoded += header.length;
  return value;
}

unsigned long EncodeInteger(AsnBuf& buf, std::int64_t value) {
  unsigned long written = asn_integer::EncodeContent(buf, value);
  written += BEncDefLen(buf, written);
  return written + BEncTag(buf, kTagInteger);
}
}  // namespace

void AsnTinyInt::BDecContent(AsnBuf& buf, AsnTag, unsigned long length, unsigned long& bytesDecoded) {
  m_value = static_cast<int>(asn_integer::DecodeContent(buf, length, 4, AsnDecodeError::kUnplaced));
  bytesDecoded += length;
}

void AsnTinyInt::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) {
  m_value = static_cast<int>(DecodeInteger(buf, bytesDecoded, 4));
}

unsigned long AsnTinyInt::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) { return EncodeInteger(buf, m_value); }

void AsnTinyInt::Print(std::ostream& os, unsigned long, bool) const { os << m_value; }

void AsnInt::BDecContent(AsnBuf& buf, AsnTag, unsigned long length, unsigned long& bytesDecoded) {
  m_value = asn_integer::DecodeContent(buf, length, 8, AsnDecodeError::kUnplaced);
  bytesDecoded += length;
}

void AsnInt::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) {
  m_value = DecodeInteger(buf, bytesDecoded, 8);
}

unsigned long AsnInt::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) { return EncodeInteger(buf, m_value); }

void AsnInt::Print(std::ostream& os, unsigned long, bool) const { os << m_value; }
