// AsnReal: a REAL value held as a double, PLUS-INFINITY, MINUS-INFINITY,
// NOT-A-NUMBER and minus zero included. Decoding takes the binary forms
// (base 2, 8 and 16, any scale factor and exponent length) and the decimal
// forms NR1, NR2 and NR3; encoding writes DER: base 2, the mantissa odd, zero
// as no content. JSON (both forms) writes a number, or "INF", "-INF", "NaN"
// and "-0"; value notation 1.5, -2.5E-3, PLUS-INFINITY, MINUS-INFINITY,
// NOT-A-NUMBER and -0.
#pragma once
#pragma GCC visibility push(default)

#include <string>

#include "tn_platform/asn/asn_primitive.h"

class AsnReal : public AsnPrimitive {
 public:
  static constexpr AsnTag kUniversalTag = MakeTag(AsnTagClass::kUniversal, false, 9);
  static constexpr bool kConstructedAllowed = false;
  static constexpr char kTypeName[] = "AsnReal";

  AsnReal() = default;
  AsnReal(double value) : m_value(value) {}  // NOLINT: implicit, like the double it holds
  double Value() const { return m_value; }
  void Set(double value) { m_value = value; }
  // Same value, NaN equal to NaN and -0 not equal to 0.
  bool operator==(const AsnReal& other) const;

  AsnType* Clone() const override { return new AsnReal(*this); }
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  const char* typeName() const override { return kTypeName; }
  AsnTag UniversalTag() const override { return kUniversalTag; }
  const char* AsnTypeName() const override { return "REAL"; }
  void DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) override;
  unsigned long ContentLength() const override;
  unsigned char* WriteContent(unsigned char* out) const override;
  void AssignFrom(const AsnPrimitive& other) override { m_value = static_cast<const AsnReal&>(other).m_value; }
  void WriteJson(AsnJsonOut& out) const override;
  void ReadJson(AsnJsonIn& in) override;

 private:
  // The DER content, in at most 12 octets; returns how many.
  unsigned Encode(unsigned char* content) const;

  double m_value = 0.0;
};
#pragma GCC visibility pop
