#include "tn_platform/asn/asn_value_io.h"

#include <memory>

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/ber.h"

namespace {

// A value's own BDec refuses in its own words only a list's wrong tag (a
// CSM_Exception that is not an AsnDecodeError): says what the header holds.
[[noreturn]] void ThrowOuterHeaderError(std::string_view bytes, const CSM_Exception& refusal) {
  AsnBuf buf(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  unsigned long octets = 0;
  AsnHeader header;
  header.tag = BDecTag(buf, octets);
  header.status = buf.ReadError() ? AsnHeader::kEndsBeforeTag : AsnHeader::kWrongTag;
  if (header.status == AsnHeader::kWrongTag && header.tag == kTagSequence) AsnThrowDecodeError(0, refusal.Message());
  AsnThrowHeaderError(header, kTagSequence);
}

}  // namespace

std::size_t AsnDecodeFront(AsnType& value, std::string_view bytes) {
  AsnBuf buf(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  unsigned long bytesDecoded = 0;
  try {
    try {
      value.BDec(buf, bytesDecoded, NIClass_BER);
    } catch (AsnDecodeError*) {
      throw;
    } catch (CSM_Exception* raw) {
      const std::unique_ptr<CSM_Exception> refusal(raw);
      ThrowOuterHeaderError(bytes, *refusal);
    }
    // A list stops once its elements reach its length and leaves an overrun
    // to the enclosing value; for the outermost value that is us.
    if (buf.LengthOverrun()) buf.ThrowLengthOverrun();
    if (buf.ReadError()) {
      // A list's own BDec reads an outer length cut short as 0, as lists
      // do; the header says where the input broke.
      AsnBuf again(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
      unsigned long octets = 0;
      const AsnHeader outer = BDecHeader(again, octets, [](AsnTag) { return true; }, AsnLengthCheck::kPrimitiveOnly);
      if (outer.status == AsnHeader::kEndsInLength) AsnThrowHeaderError(outer, outer.tag);
      AsnThrowDecodeError(buf.Offset(), "input ends early");
    }
  } catch (AsnDecodeError* error) {
    error->PlaceAt(0);
    error->AddTypeName(value.typeName());
    throw;
  }
  return buf.Offset();
}

void AsnDecodeValue(AsnType& value, std::string_view bytes) {
  const std::size_t used = AsnDecodeFront(value, bytes);
  if (used != bytes.size()) {
    auto* error = new AsnDecodeError(used, AsnOctetCount(bytes.size() - used) + " left over after the value");
    error->AddTypeName(value.typeName());
    throw error;
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
