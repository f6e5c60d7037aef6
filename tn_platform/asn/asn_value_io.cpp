#include "tn_platform/asn/asn_value_io.h"

#include "tn_platform/asn/ber.h"
#include "tn_platform/asn/csm_exception.h"

std::size_t AsnDecodeFront(AsnType& value, std::string_view bytes) {
  AsnBuf buf(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  unsigned long bytesDecoded = 0;
  value.BDec(buf, bytesDecoded, NIClass_BER);
  if (buf.ReadError()) AsnThrowDecodeError(buf, std::string(value.typeName()) + ": input ends early");
  // A list stops once its elements reach its length and leaves an overrun to
  // the enclosing value; for the outermost value that is us.
  if (buf.LengthOverrun()) {
    AsnThrowDecodeError(buf, std::string(value.typeName()) + ": content does not match its length " +
                                 std::to_string(buf.OverrunLength()));
  }
  return buf.Offset();
}

void AsnDecodeValue(AsnType& value, std::string_view bytes) {
  const std::size_t used = AsnDecodeFront(value, bytes);
  if (used != bytes.size()) {
    AsnBuf at(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    at.Rewind(used);
    AsnThrowDecodeError(at, std::to_string(bytes.size() - used) + " octets left over after " + value.typeName());
  }
}

std::string AsnEncodeValue(AsnType& value) {
  AsnBuf buf;
  value.BEnc(buf, NIClass_BER);
  return buf.EncodedBytes();
}

std::string_view AsnEncodeInto(AsnType& value, AsnBuf& buf) {
  buf.ClearEncoded();
  value.BEnc(buf, NIClass_BER);
  return buf.EncodedView();
}
