#include "tn_platform/asn/asn_value_io.h"

#include <memory>

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/ber.h"

std::size_t AsnDecodeFront(AsnType& value, std::string_view bytes) {
  return AsnDecodeFront(value, bytes, AsnDecodeBudget{});
}

std::size_t AsnDecodeFront(AsnType& value, std::string_view bytes, const AsnDecodeBudget& budget) {
  AsnBuf buf(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  buf.LimitListElements(budget.maxListElements);
  if (budget.violations != nullptr) buf.AcceptConstraintViolations();
  unsigned long bytesDecoded = 0;
  try {
    try {
      value.BDec(buf, bytesDecoded, NIClass_BER);
    } catch (AsnListTagError* raw) {
      const std::unique_ptr<AsnListTagError> refusal(raw);
      AsnThrowHeaderError(refusal->Header(), refusal->Expected(), buf);
    }
    // Of the values here only a list's header leaves the input's end to the
    // flag, when it ends inside the length (the list reads it as 0).
    if (buf.ReadError()) AsnThrowInputEnds(buf.End(), "input ends in the length");
  } catch (AsnDecodeError* error) {
    error->AddTypeName(value.typeName());
    throw;
  }
  if (budget.violations != nullptr) *budget.violations = AsnFindConstraintViolations(value);
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
