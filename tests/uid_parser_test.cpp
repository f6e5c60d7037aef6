// Identifier texts: what parses, the MOC, and reading numbers by key.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>

#include "tn_platform/uid/str_uid_parser.h"

namespace {

using FrameUtil::StrUIDParser;

// Texts that parse, with their MOC (also what the text form of GetMOC gives):
// a VALUE may be empty and keeps further "=" and blanks.
TEST(StrUIDParser, ParseAndMoc) {
  const std::pair<const char*, const char*> cases[] = {
      {"NE=1,SL=3,PP=2", "PP"}, {"NE=", "NE"}, {"A_1=x=y", "A_1"}, {"NE=1,SG=a b", "SG"}, {"", ""}};
  for (const auto& [text, moc] : cases) {
    SCOPED_TRACE(text);
    StrUIDParser parser;
    EXPECT_TRUE(parser.Parse(text));
    EXPECT_EQ(parser.GetMOC(), moc);
    EXPECT_EQ(StrUIDParser::GetMOC(text), moc);
  }
}

// Refused, with no MOC: empty pairs, no "=", an empty or not upper-case KEY.
TEST(StrUIDParser, Refuses) {
  for (const char* text : {"NE=1,", ",NE=1", "NE=1,,PP=2", "NE", "=1", "ne=1", "N E=1", "NE-X=1"}) {
    SCOPED_TRACE(text);
    StrUIDParser parser;
    EXPECT_FALSE(parser.Parse(text));
    EXPECT_EQ(parser.GetMOC(), "");
    EXPECT_EQ(StrUIDParser::GetMOC(text), "");
  }
}

TEST(StrUIDParser, GetValueAndFailedParseForgetsEarlierText) {
  StrUIDParser parser;
  ASSERT_TRUE(parser.Parse("NE=1001,SH=01,X=-1,Y=1a,Z=,BIG=18446744073709551615,OVER=18446744073709551616,NE=9"));
  EXPECT_EQ(parser.PairCount(), 8u);
  // Key, occurrence and the number read; 7: left as it was ("N" is no prefix of "NE").
  const std::tuple<const char*, unsigned, std::uint64_t> cases[] = {
      {"NE", 0, 1001}, {"NE", 1, 9},   {"NE", 2, 7},           {"SH", 0, 1}, {"X", 0, 7}, {"Y", 0, 7},
      {"Z", 0, 7},     {"OVER", 0, 7}, {"BIG", 0, UINT64_MAX}, {"PP", 0, 7}, {"N", 0, 7}};
  for (const auto& [key, occurrence, expected] : cases) {
    std::uint64_t number = 7;
    EXPECT_EQ(parser.GetValue(number, key, occurrence), expected != 7) << key << occurrence;
    EXPECT_EQ(number, expected) << key << occurrence;
  }
  EXPECT_FALSE(parser.Parse("bad"));
  EXPECT_EQ(parser.GetMOC(), "");
  std::uint64_t number = 5;
  EXPECT_FALSE(parser.GetValue(number, "NE", 0));
  EXPECT_EQ(number, 5u);
}

}  // namespace
