#include "tn_platform/asn/asn_bool.h"

void AsnBool::BDecContent(AsnBuf& buf, AsnTag, unsigned long length, unsigned long& bytesDecoded) {
  if (length != 1) AsnThrowDecodeError(buf, "AsnBool: BOOLEAN content is not one octet");
  m_value = buf.GetByte() != 0;
  if (buf.ReadError()) AsnThrowDecodeError(buf, "AsnBool: BOOLEAN runs past the input");
  bytesDecoded += 1;
}

void AsnBool::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) {
  const AsnTag tag = BDecTag(buf, bytesDecoded);
  if (buf.ReadError()) AsnThrowDecodeError(buf, "AsnBool: input ends before the tag");
  if (tag != kTagBoolean) AsnThrowDecodeError(buf, "AsnBool: wrong tag " + TagToString(tag));
  const unsigned long length = BDecLen(buf, bytesDecoded);
  if (buf.ReadError()) AsnThrowDecodeError(buf, "AsnBool: input ends in the length");
  BDecContent(buf, tag, length, bytesDecoded);
}

unsigned long AsnBool::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) {
  BEncContent(buf);
  buf.PutByteRvs(1);
  return 2 + BEncTag(buf, kTagBoolean);
}

void AsnBool::Print(std::ostream& os, unsigned long, bool) const { os << (m_value ? "TRUE" : "FALSE"); }
