// Tag and length coding: exact octets both ways, and the exact error for every
// malformed identifier or length.
#include "platform/asn/ber.h"

#include <gtest/gtest.h>

#include <vector>

#include "test_bytes.h"

namespace {

using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

// The input in a heap block of exactly its size, so that a read past the end
// is an AddressSanitizer error rather than a read of a neighbour.
std::vector<unsigned char> Input(std::string_view hex) {
  const std::string octets = Hex(hex);
  return std::vector<unsigned char>(octets.begin(), octets.end());
}

template <class Encode>
std::string Encoded(Encode&& encode, unsigned long& written) {
  AsnBuf buf;
  written = encode(buf);
  return ToHex(buf.EncodedBytes());
}

// ---- identifier octets ---------------------------------------------------------

struct TagCase {
  const char* what;
  const char* input;
  AsnTag tag;
  unsigned long consumed;
  bool readError;
  const char* error;  // null: no exception
};

const TagCase kTagCases[] = {
    {"low tag number", "02", 0x02000000u, 1, false, nullptr},
    {"SEQUENCE", "30", 0x30000000u, 1, false, nullptr},
    {"context 30, the last low number", "9E", 0x9E000000u, 1, false, nullptr},
    {"context 31, first high number", "9F 1F", 0x9F1F0000u, 2, false, nullptr},
    {"constructed 128: two subsequent octets", "BF 81 00", 0xBF810000u, 3, false, nullptr},
    {"largest number that fits: 2^21-1", "9F FF FF 7F", 0x9FFFFF7Fu, 4, false, nullptr},
    {"only the identifier is read", "9F 1F 05 01", 0x9F1F0000u, 2, false, nullptr},
    {"empty input", "", 0, 1, true, nullptr},
    {"high form cut after the first octet", "9F", 0x9F000000u, 2, true, nullptr},
    {"high form cut inside the number", "9F 81", 0x9F810000u, 3, true, nullptr},
    {"leading 0x80 subsequent octet", "9F 80 01", 0, 0, false,
     "high tag number form with a leading 0x80 octet at offset 2"},
    {"number needs four subsequent octets", "9F 81 81 81 01", 0, 0, false,
     "tag number does not fit in 32 bits at offset 4"},
};

TEST(BerTag, DecodesEveryForm) {
  for (const TagCase& c : kTagCases) {
    SCOPED_TRACE(c.what);
    const std::vector<unsigned char> input = Input(c.input);
    AsnBuf buf(input.data(), input.size());
    unsigned long consumed = 0;
    AsnTag tag = 0;
    const std::string error = ThrownMessage([&] { tag = BDecTag(buf, consumed); });
    if (c.error != nullptr) {
      EXPECT_EQ(error, c.error);
      continue;
    }
    EXPECT_EQ(error, "no exception");
    EXPECT_EQ(tag, c.tag);
    EXPECT_EQ(consumed, c.consumed);
    EXPECT_EQ(buf.ReadError(), c.readError);
  }
}

TEST(BerTag, BDecTagImplCompletesAHighTag) {
  const std::vector<unsigned char> input = Input("81 00");
  AsnBuf buf(input.data(), input.size());
  unsigned long consumed = 7;
  unsigned int tag = 0x5F000000u;
  BDecTag_Impl(buf, consumed, tag);
  EXPECT_EQ(tag, 0x5F810000u);
  EXPECT_EQ(consumed, 9u);
  EXPECT_EQ(TagNumber(tag), 128u);
}

struct TagEncodeCase {
  AsnTagClass tagClass;
  bool constructed;
  unsigned number;
  const char* octets;  // empty: the number does not fit
};

const TagEncodeCase kTagEncodeCases[] = {
    {AsnTagClass::kUniversal, false, 2, "02"},
    {AsnTagClass::kUniversal, true, 16, "30"},
    {AsnTagClass::kContext, false, 0, "80"},
    {AsnTagClass::kContext, true, 30, "BE"},
    {AsnTagClass::kContext, false, 31, "9F 1F"},
    {AsnTagClass::kApplication, false, 127, "5F 7F"},
    {AsnTagClass::kApplication, false, 128, "5F 81 00"},
    {AsnTagClass::kPrivate, true, 16383, "FF FF 7F"},
    {AsnTagClass::kPrivate, true, 16384, "FF 81 80 00"},
    {AsnTagClass::kPrivate, true, (1u << 21) - 1, "FF FF FF 7F"},
    {AsnTagClass::kContext, false, 1u << 21, ""},
};

TEST(BerTag, EncodesAndReadsBack) {
  for (const TagEncodeCase& c : kTagEncodeCases) {
    SCOPED_TRACE(c.number);
    const AsnTag tag = MakeTag(c.tagClass, c.constructed, c.number);
    if (*c.octets == '\0') {
      EXPECT_EQ(tag, 0u);
      continue;
    }
    unsigned long written = 0;
    EXPECT_EQ(Encoded([&](AsnBuf& buf) { return BEncTag(buf, tag); }, written), c.octets);
    EXPECT_EQ(written, Hex(c.octets).size());
    EXPECT_EQ(TagNumber(tag), c.number);
    EXPECT_EQ(TagIsConstructed(tag), c.constructed);
    EXPECT_EQ(TagClassOf(tag), c.tagClass);

    const std::vector<unsigned char> input = Input(c.octets);
    AsnBuf buf(input.data(), input.size());
    unsigned long consumed = 0;
    EXPECT_EQ(BDecTag(buf, consumed), tag);
    EXPECT_EQ(consumed, written);
  }
}

TEST(BerTag, NamesTagsForMessages) {
  EXPECT_EQ(TagToString(kTagSequence), "[UNIVERSAL 16] constructed");
  EXPECT_EQ(TagToString(MakeTag(AsnTagClass::kContext, false, 2)), "[2] primitive");
  EXPECT_EQ(TagToString(MakeTag(AsnTagClass::kApplication, true, 200)), "[APPLICATION 200] constructed");
  EXPECT_EQ(TagWithForm(kTagOctetString, true), kTagOctetStringConstructed);
  EXPECT_EQ(TagWithForm(kTagOctetStringConstructed, false), kTagOctetString);
}

// ---- length octets -------------------------------------------------------------

struct LengthCase {
  const char* what;
  const char* input;  // length octets followed by the content they announce
  std::size_t pad;    // that many zero octets more after `input`
  unsigned long length;
  unsigned long consumed;
  bool readError;
  const char* error;
};

const LengthCase kLengthCases[] = {
    {"short form 0", "00", 0, 0, 1, false, nullptr},
    {"short form 3", "03 AA BB CC", 0, 3, 1, false, nullptr},
    {"long form 128", "81 80", 128, 128, 2, false, nullptr},
    {"long form 256", "82 01 00", 256, 256, 3, false, nullptr},
    {"long form need not be minimal", "82 00 05 AA BB CC DD EE", 0, 5, 3, false, nullptr},
    {"eight length octets are allowed", "88 00 00 00 00 00 00 00 02 AA BB", 0, 2, 9, false, nullptr},
    {"indefinite", "80", 0, kIndefiniteLength, 1, false, nullptr},
    {"empty input", "", 0, 0, 1, true, nullptr},
    {"long form cut short", "82 01", 0, 0, 3, true, nullptr},
    {"reserved first octet 0xFF", "FF 00", 0, 0, 0, false, "length octet 0xFF is reserved at offset 1"},
    {"nine length octets", "89 00 00 00 00 00 00 00 00 01 AA", 0, 0, 0, false,
     "length with 9 length octets (at most 8) at offset 1"},
    {"short form past the input", "05 AA BB CC", 0, 0, 0, false,
     "length 5 runs past the input (3 octets left) at offset 1"},
    {"2^32 on a 10-octet input fails before anything is sized by it", "85 01 00 00 00 00 AA BB CC DD", 0, 0, 0, false,
     "length 4294967296 runs past the input (4 octets left) at offset 6"},
    {"all-ones long form is not the indefinite form", "88 FF FF FF FF FF FF FF FF", 0, 0, 0, false,
     "length 18446744073709551615 runs past the input (0 octets left) at offset 9"},
};

TEST(BerLength, DecodesEveryForm) {
  for (const LengthCase& c : kLengthCases) {
    SCOPED_TRACE(c.what);
    std::vector<unsigned char> input = Input(c.input);
    input.resize(input.size() + c.pad);
    AsnBuf buf(input.data(), input.size());
    unsigned long consumed = 0;
    unsigned long length = 0;
    const std::string error = ThrownMessage([&] { length = BDecLen(buf, consumed); });
    if (c.error != nullptr) {
      EXPECT_EQ(error, c.error);
      continue;
    }
    EXPECT_EQ(error, "no exception");
    EXPECT_EQ(length, c.length);
    EXPECT_EQ(consumed, c.consumed);
    EXPECT_EQ(buf.ReadError(), c.readError);
  }
}

TEST(BerLength, BDecLenImplStartsAfterTheFirstOctet) {
  const std::vector<unsigned char> input = Input("01 2C");
  const std::vector<unsigned char> content(300);
  std::vector<unsigned char> all(input);
  all.insert(all.end(), content.begin(), content.end());
  AsnBuf buf(all.data(), all.size());
  unsigned long consumed = 1;
  EXPECT_EQ(BDecLen_Impl(buf, consumed, 0x82), 300u);
  EXPECT_EQ(consumed, 3u);

  AsnBuf none(nullptr, 0);
  EXPECT_EQ(BDecLen_Impl(none, consumed, 0x80), kIndefiniteLength);
  EXPECT_EQ(consumed, 3u);
}

struct LengthEncodeCase {
  unsigned long length;
  const char* shortest;  // BEncDefLen
  const char* longForm;  // BEncDefLenImpl
};

const LengthEncodeCase kLengthEncodeCases[] = {
    {0, "00", "81 00"},
    {5, "05", "81 05"},
    {127, "7F", "81 7F"},
    {128, "81 80", "81 80"},
    {255, "81 FF", "81 FF"},
    {256, "82 01 00", "82 01 00"},
    {65535, "82 FF FF", "82 FF FF"},
    {65536, "83 01 00 00", "83 01 00 00"},
    {1UL << 32, "85 01 00 00 00 00", "85 01 00 00 00 00"},
    {~0UL - 1, "88 FF FF FF FF FF FF FF FE", "88 FF FF FF FF FF FF FF FE"},
};

TEST(BerLength, EncodesDefiniteLengths) {
  for (const LengthEncodeCase& c : kLengthEncodeCases) {
    SCOPED_TRACE(c.length);
    unsigned long written = 0;
    EXPECT_EQ(Encoded([&](AsnBuf& buf) { return BEncDefLen(buf, c.length); }, written), c.shortest);
    EXPECT_EQ(written, Hex(c.shortest).size());
    EXPECT_EQ(Encoded([&](AsnBuf& buf) { return BEncDefLenImpl(buf, c.length); }, written), c.longForm);
    EXPECT_EQ(written, Hex(c.longForm).size());
  }
}

TEST(BerLength, EncodedLengthsReadBack) {
  for (const unsigned long length : {0UL, 1UL, 127UL, 128UL, 200UL, 4096UL}) {
    SCOPED_TRACE(length);
    AsnBuf out;
    const std::string content(length, 'x');
    out.PutSegRvs(reinterpret_cast<const unsigned char*>(content.data()), content.size());
    const unsigned long written = BEncDefLen(out, length);
    const std::string octets = out.EncodedBytes();
    AsnBuf in(reinterpret_cast<const unsigned char*>(octets.data()), octets.size());
    unsigned long consumed = 0;
    EXPECT_EQ(BDecLen(in, consumed), length);
    EXPECT_EQ(consumed, written);
    EXPECT_EQ(in.Remaining(), length);
  }
}

// ---- end-of-contents -------------------------------------------------------------

TEST(BerEoc, EncodesAndConsumesEndOfContents) {
  unsigned long written = 0;
  EXPECT_EQ(Encoded([](AsnBuf& buf) { return BEncEoc(buf); }, written), "00 00");
  EXPECT_EQ(written, 2u);

  const struct {
    const char* input;
    const char* error;
  } cases[] = {
      {"00 00", "no exception"},
      {"00 00 05", "no exception"},
      {"00", "missing end-of-contents octets at offset 1"},
      {"", "missing end-of-contents octets at offset 0"},
      {"00 01", "end-of-contents octets expected at offset 2"},
      {"02 00", "end-of-contents octets expected at offset 2"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.input);
    const std::vector<unsigned char> input = Input(c.input);
    AsnBuf buf(input.data(), input.size());
    unsigned long consumed = 10;
    EXPECT_EQ(ThrownMessage([&] { BDecEoc(buf, consumed); }), c.error);
    if (std::string(c.error) == "no exception") {
      EXPECT_EQ(consumed, 12u);
    }
  }
}

TEST(BerEoc, AtEocLooksWithoutConsuming) {
  const std::vector<unsigned char> input = Input("00 00");
  AsnBuf buf(input.data(), input.size());
  EXPECT_TRUE(AtEoc(buf));
  EXPECT_EQ(buf.Remaining(), 2u);
  AsnBuf empty(nullptr, 0);
  EXPECT_FALSE(AtEoc(empty));
  EXPECT_FALSE(empty.ReadError());
}

// ---- the encoding buffer ------------------------------------------------------------

TEST(AsnBufEncoding, GrowsInFrontAndKeepsOrder) {
  AsnBuf buf;
  std::string expected;
  for (int i = 0; i < 5000; ++i) {
    const auto octet = static_cast<unsigned char>(i * 7);
    buf.PutByteRvs(octet);
    expected.insert(expected.begin(), static_cast<char>(octet));
  }
  const std::string segment(1000, 'z');
  buf.PutSegRvs(reinterpret_cast<const unsigned char*>(segment.data()), segment.size());
  EXPECT_EQ(buf.EncodedBytes(), segment + expected);
  EXPECT_EQ(buf.EncodedLength(), 6000u);
}

TEST(AsnBufDecoding, ReadsPastTheEndSetTheFlag) {
  const std::vector<unsigned char> input = Input("01 02 03");
  AsnBuf buf(input.data(), input.size());
  EXPECT_EQ(buf.GetSeg(4), nullptr);
  EXPECT_TRUE(buf.ReadError());
  EXPECT_EQ(buf.Remaining(), 3u);
  EXPECT_EQ(buf.GetSeg(3), input.data());
  EXPECT_EQ(buf.GetByte(), 0);
  EXPECT_EQ(buf.Offset(), 3u);
}

}  // namespace
