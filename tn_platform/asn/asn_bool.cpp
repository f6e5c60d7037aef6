#include "tn_platform/asn/asn_bool.h"

namespace {
// The content octet of a BOOLEAN of `length` octets; errors are placed at
// `itemStart`.
bool DecodeBoolean(AsnBuf& buf, unsigned long length, std::size_t itemStart) {
  if (length != 1) AsnThrowDecodeError(itemStart, "BOOLEAN content is not one octet");
  const bool value = buf.GetByte() != 0;
  if (buf.ReadError()) BDecLenPastInput(buf, 1);
  return value;
}
}  // namespace

void AsnBool::BDecContent(AsnBuf& buf, AsnTag, unsigned long length, unsigned long& bytesDecoded) {
  m_value = DecodeBoolean(buf, length, buf.ItemStart());
  bytesDecoded += 1;
}

void AsnBool::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) {
  const AsnHeader header = BDecHeader(buf, bytesDecoded, kTagBoolean);
  if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, kTagBoolean, buf);
  m_value = DecodeBoolean(buf, header.length, header.start);
  bytesDecoded += 1;
}

unsigned long AsnBool::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) {
  const unsigned long content = BEncContent(buf);
  const unsigned long length = BEncDefLen(buf, content);
  return content + length + BEncTag(buf, kTagBoolean);
}

void AsnBool::Print(std::ostream& os, unsigned long, bool) const { os << (m_value ? "TRUE" : "FALSE"); }
