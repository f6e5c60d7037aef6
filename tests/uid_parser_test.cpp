// Identifier texts: what parses, the MOC, and reading numbers by key.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "platform/uid/str_uid_parser.h"

namespace {

using FrameUtil::StrUIDParser;

TEST(StrUIDParser, ParseAndMoc) {
  struct Case {
    const char* text;
    bool parses;
    const char* moc;  // also what the text form of GetMOC gives
    std::size_t pairs;
  };
  const Case cases[] = {
      {"", true, "", 0},
      {"NE=1001,SH=1,SL=3,PP=2", true, "PP", 4},
      {"NE=1", true, "NE", 1},
      {"NE=", true, "NE", 1},       // empty VALUE
      {"A_1=x=y", true, "A_1", 1},  // VALUE keeps further "="
      {"NE=1,SUBGRP=a b c", true, "SUBGRP", 2},
      {"NE=1,", false, "", 0},  // trailing empty pair
      {",NE=1", false, "", 0},
      {"NE=1,,PP=2", false, "", 0},
      {"NE", false, "", 0},    // no "="
      {"=1", false, "", 0},    // empty KEY
      {"ne=1", false, "", 0},  // lower case KEY
      {"N E=1", false, "", 0},
      {"NE-X=1", false, "", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    StrUIDParser parser;
    EXPECT_EQ(parser.Parse(c.text), c.parses);
    EXPECT_EQ(parser.GetMOC(), c.moc);
    EXPECT_EQ(parser.PairCount(), c.pairs);
    EXPECT_EQ(StrUIDParser::GetMOC(c.text), c.moc);
  }
}

TEST(StrUIDParser, FailedParseForgetsEarlierText) {
  StrUIDParser parser;
  ASSERT_TRUE(parser.Parse("NE=1,PP=2"));
  EXPECT_FALSE(parser.Parse("bad"));
  EXPECT_EQ(parser.GetMOC(), "");
  std::uint64_t number = 5;
  EXPECT_FALSE(parser.GetValue(number, "NE", 0));
  EXPECT_EQ(number, 5u);
}

TEST(StrUIDParser, GetValue) {
  struct Case {
    const char* key;
    unsigned occurrence;
    bool stored;
    std::uint64_t expected;  // 7 = left unchanged
  };
  StrUIDParser parser;
  ASSERT_TRUE(parser.Parse("NE=1001,SH=01,X=-1,Y=1a,Z=,BIG=18446744073709551615,OVER=18446744073709551616,NE=9"));
  const Case cases[] = {
      {"NE", 0, true, 1001}, {"NE", 1, true, 9},  {"NE", 2, false, 7}, {"SH", 0, true, 1},
      {"X", 0, false, 7},    {"Y", 0, false, 7},  {"Z", 0, false, 7},  {"BIG", 0, true, UINT64_MAX},
      {"OVER", 0, false, 7}, {"PP", 0, false, 7}, {"N", 0, false, 7},  // no prefix matching
  };
  for (const Case& c : cases) {
    std::uint64_t number = 7;
    EXPECT_EQ(parser.GetValue(number, c.key, c.occurrence), c.stored) << c.key;
    EXPECT_EQ(number, c.expected) << c.key;
  }
}

}  // namespace
