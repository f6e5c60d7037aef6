// The JSON reader and writer: each refusal one line naming the member path
// and the offset in the text, the same when read straight to BER; the
// readable form beside JER; and JER against the golden files of tests/jer/,
// values worked out by hand from the encoding rules, in both directions.
#include <gtest/gtest.h>

#include <fstream>
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
  const struct {
    const char* type;
    AsnJsonForm form;
    const char* text;
    const char* message;
  } cases[] = {
      // JER's strict rules
      {"QAsnColumn", kJer, R"({"strCondition":"","x":1})", R"(QAsnColumn: QAsnColumn has no member "x" at offset 19)"},
      {"QAsnColumn", kJer, R"({"//":"x","strCondition":""})", R"(QAsnColumn: QAsnColumn has no member "//" at offset 1)"},
      {"QAsnUniResID", kJer, R"({"strFDN":"","strMOC":""})", "QAsnUniResID.neID: missing (a mandatory member) at offset 0"},
      {"QAsnUniResID", kJer, R"({"strFDN":"","strMOC":"","neID":7,"poSerialNum":null})",
       "QAsnUniResID.poSerialNum: null is no value in JER (leave an absent member out) at offset 48"},
      {"QAsnColumn", kJer, R"({"strCondition":"abc"})", "QAsnColumn.strCondition: odd number of hex digits at offset 16"},
      {"QAsnColumn", kJer, R"({"strCondition":"0g"})", "QAsnColumn.strCondition: 'g' is not a hex digit at offset 18"},
      {"QAsnColumn", kJer, R"({"strCondition":"NE=1"})", "QAsnColumn.strCondition: 'N' is not a hex digit at offset 17"},
      {"QAsnTinyIntList", kJer, "[1,2147483648]",
       "QAsnTinyIntList[1]: integer 2147483648 out of range (-2147483648 to 2147483647) at offset 3"},
      {"QAsnTinyIntList", kJer, "[-2147483649]",
       "QAsnTinyIntList[0]: integer -2147483649 out of range (-2147483648 to 2147483647) at offset 1"},
      {"QProbePart", kJer, R"({"name":"","weight":9223372036854775808})",
       "QProbePart.weight: integer 9223372036854775808 out of range (-9223372036854775808 to 9223372036854775807) at offset 20"},
      {"QProbePart", kJer, R"({"name":"","weight":-9223372036854775809})",
       "QProbePart.weight: integer -9223372036854775809 out of range (-9223372036854775808 to 9223372036854775807) at offset 20"},
      {"QProbePart", kJer, R"({"name":"","weight":123456789012345678901234567890})",
       "QProbePart.weight: integer 123456789012345678901234567890 out of range (-9223372036854775808 to 9223372036854775807) at offset 20"},
      {"QAsnTinyIntList", kJer, "[1.5]", "QAsnTinyIntList[0]: expected an integer, found a number with a fraction or exponent at offset 1"},
      {"QAsnTinyIntList", kJer, "[1e3]", "QAsnTinyIntList[0]: expected an integer, found a number with a fraction or exponent at offset 1"},
      {"QAsnTinyIntList", kJer, R"(["1"])", "QAsnTinyIntList[0]: expected an integer, found a string at offset 1"},
      {"QAsnTinyIntList", kJer, "[01]", "QAsnTinyIntList[0]: a number does not start with 0 at offset 2"},
      {"QAsnTinyIntList", kJer, "[1,]", "QAsnTinyIntList[1]: expected an integer, found ']' at offset 3"},
      {"QAsnColumn", kJer, R"({"strCondition":"","strCondition":""})", "QAsnColumn.strCondition: given twice at offset 19"},
      {"CodecProbe", kJer, R"({"flag":1,"big":0})", "CodecProbe.flag: expected true or false, found a number at offset 8"},
      {"QAsnNVSList", kJer, "{}", "QAsnNVSList: expected an array, found an object at offset 0"},
      {"QAsnNVSList", kJer, R"([{"name":"","value":""},{"name":""}])", "QAsnNVSList[1].value: missing (a mandatory member) at offset 24"},
      // JSON itself
      {"QAsnColumn", kJer, R"({"strCondition":"00")", "QAsnColumn: the text ends inside the value at offset 20"},
      {"QAsnColumn", kJer, R"({"strCondition":""} x)", "QAsnColumn: content after the value at offset 20"},
      {"QAsnColumn", kJer, "", "QAsnColumn: empty input at offset 0"},
      {"QAsnColumn", kJer, " \n", "QAsnColumn: empty input (only blanks) at offset 0"},
      {"QAsnColumn", kReadable, "\xef\xbb\xbf{\"strCondition\":\"\"}",
       "QAsnColumn: JSON text starts with a byte-order mark (save it as UTF-8 without one) at offset 0"},
      {"QAsnColumn", kJer, "{\"strCondition\":\"\"}\xc3\xa9", "QAsnColumn: content after the value at offset 19"},
      {"QAsnColumn", kJer, "{\x01}", "QAsnColumn: expected a member name, found the octet 0x01 at offset 1"},
      {"QAsnColumn", kJer, "{\xc3\xa9}", "QAsnColumn: expected a member name, found '\xc3\xa9' at offset 1"},
      {"QAsnColumn", kJer, R"({"strCondition" "00"})", "QAsnColumn: expected ':', found a string at offset 16"},
      {"QAsnColumn", kJer, R"({strCondition:"00"})", "QAsnColumn: expected a member name, found 's' at offset 1"},
      {"QAsnColumn", kReadable, "{\"strCondition\":\"\xff\"}", "QAsnColumn.strCondition: invalid UTF-8 in a string at offset 17"},
      {"QAsnColumn", kReadable, "{\"strCondition\":\"\xc0\x80\"}", "QAsnColumn.strCondition: invalid UTF-8 in a string at offset 17"},
      {"QAsnColumn", kReadable, "{\"strCondition\":\"\xed\xa0\x80\"}", "QAsnColumn.strCondition: invalid UTF-8 in a string at offset 17"},
      {"QAsnColumn", kReadable, R"({"strCondition":"\ud800"})", "QAsnColumn.strCondition: lone surrogate in a \\u escape at offset 17"},
      {"QAsnColumn", kReadable, R"({"strCondition":"\x"})", "QAsnColumn.strCondition: malformed escape in a string at offset 17"},
      {"QAsnColumn", kReadable, "{\"strCondition\":\"a\tb\"}", "QAsnColumn.strCondition: control character in a string (write it as an escape) at offset 18"},
      // the readable form's own rules
      {"QAsnColumn", kReadable, R"({"strCondition":{"hex":"0"}})", "QAsnColumn.strCondition: odd number of hex digits at offset 23"},
      {"QAsnColumn", kReadable, R"({"strCondition":{"hex":"00","x":1}})", R"(QAsnColumn.strCondition: expected a string or {"hex": "..."} at offset 16)"},
      {"QAsnColumn", kReadable, R"({"strCondition":null})", "QAsnColumn.strCondition: missing (a mandatory member) at offset 16"},
      {"QProbePart", kReadable, R"({"name":"","weight":"12x"})", "QProbePart.weight: expected an integer, found a string that is no integer at offset 20"},
      {"QAsnErrInfoReturn", kReadable, R"({"retCode": "x"})", R"(QAsnErrInfoReturn.retCode: expected an integer, found the string "x" at offset 12)"},
      {"QAsnErrInfoReturn", kReadable, R"({"retCode": "\"x"})", R"(QAsnErrInfoReturn.retCode: expected an integer, found the string "\"x" at offset 12)"},
      {"QAsnErrInfoReturn", kReadable, R"({"retCode": "a very long string that is cut short in the message"})",
       R"(QAsnErrInfoReturn.retCode: expected an integer, found the string "a very long string that is cut short in... at offset 12)"},
      {"QProbePart", kReadable, "{\"name\":\"\",\"weight\":\"9\n\"}", "QProbePart.weight: expected an integer, found a string that is no integer at offset 20"},
      {"QProbePart", kReadable, R"({"name":"","weight":"9223372036854775808"})",
       "QProbePart.weight: integer 9223372036854775808 out of range (-9223372036854775808 to 9223372036854775807) at offset 20"},
      {"QAsnColumn", kReadable, R"({"//":[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]],"strCondition":""})",
       "QAsnColumn: nested too deeply at offset 37"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(Refusal(row.type, row.form, row.text), row.message) << row.text;
  }
}

