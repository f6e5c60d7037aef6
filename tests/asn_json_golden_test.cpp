// JER against the golden files of tests/jer/: values worked out by hand from
// the encoding rules, one file per rule, checked in both directions.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tests/test_bytes.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/asn_catalogue.h"

namespace {

struct GoldenCase {
  std::string where;  // file:line
  std::string type;
  std::string ber;
  std::string jer;
  bool both;  // else read only
};

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t");
  const std::size_t last = text.find_last_not_of(" \t");
  return first == std::string::npos ? "" : text.substr(first, last - first + 1);
}

std::vector<GoldenCase> ReadGolden(const std::string& file) {
  std::ifstream in(std::string(TN_JER_GOLDEN_DIR) + "/" + file);
  EXPECT_TRUE(in) << file;
  std::vector<GoldenCase> cases;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> fields;
    for (std::size_t start = 0;;) {
      const std::size_t bar = line.find(" | ", start);
      fields.push_back(Trimmed(line.substr(start, bar == std::string::npos ? std::string::npos : bar - start)));
      if (bar == std::string::npos) break;
      start = bar + 3;
    }
    EXPECT_EQ(fields.size(), 4u) << file << ":" << number;
    if (fields.size() != 4) continue;
    cases.push_back({file + ":" + std::to_string(number), fields[0], test_bytes::Hex(fields[1]), fields[2],
                     fields[3] == "both"});
  }
  return cases;
}

std::unique_ptr<AsnType> Create(const std::string& type) {
  const AsnCatalogueEntry* entry = AsnCatalogue::Find(type);
  if (entry == nullptr) return nullptr;
  return std::unique_ptr<AsnType>(entry->create());
}

class JerGolden : public testing::TestWithParam<const char*> {};

TEST_P(JerGolden, WritesAndReadsEveryCase) {
  ASSERT_NE(dlopen(TN_QPROBE_LIBRARY, RTLD_NOW), nullptr) << dlerror();  // the test module's types
  const std::vector<GoldenCase> cases = ReadGolden(GetParam());
  EXPECT_FALSE(cases.empty());
  for (const GoldenCase& golden : cases) {
    SCOPED_TRACE(golden.where);
    const std::unique_ptr<AsnType> read = Create(golden.type);
    ASSERT_NE(read, nullptr) << golden.type;
    EXPECT_EQ(test_bytes::ThrownMessage([&] { AsnReadJson(*read, golden.jer, AsnJsonForm::kJer); }), "no exception");
    EXPECT_EQ(test_bytes::ToHex(AsnEncodeValue(*read)), test_bytes::ToHex(golden.ber));
    EXPECT_EQ(test_bytes::ToHex(AsnJsonToBer(*read, golden.jer, AsnJsonForm::kJer)), test_bytes::ToHex(golden.ber));
    if (!golden.both) continue;
    const std::unique_ptr<AsnType> decoded = Create(golden.type);
    AsnDecodeValue(*decoded, golden.ber);
    EXPECT_EQ(AsnToJson(*decoded, AsnJsonForm::kJer), golden.jer);
  }
}

INSTANTIATE_TEST_SUITE_P(Rules, JerGolden,
                         testing::Values("sequence.golden", "sequence_of.golden", "integer.golden",
                                         "octet_string.golden", "boolean.golden"),
                         [](const testing::TestParamInfo<const char*>& info) {
                           std::string name = info.param;
                           return name.substr(0, name.find('.'));
                         });

}  // namespace
