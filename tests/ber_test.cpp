// Tag and length coding: exact octets both ways (tests/ber/written_headers.golden),
// and the exact error for every malformed identifier or length
// (tests/ber/headers.golden).
#include "tn_platform/asn/ber.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "test_bytes.h"

namespace {

using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

// The octets of `hex` in a heap block of exactly their size, so that a read
// past the end is an AddressSanitizer error rather than a read of a neighbour;
// "+N" at its end adds N zero octets, "-" is none.
std::vector<unsigned char> Input(const std::string& hex) {
  if (hex == "-") return {};
  const std::size_t plus = hex.find('+');
  std::string octets = Hex(hex.substr(0, plus));
  if (plus != std::string::npos) octets.append(std::stoul(hex.substr(plus + 1)), '\0');
  return std::vector<unsigned char>(octets.begin(), octets.end());
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

// tests/ber/headers.golden, each row read by its reader from an input of exactly its size.
TEST(Ber, DecodesTagsLengthsAndEndOfContents) {
  for (const std::vector<std::string>& row : test_bytes::Golden("ber/headers.golden")) {
    SCOPED_TRACE(row[0] + " " + row[1]);
    const std::vector<unsigned char> input = Input(row[1]);
    AsnBuf buf(input.data(), input.size());
    unsigned long consumed = 0;
    unsigned long value = 0;
    const std::string error = ThrownMessage([&] {
      if (row[0] == "tag") value = BDecTag(buf, consumed);
      if (row[0] == "length") value = BDecLen(buf, consumed);
      if (row[0] == "end-of-contents") BDecEoc(buf, consumed);
    });
    EXPECT_EQ(error, row.size() == 3 ? row[2] : "no exception");
    if (row.size() == 3) continue;
    ASSERT_EQ(row.size(), 5u);
    EXPECT_EQ(std::make_tuple(value, consumed, buf.ReadError()),
              std::make_tuple(std::stoul(row[2], nullptr, 16), std::stoul(row[3]), row[4] == "read error"));
  }
}

// tests/ber/written_headers.golden: a tag is read back to itself; BEncDefLen
// writes the shortest length, BEncDefLenImpl always the long form.
TEST(Ber, EncodesTagsAndLengths) {
  const std::map<std::string, AsnTagClass> classes = {{"universal", AsnTagClass::kUniversal},
                                                      {"application", AsnTagClass::kApplication},
                                                      {"context", AsnTagClass::kContext},
                                                      {"private", AsnTagClass::kPrivate}};
  for (const std::vector<std::string>& row : test_bytes::Golden("ber/written_headers.golden")) {
    SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2]);
    if (row[0] == "length") {
      const unsigned long length = std::stoul(row[1]);
      EXPECT_EQ(Encoded([&](AsnBuf& buf) { return BEncDefLen(buf, length); }), row[2]);
      EXPECT_EQ(Written(AsnLengthOctets(length), [&](unsigned char* out) { return AsnWriteLength(out, length); }),
                row[2]);
      EXPECT_EQ(Encoded([&](AsnBuf& buf) { return BEncDefLenImpl(buf, length); }), row[3]);
      continue;
    }
    const unsigned number = static_cast<unsigned>(std::stoul(row[3]));
    const AsnTag tag = MakeTag(classes.at(row[1]), row[2] == "constructed", number);
    if (row[4] == "-") {
      EXPECT_EQ(tag, 0u);
      continue;
    }
    EXPECT_EQ(Encoded([&](AsnBuf& buf) { return BEncTag(buf, tag); }), row[4]);
    EXPECT_EQ(Written(AsnIdentifierOctets(tag), [&](unsigned char* out) { return AsnWriteTag(out, tag); }), row[4]);
    EXPECT_EQ(TagNumber(tag), number);
    const std::vector<unsigned char> input = Input(row[4]);
    AsnBuf buf(input.data(), input.size());
    unsigned long consumed = 0;
    EXPECT_EQ(BDecTag(buf, consumed), tag);
    EXPECT_EQ(consumed, input.size());
  }
  EXPECT_EQ(TagToString(kTagSequence), "[UNIVERSAL 16] constructed");
  EXPECT_EQ(TagToString(MakeTag(AsnTagClass::kApplication, true, 200)), "[APPLICATION 200] constructed");
}

}  // namespace
