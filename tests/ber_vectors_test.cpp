// The BER codec against vectors, for primitives, records and lists alike:
// the encodings of tests/ber/accepted.golden and the refusals of
// tests/ber/refused.golden, the value classes with their own codec among them
// (with the nesting limit, whose inputs are made here), integers at every content length, the decode budget and printing.
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

// Minimal two's complement, cross-checked with pyasn1's encoder: alone and as
// a record's member (the record encoder writes it on its own path). AsnTinyInt
// refuses what takes more than 32 bits.
TEST(BerVectors, IntegersAtEveryContentLength) {
  const std::pair<long long, const char*> cases[] = {
      {0, "00"},
      {-1, "FF"},
      {127, "7F"},
      {128, "00 80"},
      {-128, "80"},
      {-129, "FF 7F"},
      {32767, "7F FF"},
      {32768, "00 80 00"},
      {-32769, "FF 7F FF"},
      {INT_MAX, "7F FF FF FF"},
      {INT_MIN, "80 00 00 00"},
      {2147483648LL, "00 80 00 00 00"},
      {-2147483649LL, "FF 7F FF FF FF"},
      {LLONG_MAX, "7F FF FF FF FF FF FF FF"},
      {LLONG_MIN, "80 00 00 00 00 00 00 00"},
  };
  for (const auto& [number, content] : cases) {
    SCOPED_TRACE(number);
    const std::string tlv = '\x02' + std::string(1, static_cast<char>(Hex(content).size())) + Hex(content);
    EXPECT_EQ(ToHex(AsnEncodeValue(AsnInt(number))), ToHex(tlv));
    qprobe::CodecProbe probe;  // flag FALSE, big
    probe.big = number;
    EXPECT_EQ(ToHex(AsnEncodeValue(probe)), ToHex('\x30' + std::string(1, static_cast<char>(tlv.size() + 3)) +
                                                  Hex("01 01 00") + tlv));
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

// One element too many is refused at that element, nested lists counting with
// the outer one; each decode has a budget of its own.
TEST(BerVectors, RefusesTheFirstListElementBeyondTheBudget) {
  const char* threePairs = "30 12 30 04 04 00 04 00 30 04 04 00 04 00 30 04 04 00 04 00";
  const char* errInfoList = "30 0D 30 0B 30 06 02 01 01 02 01 02 02 01 00";  // one entry, objID of two
  const struct {
    const char* type;
    const char* input;
    std::size_t maxListElements;
    const char* expected;
  } cases[] = {
      {"QAsnNVSList", threePairs, 3, "no exception"},
      {"QAsnNVSList", threePairs, 2, "QAsnNVSList[2]: more than 2 list elements, the decode's budget at offset 14"},
      {"QAsnNVSList", threePairs, 0, "QAsnNVSList[0]: more than 0 list elements, the decode's budget at offset 2"},
      {"QAsnNVSList", "30 00", 0, "no exception"},
      {"QAsnErrInfoList", errInfoList, 3, "no exception"},
      {"QAsnErrInfoList", errInfoList, 2,
       "QAsnErrInfoList[0].objID[1]: more than 2 list elements, the decode's budget at offset 9"},
      {"QAsnTinyIntList", "30 80 02 01 01 02 01 02 00 00", 1,
       "QAsnTinyIntList[1]: more than 1 list elements, the decode's budget at offset 5"},
      {"QAsnUniResID", "30 08 04 01 41 04 00 02 01 07", 0, "no exception"},
      {"QAsnErrInfoReturn", "30 0A 02 01 01 A0 05 30 03 30 00 02", 0,
       "QAsnErrInfoReturn.errInfoList[0]: more than 0 list elements, the decode's budget at offset 7"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.input);
    const std::unique_ptr<AsnType> value = Create(c.type);
    EXPECT_EQ(ThrownMessage([&] { AsnDecodeValue(*value, Hex(c.input), AsnDecodeBudget{c.maxListElements}); }),
              c.expected);
  }
  const std::string pairs = Hex(threePairs);
  const std::unique_ptr<AsnType> list = Create("QAsnNVSList");
  EXPECT_NE(ThrownMessage([&] { AsnDecodeValue(*list, pairs, AsnDecodeBudget{2}); }), "no exception");
  EXPECT_EQ(ThrownMessage([&] { AsnDecodeValue(*list, pairs); }), "no exception");
  EXPECT_EQ(AsnDecodeFront(*list, pairs + pairs.substr(0, 8), AsnDecodeBudget{3}), pairs.size());
}

// OCTET STRING prints as quoted text when it is UTF-8 text without control
// characters, else as hex; printing leaves the stream's fill alone.
TEST(BerVectors, Prints) {
  const std::pair<std::string, const char*> octs[] = {
      {"", "\"\""},
      {"say \"hi\"", "\"say \"\"hi\"\"\""},
      {std::string("a\0b", 3), "'610062'H"},
      {"\xFF\x0A", "'FF0A'H"},
      {"gr\xC3\xBC\xC3\x9F", "\"gr\xC3\xBC\xC3\x9F\""},
      {"\xC3\x28", "'C328'H"},  // a broken sequence
      {"\xC0\xAF", "'C0AF'H"},  // not the shortest form
      {"\xC2\x85", "'C285'H"},  // a C1 control
  };
  for (const auto& [content, printed] : octs) {
    std::ostringstream os;
    os << std::setfill('*');
    AsnOcts(content.data(), content.size()).Print(os, 0, false);
    EXPECT_EQ(os.str(), printed);
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
