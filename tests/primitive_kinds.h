// The value classes with their own codec, for tests and fuzz targets that name
// them: a value of any of them made by its name.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "tests/qprobe/qkinds.h"
#include "tn_platform/asn/asn_any.h"
#include "tn_platform/asn/asn_big_int.h"
#include "tn_platform/asn/asn_bit_string.h"
#include "tn_platform/asn/asn_char_string.h"
#include "tn_platform/asn/asn_enumerated.h"
#include "tn_platform/asn/asn_null.h"
#include "tn_platform/asn/asn_oid.h"
#include "tn_platform/asn/asn_real.h"
#include "tn_platform/asn/asn_time.h"

namespace test_kinds {

// The runtime's classes above and the generated ones of tests/qprobe/qkinds.asn
// that add names (an extensible ENUMERATED, one that is not, a named BIT
// STRING), by name, each with a function that makes a new value of it.
inline const std::map<std::string, std::function<AsnType*()>>& Kinds() {
  static const std::map<std::string, std::function<AsnType*()>> kTypes = {
      {"AsnNull", [] { return new AsnNull; }},
      {"AsnEnumerated", [] { return new AsnEnumerated; }},
      {"QKindColour", [] { return new qkinds::QKindColour; }},
      {"QKindsRecord_shade", [] { return new qkinds::QKindsRecord_shade; }},
      {"AsnBitString", [] { return new AsnBitString; }},
      {"QKindUsage", [] { return new qkinds::QKindUsage; }},
      {"AsnOid", [] { return new AsnOid; }},
      {"AsnRelativeOid", [] { return new AsnRelativeOid; }},
      {"AsnReal", [] { return new AsnReal; }},
      {"AsnBigInt", [] { return new AsnBigInt; }},
      {"AsnUtf8String", [] { return new AsnUtf8String; }},
      {"AsnNumericString", [] { return new AsnNumericString; }},
      {"AsnPrintableString", [] { return new AsnPrintableString; }},
      {"AsnTeletexString", [] { return new AsnTeletexString; }},
      {"AsnVideotexString", [] { return new AsnVideotexString; }},
      {"AsnIa5String", [] { return new AsnIa5String; }},
      {"AsnGraphicString", [] { return new AsnGraphicString; }},
      {"AsnVisibleString", [] { return new AsnVisibleString; }},
      {"AsnGeneralString", [] { return new AsnGeneralString; }},
      {"AsnUniversalString", [] { return new AsnUniversalString; }},
      {"AsnBmpString", [] { return new AsnBmpString; }},
      {"AsnObjectDescriptor", [] { return new AsnObjectDescriptor; }},
      {"AsnUtcTime", [] { return new AsnUtcTime; }},
      {"AsnGeneralizedTime", [] { return new AsnGeneralizedTime; }},
      {"AsnDate", [] { return new AsnDate; }},
      {"AsnTimeOfDay", [] { return new AsnTimeOfDay; }},
      {"AsnDateTime", [] { return new AsnDateTime; }},
      {"AsnDuration", [] { return new AsnDuration; }},
      {"AsnTime", [] { return new AsnTime; }},
      {"AsnAny", [] { return new AsnAny; }},
  };
  return kTypes;
}

// A new value of the type named `type`; null for a name Kinds() does not hold.
inline std::unique_ptr<AsnType> Create(const std::string& type) {
  const auto found = Kinds().find(type);
  return found == Kinds().end() ? nullptr : std::unique_ptr<AsnType>(found->second());
}

}  // namespace test_kinds
