#include "tn_platform/asn/ber.h"

#include <cstdio>

#include "tn_platform/asn/asn_decode_error.h"

unsigned TagNumber(AsnTag tag) {
  const unsigned first = TagFirstOctet(tag);
  if ((first & 0x1F) != 0x1F) return first & 0x1F;
  unsigned number = 0;
  for (unsigned i = 0; i < kAsnMaxSubsequentTagOctets; ++i) {
    const unsigned octet = (tag >> (8 * (2 - i))) & 0xFF;
    number = (number << 7) | (octet & 0x7F);
    if ((octet & 0x80) == 0) break;
  }
  return number;
}

std::string TagToString(AsnTag tag) {
  static const char* const kClassNames[] = {"UNIVERSAL ", "APPLICATION ", "", "PRIVATE "};
  const unsigned classIndex = TagFirstOctet(tag) >> 6;
  return "[" + std::string(kClassNames[classIndex]) + std::to_string(TagNumber(tag)) + "] " +
         (TagIsConstructed(tag) ? "constructed" : "primitive");
}

const char* UniversalTagName(unsigned number) {
  switch (number) {
    case 1:
      return "BOOLEAN";
    case 2:
      return "INTEGER";
    case 3:
      return "BIT STRING";
    case 4:
      return "OCTET STRING";
    case 5:
      return "NULL";
    case 6:
      return "OBJECT IDENTIFIER";
    case 10:
      return "ENUMERATED";
    case 12:
      return "UTF8String";
    case 16:
      return "SEQUENCE";
    case 17:
      return "SET";
    case 19:
      return "PrintableString";
    case 22:
      return "IA5String";
    case 23:
      return "UTCTime";
    case 24:
      return "GeneralizedTime";
    default:
      return nullptr;
  }
}

std::string TagDescription(AsnTag tag) {
  std::string text = TagToString(tag);
  if (tag == 0) return text + " (end-of-contents)";
  if (TagClassOf(tag) == AsnTagClass::kUniversal) {
    if (const char* name = UniversalTagName(TagNumber(tag))) text += std::string(" (") + name + ")";
  }
  return text;
}

unsigned long BEncHighTag(AsnBuf& buf, AsnTag tag) {
  const unsigned long count = AsnHighTagOctets(tag);
  for (unsigned long i = count; i-- > 0;) buf.PutByteRvs(static_cast<unsigned char>(tag >> (24 - 8 * i)));
  return count;
}

unsigned AsnHighTagOctets(AsnTag tag) {
  // Identifier octets stand in the packed tag from bit 31 down; the last one
  // is the first octet without bit 8 set after the first identifier octet.
  unsigned count = 1;
  for (unsigned i = 0; i < kAsnMaxSubsequentTagOctets; ++i) {
    ++count;
    if ((((tag >> (8 * (2 - i))) & 0x80) == 0)) break;
  }
  return count;
}

unsigned long BEncDefLenImpl(AsnBuf& buf, unsigned long length) {
  // At least one length octet: a bare 0x80 would read back as the indefinite
  // form (X.690 8.1.3.5).
  unsigned long count = 0;
  unsigned long rest = length;
  do {
    buf.PutByteRvs(static_cast<unsigned char>(rest));
    ++count;
    rest >>= 8;
  } while (rest != 0);
  buf.PutByteRvs(static_cast<unsigned char>(0x80 | count));
  return count + 1;
}

void BDecTag_Impl(AsnBuf& buf, unsigned long& bytesDecoded, unsigned int& tag) {
  const std::size_t start = buf.Offset() - 1;  // the first identifier octet, already read
  for (unsigned i = 0; i < kAsnMaxSubsequentTagOctets; ++i) {
    const unsigned octet = buf.GetByte();
    ++bytesDecoded;
    if (buf.ReadError()) return;
    if (i == 0 && octet == 0x80) AsnThrowDecodeError(start, "high tag number form with a leading 0x80 octet");
    // A number below 31 has exactly one identifier octet (X.690 8.1.2.2);
    // a longer number never starts with 0x80, so it is at least 128.
    if (i == 0 && octet < 31) {
      AsnThrowDecodeError(start, "high tag number form used for tag number " + std::to_string(octet) + " (below 31)");
    }
    tag |= octet << (8 * (2 - i));
    if ((octet & 0x80) == 0) return;
  }
  AsnThrowDecodeError(start, "tag number does not fit in 32 bits");
}