// The indented layout, as the tool prints it.
TEST(AsnJsonWriter, IndentsOneMemberOrElementALine) {
  const struct {
    const char* type;
    const char* ber;
    const char* json;
  } cases[] = {
      {"QAsnColumn", "30 04 04 02 00 FF", "{\n  \"strCondition\": {\n    \"hex\": \"00ff\"\n  }\n}"},
      {"QAsnNVSList", "30 00", "[]"},
      {"QAsnTinyIntList", "30 06 02 01 01 02 01 02", "[\n  1,\n  2\n]"},
      {"QAsnErrInfo", "30 05 30 00 02 01 00", "{\n  \"objID\": [],\n  \"errCode\": 0\n}"},
  };
  for (const auto& row : cases) {
    const std::unique_ptr<AsnType> value = Create(row.type);
    AsnDecodeValue(*value, test_bytes::Hex(row.ber));
    EXPECT_EQ(AsnToJson(*value, kReadable, AsnJsonLayout::kIndented), row.json) << row.ber;
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
  std::ifstream in(std::string(TN_JER_GOLDEN_DIR) + "/" + GetParam());
  ASSERT_TRUE(in) << GetParam();
  int cases = 0;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (line.empty() || line[0] == '#') continue;
    const AsnJsonForm form = std::string(GetParam()) == "readable.golden" ? kReadable : kJer;
    SCOPED_TRACE(std::string(GetParam()) + ":" + std::to_string(number));
    std::string field[4];
    for (std::size_t i = 0, start = 0; i < 4; ++i) {
      const std::size_t bar = i < 3 ? line.find(" | ", start) : line.size();
      ASSERT_NE(bar, std::string::npos);
      field[i] = line.substr(start, bar - start);
      start = bar + 3;
    }
    const std::string ber = test_bytes::Hex(field[1]);
    const std::unique_ptr<AsnType> read = Create(field[0]);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(test_bytes::ThrownMessage([&] { AsnReadJson(*read, field[2], form); }), "no exception");
    EXPECT_EQ(test_bytes::ToHex(AsnEncodeValue(*read)), test_bytes::ToHex(ber));
    EXPECT_EQ(test_bytes::ToHex(AsnJsonToBer(*Create(field[0]), field[2], form)), test_bytes::ToHex(ber));
    if (field[3] == "both") {
      const std::unique_ptr<AsnType> decoded = Create(field[0]);
      AsnDecodeValue(*decoded, ber);
      EXPECT_EQ(AsnToJson(*decoded, form), field[2]);
    }
    ++cases;
  }
  EXPECT_GT(cases, 0);
}

INSTANTIATE_TEST_SUITE_P(Rules, JsonGolden,
                         testing::Values("sequence.golden", "sequence_of.golden", "integer.golden",
                                         "octet_string.golden", "boolean.golden", "readable.golden"),
                         [](const testing::TestParamInfo<const char*>& info) {
                           const std::string name = info.param;
                           return name.substr(0, name.find('.'));
                         });

}  // namespace
