// AsnBigInt: an INTEGER of any size (an X.509 serial number), kept as its
// minimal two's-complement content octets. Decoding refuses content that is
// empty or not minimal. JSON: JER a number of any length, the readable form a
// string of its decimal digits (as AsnInt's); value notation the decimal number.
#pragma once
#pragma GCC visibility push(default)

#include <string>
#include <string_view>

#include "tn_platform/asn/asn_primitive.h"

class AsnBigInt : public AsnPrimitive {
 public:
  static constexpr AsnTag kUniversalTag = kTagInteger;
  static constexpr bool kConstructedAllowed = false;
  static constexpr char kTypeName[] = "AsnBigInt";

  AsnBigInt() = default;
  explicit AsnBigInt(long long value) { Set(value); }
  void Set(long long value);
  // The content octets; false (nothing changed) when they are empty or not minimal.
  bool SetContent(std::string_view octets);
  const std::string& Content() const { return m_content; }
  // "-123456789012345678901234567890".
  std::string ToDecimal() const;
  // Sets the value from decimal digits with an optional '-'; false (nothing
  // changed) when `text` is no such number.
  bool SetDecimal(std::string_view text);
  bool operator==(const AsnBigInt& other) const { return m_content == other.m_content; }

  AsnType* Clone() const override { return new AsnBigInt(*this); }
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  const char* typeName() const override { return kTypeName; }
  AsnTag UniversalTag() const override { return kUniversalTag; }
  const char* AsnTypeName() const override { return "INTEGER"; }
  void DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) override;
  unsigned long ContentLength() const override { return m_content.size(); }
  unsigned char* WriteContent(unsigned char* out) const override;
  void AssignFrom(const AsnPrimitive& other) override { m_content = static_cast<const AsnBigInt&>(other).m_content; }
  void WriteJson(AsnJsonOut& out) const override;
  void ReadJson(AsnJsonIn& in) override;

 private:
  std::string m_content = std::string(1, '\0');
};
#pragma GCC visibility pop
