#include "tn_platform/asn/asn_octs.h"

#include <cstring>
#include <iomanip>

#include "tn_platform/asn/asn_primitive.h"
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
// The content of an OCTET STRING whose header was read. The constructed form
// goes to the one segment reader of the string types; the primitive form,
// every decoded string's, is read here without its scratch text.
void DecodeOctets(AsnOcts& value, AsnBuf& buf, AsnTag tag, unsigned long length, unsigned long& bytesDecoded) {
  if (!TagIsConstructed(tag)) {
    const std::string_view octets = asn_primitive::ReadPrimitive(buf, tag, length, "OCTET STRING");
    value.Set(octets.data(), octets.size());
    bytesDecoded += length;
    return;
  }
  const std::size_t start = buf.Offset();
  std::string scratch;
  asn_primitive::ReadOctets(buf, tag, length, kTagOctetString, "OCTET STRING", scratch);
  value.Set(scratch.data(), scratch.size());
  bytesDecoded += buf.Offset() - start;
}
}  // namespace

void AsnOcts::BDecContent(AsnBuf& buf, AsnTag tag, unsigned long length, unsigned long& bytesDecoded) {
  DecodeOctets(*this, buf, tag, length, bytesDecoded);
}

void AsnOcts::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) {
  // A constructed value may run past the input: its segments are read as far
  // as the input goes, so that the error names the first that breaks.
  const AsnHeader header = BDecHeader(
      buf, bytesDecoded, [](AsnTag tag) { return tag == kTagOctetString || tag == kTagOctetStringConstructed; },
      AsnLengthCheck::kPrimitiveOnly);
  if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, kTagOctetString, buf);
  DecodeOctets(*this, buf, header.tag, header.length, bytesDecoded);
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
