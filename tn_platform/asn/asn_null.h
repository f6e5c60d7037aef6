// AsnNull: a NULL value. Its content is empty; JSON writes it as null, value
// notation as NULL.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_primitive.h"

class AsnNull : public AsnPrimitive {
 public:
  static constexpr AsnTag kUniversalTag = MakeTag(AsnTagClass::kUniversal, false, 5);
  static constexpr bool kConstructedAllowed = false;
  static constexpr char kTypeName[] = "AsnNull";

  bool operator==(const AsnNull&) const { return true; }

  AsnType* Clone() const override { return new AsnNull(*this); }
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  const char* typeName() const override { return kTypeName; }
  AsnTag UniversalTag() const override { return kUniversalTag; }
  const char* AsnTypeName() const override { return "NULL"; }
  void DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) override;
  unsigned long ContentLength() const override { return 0; }
  unsigned char* WriteContent(unsigned char* out) const override { return out; }
  void AssignFrom(const AsnPrimitive&) override {}
  void WriteJson(AsnJsonOut& out) const override { out.Null(); }
  void ReadJson(AsnJsonIn& in) override { in.Null(); }
};
#pragma GCC visibility pop
