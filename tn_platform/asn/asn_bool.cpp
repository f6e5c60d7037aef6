#include "tn_platform/asn/asn_bool.h"

void AsnBool::BDecContent(AsnBuf& buf, AsnTag, unsigned long length, unsigned long& bytesDecoded) {
  if (length != 1) AsnThrowDecodeError(buf, "AsnBool: BOOLEAN content is not one octet");
  m_value = buf.GetByte() != 0;
  if (buf.ReadError()) AsnThrowDecodeError(buf, "AsnBool: BOOLEAN runs past the input");
  bytesDecoded += 1;
}

void AsnBool::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) {
  const AsnHeader header = BDecHeader(buf, bytesDecoded, kTagBoolean);
  if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(buf, header, "AsnBool");
  BDecContent(buf, header.tag, header.length, bytesDecoded);
}

unsigned long AsnBool::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) {
  BEncContent(buf);
  buf.PutByteRvs(1);
  return 2 + BEncTag(buf, kTagBoolean);
}

void AsnBool::Print(std::ostream& os, unsigned long, bool) const { os << (m_value ? "TRUE" : "FALSE"); }
