// The value classes with their own codec (AsnPrimitive), against the vectors
// of tests/kinds/ ({type, BER, DER, readable JSON, JER, value notation}) and
// its JSON refusals in their exact words (their BER refusals are rows of
// tests/ber/refused.golden), and a record that holds every kind, through BER,
// JSON and value notation.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "primitive_kinds.h"
#include "test_bytes.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_velkor/asn/asn_list.h"
#include "tn_velkor/asn/asn_record.h"

namespace {

using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

using test_kinds::Colour;
using test_kinds::KeyUsage;

std::unique_ptr<AsnType> Create(const std::string& type) { return test_kinds::Create(type); }

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

TEST(PrimitiveKinds, Vectors) {
  for (const std::vector<std::string>& row : test_bytes::Golden("kinds/vectors.golden")) {
    ASSERT_EQ(row.size(), 6u);
    ExpectVector({row[0].c_str(), row[1].c_str(), row[2] == "=" ? "" : row[2].c_str(), row[3].c_str(),
                  row[4].c_str(), row[5].c_str()});
  }
  // Control characters, which a golden line cannot hold.
  ExpectVector({"AsnIa5String", "16 02 40 0A", "", "\"@\\n\"", "\"@\\n\"", "\"@\n\""});
  ExpectVector({"AsnGeneralString", "1B 01 01", "", "\"\\u0001\"", "\"\\u0001\"", "\"\x01\""});
}

TEST(PrimitiveKinds, RefusedJson) {
  for (const std::vector<std::string>& row : test_bytes::Golden("kinds/refused_json.golden")) {
    ASSERT_EQ(row.size(), 4u);
    const AsnJsonForm form = row[1] == "jer" ? AsnJsonForm::kJer : AsnJsonForm::kReadable;
    const std::unique_ptr<AsnType> value = Create(row[0]);
    EXPECT_EQ(ThrownMessage([&] { AsnReadJson(*value, row[2], form); }), row[3]) << row[2];
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
