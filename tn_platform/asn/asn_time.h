// The time types, as checked text (ASCII) in their universal tags:
//
//   UTCTime 23           YYMMDDhhmm[ss](Z|+hhmm|-hhmm)
//   GeneralizedTime 24   YYYYMMDDhh[mm[ss]][(.|,)fraction][Z|+hh[mm]|-hh[mm]]
//   DATE 31              YYYY-MM-DD
//   TIME-OF-DAY 32       hh:mm:ss
//   DATE-TIME 33         YYYY-MM-DDThh:mm:ss
//   DURATION 34          PnYnMnWnDTnHnMn[.f]S, at least one part
//   TIME 14              ISO 8601 characters (digits, - : . , + / and the
//                        letters T Z W P Y M D H S R)
//
// Dates and times are checked for range (month 1-12, the day in its month,
// hours below 24 ...). DER writes UTCTime as YYMMDDhhmmssZ and
// GeneralizedTime as YYYYMMDDhhmmss[.fraction]Z, the fraction without
// trailing zeros, an offset taken into the time (a local GeneralizedTime, or
// one with a fraction of an hour or minute, has no such form and is written
// as it is; so is a time the offset carries out of the years the form can
// write); the other types as they are. JSON writes the text, value
// notation a quoted cstring.
#pragma once
#pragma GCC visibility push(default)

#include <string>
#include <string_view>

#include "tn_platform/asn/asn_primitive.h"

template <unsigned kNumber>
class AsnTimeString : public AsnPrimitive {
 public:
  static constexpr AsnTag kUniversalTag = MakeTag(AsnTagClass::kUniversal, false, kNumber);
  static constexpr bool kConstructedAllowed = true;
  static const char kTypeName[];

  AsnTimeString() = default;
  explicit AsnTimeString(std::string_view text) { Set(text); }
  // Sets the text; false (nothing changed) when it is no value of the type.
  bool Set(std::string_view text);
  const std::string& Text() const { return m_text; }
  // The text DER writes.
  std::string DerText() const;
  bool operator==(const AsnTimeString& other) const { return m_text == other.m_text; }

  AsnType* Clone() const override { return new AsnTimeString(*this); }
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  const char* typeName() const override { return kTypeName; }
  AsnTag UniversalTag() const override { return kUniversalTag; }
  bool ConstructedAllowed() const override { return kConstructedAllowed; }
  const char* AsnTypeName() const override;
  void DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) override;
  unsigned long ContentLength() const override { return DerText().size(); }
  unsigned char* WriteContent(unsigned char* out) const override;
  void AssignFrom(const AsnPrimitive& other) override { m_text = static_cast<const AsnTimeString&>(other).m_text; }
  void WriteJson(AsnJsonOut& out) const override { out.String(m_text); }
  void ReadJson(AsnJsonIn& in) override;

 private:
  std::string m_text;
};

using AsnTime = AsnTimeString<14>;
using AsnUtcTime = AsnTimeString<23>;
using AsnGeneralizedTime = AsnTimeString<24>;
using AsnDate = AsnTimeString<31>;
using AsnTimeOfDay = AsnTimeString<32>;
using AsnDateTime = AsnTimeString<33>;
using AsnDuration = AsnTimeString<34>;

template <>
const char AsnTimeString<14>::kTypeName[];
template <>
const char AsnTimeString<23>::kTypeName[];
template <>
const char AsnTimeString<24>::kTypeName[];
template <>
const char AsnTimeString<31>::kTypeName[];
template <>
const char AsnTimeString<32>::kTypeName[];
template <>
const char AsnTimeString<33>::kTypeName[];
template <>
const char AsnTimeString<34>::kTypeName[];
extern template class AsnTimeString<14>;
extern template class AsnTimeString<23>;
extern template class AsnTimeString<24>;
extern template class AsnTimeString<31>;
extern template class AsnTimeString<32>;
extern template class AsnTimeString<33>;
extern template class AsnTimeString<34>;
#pragma GCC visibility pop
