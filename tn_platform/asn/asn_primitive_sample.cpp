#include "tn_platform/asn/asn_primitive_sample.h"

#include <cstring>

#include "tn_platform/asn/asn_json_reader.h"

namespace {

struct Sample {
  const char* asnType;  // AsnTypeName()
  const char* jer;
};

constexpr Sample kSamples[] = {
    {"OBJECT IDENTIFIER", "\"1.2\""},
    {"RELATIVE-OID", "\"1\""},
    {"UTCTime", "\"000101000000Z\""},
    {"GeneralizedTime", "\"20000101000000Z\""},
    {"DATE", "\"2000-01-01\""},
    {"TIME-OF-DAY", "\"00:00:00\""},
    {"DATE-TIME", "\"2000-01-01T00:00:00\""},
    {"DURATION", "\"P1D\""},
    {"TIME", "\"T00:00Z\""},
    {"ANY", "\"0500\""},
};

}  // namespace

void AsnGiveSampleValue(AsnPrimitive& value) {
  for (const Sample& sample : kSamples) {
    if (std::strcmp(value.AsnTypeName(), sample.asnType) == 0) {
      AsnReadJson(value, sample.jer, AsnJsonForm::kJer);
      return;
    }
  }
}
