// The character string types, one template over the universal tag number:
// the text is held as UTF-8 whatever the type, and travels in the type's own
// octets, checked against the type's alphabet both ways:
//
//   UTF8String 12          UTF-8
//   NumericString 18       digits and space
//   PrintableString 19     A-Z a-z 0-9 space ' ( ) + , - . / : = ?
//   IA5String 22           ASCII
//   VisibleString 26       printable ASCII and space
//   GraphicString 25,      one octet a character, U+0020 to U+00FF without
//   ObjectDescriptor 7     DEL and the C1 controls (ESC kept for escape sequences)
//   TeletexString 20,      one octet a character, U+0000 to U+00FF (the
//   VideotexString 21,     octets kept as they came, read as Latin-1)
//   GeneralString 27
//   UniversalString 28     UCS-4, four octets a character
//   BMPString 30           UCS-2, two octets a character (no surrogates)
//
// BER may segment any of them (constructed, OCTET STRING segments); DER
// writes the primitive form. JSON writes the text in both forms, value
// notation a quoted cstring.
#pragma once
#pragma GCC visibility push(default)

#include <string>
#include <string_view>

#include "tn_platform/asn/asn_primitive.h"

template <unsigned kNumber>
class AsnCharString : public AsnPrimitive {
 public:
  static constexpr AsnTag kUniversalTag = MakeTag(AsnTagClass::kUniversal, false, kNumber);
  static constexpr bool kConstructedAllowed = true;
  static const char kTypeName[];

  AsnCharString() = default;
  // Text the type's alphabet holds; other text is refused by Set (see there).
  explicit AsnCharString(std::string_view text) { Set(text); }
  // Sets the text (UTF-8); false (nothing changed) when the type cannot hold it.
  bool Set(std::string_view text);
  const std::string& Text() const { return m_text; }
  bool operator==(const AsnCharString& other) const { return m_text == other.m_text; }

  AsnType* Clone() const override { return new AsnCharString(*this); }
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  const char* typeName() const override { return kTypeName; }
  AsnTag UniversalTag() const override { return kUniversalTag; }
  bool ConstructedAllowed() const override { return kConstructedAllowed; }
  const char* AsnTypeName() const override;
  void DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) override;
  unsigned long ContentLength() const override;
  unsigned char* WriteContent(unsigned char* out) const override;
  void AssignFrom(const AsnPrimitive& other) override { m_text = static_cast<const AsnCharString&>(other).m_text; }
  // Characters: the UTF-8 lead octets of the text.
  unsigned long ConstraintSize() const override {
    unsigned long characters = 0;
    for (const char c : m_text) characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return characters;
  }
  void WriteJson(AsnJsonOut& out) const override { out.String(m_text); }
  void ReadJson(AsnJsonIn& in) override;

 private:
  std::string m_text;
};

using AsnObjectDescriptor = AsnCharString<7>;
using AsnUtf8String = AsnCharString<12>;
using AsnNumericString = AsnCharString<18>;
using AsnPrintableString = AsnCharString<19>;
using AsnTeletexString = AsnCharString<20>;
using AsnVideotexString = AsnCharString<21>;
using AsnIa5String = AsnCharString<22>;
using AsnGraphicString = AsnCharString<25>;
using AsnVisibleString = AsnCharString<26>;
using AsnGeneralString = AsnCharString<27>;
using AsnUniversalString = AsnCharString<28>;
using AsnBmpString = AsnCharString<30>;

template <>
const char AsnCharString<7>::kTypeName[];
template <>
const char AsnCharString<12>::kTypeName[];
template <>
const char AsnCharString<18>::kTypeName[];
template <>
const char AsnCharString<19>::kTypeName[];
template <>
const char AsnCharString<20>::kTypeName[];
template <>
const char AsnCharString<21>::kTypeName[];
template <>
const char AsnCharString<22>::kTypeName[];
template <>
const char AsnCharString<25>::kTypeName[];
template <>
const char AsnCharString<26>::kTypeName[];
template <>
const char AsnCharString<27>::kTypeName[];
template <>
const char AsnCharString<28>::kTypeName[];
template <>
const char AsnCharString<30>::kTypeName[];
extern template class AsnCharString<7>;
extern template class AsnCharString<12>;
extern template class AsnCharString<18>;
extern template class AsnCharString<19>;
extern template class AsnCharString<20>;
extern template class AsnCharString<21>;
extern template class AsnCharString<22>;
extern template class AsnCharString<25>;
extern template class AsnCharString<26>;
extern template class AsnCharString<27>;
extern template class AsnCharString<28>;
extern template class AsnCharString<30>;
#pragma GCC visibility pop
