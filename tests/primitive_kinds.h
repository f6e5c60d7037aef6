// The value classes with their own codec, for tests and fuzz targets that name
// them: what generated code would add to them (an enumeration's names, a bit
// string's named bits), and a value of any of them made by its name.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

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

// What generated code supplies: an enumeration's names, a bit string's named bits.
class Colour : public AsnEnumerated {
 public:
  static constexpr char kTypeName[] = "Colour";
  const AsnEnumeratedName* Names(std::size_t& count) const override {
    static const AsnEnumeratedName kNames[] = {{0, "red"}, {1, "green"}, {2, "blue"}};
    count = 3;
    return kNames;
  }
  bool Extensible() const override { return false; }
  AsnType* Clone() const override { return new Colour(*this); }
  const char* typeName() const override { return kTypeName; }
};

// Colour, ... : numbers beyond the names are kept.
class OpenColour final : public Colour {
 public:
  static constexpr char kTypeName[] = "OpenColour";
  bool Extensible() const override { return true; }
  AsnType* Clone() const override { return new OpenColour(*this); }
  const char* typeName() const override { return kTypeName; }
};

class KeyUsage final : public AsnBitString {
 public:
  static constexpr char kTypeName[] = "KeyUsage";
  const AsnNamedBit* NamedBits(std::size_t& count) const override {
    static const AsnNamedBit kBits[] = {{0, "digitalSignature"}, {1, "nonRepudiation"}, {2, "keyEncipherment"}};
    count = 3;
    return kBits;
  }
  AsnType* Clone() const override { return new KeyUsage(*this); }
  const char* typeName() const override { return kTypeName; }
};

// The runtime's classes above and the ones here, by name, each with a
// function that makes a new value of it.
inline const std::map<std::string, std::function<AsnType*()>>& Kinds() {
  static const std::map<std::string, std::function<AsnType*()>> kTypes = {
      {"AsnNull", [] { return new AsnNull; }},
      {"AsnEnumerated", [] { return new AsnEnumerated; }},
      {"Colour", [] { return new Colour; }},
      {"OpenColour", [] { return new OpenColour; }},
      {"AsnBitString", [] { return new AsnBitString; }},
      {"KeyUsage", [] { return new KeyUsage; }},
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
