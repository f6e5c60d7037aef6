// The value classes with their own codec (AsnPrimitive), against the vectors
// of tests/kinds/ ({type, BER, DER, readable JSON, JER, value notation}) and
// its JSON refusals in their exact words (their BER refusals are rows of
// tests/ber/refused.golden), and a record that holds every kind
// (tests/kinds/kinds_probe.asn), through BER, JSON and value notation.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "primitive_kinds.h"
#include "test_bytes.h"
#include "tests/kinds/kinds_probe.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_value_io.h"

namespace {

using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

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

// tests/kinds/probe.golden, on the record of tests/kinds/kinds_probe.asn: DER
// and BER decode to the value that encodes as the DER, reads back from its
// JSON, writes the JER and prints as given, and so does a copy; a mandatory
// open value takes any tag, an explicit tag must hold a value.
TEST(PrimitiveKinds, InsideRecordsAndLists) {
  using kindsprobe::KindsProbe;
  std::map<std::string, std::vector<std::string>> golden;
  for (const std::vector<std::string>& row : test_bytes::Golden("kinds/probe.golden")) golden[row[0]] = row;
  const std::string der = golden["der"][1];
  KindsProbe probe;
  for (const char* form : {"ber", "der"}) {
    ASSERT_EQ(ThrownMessage([&] { AsnDecodeValue(probe, Hex(golden[form][1])); }), "no exception") << form;
    EXPECT_EQ(ToHex(AsnEncodeValue(probe)), der) << form;
  }
  for (const AsnJsonForm form : {AsnJsonForm::kReadable, AsnJsonForm::kJer}) {
    const std::string json = AsnToJson(probe, form);
    KindsProbe read;
    ASSERT_EQ(ThrownMessage([&] { AsnReadJson(read, json, form); }), "no exception") << json;
    EXPECT_EQ(ToHex(AsnEncodeValue(read)), der) << json;
    EXPECT_EQ(ToHex(AsnJsonToBer(KindsProbe(), json, form)), der) << json;
  }
  EXPECT_EQ(AsnToJson(probe, AsnJsonForm::kJer), golden["jer"][1]);
  KindsProbe copy;
  copy = probe;
  EXPECT_EQ(ToHex(AsnEncodeValue(copy)), der);
  EXPECT_EQ(Printed(copy), test_bytes::Unescaped(golden["notation"][1]));
  EXPECT_EQ(ThrownMessage([&] { AsnDecodeValue(probe, Hex(golden["refused"][1])); }), golden["refused"][2]);
}

}  // namespace
