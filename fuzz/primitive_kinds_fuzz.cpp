// The value classes with their own codec (NULL, ENUMERATED, BIT STRING, the
// identifiers, REAL, big INTEGERs, the strings, the times, open values): the
// first octet picks a class, the rest is read as BER and as JSON text in both
// forms. A refusal is a located AsnDecodeError; what is accepted is stable:
// its DER decodes to the same DER, and its JSON in either form reads back to it.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>

#include "fuzz/fuzz_common.h"
#include "tn_platform/asn/asn_any.h"
#include "tn_platform/asn/asn_big_int.h"
#include "tn_platform/asn/asn_bit_string.h"
#include "tn_platform/asn/asn_char_string.h"
#include "tn_platform/asn/asn_enumerated.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_null.h"
#include "tn_platform/asn/asn_oid.h"
#include "tn_platform/asn/asn_real.h"
#include "tn_platform/asn/asn_time.h"

namespace {

AsnPrimitive* Create(std::uint8_t pick) {
  switch (pick % 28) {
    case 0: return new AsnNull;
    case 1: return new AsnEnumerated;
    case 2: return new AsnBitString;
    case 3: return new AsnOid;
    case 4: return new AsnRelativeOid;
    case 5: return new AsnReal;
    case 6: return new AsnBigInt;
    case 7: return new AsnUtf8String;
    case 8: return new AsnNumericString;
    case 9: return new AsnPrintableString;
    case 10: return new AsnTeletexString;
    case 11: return new AsnVideotexString;
    case 12: return new AsnIa5String;
    case 13: return new AsnGraphicString;
    case 14: return new AsnVisibleString;
    case 15: return new AsnGeneralString;
    case 16: return new AsnUniversalString;
    case 17: return new AsnBmpString;
    case 18: return new AsnObjectDescriptor;
    case 19: return new AsnUtcTime;
    case 20: return new AsnGeneralizedTime;
    case 21: return new AsnDate;
    case 22: return new AsnTimeOfDay;
    case 23: return new AsnDateTime;
    case 24: return new AsnDuration;
    case 25: return new AsnTime;
    default: return new AsnAny;
  }
}

// `value`'s DER decodes to the same DER; its JSON reads back to it.
void Stable(std::uint8_t pick, const AsnPrimitive& value) {
  const std::string der = AsnEncodeValue(value);
  const std::unique_ptr<AsnPrimitive> again(Create(pick));
  if (!FuzzDecode(*again, der) || AsnEncodeValue(*again) != der) std::abort();
  std::ostringstream printed;
  value.Print(printed, 0, false);
  for (const AsnJsonForm form : {AsnJsonForm::kReadable, AsnJsonForm::kJer}) {
    const std::string json = AsnToJson(value, form);
    const std::unique_ptr<AsnPrimitive> read(Create(pick));
    AsnReadJson(*read, json, form);  // an exception here escapes: a finding
    if (AsnEncodeValue(*read) != der) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto create = [](std::uint8_t pick) { return std::unique_ptr<AsnPrimitive>(Create(pick)); };
  return FuzzValueReaders(data, size, create, Stable);
}
