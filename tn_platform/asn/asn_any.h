// AsnAny: an open value (ANY, ANY DEFINED BY, an open type), kept as its
// whole encoding, tag and length included, and written back as it came. It
// takes any tag; a constructed value of the indefinite form is walked to its
// end-of-contents. As an optional record member numbered n it travels in
// [n] EXPLICIT. JSON: JER the hex of the encoding, the readable form
// {"ber": "<hex>"}; value notation 'hex'H.
#pragma once
#pragma GCC visibility push(default)

#include <string>
#include <string_view>

#include "tn_platform/asn/asn_primitive.h"

class AsnAny : public AsnPrimitive {
 public:
  static constexpr AsnTag kUniversalTag = kAsnOpenTag;
  static constexpr bool kConstructedAllowed = true;
  static constexpr char kTypeName[] = "AsnAny";

  AsnAny() = default;
  // The encoding of one whole value; false (nothing changed) when it is not exactly one.
  bool SetEncoding(std::string_view ber);
  // The encoding as it came (empty for a value never set).
  const std::string& Encoding() const { return m_encoding; }
  bool operator==(const AsnAny& other) const { return m_encoding == other.m_encoding; }

  AsnType* Clone() const override { return new AsnAny(*this); }
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  const char* typeName() const override { return kTypeName; }
  AsnTag UniversalTag() const override { return kUniversalTag; }
  bool ConstructedAllowed() const override { return kConstructedAllowed; }
  const char* AsnTypeName() const override { return "ANY"; }
  void DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) override;
  unsigned long ContentLength() const override;
  unsigned char* WriteContent(unsigned char* out) const override;
  void AssignFrom(const AsnPrimitive& other) override { m_encoding = static_cast<const AsnAny&>(other).m_encoding; }
  void WriteJson(AsnJsonOut& out) const override;
  void ReadJson(AsnJsonIn& in) override;

 private:
  std::string m_encoding;
};
#pragma GCC visibility pop