unsigned long BDecLen_Impl(AsnBuf& buf, unsigned long& bytesDecoded, unsigned char first, std::size_t itemStart) {
  if (first == 0x80) return kIndefiniteLength;
  if (first == 0xFF) AsnThrowDecodeError(itemStart, "length octet 0xFF is reserved");
  // Up to 126 length octets (X.690 8.1.3.5); leading zero octets add nothing,
  // so only the value has to fit.
  const unsigned octets = first & 0x7Fu;
  unsigned long length = 0;
  unsigned significant = 0;
  for (unsigned i = 0; i < octets; ++i) {
    const unsigned char octet = buf.GetByte();
    ++bytesDecoded;
    if (buf.ReadError()) return 0;
    if (significant == 0 && octet == 0) continue;
    if (++significant > AsnDecodeLimits::kMaxLengthOctets) {
      AsnThrowDecodeError(itemStart, "length does not fit in " +
                                         std::to_string(8 * AsnDecodeLimits::kMaxLengthOctets) + " bits");
    }
    length = (length << 8) | octet;
  }
  // No input holds 2^63 octets; refusing such a length here (the one that
  // reads like the indefinite form's marker among them) also keeps every
  // content end, offset + length, from overflowing.
  if (length > kMaxContentLength) {
    AsnThrowDecodeError(itemStart, "length " + std::to_string(length) + " runs past the input (" +
                                       AsnOctetCount(buf.Remaining()) + " left)");
  }
  return length;
}

void BDecLenPastInput(const AsnBuf& buf, unsigned long length) {
  buf.ThrowInputEnds(buf.ItemStart(), "input ends " + AsnOctetCount(length - buf.Remaining()) + " short of the value");
}

void AsnThrowHeaderError(const AsnHeader& header, AsnTag expected, const AsnBuf& buf) {
  switch (header.status) {
    case AsnHeader::kEndsBeforeTag:
      buf.ThrowInputEnds(header.start,
                         header.start == buf.End() ? "input ends before the tag" : "input ends in the tag");
    case AsnHeader::kWrongTag:
      AsnThrowDecodeError(header.start,
                          "wrong tag " + TagDescription(header.tag) + ", expected " + TagDescription(expected));
    default:
      buf.ThrowInputEnds(header.start, "input ends in the length");
  }
}

void BDecEoc(AsnBuf& buf, unsigned long& bytesDecoded) {
  const std::size_t start = buf.Offset();
  if (buf.Remaining() == 0) buf.ThrowInputEnds(start, "input ends before the end-of-contents octets");
  if (buf.Remaining() == 1) buf.ThrowInputEnds(start, "input ends in the end-of-contents octets");
  const std::size_t limit = buf.Limit();
  if (limit != kAsnNoEnd && (start >= limit || limit - start < 2)) buf.ThrowRunsPast(start, AsnBuf::Overrun::kItem);
  const unsigned char first = buf.GetByte();
  const unsigned char second = buf.GetByte();
  if (first != 0 || second != 0) AsnThrowDecodeError(start, "end-of-contents octets are not 00 00");
  bytesDecoded += 2;
}

bool AtEoc(const AsnBuf& buf) {
  // Tag octet 0x00 is reserved for end-of-contents (X.690 8.1.5).
  unsigned char octet = 0;
  return buf.PeekByte(octet) && octet == 0;
}

std::string AsnListOverrunText(unsigned long length) {
  return "element runs past the end of its list (content length " + std::to_string(length) + ")";
}
