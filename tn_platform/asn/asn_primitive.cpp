#include "tn_platform/asn/asn_primitive.h"

#include <iomanip>
#include <ostream>

void AsnPrimitive::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) {
  const std::size_t start = buf.Offset();
  const AsnTag universal = UniversalTag();
  const bool constructedAllowed = ConstructedAllowed();
  unsigned long counted = 0;
  AsnHeader header;
  if (universal == kAsnOpenTag) {
    // Any tag but end-of-contents.
    header = BDecHeader(buf, counted, [](AsnTag tag) { return tag != 0; }, AsnLengthCheck::kPrimitiveOnly);
  } else {
    const AsnTag constructed = constructedAllowed ? TagWithForm(universal, true) : universal;
    header = BDecHeader(
        buf, counted, [&](AsnTag tag) { return tag == universal || tag == constructed; },
        AsnLengthCheck::kPrimitiveOnly);
  }
  if (header.status == AsnHeader::kWrongTag && universal == kAsnOpenTag) {
    AsnThrowDecodeError(header.start, "end-of-contents where a value belongs");
  }
  if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, universal, buf);
  const std::size_t contentStart = buf.Offset();
  DecodeContent(buf, header.tag, header.length);
  if (header.length != kIndefiniteLength && buf.Offset() != contentStart + header.length) {
    AsnThrowDecodeError(header.start, "content does not match its length");
  }
  bytesDecoded += buf.Offset() - start;
}

unsigned long AsnPrimitive::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) {
  const AsnTag tag = UniversalTag();
  const unsigned long size = EncodedSize(tag);
  WriteEncoded(buf.ReserveFront(size), tag);
  return size;
}

unsigned long AsnPrimitive::EncodedSize(AsnTag tag) const {
  const unsigned long length = ContentLength();
  return tag == kAsnOpenTag ? length : AsnEncodedSize(tag, length);
}

unsigned char* AsnPrimitive::WriteEncoded(unsigned char* out, AsnTag tag) const {
  if (tag != kAsnOpenTag) out = AsnWriteHeader(out, tag, ContentLength());
  return WriteContent(out);
}

namespace asn_primitive {

void Refuse(std::size_t itemStart, const std::string& what) { AsnThrowDecodeError(itemStart, what); }

void RefuseIndefinite(std::size_t itemStart, const char* typeName, bool segment) {
  AsnThrowDecodeError(itemStart,
                      std::string("indefinite length on a primitive ") + typeName + (segment ? " segment" : ""));
}

namespace {

// Appends the segments of a constructed value of content `length` (or
// indefinite), each a `segmentTag` value in either form, to `out`.
void ReadSegments(AsnBuf& buf, unsigned long length, AsnTag segmentTag, const char* typeName, std::string& out,
                  std::vector<Segment>* segments) {
  const AsnOpenValueGuard open(buf, AsnHolder::kSegments, length);
  const bool indefinite = length == kIndefiniteLength;
  const std::size_t end = indefinite ? 0 : buf.Offset() + length;
  const AsnTag constructedSegment = TagWithForm(segmentTag, true);
  unsigned long counted = 0;
  while (indefinite ? !AtEoc(buf) : buf.Offset() < end) {
    if (buf.Remaining() == 0) {
      buf.ThrowInputEnds(buf.Offset(), indefinite ? std::string("input ends before the end-of-contents octets")
                                                  : "input ends " + AsnOctetCount(end - buf.Offset()) +
                                                        " short of the value");
    }
    const AsnHeader header = BDecHeader(
        buf, counted, [&](AsnTag tag) { return tag == segmentTag || tag == constructedSegment; },
        AsnLengthCheck::kNone);
    if (header.status == AsnHeader::kWrongTag) {
      AsnThrowDecodeError(header.start, std::string(typeName) + " segment with tag " + TagDescription(header.tag));
    }
    if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, segmentTag, buf);
    if (TagIsConstructed(header.tag)) {
      ReadSegments(buf, header.length, segmentTag, typeName, out, segments);
      continue;
    }
    if (header.length == kIndefiniteLength) RefuseIndefinite(header.start, typeName, true);
    const unsigned char* octets = buf.GetSeg(header.length);
    if (octets == nullptr) BDecLenPastInput(buf, header.length);
    if (segments != nullptr) segments->push_back(Segment{header.start, out.size()});
    out.append(reinterpret_cast<const char*>(octets), header.length);
  }
  if (indefinite) BDecEoc(buf, counted);
}

}  // namespace

std::string_view ReadOctets(AsnBuf& buf, AsnTag tag, unsigned long length, AsnTag segmentTag, const char* typeName,
                            std::string& scratch, std::vector<Segment>* segments) {
  if (!TagIsConstructed(tag)) return ReadPrimitive(buf, tag, length, typeName);
  scratch.clear();
  ReadSegments(buf, length, segmentTag, typeName, scratch, segments);
  return scratch;
}

void PrintHex(std::ostream& os, std::string_view octets) {
  static const char kDigits[] = "0123456789ABCDEF";
  os << '\'';
  for (const char c : octets) {
    const auto octet = static_cast<unsigned char>(c);
    os << kDigits[octet >> 4] << kDigits[octet & 0x0F];
  }
  os << "'H";
}

void PrintQuoted(std::ostream& os, std::string_view text) {
  os << '"';
  for (const char c : text) {
    if (c == '"') os << '"';
    os << c;
  }
  os << '"';
}

}  // namespace asn_primitive
