// OCTET STRING, INTEGER and BOOLEAN values: exact octets both ways, the exact
// error for every malformed encoding, and no out-of-bounds read on any
// truncated input.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <functional>
#include <iomanip>
#include <memory>
#include <sstream>
#include <vector>

#include "platform/asn/asn_bool.h"
#include "platform/asn/asn_int.h"
#include "platform/asn/asn_octs.h"
#include "platform/asn/asn_value_io.h"
#include "test_bytes.h"

namespace {

using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

std::string EncodedHex(AsnType& value) { return ToHex(AsnEncodeValue(value)); }

// Decodes from a heap block of exactly the input's size (see ber_test.cpp).
void DecodeExact(AsnType& value, const std::string& octets) {
  const std::unique_ptr<char[]> block(new char[octets.size()]);
  std::copy(octets.begin(), octets.end(), block.get());
  AsnDecodeValue(value, std::string_view(block.get(), octets.size()));
}

std::string DecodeError(AsnType& value, const char* hex) {
  return ThrownMessage([&] { DecodeExact(value, Hex(hex)); });
}

// ---- OCTET STRING ------------------------------------------------------------------

TEST(AsnOcts, EncodesPrimitiveDefiniteForm) {
  const struct {
    std::string content;
    const char* octets;
  } cases[] = {
      {"", "04 00"},
      {"ab", "04 02 61 62"},
      {std::string("a\0b", 3), "04 03 61 00 62"},
      {std::string(2, '\0'), "04 02 00 00"},
  };
  for (const auto& c : cases) {
    AsnOcts value(c.content.data(), c.content.size());
    EXPECT_EQ(EncodedHex(value), c.octets);
  }
  AsnOcts longValue(std::string(128, 'x').c_str());
  const std::string octets = AsnEncodeValue(longValue);
  EXPECT_EQ(ToHex(octets.substr(0, 3)), "04 81 80");
  EXPECT_EQ(octets.size(), 131u);
}

TEST(AsnOcts, SetFromTextStopsAtTheTerminator) {
  AsnOcts value("abc");
  EXPECT_EQ(value.Len(), 3u);
  value.Set(nullptr);
  EXPECT_EQ(value.Len(), 0u);
  EXPECT_EQ(value.data(), nullptr);
  value.ReSet("xy");
  EXPECT_EQ(value.view(), "xy");
}

struct OctsDecodeCase {
  const char* what;
  const char* input;
  std::string content;
};

const OctsDecodeCase kOctsDecodeCases[] = {
    {"empty primitive", "04 00", ""},
    {"embedded zero bytes kept", "04 03 61 00 62", std::string("a\0b", 3)},
    {"long-form length", "04 81 03 61 62 63", "abc"},
    {"constructed, two segments", "24 08 04 02 61 62 04 02 63 64", "abcd"},
    {"constructed, indefinite", "24 80 04 01 61 04 01 62 00 00", "ab"},
    {"constructed, empty", "24 00", ""},
    {"constructed, nested segments", "24 0A 24 04 04 02 61 62 04 02 63 64", "abcd"},
    {"constructed, indefinite segment inside definite", "24 0B 24 80 04 02 61 62 00 00 04 01 63", "abc"},
    {"constructed, empty segments", "24 04 04 00 24 00", ""},
};

TEST(AsnOcts, DecodesPrimitiveAndConstructedForms) {
  for (const OctsDecodeCase& c : kOctsDecodeCases) {
    SCOPED_TRACE(c.what);
    AsnOcts value("previous");
    EXPECT_EQ(ThrownMessage([&] { DecodeExact(value, Hex(c.input)); }), "no exception");
    EXPECT_EQ(value.view(), c.content);
  }
}

struct ErrorCase {
  const char* what;
  const char* input;
  const char* error;
};

const ErrorCase kOctsErrorCases[] = {
    {"indefinite primitive", "04 80 61 00 00", "indefinite length on a primitive OCTET STRING at offset 2"},
    {"indefinite primitive segment", "24 80 04 80 61 00 00 00 00",
     "indefinite length on a primitive OCTET STRING at offset 4"},
    {"segment of another type", "24 03 02 01 05", "OCTET STRING segment with tag [UNIVERSAL 2] primitive at offset 3"},
    {"segment past its enclosing value", "24 03 04 02 61 62",
     "OCTET STRING segment runs past its enclosing value at offset 6"},
    {"indefinite without end-of-contents", "24 80 04 01 61", "OCTET STRING segments run past the input at offset 5"},
    {"wrong tag", "02 01 00", "OCTET STRING: wrong tag [UNIVERSAL 2] primitive at offset 1"},
    {"empty input", "", "OCTET STRING: input ends before the tag at offset 0"},
    {"length past the input", "04 05 61", "length 5 runs past the input (1 octets left) at offset 2"},
    {"octets left over", "04 01 61 00", "1 octets left over after AsnOcts at offset 3"},
};

TEST(AsnOcts, RejectsMalformedEncodings) {
  for (const ErrorCase& c : kOctsErrorCases) {
    SCOPED_TRACE(c.what);
    AsnOcts value;
    EXPECT_EQ(DecodeError(value, c.input), c.error);
  }
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
  EXPECT_EQ(DecodeError(value, nested(AsnDecodeLimits::kMaxDepth).c_str()), "no exception");
  EXPECT_EQ(value.view(), "a");
  EXPECT_EQ(DecodeError(value, nested(AsnDecodeLimits::kMaxDepth + 1).c_str()),
            "constructed values nested deeper than 32 levels at offset 66");
}

TEST(AsnOcts, PrintsTextOrHex) {
  const struct {
    std::string content;
    const char* printed;
  } cases[] = {
      {"", "\"\""},
      {"ab c", "\"ab c\""},
      {"say \"hi\"", "\"say \"\"hi\"\"\""},
      {std::string("a\0b", 3), "'610062'H"},
      {"\xFF\x0A", "'FF0A'H"},
  };
  for (const auto& c : cases) {
    std::ostringstream os;
    os << std::setfill('*');
    AsnOcts(c.content.data(), c.content.size()).Print(os, 0, false);
    EXPECT_EQ(os.str(), c.printed);
    EXPECT_EQ(os.fill(), '*');
  }
}

// ---- INTEGER -----------------------------------------------------------------------

struct IntCase {
  long long value;
  const char* octets;
};

// Minimal two's complement (X.690 8.3.2), cross-checked with pyasn1's encoder.
const IntCase kTinyIntCases[] = {
    {0, "02 01 00"},
    {1, "02 01 01"},
    {-1, "02 01 FF"},
    {127, "02 01 7F"},
    {128, "02 02 00 80"},
    {-128, "02 01 80"},
    {-129, "02 02 FF 7F"},
    {255, "02 02 00 FF"},
    {256, "02 02 01 00"},
    {32767, "02 02 7F FF"},
    {32768, "02 03 00 80 00"},
    {-32768, "02 02 80 00"},
    {-32769, "02 03 FF 7F FF"},
    {8388607, "02 03 7F FF FF"},
    {-8388609, "02 04 FF 7F FF FF"},
    {INT_MAX, "02 04 7F FF FF FF"},
    {INT_MIN, "02 04 80 00 00 00"},
};

const IntCase kWideIntCases[] = {
    {2147483648LL, "02 05 00 80 00 00 00"},       {-2147483649LL, "02 05 FF 7F FF FF FF"},
    {1LL << 40, "02 06 01 00 00 00 00 00"},       {LLONG_MAX, "02 08 7F FF FF FF FF FF FF FF"},
    {LLONG_MIN, "02 08 80 00 00 00 00 00 00 00"}, {-0x80000000000001LL, "02 08 FF 7F FF FF FF FF FF FF"},
};

TEST(AsnInteger, TinyIntCodesMinimalTwosComplement) {
  for (const IntCase& c : kTinyIntCases) {
    SCOPED_TRACE(c.value);
    AsnTinyInt value(static_cast<int>(c.value));
    EXPECT_EQ(EncodedHex(value), c.octets);
    AsnTinyInt back(12345);
    DecodeExact(back, Hex(c.octets));
    EXPECT_EQ(back.Value(), c.value);
  }
}

TEST(AsnInteger, IntCodesMinimalTwosComplement) {
  std::vector<IntCase> cases(std::begin(kTinyIntCases), std::end(kTinyIntCases));
  cases.insert(cases.end(), std::begin(kWideIntCases), std::end(kWideIntCases));
  for (const IntCase& c : cases) {
    SCOPED_TRACE(c.value);
    AsnInt value(c.value);
    EXPECT_EQ(EncodedHex(value), c.octets);
    AsnInt back(12345);
    DecodeExact(back, Hex(c.octets));
    EXPECT_EQ(back.Value(), c.value);
  }
}

TEST(AsnInteger, TinyIntRefusesWhatDoesNotFit) {
  for (const IntCase& c : kWideIntCases) {
    SCOPED_TRACE(c.value);
    AsnTinyInt value;
    const std::string octets = Hex(c.octets);
    const std::string expected = "AsnTinyInt: INTEGER of " + std::to_string(octets.size() - 2) +
                                 " octets does not fit (at most 4) at offset " + std::to_string(octets.size());
    EXPECT_EQ(ThrownMessage([&] { DecodeExact(value, octets); }), expected);
  }
}

const ErrorCase kIntErrorCases[] = {
    {"no content octets", "02 00", "INTEGER without content octets at offset 2"},
    {"leading 00 before a clear bit", "02 02 00 7F", "INTEGER content is not minimal at offset 4"},
    {"leading FF before a set bit", "02 02 FF 80", "INTEGER content is not minimal at offset 4"},
    {"non-minimal zero", "02 02 00 00", "INTEGER content is not minimal at offset 4"},
    {"indefinite length", "02 80 01 00 00", "indefinite length on an INTEGER at offset 2"},
    {"wrong tag", "0A 01 01", "wrong tag [UNIVERSAL 10] primitive at offset 1"},
    {"context tag", "80 01 01", "wrong tag [0] primitive at offset 1"},
    {"empty input", "", "input ends before the tag at offset 0"},
    {"no length", "02", "input ends in the length at offset 1"},
    {"content past the input", "02 02 01", "length 2 runs past the input (1 octets left) at offset 2"},
    {"nine octets", "02 09 00 80 00 00 00 00 00 00 00", "INTEGER of 9 octets does not fit (at most 8) at offset 11"},
};

TEST(AsnInteger, RejectsMalformedIntegers) {
  for (const ErrorCase& c : kIntErrorCases) {
    SCOPED_TRACE(c.what);
    AsnInt wide;
    const std::string wideError = DecodeError(wide, c.input);
    const std::string length = std::string(c.error).substr(0, 6);
    if (length == "length") {  // found by the length coding, which names no type
      EXPECT_EQ(wideError, c.error);
    } else {
      EXPECT_EQ(wideError, std::string("AsnInt: ") + c.error);
    }
    if (std::string(c.what) == "nine octets") continue;  // the tiny class stops at 4 octets
    AsnTinyInt tiny;
    const std::string tinyError = DecodeError(tiny, c.input);
    EXPECT_EQ(tinyError, length == "length" ? c.error : std::string("AsnTinyInt: ") + c.error);
  }
}

TEST(AsnInteger, Prints) {
  std::ostringstream os;
  AsnTinyInt(-7).Print(os, 3, true);
  os << ' ';
  AsnInt(LLONG_MIN).Print(os, 0, false);
  EXPECT_EQ(os.str(), "-7 -9223372036854775808");
}

// ---- BOOLEAN -----------------------------------------------------------------------

TEST(AsnBool, CodesOneContentOctet) {
  AsnBool yes(true);
  AsnBool no(false);
  EXPECT_EQ(EncodedHex(yes), "01 01 FF");
  EXPECT_EQ(EncodedHex(no), "01 01 00");

  const struct {
    const char* input;
    bool value;
  } accepted[] = {{"01 01 FF", true}, {"01 01 01", true}, {"01 01 00", false}};
  for (const auto& c : accepted) {
    AsnBool value(!c.value);
    DecodeExact(value, Hex(c.input));
    EXPECT_EQ(value.Value(), c.value) << c.input;
  }

  const ErrorCase rejected[] = {
      {"no content", "01 00", "AsnBool: BOOLEAN content is not one octet at offset 2"},
      {"two octets", "01 02 00 00", "AsnBool: BOOLEAN content is not one octet at offset 2"},
      {"indefinite", "01 80 FF 00 00", "AsnBool: BOOLEAN content is not one octet at offset 2"},
      {"wrong tag", "02 01 00", "AsnBool: wrong tag [UNIVERSAL 2] primitive at offset 1"},
  };
  for (const ErrorCase& c : rejected) {
    AsnBool value;
    EXPECT_EQ(DecodeError(value, c.input), c.error) << c.what;
  }

  std::ostringstream os;
  yes.Print(os, 0, false);
  no.Print(os, 0, false);
  EXPECT_EQ(os.str(), "TRUEFALSE");
}

// ---- truncated input ------------------------------------------------------------------

// Every strict prefix of a valid encoding is refused with CSM_Exception*, and
// (under AddressSanitizer) never read beyond its end.
TEST(AsnPrimitives, EveryStrictPrefixThrows) {
  const struct {
    const char* input;
    std::function<std::unique_ptr<AsnType>()> make;
  } cases[] = {
      {"04 03 61 00 62", [] { return std::make_unique<AsnOcts>(); }},
      {"04 81 03 61 62 63", [] { return std::make_unique<AsnOcts>(); }},
      {"24 0B 24 80 04 02 61 62 00 00 04 01 63", [] { return std::make_unique<AsnOcts>(); }},
      {"24 80 04 01 61 24 80 04 01 62 00 00 00 00", [] { return std::make_unique<AsnOcts>(); }},
      {"02 04 80 00 00 00", [] { return std::make_unique<AsnTinyInt>(); }},
      {"02 08 7F FF FF FF FF FF FF FF", [] { return std::make_unique<AsnInt>(); }},
      {"01 01 FF", [] { return std::make_unique<AsnBool>(); }},
  };
  for (const auto& c : cases) {
    const std::string octets = Hex(c.input);
    EXPECT_EQ(ThrownMessage([&] { DecodeExact(*c.make(), octets); }), "no exception") << c.input;
    for (std::size_t size = 0; size < octets.size(); ++size) {
      SCOPED_TRACE(ToHex(octets.substr(0, size)));
      bool thrown = false;
      try {
        DecodeExact(*c.make(), octets.substr(0, size));
      } catch (CSM_Exception* error) {
        thrown = true;
        EXPECT_EQ(error->ErrorCode(), kAsnDecodeError);
        delete error;
      }
      EXPECT_TRUE(thrown);
    }
  }
}

}  // namespace
