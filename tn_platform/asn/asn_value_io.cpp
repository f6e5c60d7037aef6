#include "tn_platform/asn/asn_value_io.h"

#include <memory>

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/ber.h"

namespace {

// The outermost header, read again on a failing path to name what is wrong
// with it: a list's own BDec refuses a wrong tag in its own words (a
// CSM_Exception that is no AsnDecodeError) and reads a length cut short as 0.
AsnHeader OuterHeader(AsnBuf& buf) {
  unsigned long octets = 0;
  return BDecHeader(buf, octets, [](AsnTag tag) { return tag == kTagSequence; }, AsnLengthCheck::kPrimitiveOnly);
}

}  // namespace

std::size_t AsnDecodeFront(AsnType& value, std::string_view bytes) {
  return AsnDecodeFront(value, bytes, AsnDecodeBudget{});
}

std::size_t AsnDecodeFront(AsnType& value, std::string_view bytes, const AsnDecodeBudget& budget) {
  AsnBuf buf(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  buf.LimitListElements(budget.maxListElements);
  unsigned long bytesDecoded = 0;
  try {
    try {
      value.BDec(buf, bytesDecoded, NIClass_BER);
    } catch (AsnDecodeError*) {
      throw;
    } catch (CSM_Exception* raw) {
      const std::unique_ptr<CSM_Exception> refusal(raw);
      AsnBuf again(buf.Begin(), buf.End());
      const AsnHeader outer = OuterHeader(again);
      if (outer.status != AsnHeader::kComplete) AsnThrowHeaderError(outer, kTagSequence, again);
      AsnThrowDecodeError(0, refusal->Message());
    }
    if (buf.ReadError()) {
      AsnBuf again(buf.Begin(), buf.End());
      const AsnHeader outer = OuterHeader(again);
      if (outer.status == AsnHeader::kEndsInLength) AsnThrowHeaderError(outer, kTagSequence, again);
      AsnThrowInputEnds(buf.End(), "input ends early");
    }
  } catch (AsnDecodeError* error) {
    error->PlaceAt(0);
    error->AddTypeName(value.typeName());
    throw;
  }
  return buf.Offset();
}

void AsnDecodeValue(AsnType& value, std::string_view bytes) { AsnDecodeValue(value, bytes, AsnDecodeBudget{}); }

void AsnDecodeValue(AsnType& value, std::string_view bytes, const AsnDecodeBudget& budget) {
  const std::size_t used = AsnDecodeFront(value, bytes, budget);
  if (used != bytes.size()) {
    auto* error = new AsnDecodeError(used, AsnOctetCount(bytes.size() - used) + " left over after the value");
    error->AddTypeName(value.typeName());
    throw error;
  }
}

// BEnc is not const, as every value class declares it, but no value changes
// itself while it encodes.
std::string AsnEncodeValue(const AsnType& value) {
  AsnBuf buf;
  const_cast<AsnType&>(value).BEnc(buf, NIClass_BER);
  return buf.EncodedBytes();
}

std::string_view AsnEncodeInto(const AsnType& value, AsnBuf& buf) {
  buf.ClearEncoded();
  const_cast<AsnType&>(value).BEnc(buf, NIClass_BER);
  return buf.EncodedView();
}
