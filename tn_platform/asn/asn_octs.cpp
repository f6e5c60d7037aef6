#include "tn_platform/asn/asn_octs.h"

#include <cstring>
#include <iomanip>

#include "tn_platform/asn/asn_text_codes.h"

void AsnOcts::Set(const char* text) {
  if (text == nullptr) {
    m_content.Assign(nullptr, 0);
    return;
  }
  m_content.Assign(text, std::strlen(text));
}

unsigned long AsnOcts::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) {
  unsigned long written = BEncContent(buf);
  written += BEncDefLen(buf, written);
  return written + BEncTag(buf, kTagOctetString);
}

namespace {
// Appends the segments of a constructed OCTET STRING of content `length`
// (or indefinite) to `out`.
void DecodeSegments(AsnBuf& buf, unsigned long length, unsigned long& bytesDecoded, std::string& out) {
  // The value stays open while its segments are read, so that a segment
  // running past it is refused where its header is read.
  const AsnOpenValueGuard open(buf, AsnHolder::kSegments, length);
  const bool indefinite = length == kIndefiniteLength;
  const std::size_t end = indefinite ? 0 : buf.Offset() + length;
  unsigned long consumed = 0;
  while (indefinite ? !AtEoc(buf) : buf.Offset() < end) {
    if (buf.Remaining() == 0) {
      buf.ThrowInputEnds(buf.Offset(), indefinite ? std::string("input ends before the end-of-contents octets")
                                                  : "input ends " + AsnOctetCount(end - buf.Offset()) +
                                                        " short of the value");
    }
    const AsnHeader header = BDecHeader(
        buf, consumed, [](AsnTag tag) { return tag == kTagOctetString || tag == kTagOctetStringConstructed; },
        AsnLengthCheck::kNone);
    if (header.status == AsnHeader::kWrongTag) {
      AsnThrowDecodeError(header.start, "OCTET STRING segment with tag " + TagDescription(header.tag));
    }
    if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, kTagOctetString, buf);
    const unsigned long segmentLength = header.length;
    if (TagIsConstructed(header.tag)) {
      DecodeSegments(buf, segmentLength, consumed, out);
    } else {
      if (segmentLength == kIndefiniteLength) {
        AsnThrowDecodeError(header.start, "indefinite length on a primitive OCTET STRING");
      }
      const unsigned char* octets = buf.GetSeg(segmentLength);
      if (octets == nullptr) BDecLenPastInput(buf, segmentLength);
      out.append(reinterpret_cast<const char*>(octets), segmentLength);
      consumed += segmentLength;
    }
  }
  if (indefinite) BDecEoc(buf, consumed);
  bytesDecoded += consumed;
}

// The content of an OCTET STRING whose header was read; errors about the
// whole value are placed at `itemStart`.
void DecodeOctets(AsnOcts& value, AsnBuf& buf, AsnTag tag, unsigned long length, unsigned long& bytesDecoded,
                  std::size_t itemStart) {
  if (TagIsConstructed(tag)) {
    std::string octets;
    DecodeSegments(buf, length, bytesDecoded, octets);
    value.Set(octets.data(), octets.size());
    return;
  }
  if (length == kIndefiniteLength) AsnThrowDecodeError(itemStart, "indefinite length on a primitive OCTET STRING");
  const unsigned char* octets = buf.GetSeg(length);
  if (octets == nullptr) BDecLenPastInput(buf, length);
  value.Set(octets, length);
  bytesDecoded += length;
}
}  // namespace

void AsnOcts::BDecContent(AsnBuf& buf, AsnTag tag, unsigned long length, unsigned long& bytesDecoded) {
  DecodeOctets(*this, buf, tag, length, bytesDecoded, buf.ItemStart());
}

void AsnOcts::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) {
  const AsnHeader header = BDecHeader(buf, bytesDecoded, kTagOctetString, kTagOctetStringConstructed);
  if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, kTagOctetString, buf);
  DecodeOctets(*this, buf, header.tag, header.length, bytesDecoded, header.start);
}

namespace {

// Length of the UTF-8 sequence starting at `octets[i]` when it is a valid,
// shortest-form encoding of a character that is not a control character;
// 0 otherwise.
std::size_t TextCharLength(std::string_view octets, std::size_t i) {
  unsigned code = 0;
  const std::size_t length = asn_text::Utf8Length(octets.data() + i, octets.data() + octets.size(), &code);
  if (code < 0x20 || code == 0x7F || (code >= 0x80 && code < 0xA0)) return 0;  // C0, DEL and C1 controls
  return length;
}

}  // namespace

bool AsnOctetsAreText(std::string_view octets) {
  for (std::size_t i = 0; i < octets.size();) {
    const std::size_t length = TextCharLength(octets, i);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

void PrintOctets(std::ostream& os, std::string_view octets) {
  if (AsnOctetsAreText(octets)) {
    os << '"';
    for (const char c : octets) os << (c == '"' ? "\"\"" : std::string(1, c));
    os << '"';
    return;
  }
  const std::ios::fmtflags flags = os.flags();
  const char fill = os.fill();
  os << '\'';
  for (const char c : octets)
    os << std::hex << std::uppercase << std::setw(2) << std::setfill('0') << (static_cast<unsigned>(c) & 0xFF);
  os.flags(flags);
  os.fill(fill);
  os << "'H";
}

void AsnOcts::Print(std::ostream& os, unsigned long, bool) const { PrintOctets(os, m_content.view()); }
