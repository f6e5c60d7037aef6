// The BER codec against vectors, for primitives, records and lists alike:
// the encodings of tests/ber/accepted.golden and the refusals of
// tests/ber/refused.golden, the value classes with their own codec among them
// (with the nesting limit, whose inputs are made here), integers at every
// content length, the decode budget and printing.
#include <gtest/gtest.h>

#include <climits>
#include <iomanip>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "primitive_kinds.h"
#include "test_bytes.h"
#include "tests/qprobe/qprobe.h"
#include "tn_platform/asn/asn_ber_list_reader.h"
#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_json_list_reader.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/asn_catalogue.h"
#include "trickle_source.h"

namespace {

using test_bytes::DecodeExact;
using test_bytes::Golden;
using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

std::unique_ptr<AsnType> Create(const std::string& type) {
  if (type == "AsnOcts") return std::make_unique<AsnOcts>("previous");
  if (type == "AsnInt") return std::make_unique<AsnInt>(12345);
  if (type == "AsnTinyInt") return std::make_unique<AsnTinyInt>(12345);
  if (type == "AsnBool") return std::make_unique<AsnBool>();
  if (const AsnCatalogueEntry* entry = AsnCatalogue::Find(type)) return std::unique_ptr<AsnType>(entry->create());
  if (std::unique_ptr<AsnType> kind = test_kinds::Create(type)) return kind;
  throw std::runtime_error("no type " + type);
}

// `levels` constructed OCTET STRINGs, each inside the other, around the
// segment "x", inside `outer` (a record of the string, or nothing).
std::string Nested(int levels, const std::string& outer = "") {
  std::string hex = outer;
  for (int i = 0; i < levels; ++i) hex += " 24 80";
  hex += " 04 01 78";
  for (int i = 0; i < levels; ++i) hex += " 00 00";
  return outer.empty() ? hex : hex + " 00 00";
}

// `input` decodes, into a fresh value and into `used`, to a value that
// re-encodes to `der`; no strict prefix decodes; the stream reads a list's
// input, given two octets at a time, to the same elements.
void ExpectAccepted(const std::string& type, const std::string& input, const std::string& der, AsnType& used) {
  SCOPED_TRACE(type + " " + (input.size() < 100 ? input : der));
  const std::string octets = Hex(input);
  const std::unique_ptr<AsnType> fresh = Create(type);
  for (AsnType* value : {fresh.get(), &used}) {
    ASSERT_EQ(ThrownMessage([&] { DecodeExact(*value, octets); }), "no exception");
    EXPECT_EQ(ToHex(AsnEncodeValue(*value)), ToHex(Hex(der)));
  }
  test_bytes::ExpectEveryPrefixRefused([&] { return Create(type); }, octets);
  const AsnCatalogueEntry* entry = AsnCatalogue::Find(type);
  if (entry == nullptr || entry->createElement == nullptr) return;
  AsnBerListReader reader(Trickle(octets, 2), entry->createElement, entry->name);
  std::string content;
  while (AsnType* element = reader.Next()) content += AsnEncodeValue(*element);
  EXPECT_EQ(ToHex(AsnEncodedListHeader(content.size()) + content), ToHex(Hex(der)));
}

// `input` is refused with `message`, whose leading name is the type decoded; a
// list's input is refused by the stream in the same words.
void ExpectRefused(const std::string& input, const std::string& message) {
  SCOPED_TRACE(input.size() < 100 ? input : message);
  const std::string type = message.substr(0, message.find_first_of(".[:"));
  const std::string octets = Hex(input);
  EXPECT_EQ(ThrownMessage([&] { DecodeExact(*Create(type), octets); }), message);
  const AsnCatalogueEntry* entry = AsnCatalogue::Find(type);
  if (entry == nullptr || entry->createElement == nullptr) return;
  EXPECT_EQ(ThrownMessage([&] {
              AsnVisitEncodedList(octets, entry->createElement, entry->name, [](AsnType&, unsigned long) {});
            }),
            message)
      << "the stream";
}

TEST(BerVectors, AcceptsAndReencodes) {
  std::unique_ptr<AsnType> used;
  std::string usedType;
  for (const std::vector<std::string>& row : Golden("ber/accepted.golden")) {
    ASSERT_EQ(row.size(), 3u);
    if (usedType != row[0]) used = Create(usedType = row[0]);
    ExpectAccepted(row[0], row[1], row[2] == "=" ? row[1] : row[2], *used);
  }
  // The deepest nesting of constructed values, alone and in a record.
  ExpectAccepted("AsnOcts", Nested(AsnDecodeLimits::kMaxDepth), "04 01 78", *Create("AsnOcts"));
  ExpectAccepted("QAsnColumn", Nested(AsnDecodeLimits::kMaxDepth - 1, "30 80"), "30 03 04 01 78",
                 *Create("QAsnColumn"));
}

TEST(BerVectors, RefusesWithTheExactMessage) {
  for (const std::vector<std::string>& row : Golden("ber/refused.golden")) {
    ASSERT_EQ(row.size(), 2u);
    ExpectRefused(row[0] == "-" ? "" : row[0], row[1]);
  }
  const std::string tooDeep = "constructed values nested deeper than 32 levels at offset 64";
  ExpectRefused(Nested(AsnDecodeLimits::kMaxDepth + 1), "AsnOcts: " + tooDeep);
  ExpectRefused(Nested(AsnDecodeLimits::kMaxDepth, "30 80"), "QAsnColumn.strCondition: " + tooDeep);
  ExpectRefused(Nested(10000, "30 80"), "QAsnColumn.strCondition: " + tooDeep);  // without exhausting the stack
}

// tests/ber/integers.golden: alone and as a record's member (the record
// encoder writes it on its own path); AsnTinyInt refuses what takes more than
// 32 bits.
TEST(BerVectors, IntegersAtEveryContentLength) {
  for (const std::vector<std::string>& row : Golden("ber/integers.golden")) {
    SCOPED_TRACE(row[0]);
    const long long number = std::stoll(row[0]);
    const std::string tlv = test_bytes::Tlv("\x02", Hex(row[1]));
    EXPECT_EQ(ToHex(AsnEncodeValue(AsnInt(number))), ToHex(tlv));
    qprobe::CodecProbe probe;  // flag FALSE, big
    probe.big = number;
    EXPECT_EQ(ToHex(AsnEncodeValue(probe)), ToHex(test_bytes::Tlv("\x30", Hex("01 01 00") + tlv)));
    for (const char* type : {"AsnInt", "AsnTinyInt"}) {
      const std::unique_ptr<AsnType> back = Create(type);
      const bool fits = std::string(type) == "AsnInt" || (number >= INT_MIN && number <= INT_MAX);
      EXPECT_EQ(ThrownMessage([&] { DecodeExact(*back, tlv); }),
                fits ? "no exception"
                     : "AsnTinyInt: INTEGER of " + std::to_string(tlv.size() - 2) +
                           " octets does not fit (at most 4) at offset 0");
      if (fits) {
        EXPECT_EQ(AsnEncodeValue(*back), tlv);
      }
    }
    test_bytes::ExpectEveryPrefixRefused([] { return Create("AsnInt"); }, tlv);
  }
}

// tests/ber/budget.golden; each decode has a budget of its own.
TEST(BerVectors, RefusesTheFirstListElementBeyondTheBudget) {
  for (const std::vector<std::string>& row : Golden("ber/budget.golden")) {
    SCOPED_TRACE(row[1]);
    const std::unique_ptr<AsnType> value = Create(row[0]);
    EXPECT_EQ(ThrownMessage([&] { AsnDecodeValue(*value, Hex(row[1]), AsnDecodeBudget{std::stoul(row[2])}); }),
              row[3]);
  }
  const std::string pairs = Hex(Golden("ber/budget.golden")[0][1]);
  const std::unique_ptr<AsnType> list = Create("QAsnNVSList");
  EXPECT_NE(ThrownMessage([&] { AsnDecodeValue(*list, pairs, AsnDecodeBudget{2}); }), "no exception");
  EXPECT_EQ(ThrownMessage([&] { AsnDecodeValue(*list, pairs); }), "no exception");
  EXPECT_EQ(AsnDecodeFront(*list, pairs + pairs.substr(0, 8), AsnDecodeBudget{3}), pairs.size());
}

// OCTET STRING as tests/ber/printed_octets.golden; printing leaves the
// stream's fill alone.
TEST(BerVectors, Prints) {
  for (const std::vector<std::string>& row : Golden("ber/printed_octets.golden")) {
    const std::string content = row[0] == "-" ? "" : Hex(row[0]);
    std::ostringstream os;
    os << std::setfill('*');
    AsnOcts(content.data(), content.size()).Print(os, 0, false);
    EXPECT_EQ(os.str(), row[1]);
    EXPECT_EQ(os.fill(), '*');
  }
  std::ostringstream os;
  AsnTinyInt(-7).Print(os, 3, true);
  AsnInt(LLONG_MIN).Print(os, 0, false);
  AsnBool(true).Print(os, 0, false);
  AsnBool(false).Print(os, 0, false);
  qprobe::CodecProbe probe;
  AsnDecodeValue(probe, Hex("30 16 01 01 FF 02 02 FF 7F A0 03 04 01 63 A1 04 02 02 01 2C 9F 28 01 6E"));
  probe.Print(os, 0, false);
  EXPECT_EQ(os.str(),
            "-7-9223372036854775808TRUEFALSECodecProbe {\n  flag TRUE\n  big -129\n  column QAsnColumn {\n"
            "    strCondition \"c\"\n  }\n  codes {\n    - 300\n  }\n  note \"n\"\n}");
}

}  // namespace
