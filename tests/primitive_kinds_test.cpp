// The value classes with their own codec (AsnPrimitive), against vectors:
// per family {type, BER, DER, readable JSON, JER, value notation}, the BER
// refusals and the JSON refusals in their exact words, and a record that
// holds every kind, through BER, JSON and value notation.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <string>

#include "test_bytes.h"
#include "tn_platform/asn/asn_any.h"
#include "tn_platform/asn/asn_big_int.h"
#include "tn_platform/asn/asn_bit_string.h"
#include "tn_platform/asn/asn_char_string.h"
#include "tn_platform/asn/asn_enumerated.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_null.h"
#include "tn_platform/asn/asn_oid.h"
#include "tn_platform/asn/asn_real.h"
#include "tn_platform/asn/asn_time.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_velkor/asn/asn_list.h"
#include "tn_velkor/asn/asn_record.h"

namespace {

using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

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

std::unique_ptr<AsnType> Create(const std::string& type) {
  static const std::map<std::string, std::function<AsnType*()>> kTypes = {
      {"AsnNull", [] { return new AsnNull; }},
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
  return std::unique_ptr<AsnType>(kTypes.at(type)());
}

std::string Printed(const AsnType& value) {
  std::ostringstream text;
  value.Print(text, 0, false);
  return text.str();
}

struct Vector {
  const char* type;
  const char* ber;
  const char* der;  // "" when the BER is DER
  const char* readable;
  const char* jer;
  const char* notation;
};

// BER decodes to the value that encodes as DER, writes both JSON forms and
// prints as given; both JSON forms read back to it, into a value and straight
// to BER.
void ExpectVector(const Vector& row) {
  SCOPED_TRACE(std::string(row.type) + " " + row.ber);
  const std::string der = *row.der != '\0' ? row.der : row.ber;
  const std::unique_ptr<AsnType> value = Create(row.type);
  ASSERT_EQ(ThrownMessage([&] { AsnDecodeValue(*value, Hex(row.ber)); }), "no exception");
  EXPECT_EQ(ToHex(AsnEncodeValue(*value)), der);
  EXPECT_EQ(AsnToJson(*value, AsnJsonForm::kReadable), row.readable);
  EXPECT_EQ(AsnToJson(*value, AsnJsonForm::kJer), row.jer);
  EXPECT_EQ(Printed(*value), row.notation);
  for (const auto& [form, text] : {std::pair{AsnJsonForm::kReadable, row.readable}, std::pair{AsnJsonForm::kJer, row.jer}}) {
    const std::unique_ptr<AsnType> read = Create(row.type);
    ASSERT_EQ(ThrownMessage([&] { AsnReadJson(*read, text, form); }), "no exception") << text;
    EXPECT_EQ(ToHex(AsnEncodeValue(*read)), der) << text;
    EXPECT_EQ(ToHex(AsnJsonToBer(*Create(row.type), text, form)), der) << text;
  }
}

TEST(PrimitiveKinds, NullEnumeratedAndBitString) {
  const Vector rows[] = {
      {"AsnNull", "05 00", "", "null", "null", "NULL"},
      {"Colour", "0A 01 02", "", "\"blue\"", "\"blue\"", "blue"},
      {"OpenColour", "0A 01 07", "", "7", "7", "7"},
      {"AsnBitString", "03 02 06 40", "", "\"01\"", "{\"value\":\"40\",\"length\":2}", "'01'B"},
      {"AsnBitString", "03 01 00", "", "\"\"", "{\"value\":\"\",\"length\":0}", "''B"},
      // Segmented, indefinite; unused bits that are set read as zero.
      {"AsnBitString", "23 80 03 02 00 0A 03 02 04 BF 00 00", "03 03 04 0A B0", "\"000010101011\"",
       "{\"value\":\"0ab0\",\"length\":12}", "'000010101011'B"},
      {"KeyUsage", "03 02 05 A0", "", "\"101\"", "{\"value\":\"a0\",\"length\":3}",
       "{ digitalSignature, keyEncipherment }"},
      // Named bits: DER leaves out the trailing zero bits.
      {"KeyUsage", "03 02 00 40", "03 02 06 40", "\"01000000\"", "{\"value\":\"40\",\"length\":8}",
       "{ nonRepudiation }"},
      {"KeyUsage", "03 02 00 10", "03 02 04 10", "\"00010000\"", "{\"value\":\"10\",\"length\":8}", "'00010000'B"},
  };
  for (const Vector& row : rows) ExpectVector(row);
}

TEST(PrimitiveKinds, ObjectIdentifiers) {
  const Vector rows[] = {
      {"AsnOid", "06 09 2A 86 48 86 F7 0D 01 01 0B", "", "\"1.2.840.113549.1.1.11\"", "\"1.2.840.113549.1.1.11\"",
       "{ 1 2 840 113549 1 1 11 }"},
      {"AsnOid", "06 02 88 37", "", "\"2.999\"", "\"2.999\"", "{ 2 999 }"},
      {"AsnOid", "06 0B 2A 81 FF FF FF FF FF FF FF FF 7F", "", "\"1.2.18446744073709551615\"",
       "\"1.2.18446744073709551615\"", "{ 1 2 18446744073709551615 }"},
      {"AsnRelativeOid", "0D 04 C2 7B 03 02", "", "\"8571.3.2\"", "\"8571.3.2\"", "{ 8571 3 2 }"},
  };
  for (const Vector& row : rows) ExpectVector(row);
}

TEST(PrimitiveKinds, RealAndBigInteger) {
  const Vector rows[] = {
      {"AsnReal", "09 00", "", "0", "0", "0"},
      {"AsnReal", "09 03 80 FF 03", "", "1.5", "1.5", "1.5"},
      // Decimal NR3, base 16, base 8 with a scale factor: DER is base 2.
      {"AsnReal", "09 06 03 31 2E 35 45 30", "09 03 80 FF 03", "1.5", "1.5", "1.5"},
      {"AsnReal", "09 03 A0 FF 18", "09 03 80 FF 03", "1.5", "1.5", "1.5"},
      {"AsnReal", "09 03 94 FF 03", "09 03 80 FE 03", "0.75", "0.75", "0.75"},
      {"AsnReal", "09 03 C0 FF 05", "", "-2.5", "-2.5", "-2.5"},
      {"AsnReal", "09 04 81 03 E8 01", "", "1.0715086071862673e+301", "1.0715086071862673e+301", "1.0715086071862673E301"},
      {"AsnReal", "09 01 40", "", "\"INF\"", "\"INF\"", "PLUS-INFINITY"},
      {"AsnReal", "09 01 41", "", "\"-INF\"", "\"-INF\"", "MINUS-INFINITY"},
      {"AsnReal", "09 01 42", "", "\"NaN\"", "\"NaN\"", "NOT-A-NUMBER"},
      {"AsnReal", "09 01 43", "", "\"-0\"", "\"-0\"", "-0"},
      {"AsnBigInt", "02 0D 10 00 00 00 00 00 00 00 00 00 00 00 00", "", "\"1267650600228229401496703205376\"",
       "1267650600228229401496703205376", "1267650600228229401496703205376"},
      {"AsnBigInt", "02 09 FF 7F FF FF FF FF FF FF FF", "", "\"-9223372036854775809\"", "-9223372036854775809",
       "-9223372036854775809"},
      {"AsnBigInt", "02 01 00", "", "\"0\"", "0", "0"},
  };
  for (const Vector& row : rows) ExpectVector(row);
}

TEST(PrimitiveKinds, CharacterStrings) {
  const Vector rows[] = {
      {"AsnUtf8String", "0C 04 C3 A9 22 21", "", "\"\xC3\xA9\\\"!\"", "\"\xC3\xA9\\\"!\"", "\"\xC3\xA9\"\"!\""},
      {"AsnUtf8String", "2C 80 04 01 41 24 03 04 01 42 00 00", "0C 02 41 42", "\"AB\"", "\"AB\"", "\"AB\""},
      {"AsnNumericString", "12 03 31 20 32", "", "\"1 2\"", "\"1 2\"", "\"1 2\""},
      {"AsnPrintableString", "13 04 41 27 3D 3F", "", "\"A'=?\"", "\"A'=?\"", "\"A'=?\""},
      {"AsnIa5String", "16 02 40 0A", "", "\"@\\n\"", "\"@\\n\"", "\"@\n\""},
      {"AsnVisibleString", "1A 01 7E", "", "\"~\"", "\"~\"", "\"~\""},
      {"AsnTeletexString", "14 02 41 E9", "", "\"A\xC3\xA9\"", "\"A\xC3\xA9\"", "\"A\xC3\xA9\""},
      {"AsnVideotexString", "15 01 41", "", "\"A\"", "\"A\"", "\"A\""},
      {"AsnGraphicString", "19 01 41", "", "\"A\"", "\"A\"", "\"A\""},
      {"AsnGeneralString", "1B 01 01", "", "\"\\u0001\"", "\"\\u0001\"", "\"\x01\""},
      {"AsnObjectDescriptor", "07 01 41", "", "\"A\"", "\"A\"", "\"A\""},
      {"AsnBmpString", "1E 04 00 41 20 AC", "", "\"A\xE2\x82\xAC\"", "\"A\xE2\x82\xAC\"", "\"A\xE2\x82\xAC\""},
      {"AsnUniversalString", "1C 04 00 01 F6 00", "", "\"\xF0\x9F\x98\x80\"", "\"\xF0\x9F\x98\x80\"",
       "\"\xF0\x9F\x98\x80\""},
  };
  for (const Vector& row : rows) ExpectVector(row);
}

TEST(PrimitiveKinds, TimesAndOpenValues) {
  const Vector rows[] = {
      {"AsnUtcTime", "17 0D 39 39 31 32 33 31 32 33 35 39 35 39 5A", "", "\"991231235959Z\"", "\"991231235959Z\"",
       "\"991231235959Z\""},
      // DER: seconds given, the offset taken into the time.
      {"AsnUtcTime", "17 0F 39 39 31 32 33 31 32 33 35 39 2B 30 31 30 30",
       "17 0D 39 39 31 32 33 31 32 32 35 39 30 30 5A", "\"9912312359+0100\"", "\"9912312359+0100\"",
       "\"9912312359+0100\""},
      {"AsnGeneralizedTime", "18 13 32 30 32 34 30 32 32 39 31 32 30 30 30 30 2C 35 30 30 5A",
       "18 11 32 30 32 34 30 32 32 39 31 32 30 30 30 30 2E 35 5A", "\"20240229120000,500Z\"",
       "\"20240229120000,500Z\"", "\"20240229120000,500Z\""},
      {"AsnGeneralizedTime", "18 0F 32 30 32 33 31 32 33 31 32 33 33 30 2D 30 31",
       "18 0F 32 30 32 34 30 31 30 31 30 30 33 30 30 30 5A", "\"202312312330-01\"", "\"202312312330-01\"",
       "\"202312312330-01\""},
      {"AsnDate", "1F 1F 0A 32 30 32 34 2D 30 32 2D 32 39", "", "\"2024-02-29\"", "\"2024-02-29\"", "\"2024-02-29\""},
      {"AsnTimeOfDay", "1F 20 08 31 32 3A 33 34 3A 35 36", "", "\"12:34:56\"", "\"12:34:56\"", "\"12:34:56\""},
      {"AsnDateTime", "1F 21 13 32 30 32 34 2D 30 32 2D 32 39 54 31 32 3A 33 34 3A 35 36", "",
       "\"2024-02-29T12:34:56\"", "\"2024-02-29T12:34:56\"", "\"2024-02-29T12:34:56\""},
      {"AsnDuration", "1F 22 06 50 31 59 54 32 48", "", "\"P1YT2H\"", "\"P1YT2H\"", "\"P1YT2H\""},
      {"AsnTime", "0E 07 54 31 32 3A 33 30 5A", "", "\"T12:30Z\"", "\"T12:30Z\"", "\"T12:30Z\""},
      {"AsnAny", "02 01 05", "", "{\"ber\":\"020105\"}", "\"020105\"", "'020105'H"},
      // Kept as it came, indefinite length included.
      {"AsnAny", "30 80 02 01 05 00 00", "", "{\"ber\":\"30800201050000\"}", "\"30800201050000\"",
       "'30800201050000'H"},
  };
  for (const Vector& row : rows) ExpectVector(row);
}

TEST(PrimitiveKinds, RefusedEncodings) {
  struct Refusal {
    const char* type;
    const char* ber;
    const char* message;
  };
  const Refusal refusals[] = {
      {"AsnNull", "05 01 00", "AsnNull: NULL with content octets at offset 0"},
      {"AsnNull", "25 00", "AsnNull: wrong tag [UNIVERSAL 5] constructed (NULL), expected [UNIVERSAL 5] primitive (NULL) at offset 0"},
      {"Colour", "0A 01 05", "Colour: ENUMERATED value 5 is not one of the type's at offset 0"},
      {"Colour", "0A 02 00 01", "Colour: ENUMERATED content is not minimal at offset 0"},
      {"AsnBitString", "03 00", "AsnBitString: BIT STRING without its unused-bits octet at offset 0"},
      {"AsnBitString", "03 02 08 00", "AsnBitString: BIT STRING with 8 unused bits (at most 7) at offset 0"},
      {"AsnBitString", "03 01 03", "AsnBitString: BIT STRING of no bits with unused bits at offset 0"},
      {"AsnBitString", "23 08 03 02 04 A0 03 02 00 FF",
       "AsnBitString: BIT STRING segment with unused bits before the last segment at offset 2"},
      {"AsnBitString", "23 03 04 01 00",
       "AsnBitString: BIT STRING segment with tag [UNIVERSAL 4] primitive (OCTET STRING) at offset 2"},
      {"AsnOid", "06 02 80 01", "AsnOid: OBJECT IDENTIFIER arc is not minimal (leading 0x80) at offset 0"},
      {"AsnOid", "06 02 2A 81", "AsnOid: OBJECT IDENTIFIER content ends inside an arc at offset 0"},
      {"AsnOid", "06 00", "AsnOid: OBJECT IDENTIFIER without content octets at offset 0"},
      {"AsnOid", "06 0B 2A 82 80 80 80 80 80 80 80 80 00", "AsnOid: OBJECT IDENTIFIER arc beyond 64 bits at offset 0"},
      {"AsnReal", "09 01 44", "AsnReal: REAL special value 68 is reserved at offset 0"},
      {"AsnReal", "09 02 B0 01", "AsnReal: REAL base code 3 is reserved at offset 0"},
      {"AsnReal", "09 01 80", "AsnReal: REAL content ends inside the exponent at offset 0"},
      {"AsnReal", "09 02 80 01", "AsnReal: REAL without mantissa octets at offset 0"},
      {"AsnReal", "09 02 04 31", "AsnReal: REAL decimal form 4 is reserved at offset 0"},
      {"AsnReal", "09 03 01 31 41", "AsnReal: REAL decimal form is no number at offset 0"},
      {"AsnBigInt", "02 02 00 01", "AsnBigInt: INTEGER content is not minimal at offset 0"},
      {"AsnBigInt", "02 00", "AsnBigInt: INTEGER without content octets at offset 0"},
      {"AsnPrintableString", "13 01 2A", "AsnPrintableString: U+002A is not in the PrintableString alphabet at offset 0"},
      {"AsnNumericString", "12 01 41", "AsnNumericString: U+0041 is not in the NumericString alphabet at offset 0"},
      {"AsnIa5String", "16 01 80", "AsnIa5String: U+0080 is not in the IA5String alphabet at offset 0"},
      {"AsnUtf8String", "0C 02 41 FF", "AsnUtf8String: UTF8String content is not valid UTF-8 (octet 1) at offset 0"},
      {"AsnUtf8String", "2C 03 02 01 05",
       "AsnUtf8String: UTF8String segment with tag [UNIVERSAL 2] primitive (INTEGER) at offset 2"},
      {"AsnUtf8String", "0C 80 41 00 00", "AsnUtf8String: indefinite length on a primitive UTF8String at offset 0"},
      {"AsnBmpString", "1E 03 00 41 00", "AsnBmpString: BMPString content of 3 octets is not whole characters at offset 0"},
      {"AsnBmpString", "1E 02 D8 00", "AsnBmpString: U+D800 is not in the BMPString alphabet at offset 0"},
      {"AsnUniversalString", "1C 04 00 11 00 00", "AsnUniversalString: U+110000 is not in the UniversalString alphabet at offset 0"},
      {"AsnUtcTime", "17 0B 39 39 31 33 33 31 32 33 35 39 5A", "AsnUtcTime: UTCTime \"9913312359Z\" is malformed at offset 0"},
      {"AsnUtcTime", "17 0A 39 39 31 32 33 31 32 33 35 39", "AsnUtcTime: UTCTime \"9912312359\" is malformed at offset 0"},
      {"AsnGeneralizedTime", "18 0A 32 30 32 33 30 32 32 39 31 32",
       "AsnGeneralizedTime: GeneralizedTime \"2023022912\" is malformed at offset 0"},
      {"AsnDate", "1F 1F 0A 32 30 32 34 2D 30 32 2D 33 30", "AsnDate: DATE \"2024-02-30\" is malformed at offset 0"},
      {"AsnDuration", "1F 22 02 50 54", "AsnDuration: DURATION \"PT\" is malformed at offset 0"},
      {"AsnDuration", "1F 22 04 50 31 48 31", "AsnDuration: DURATION \"P1H1\" is malformed at offset 0"},
      {"AsnAny", "00 00", "AsnAny: end-of-contents where a value belongs at offset 0"},
      {"AsnAny", "30 80 02 01 05", "AsnAny: input ends before the end-of-contents octets at offset 5"},
      {"AsnAny", "30 03 02 02 05", "AsnAny: value runs past its enclosing value at offset 2"},
  };
  for (const Refusal& row : refusals) {
    const std::unique_ptr<AsnType> value = Create(row.type);
    EXPECT_EQ(ThrownMessage([&] { AsnDecodeValue(*value, Hex(row.ber)); }), row.message) << row.ber;
  }
}

TEST(PrimitiveKinds, RefusedJson) {
  struct Refusal {
    const char* type;
    AsnJsonForm form;
    const char* json;
    const char* message;
  };
  const AsnJsonForm kReadable = AsnJsonForm::kReadable;
  const AsnJsonForm kJer = AsnJsonForm::kJer;
  const Refusal refusals[] = {
      {"AsnNull", kJer, "0", "AsnNull: expected null, found a number at offset 0"},
      {"Colour", kReadable, "\"purple\"", "Colour: \"purple\" is not an identifier of the type at offset 0"},
      {"Colour", kJer, "5", "Colour: ENUMERATED value 5 is not one of the type's at offset 0"},
      {"AsnOid", kJer, "\"1.2.\"", "AsnOid: \"1.2.\" is no OBJECT IDENTIFIER (dotted arcs of up to 64 bits) at offset 0"},
      {"AsnOid", kJer, "\"3.1\"", "AsnOid: \"3.1\" is no OBJECT IDENTIFIER (dotted arcs of up to 64 bits) at offset 0"},
      {"AsnBitString", kReadable, "\"012\"", "AsnBitString: a bit string holds only 0 and 1 at offset 0"},
      {"AsnBitString", kJer, "{\"value\":\"ff\",\"length\":9}",
       "AsnBitString: \"length\" 9 does not fit \"value\" at offset 23"},
      {"AsnBitString", kJer, "{\"value\":\"ff\"}", "AsnBitString: a bit string needs \"value\" and \"length\" at offset 9"},
      {"AsnReal", kJer, "\"inf\"",
       "AsnReal: a REAL string is \"INF\", \"-INF\", \"NaN\" or \"-0\" at offset 0"},
      {"AsnReal", kJer, "1e999", "AsnReal: number 1e999 is beyond a REAL's range at offset 0"},
      {"AsnBigInt", kJer, "1.5", "AsnBigInt: expected an integer, found 1.5 at offset 0"},
      {"AsnPrintableString", kJer, "\"a*\"", "AsnPrintableString: U+002A is not in the PrintableString alphabet at offset 0"},
      {"AsnUtcTime", kJer, "\"991231\"", "AsnUtcTime: UTCTime \"991231\" is malformed at offset 0"},
      {"AsnAny", kReadable, "{\"ber\":\"0201\"}", "AsnAny: not the BER encoding of one value at offset 7"},
      {"AsnAny", kJer, "\"02010500\"", "AsnAny: not the BER encoding of one value at offset 0"},
  };
  for (const Refusal& row : refusals) {
    const std::unique_ptr<AsnType> value = Create(row.type);
    EXPECT_EQ(ThrownMessage([&] { AsnReadJson(*value, row.json, row.form); }), row.message) << row.json;
  }
}

// A record with every kind, written as generated code writes it.
class OidList final : public AsnSeqOf<AsnOid> {
 public:
  static constexpr char kTypeName[] = "OidList";
  static constexpr char kQualifiedName[] = "test::OidList";
  AsnType* Clone() const override { return new OidList(*this); }
  const char* typeName() const override { return kTypeName; }
};

class KindsProbe final : public AsnRecord<KindsProbe> {
 public:
  static constexpr char kClassName[] = "KindsProbe";
  AsnNull nothing;
  Colour colour;
  KeyUsage usage;
  AsnOid algorithm;
  AsnReal ratio;
  AsnBigInt serial;
  AsnUtf8String name;
  AsnGeneralizedTime at;
  AsnAny extra;
  refl::MayNullPointer<AsnBitString> flags;
  refl::MayNullPointer<AsnAny> parameters;
  refl::MayNullPointer<OidList> path;
  refl::MayNullPointer<AsnNull> marker;

  KindsProbe() { Constructor(*this); }
  KindsProbe(const KindsProbe& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~KindsProbe() override { Destructor(*this); }
  KindsProbe& operator=(const KindsProbe& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<KindsProbe>;
  template <class Lines>
  static void DescribeMembers(Lines& lines) {
    lines.Add("nothing", &KindsProbe::nothing);
    lines.Add("colour", &KindsProbe::colour);
    lines.Add("usage", &KindsProbe::usage);
    lines.Add("algorithm", &KindsProbe::algorithm);
    lines.Add("ratio", &KindsProbe::ratio);
    lines.Add("serial", &KindsProbe::serial);
    lines.Add("name", &KindsProbe::name);
    lines.Add("at", &KindsProbe::at);
    lines.Add("extra", &KindsProbe::extra);
    lines.Add("flags", &KindsProbe::flags, 0);
    lines.Add("parameters", &KindsProbe::parameters, 1);
    lines.Add("path", &KindsProbe::path, 2);
    lines.Add("marker", &KindsProbe::marker, 3);
  }
};

// Every member present: NULL, blue, {digitalSignature}, 1.2.840.113549,
// 0.5, 2^64, "név", a time, an open INTEGER 5, flags '1'B, parameters NULL
// in [1] EXPLICIT, a path of two identifiers (1.2 and 2.999.1), a NULL marker.
constexpr char kProbeDer[] =
    "30 4F 05 00 0A 01 02 03 02 07 80 06 06 2A 86 48 86 F7 0D 09 03 80 FF 01 02 09 01 00 00 00 00 00 00 00 00 "
    "0C 04 6E C3 A9 76 18 0F 32 30 32 34 30 32 32 39 31 32 30 30 30 30 5A 02 01 05 80 02 07 80 A1 02 05 00 "
    "A2 08 06 01 2A 06 03 88 37 01 83 00";

TEST(PrimitiveKinds, InsideRecordsAndLists) {
  KindsProbe probe;
  AsnDecodeValue(probe, Hex(kProbeDer));
  EXPECT_EQ(ToHex(AsnEncodeValue(probe)), kProbeDer);
  EXPECT_EQ(probe.colour.Name(), std::string("blue"));
  ASSERT_NE(probe.path.Get(), nullptr);
  EXPECT_EQ(probe.path.Get()->Count(), 2u);
  ASSERT_NE(probe.parameters.Get(), nullptr);
  EXPECT_EQ(ToHex(probe.parameters.Get()->Encoding()), "05 00");

  // The same record in BER: segmented and indefinite forms, members in the
  // other form where the kind allows it.
  KindsProbe fromBer;
  AsnDecodeValue(fromBer,
                 Hex("30 80 05 00 0A 01 02 23 80 03 02 07 80 00 00 06 06 2A 86 48 86 F7 0D 09 03 A0 FF 08 "
                     "02 09 01 00 00 00 00 00 00 00 00 2C 80 04 01 6E 04 03 C3 A9 76 00 00 "
                     "18 0F 32 30 32 34 30 32 32 39 31 32 30 30 30 30 5A 02 01 05 A0 80 03 02 07 80 00 00 "
                     "A1 80 05 00 00 00 A2 08 06 01 2A 06 03 88 37 01 83 00 00 00"));
  EXPECT_EQ(ToHex(AsnEncodeValue(fromBer)), kProbeDer);

  for (const AsnJsonForm form : {AsnJsonForm::kReadable, AsnJsonForm::kJer}) {
    const std::string json = AsnToJson(probe, form);
    KindsProbe read;
    ASSERT_EQ(ThrownMessage([&] { AsnReadJson(read, json, form); }), "no exception") << json;
    EXPECT_EQ(ToHex(AsnEncodeValue(read)), kProbeDer) << json;
    EXPECT_EQ(ToHex(AsnJsonToBer(KindsProbe(), json, form)), kProbeDer) << json;
  }
  EXPECT_EQ(AsnToJson(probe, AsnJsonForm::kJer),
            "{\"nothing\":null,\"colour\":\"blue\",\"usage\":{\"value\":\"80\",\"length\":1},"
            "\"algorithm\":\"1.2.840.113549\",\"ratio\":0.5,\"serial\":18446744073709551616,\"name\":\"n\xC3\xA9v\","
            "\"at\":\"20240229120000Z\",\"extra\":\"020105\",\"flags\":{\"value\":\"80\",\"length\":1},"
            "\"parameters\":\"0500\",\"path\":[\"1.2\",\"2.999.1\"],\"marker\":null}");

  KindsProbe copy;
  copy = probe;
  EXPECT_EQ(ToHex(AsnEncodeValue(copy)), kProbeDer);
  EXPECT_EQ(Printed(probe),
            "KindsProbe {\n  nothing NULL\n  colour blue\n  usage { digitalSignature }\n"
            "  algorithm { 1 2 840 113549 }\n  ratio 0.5\n  serial 18446744073709551616\n  name \"n\xC3\xA9v\"\n"
            "  at \"20240229120000Z\"\n  extra '020105'H\n  flags '1'B\n  parameters '0500'H\n"
            "  path {\n    - { 1 2 }\n    - { 2 999 1 }\n  }\n  marker NULL\n}");

  // A mandatory open value takes any tag; an explicit tag must hold a value.
  EXPECT_EQ(ThrownMessage([&] {
              AsnDecodeValue(probe, Hex("30 4D 05 00 0A 01 02 03 02 07 80 06 06 2A 86 48 86 F7 0D 09 03 80 FF 01 "
                                        "02 09 01 00 00 00 00 00 00 00 00 0C 04 6E C3 A9 76 18 0F 32 30 32 34 30 "
                                        "32 32 39 31 32 30 30 30 30 5A 02 01 05 80 02 07 80 A1 00 "
                                        "A2 08 06 01 2A 06 03 88 37 01 83 00"));
            }),
            "KindsProbe.parameters: explicit tag without the value it holds at offset 65");
}

}  // namespace
