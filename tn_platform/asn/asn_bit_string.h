// AsnBitString: a BIT STRING value, its bits most significant first in
// octets, the last octet's low `unused` bits not part of it (kept zero). A
// generated subclass supplies the type's named bits: DER then leaves out
// trailing zero bits, and value notation writes the set bits' names (or,
// when a set bit has none, the bits without trailing zeros).
//
// JSON: JER {"value": "<hex>", "length": <bits>}; the readable form a string
// of '0' and '1'.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <string>

#include "tn_platform/asn/asn_primitive.h"

struct AsnNamedBit {
  std::size_t bit;
  const char* name;
};

class AsnBitString : public AsnPrimitive {
 public:
  static constexpr AsnTag kUniversalTag = MakeTag(AsnTagClass::kUniversal, false, 3);
  static constexpr bool kConstructedAllowed = true;
  static constexpr char kTypeName[] = "AsnBitString";

  AsnBitString() = default;
  // `bits` of the octets at `data`, the most significant first.
  AsnBitString(const void* data, std::size_t bits) { Set(data, bits); }

  void Set(const void* data, std::size_t bits);
  std::size_t BitCount() const { return m_octets.size() * 8 - m_unused; }
  bool Bit(std::size_t index) const;
  // Sets bit `index`, growing the string when it is beyond the end.
  void SetBit(std::size_t index, bool value);
  // The octets, the unused bits zero.
  const std::string& Octets() const { return m_octets; }
  bool operator==(const AsnBitString& other) const {
    return m_octets == other.m_octets && m_unused == other.m_unused;
  }

  // The type's named bits (`count` of them); none for the base class.
  virtual const AsnNamedBit* NamedBits(std::size_t& count) const {
    count = 0;
    return nullptr;
  }

  AsnType* Clone() const override { return new AsnBitString(*this); }
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  const char* typeName() const override { return kTypeName; }
  AsnTag UniversalTag() const override { return kUniversalTag; }
  bool ConstructedAllowed() const override { return kConstructedAllowed; }
  const char* AsnTypeName() const override { return "BIT STRING"; }
  void DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) override;
  unsigned long ContentLength() const override;
  unsigned char* WriteContent(unsigned char* out) const override;
  void AssignFrom(const AsnPrimitive& other) override;
  unsigned long ConstraintSize() const override { return BitCount(); }
  void WriteJson(AsnJsonOut& out) const override;
  void ReadJson(AsnJsonIn& in) override;

 private:
  // The bits DER writes: without trailing zero bits when the type names bits.
  std::size_t EncodedBits() const;

  std::string m_octets;
  unsigned char m_unused = 0;
};
#pragma GCC visibility pop
