// The JSON reader and writer: each refusal one line naming the member path
// and the offset in the text, the same when read straight to BER
// (tests/json/refused.golden); the readable form beside JER; and JER against
// the golden files of tests/jer/, values worked out by hand from the encoding
// rules, in both directions.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/test_bytes.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/asn_catalogue.h"

namespace {

std::unique_ptr<AsnType> Create(const std::string& type) {
  const AsnCatalogueEntry* entry = AsnCatalogue::Find(type);
  EXPECT_NE(entry, nullptr) << type;
  return std::unique_ptr<AsnType>(entry == nullptr ? nullptr : entry->create());
}

// The reader's message into a value; reading straight to BER must refuse
// the same text in the same words.
std::string Refusal(const char* type, AsnJsonForm form, const std::string& text) {
  const std::unique_ptr<AsnType> value = Create(type);
  const std::string message = test_bytes::ThrownMessage([&] { AsnReadJson(*value, text, form); });
  EXPECT_EQ(test_bytes::ThrownMessage([&] { AsnJsonToBer(*Create(type), text, form); }), message) << "AsnJsonToBer: " << text;
  return message;
}

constexpr AsnJsonForm kJer = AsnJsonForm::kJer;
constexpr AsnJsonForm kReadable = AsnJsonForm::kReadable;

TEST(AsnJsonReader, RefusesWithPathAndOffset) {
  for (const std::vector<std::string>& row : test_bytes::Golden("json/refused.golden")) {
    ASSERT_EQ(row.size(), 4u);
    const std::string text = test_bytes::Unescaped(row[2]);
    EXPECT_EQ(Refusal(row[0].c_str(), row[1] == "readable" ? kReadable : kJer, text), test_bytes::Unescaped(row[3]))
        << text;
  }
}

// tests/json/indented.golden.
TEST(AsnJsonWriter, IndentsOneMemberOrElementALine) {
  for (const std::vector<std::string>& row : test_bytes::Golden("json/indented.golden")) {
    const std::unique_ptr<AsnType> value = Create(row[0]);
    AsnDecodeValue(*value, test_bytes::Hex(row[1]));
    EXPECT_EQ(AsnToJson(*value, kReadable, AsnJsonLayout::kIndented), test_bytes::Unescaped(row[2])) << row[1];
  }
}

TEST(AsnJsonWriter, EscapesControlCharactersAndQuotes) {
  std::string out;
  AsnWriteJsonString(out, std::string("a\"\\\b\f\n\r\t\x01\x1f\x7f\xc3\xa9", 13));
  EXPECT_EQ(out, "\"a\\\"\\\\\\b\\f\\n\\r\\t\\u0001\\u001f\x7f\xc3\xa9\"");
}

// A golden line: "TYPE | BER hex | JSON text | both-or-read"; the file
// readable.golden holds the readable form, the others JER.
class JsonGolden : public testing::TestWithParam<const char*> {};

TEST_P(JsonGolden, WritesAndReadsEveryCase) {
  const AsnJsonForm form = std::string(GetParam()) == "readable.golden" ? kReadable : kJer;
  for (const std::vector<std::string>& row : test_bytes::Golden(std::string("jer/") + GetParam())) {
    ASSERT_EQ(row.size(), 4u);
    SCOPED_TRACE(row[0] + " " + row[2]);
    const std::string ber = test_bytes::Hex(row[1]);
    const std::unique_ptr<AsnType> read = Create(row[0]);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(test_bytes::ThrownMessage([&] { AsnReadJson(*read, row[2], form); }), "no exception");
    EXPECT_EQ(test_bytes::ToHex(AsnEncodeValue(*read)), test_bytes::ToHex(ber));
    EXPECT_EQ(test_bytes::ToHex(AsnJsonToBer(*Create(row[0]), row[2], form)), test_bytes::ToHex(ber));
    if (row[3] == "both") {
      const std::unique_ptr<AsnType> decoded = Create(row[0]);
      AsnDecodeValue(*decoded, ber);
      EXPECT_EQ(AsnToJson(*decoded, form), row[2]);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Rules, JsonGolden,
                         testing::Values("sequence.golden", "sequence_of.golden", "integer.golden",
                                         "octet_string.golden", "boolean.golden", "readable.golden"),
                         [](const testing::TestParamInfo<const char*>& info) {
                           const std::string name = info.param;
                           return name.substr(0, name.find('.'));
                         });

}  // namespace
