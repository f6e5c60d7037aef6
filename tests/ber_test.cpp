// Tag and length coding: exact octets both ways, and the exact error for every
// malformed identifier or length.
#include "tn_platform/asn/ber.h"

#include <gtest/gtest.h>

#include <vector>

#include "test_bytes.h"

namespace {

using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

// The input in a heap block of exactly its size (plus `pad` zero octets), so
// that a read past the end is an AddressSanitizer error rather than a read of
// a neighbour.
std::vector<unsigned char> Input(std::string_view hex, std::size_t pad = 0) {
  const std::string octets = Hex(hex);
  std::vector<unsigned char> input(octets.begin(), octets.end());
  input.resize(input.size() + pad);
  return input;
}

// The octets an encoding call writes; its result must count them.
template <class Encode>
std::string Encoded(Encode&& encode) {
  AsnBuf buf;
  const unsigned long written = encode(buf);
  EXPECT_EQ(written, buf.EncodedLength());
  return ToHex(buf.EncodedBytes());
}

// The octets a front-to-back writer puts into room of exactly `size` octets
// (a heap block of that size, so that writing past it is an error under
// AddressSanitizer); it must end exactly there.
template <class Write>
std::string Written(std::size_t size, Write&& write) {
  std::vector<unsigned char> room(size);
  EXPECT_EQ(write(room.data()), room.data() + size);
  return ToHex(std::string(room.begin(), room.end()));
}

struct DecodeCase {
  const char* what;
  const char* input;
  std::size_t pad;  // zero octets after `input`
  unsigned long value;
  unsigned long consumed;
  bool readError;
  const char* error;  // null: no exception
};

// Identifier octets beyond what the encoder writes (see the round trip below):
// the tag keeps up to four of them, left-aligned. The errors these functions
// share with every decoder are checked, with their paths, in ber_vectors_test.cpp.
const DecodeCase kTagCases[] = {
    {"only the identifier is read", "9F 1F 05 01", 0, 0x9F1F0000u, 2, false, nullptr},
    {"empty input", "", 0, 0, 1, true, nullptr},
    {"high form cut after the first octet", "9F", 0, 0x9F000000u, 2, true, nullptr},
    {"high form cut inside the number", "9F 81", 0, 0x9F810000u, 3, true, nullptr},
    {"high form for number 30", "BF 1E 00", 0, 0, 0, false,
     "high tag number form used for tag number 30 (below 31) at offset 0"},
};

// 126 length octets (the most there can be), all zero but the last, which is 1.
const std::string kLongestLength = "FE" + std::string(2 * 125, '0') + "01";
const std::string kLongestLengthValue = kLongestLength + " AA";

// Length octets followed by the content they announce.
const DecodeCase kLengthCases[] = {
    {"short form 0", "00", 0, 0, 1, false, nullptr},
    {"short form 3", "03 AA BB CC", 0, 3, 1, false, nullptr},
    {"long form 256", "82 01 00", 256, 256, 3, false, nullptr},
    {"long form need not be minimal", "82 00 05 AA BB CC DD EE", 0, 5, 3, false, nullptr},
    {"eight length octets are allowed", "88 00 00 00 00 00 00 00 02 AA BB", 0, 2, 9, false, nullptr},
    {"leading zero octets beyond eight", "89 00 00 00 00 00 00 00 00 01 AA", 0, 1, 10, false, nullptr},
    {"126 length octets", kLongestLengthValue.c_str(), 0, 1, 127, false, nullptr},
    {"126 length octets cut short", "FE 00 00", 0, 0, 4, true, nullptr},
    {"indefinite", "80", 0, kIndefiniteLength, 1, false, nullptr},
    {"empty input", "", 0, 0, 1, true, nullptr},
    {"long form cut short", "82 01", 0, 0, 3, true, nullptr},
    {"a value of nine octets after zeros", "8A 00 01 00 00 00 00 00 00 00 00", 0, 0, 0, false,
     "length does not fit in 64 bits at offset 0"},
    {"short form past the input", "05 AA BB CC", 0, 0, 0, false,
     "input ends 2 octets short of the value at offset 4"},
    {"2^32 on a 10-octet input fails before anything is sized by it", "85 01 00 00 00 00 AA BB CC DD", 0, 0, 0, false,
     "input ends 4294967292 octets short of the value at offset 10"},
    {"all-ones long form is not the indefinite form", "88 FF FF FF FF FF FF FF FF", 0, 0, 0, false,
     "length 18446744073709551615 runs past the input (0 octets left) at offset 0"},
    {"2^63 and above fit no input: refused where read", "88 80 00 00 00 00 00 00 00", 0, 0, 0, false,
     "length 9223372036854775808 runs past the input (0 octets left) at offset 0"},
    {"2^63-1 is the input ending", "88 7F FF FF FF FF FF FF FF", 0, 0, 0, false,
     "input ends 9223372036854775807 octets short of the value at offset 9"},
    {"nor is it with leading zeros", "8A 00 00 FF FF FF FF FF FF FF FF", 0, 0, 0, false,
     "length 18446744073709551615 runs past the input (0 octets left) at offset 0"},
};

// End-of-contents octets; the value is unused.
const DecodeCase kEocCases[] = {
    {"end-of-contents", "00 00", 0, 0, 2, false, nullptr},
    {"only the two octets are read", "00 00 05", 0, 0, 2, false, nullptr},
    {"first octet not zero", "02 00", 0, 0, 0, false, "end-of-contents octets are not 00 00 at offset 0"},
};

void ExpectDecodes(const DecodeCase& c, unsigned long (*decode)(AsnBuf&, unsigned long&)) {
  SCOPED_TRACE(c.what);
  const std::vector<unsigned char> input = Input(c.input, c.pad);
  AsnBuf buf(input.data(), input.size());
  unsigned long consumed = 0;
  unsigned long value = 0;
  const std::string error = ThrownMessage([&] { value = decode(buf, consumed); });
  EXPECT_EQ(error, c.error != nullptr ? c.error : "no exception");
  if (c.error != nullptr) return;
  EXPECT_EQ(value, c.value);
  EXPECT_EQ(consumed, c.consumed);
  EXPECT_EQ(buf.ReadError(), c.readError);
}

TEST(Ber, DecodesTagsLengthsAndEndOfContents) {
  for (const DecodeCase& c : kTagCases) {
    ExpectDecodes(c, [](AsnBuf& buf, unsigned long& n) -> unsigned long { return BDecTag(buf, n); });
  }
  for (const DecodeCase& c : kLengthCases) ExpectDecodes(c, BDecLen);
  for (const DecodeCase& c : kEocCases) {
    ExpectDecodes(c, [](AsnBuf& buf, unsigned long& n) -> unsigned long {
      BDecEoc(buf, n);
      return 0;
    });
  }
}

TEST(Ber, EncodesTagsAndReadsThemBack) {
  const struct {
    AsnTagClass tagClass;
    bool constructed;
    unsigned number;
    const char* octets;  // empty: the number does not fit
  } cases[] = {
      {AsnTagClass::kUniversal, true, 16, "30"},           {AsnTagClass::kContext, true, 30, "BE"},
      {AsnTagClass::kContext, false, 31, "9F 1F"},         {AsnTagClass::kApplication, false, 127, "5F 7F"},
      {AsnTagClass::kApplication, false, 128, "5F 81 00"}, {AsnTagClass::kPrivate, true, 16383, "FF FF 7F"},
      {AsnTagClass::kPrivate, true, 16384, "FF 81 80 00"}, {AsnTagClass::kPrivate, true, (1u << 21) - 1, "FF FF FF 7F"},
      {AsnTagClass::kContext, false, 1u << 21, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.number);
    const AsnTag tag = MakeTag(c.tagClass, c.constructed, c.number);
    if (*c.octets == '\0') {
      EXPECT_EQ(tag, 0u);
      continue;
    }
    EXPECT_EQ(Encoded([&](AsnBuf& buf) { return BEncTag(buf, tag); }), c.octets);
    EXPECT_EQ(Written(AsnIdentifierOctets(tag), [&](unsigned char* out) { return AsnWriteTag(out, tag); }), c.octets);
    EXPECT_EQ(TagNumber(tag), c.number);
    const std::vector<unsigned char> input = Input(c.octets);
    AsnBuf buf(input.data(), input.size());
    unsigned long consumed = 0;
    EXPECT_EQ(BDecTag(buf, consumed), tag);
    EXPECT_EQ(consumed, input.size());
  }
  EXPECT_EQ(TagToString(kTagSequence), "[UNIVERSAL 16] constructed");
  EXPECT_EQ(TagToString(MakeTag(AsnTagClass::kApplication, true, 200)), "[APPLICATION 200] constructed");
}

// BEncDefLen writes the shortest form; BEncDefLenImpl always the long form.
TEST(Ber, EncodesDefiniteLengths) {
  const struct {
    unsigned long length;
    const char* shortest;
    const char* longForm;
  } cases[] = {
      {0, "00", "81 00"},  // BEncDefLenImpl(0) once wrote no length octets at all
      {127, "7F", "81 7F"},
      {128, "81 80", "81 80"},
      {255, "81 FF", "81 FF"},
      {256, "82 01 00", "82 01 00"},
      {65536, "83 01 00 00", "83 01 00 00"},
      {1UL << 32, "85 01 00 00 00 00", "85 01 00 00 00 00"},
      {~0UL - 1, "88 FF FF FF FF FF FF FF FE", "88 FF FF FF FF FF FF FF FE"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.length);
    EXPECT_EQ(Encoded([&](AsnBuf& buf) { return BEncDefLen(buf, c.length); }), c.shortest);
    EXPECT_EQ(Written(AsnLengthOctets(c.length), [&](unsigned char* out) { return AsnWriteLength(out, c.length); }),
              c.shortest);
    EXPECT_EQ(Encoded([&](AsnBuf& buf) { return BEncDefLenImpl(buf, c.length); }), c.longForm);
  }
}

TEST(AsnBuf, GrowsInFrontAndFlagsReadsPastTheEnd) {
  AsnBuf out;
  std::string expected;
  for (int i = 0; i < 5000; ++i) {
    out.PutByteRvs(static_cast<unsigned char>(i * 7));
    expected.insert(expected.begin(), static_cast<char>(i * 7));
  }
  const std::string segment(1000, 'z');
  out.PutSegRvs(reinterpret_cast<const unsigned char*>(segment.data()), segment.size());
  EXPECT_EQ(out.EncodedBytes(), segment + expected);
  EXPECT_EQ(out.EncodedLength(), 6000u);

  const std::vector<unsigned char> input = Input("01 02 03");
  AsnBuf in(input.data(), input.size());
  EXPECT_EQ(in.GetSeg(4), nullptr);
  EXPECT_TRUE(in.ReadError());
  EXPECT_EQ(in.Remaining(), 3u);
  EXPECT_EQ(in.GetSeg(3), input.data());
  EXPECT_EQ(in.GetByte(), 0);
  EXPECT_EQ(in.Offset(), 3u);
}

}  // namespace
