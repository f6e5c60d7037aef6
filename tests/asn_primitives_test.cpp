// OCTET STRING, INTEGER and BOOLEAN values: exact octets both ways, the exact
// error for every malformed encoding, and no out-of-bounds read on any
// truncated input.
#include <gtest/gtest.h>

#include <climits>
#include <iomanip>
#include <memory>
#include <sstream>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_value_io.h"
#include "test_bytes.h"

namespace {

using test_bytes::DecodeExact;
using test_bytes::ExpectEveryPrefixRefused;
using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

std::string EncodedHex(AsnType& value) { return ToHex(AsnEncodeValue(value)); }

std::string DecodeError(AsnType& value, const std::string& hex) {
  return ThrownMessage([&] { DecodeExact(value, Hex(hex)); });
}

template <class T>
std::unique_ptr<AsnType> New() {
  return std::make_unique<T>();
}

TEST(AsnOcts, DecodesPrimitiveAndConstructedForms) {
  const struct {
    const char* input;
    std::string content;
    bool encoded;  // also what the content encodes to
  } cases[] = {
      {"04 00", "", true},
      {"04 03 61 00 62", std::string("a\0b", 3), true},  // zero octets are kept
      {"04 81 03 61 62 63", "abc", false},
      {"24 08 04 02 61 62 04 02 63 64", "abcd", false},  // constructed: the segments joined
      {"24 80 04 01 61 04 01 62 00 00", "ab", false},
      {"24 00", "", false},
      {"24 0A 24 04 04 02 61 62 04 02 63 64", "abcd", false},    // nested segments
      {"24 0B 24 80 04 02 61 62 00 00 04 01 63", "abc", false},  // indefinite inside definite
      {"24 04 04 00 24 00", "", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.input);
    AsnOcts value("previous");
    EXPECT_EQ(DecodeError(value, c.input), "no exception");
    EXPECT_EQ(value.view(), c.content);
    if (c.encoded) {
      EXPECT_EQ(EncodedHex(value), c.input);
    }
    ExpectEveryPrefixRefused(New<AsnOcts>, Hex(c.input));
  }
  AsnOcts longValue(std::string(128, 'x').c_str());
  EXPECT_EQ(EncodedHex(longValue).substr(0, 8), "04 81 80");
}

// Constructed strings nested one level too deep are refused; one level less is fine.
TEST(AsnOcts, LimitsConstructedNesting) {
  const auto nested = [](unsigned levels) {
    std::string hex;
    for (unsigned i = 0; i < levels; ++i) hex += "24 80 ";
    hex += "04 01 61 ";
    for (unsigned i = 0; i < levels; ++i) hex += "00 00 ";
    return hex;
  };
  AsnOcts value;
  EXPECT_EQ(DecodeError(value, nested(AsnDecodeLimits::kMaxDepth)), "no exception");
  EXPECT_EQ(value.view(), "a");
  EXPECT_EQ(DecodeError(value, nested(AsnDecodeLimits::kMaxDepth + 1)),
            "AsnOcts: constructed values nested deeper than 32 levels at offset 64");
}

// Minimal two's complement, cross-checked with pyasn1's encoder. Values that do
// not fit in 32 bits are refused by AsnTinyInt.
TEST(AsnInteger, CodesMinimalTwosComplement) {
  const std::pair<long long, const char*> cases[] = {
      {0, "02 01 00"},
      {-1, "02 01 FF"},
      {127, "02 01 7F"},
      {128, "02 02 00 80"},
      {-128, "02 01 80"},
      {-129, "02 02 FF 7F"},
      {32768, "02 03 00 80 00"},
      {-32769, "02 03 FF 7F FF"},
      {INT_MAX, "02 04 7F FF FF FF"},
      {INT_MIN, "02 04 80 00 00 00"},
      {2147483648LL, "02 05 00 80 00 00 00"},
      {-2147483649LL, "02 05 FF 7F FF FF FF"},
      {LLONG_MAX, "02 08 7F FF FF FF FF FF FF FF"},
      {LLONG_MIN, "02 08 80 00 00 00 00 00 00 00"},
  };
  for (const auto& [number, octets] : cases) {
    SCOPED_TRACE(number);
    AsnInt value(number);
    EXPECT_EQ(EncodedHex(value), octets);
    AsnInt back(12345);
    DecodeExact(back, Hex(octets));
    EXPECT_EQ(back.Value(), number);
    ExpectEveryPrefixRefused(New<AsnInt>, Hex(octets));

    AsnTinyInt tiny(12345);
    const std::size_t size = Hex(octets).size();
    if (number < INT_MIN || number > INT_MAX) {
      EXPECT_EQ(DecodeError(tiny, octets),
                "AsnTinyInt: INTEGER of " + std::to_string(size - 2) + " octets does not fit (at most 4) at offset 0");
      continue;
    }
    DecodeExact(tiny, Hex(octets));
    EXPECT_EQ(tiny.Value(), number);
    EXPECT_EQ(EncodedHex(tiny), octets);
    ExpectEveryPrefixRefused(New<AsnTinyInt>, Hex(octets));
  }
}

TEST(AsnBool, CodesOneContentOctet) {
  AsnBool yes(true);
  AsnBool no(false);
  EXPECT_EQ(EncodedHex(yes), "01 01 FF");
  EXPECT_EQ(EncodedHex(no), "01 01 00");
  const std::pair<const char*, bool> accepted[] = {{"01 01 FF", true}, {"01 01 01", true}, {"01 01 00", false}};
  for (const auto& [input, expected] : accepted) {
    AsnBool value(!expected);
    DecodeExact(value, Hex(input));
    EXPECT_EQ(value.Value(), expected) << input;
    ExpectEveryPrefixRefused(New<AsnBool>, Hex(input));
  }
}

// Errors of the length coding name no type; the others name the class.
TEST(AsnPrimitives, RejectsMalformedEncodings) {
  const struct {
    std::unique_ptr<AsnType> (*make)();
    const char* input;
    const char* error;
  } cases[] = {
      {New<AsnOcts>, "04 80 61 00 00", "AsnOcts: indefinite length on a primitive OCTET STRING at offset 0"},
      {New<AsnOcts>, "24 80 04 80 61 00 00 00 00", "AsnOcts: indefinite length on a primitive OCTET STRING at offset 2"},
      {New<AsnOcts>, "24 03 02 01 05", "AsnOcts: OCTET STRING segment with tag [UNIVERSAL 2] primitive (INTEGER) at offset 2"},
      {New<AsnOcts>, "24 03 04 02 61 62", "AsnOcts: OCTET STRING segment runs past its enclosing value at offset 2"},
      {New<AsnOcts>, "24 80 04 01 61", "AsnOcts: input ends before the end-of-contents octets at offset 5"},
      {New<AsnOcts>, "02 01 00", "AsnOcts: wrong tag [UNIVERSAL 2] primitive (INTEGER), expected [UNIVERSAL 4] primitive (OCTET STRING) at offset 0"},
      {New<AsnOcts>, "", "AsnOcts: input ends before the tag at offset 0"},
      {New<AsnOcts>, "04 05 61", "AsnOcts: input ends 4 octets short of the value at offset 3"},
      {New<AsnOcts>, "04 01 61 00", "AsnOcts: 1 octet left over after the value at offset 3"},
      {New<AsnInt>, "02 00", "AsnInt: INTEGER without content octets at offset 0"},
      {New<AsnInt>, "02 02 00 7F", "AsnInt: INTEGER content is not minimal at offset 0"},
      {New<AsnInt>, "02 02 FF 80", "AsnInt: INTEGER content is not minimal at offset 0"},
      {New<AsnInt>, "02 02 00 00", "AsnInt: INTEGER content is not minimal at offset 0"},
      {New<AsnInt>, "02 80 01 00 00", "AsnInt: indefinite length on an INTEGER at offset 0"},
      {New<AsnInt>, "0A 01 01", "AsnInt: wrong tag [UNIVERSAL 10] primitive (ENUMERATED), expected [UNIVERSAL 2] primitive (INTEGER) at offset 0"},
      {New<AsnInt>, "", "AsnInt: input ends before the tag at offset 0"},
      {New<AsnInt>, "02", "AsnInt: input ends in the length at offset 1"},
      {New<AsnInt>, "02 02 01", "AsnInt: input ends 1 octet short of the value at offset 3"},
      {New<AsnInt>, "02 09 00 80 00 00 00 00 00 00 00",
       "AsnInt: INTEGER of 9 octets does not fit (at most 8) at offset 0"},
      {New<AsnTinyInt>, "02 02 FF 80", "AsnTinyInt: INTEGER content is not minimal at offset 0"},
      {New<AsnBool>, "01 00", "AsnBool: BOOLEAN content is not one octet at offset 0"},
      {New<AsnBool>, "01 02 00 00", "AsnBool: BOOLEAN content is not one octet at offset 0"},
      {New<AsnBool>, "01 80 FF 00 00", "AsnBool: BOOLEAN content is not one octet at offset 0"},
      {New<AsnBool>, "02 01 00", "AsnBool: wrong tag [UNIVERSAL 2] primitive (INTEGER), expected [UNIVERSAL 1] primitive (BOOLEAN) at offset 0"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(DecodeError(*c.make(), c.input), c.error) << c.input;
  }
}

// OCTET STRING prints as quoted text when it is UTF-8 text without control
// characters, else as hex; printing leaves the stream's fill alone.
TEST(AsnPrimitives, Print) {
  const std::pair<std::string, const char*> octs[] = {{"", "\"\""},
                                                      {"say \"hi\"", "\"say \"\"hi\"\"\""},
                                                      {std::string("a\0b", 3), "'610062'H"},
                                                      {"\xFF\x0A", "'FF0A'H"},
                                                      {"gr\xC3\xBC\xC3\x9F", "\"gr\xC3\xBC\xC3\x9F\""},
                                                      {"\xC3\x28", "'C328'H"},       // a broken sequence
                                                      {"\xC0\xAF", "'C0AF'H"},       // not the shortest form
                                                      {"\xC2\x85", "'C285'H"}};      // a C1 control
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
  EXPECT_EQ(os.str(), "-7-9223372036854775808TRUEFALSE");
}

}  // namespace
