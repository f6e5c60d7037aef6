#include "tn_platform/asn/asn_int.h"

#include <string>

namespace asn_integer {

namespace {
// Out of line, so that the decoding path stays small enough to inline.
[[noreturn]] __attribute__((noinline, cold)) void ThrowIntegerFault(AsnIntegerFault fault, unsigned long length,
                                                                    unsigned maxOctets, std::size_t itemStart) {
  AsnThrowDecodeError(itemStart, fault == AsnIntegerFault::kEmpty        ? std::string("INTEGER without content octets")
                                 : fault == AsnIntegerFault::kNotMinimal ? std::string("INTEGER content is not minimal")
                                                                         : "INTEGER of " + std::to_string(length) +
                                                                               " octets does not fit (at most " +
                                                                               std::to_string(maxOctets) + ")");
}
}  // namespace

[[gnu::always_inline]] inline std::int64_t DecodeIntegerContent(AsnBuf& buf, unsigned long length,
                                                                unsigned maxOctets, std::size_t itemStart) {
  if (length == kIndefiniteLength) AsnThrowDecodeError(itemStart, "indefinite length on an INTEGER");
  const unsigned char* octets = buf.GetSeg(length);
  if (octets == nullptr) BDecLenPastInput(buf, length);
  const AsnIntegerFault fault = AsnCheckInteger(octets, length, maxOctets);
  if (fault != AsnIntegerFault::kNone) ThrowIntegerFault(fault, length, maxOctets, itemStart);
  return AsnReadInteger(octets, length);
}

std::int64_t DecodeContent(AsnBuf& buf, unsigned long length, unsigned maxOctets, std::size_t itemStart) {
  return DecodeIntegerContent(buf, length, maxOctets, itemStart);
}

}  // namespace asn_integer

namespace {
// Decodes a complete INTEGER whose content must fit in `maxOctets` octets.
std::int64_t DecodeInteger(AsnBuf& buf, unsigned long& bytesDecoded, unsigned maxOctets) {
  const AsnHeader header = BDecHeader(buf, bytesDecoded, kTagInteger);
  if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, kTagInteger, buf);
  const std::int64_t value = asn_integer::DecodeIntegerContent(buf, header.length, maxOctets, header.start);
  bytesDecoded += header.length;
  return value;
}

unsigned long EncodeContent(AsnBuf& buf, std::int64_t value) {
  const unsigned octets = AsnIntegerOctets(value);
  AsnWriteInteger(buf.ReserveFront(octets), value, octets);
  return octets;
}

unsigned long EncodeInteger(AsnBuf& buf, std::int64_t value) {
  unsigned long written = EncodeContent(buf, value);
  written += BEncDefLen(buf, written);
  return written + BEncTag(buf, kTagInteger);
}
}  // namespace

void AsnTinyInt::BDecContent(AsnBuf& buf, AsnTag, unsigned long length, unsigned long& bytesDecoded) {
  m_value = static_cast<int>(asn_integer::DecodeContent(buf, length, 4, buf.ItemStart()));
  bytesDecoded += length;
}

void AsnTinyInt::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) {
  m_value = static_cast<int>(DecodeInteger(buf, bytesDecoded, 4));
}

unsigned long AsnTinyInt::BEncContent(AsnBuf& buf) const { return EncodeContent(buf, m_value); }

unsigned long AsnTinyInt::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) { return EncodeInteger(buf, m_value); }

void AsnTinyInt::Print(std::ostream& os, unsigned long, bool) const { os << m_value; }

void AsnInt::BDecContent(AsnBuf& buf, AsnTag, unsigned long length, unsigned long& bytesDecoded) {
  m_value = asn_integer::DecodeContent(buf, length, 8, buf.ItemStart());
  bytesDecoded += length;
}

void AsnInt::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) {
  m_value = DecodeInteger(buf, bytesDecoded, 8);
}

unsigned long AsnInt::BEncContent(AsnBuf& buf) const { return EncodeContent(buf, m_value); }

unsigned long AsnInt::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) { return EncodeInteger(buf, m_value); }

void AsnInt::Print(std::ostream& os, unsigned long, bool) const { os << m_value; }
