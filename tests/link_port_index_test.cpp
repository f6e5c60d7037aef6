// Link port indexes from resource identifiers, the R1 link port id, and the
// model library's fill operations they rely on.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "convert/ns_velkor.h"
#include "platform/uid/str_uid_parser.h"

namespace {

using ns_utilmib::CLinkPortIndex;
using ns_utilmib::LinkPortKind;

// An index whose every field differs from what a conversion would write, so
// that "untouched" is visible.
CLinkPortIndex MarkedIndex() {
  CLinkPortIndex idx;
  idx.nodeID = 77;
  idx.portID = 88;
  idx.groupNo = 5;
  idx.subGroupNo = 6;
  idx.strPortFDN = "prev";
  idx.strPortMOC = "prevMOC";
  return idx;
}

TEST(Convert2LinkPortIndexByQAsnUniRes, DecidesByMoc) {
  struct Case {
    const char* fdn;  // null: strFDN without content
    const char* moc;
    bool acceptNode;
    bool result;
    std::uint64_t nodeID;
    std::uint64_t portID;
    const char* portFDN;
    const char* portMOC;
    LinkPortKind kind;
  };
  const Case cases[] = {
      // Refused before anything is set.
      {nullptr, "NE", true, false, 77, 88, "prev", "prevMOC", LinkPortKind::kNone},
      {"NE", "NE", true, false, 77, 88, "prev", "prevMOC", LinkPortKind::kNone},         // no "="
      {"NE=1,pp=2", "FR", true, false, 77, 88, "prev", "prevMOC", LinkPortKind::kNone},  // lower-case class
      // Node ends.
      {"NE=1001", "NE", true, true, 1001, 88, "NE=1001", "NE", LinkPortKind::kNone},
      {"NE=9,ONE=5", "ONE", true, true, 5, 88, "NE=9,ONE=5", "ONE", LinkPortKind::kNone},
      {"NE=9,FR=3", "FR", true, true, 9, 88, "NE=9,FR=3", "FR", LinkPortKind::kNone},  // every class but ONE reads NE
      {"NE=1,PP=2", "PP", true, true, 1, 88, "NE=1,PP=2", "PP", LinkPortKind::kNone},  // node path wins
      {"NE=1001", "NE", false, false, 77, 88, "NE=1001", "prevMOC", LinkPortKind::kNone},
      {"NE=1001", "NEX", true, false, 77, 88, "NE=1001", "prevMOC", LinkPortKind::kNone},  // exact match only
      // Port ends.
      {"NE=1,PP=2", "FR", true, true, 1, 2, "NE=1,PP=2", "PP", LinkPortKind::kPhysical},
      {"NE=1,LP=3", "NE", true, true, 1, 3, "NE=1,LP=3", "LP", LinkPortKind::kLogical},
      {"NE=1,SERIAL=4", "FR", false, true, 1, 4, "NE=1,SERIAL=4", "SERIAL", LinkPortKind::kSerial},
      {"NE=1,SUBIF=5", "FR", true, true, 1, 5, "NE=1,SUBIF=5", "SUBIF", LinkPortKind::kSubInterface},
      // SDH anywhere in the class, and unknown classes.
      {"NE=1,SDH=2", "FR", true, false, 77, 88, "NE=1,SDH=2", "prevMOC", LinkPortKind::kNone},
      {"NE=1,PPSDH=2", "FR", true, false, 77, 88, "NE=1,PPSDH=2", "prevMOC", LinkPortKind::kNone},
      {"NE=1,XSDHY=2", "FR", true, false, 77, 88, "NE=1,XSDHY=2", "prevMOC", LinkPortKind::kNone},
      {"NE=1,SDHPP=2", "FR", true, false, 77, 88, "NE=1,SDHPP=2", "prevMOC", LinkPortKind::kNone},
      {"NE=1,SD_H=2", "FR", true, false, 77, 88, "NE=1,SD_H=2", "prevMOC", LinkPortKind::kNone},
      {"NE=1,PP2=2", "FR", true, false, 77, 88, "NE=1,PP2=2", "prevMOC", LinkPortKind::kNone},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.fdn ? c.fdn : "(no data)") + " / " + c.moc);
    qcommon::QAsnUniResID res;
    if (c.fdn != nullptr) res.strFDN.Set(c.fdn);
    CLinkPortIndex idx = MarkedIndex();
    EXPECT_EQ(ns_velkor::Convert2LinkPortIndexByQAsnUniRes(res, idx, c.moc, c.acceptNode), c.result);
    EXPECT_EQ(idx.nodeID, c.nodeID);
    EXPECT_EQ(idx.portID, c.portID);
    EXPECT_EQ(idx.strPortFDN, c.portFDN);
    EXPECT_EQ(idx.strPortMOC, c.portMOC);
    EXPECT_EQ(idx.portKind, c.kind);
  }
}

// Content that starts with a zero byte has data but gives the empty text,
// which the parser accepts: the end is marked "--" and refused.
TEST(Convert2LinkPortIndexByQAsnUniRes, EmptyTextGivesPlaceholder) {
  qcommon::QAsnUniResID res;
  res.strFDN.Set("\0NE=1", 5);
  CLinkPortIndex idx = MarkedIndex();
  EXPECT_FALSE(ns_velkor::Convert2LinkPortIndexByQAsnUniRes(res, idx, "NE", true));
  EXPECT_EQ(idx.strPortFDN, "--");
  EXPECT_EQ(idx.strPortMOC, "prevMOC");
  EXPECT_EQ(idx.nodeID, 77u);
}

TEST(GetR1LinkPortId, PacksSubGroupAndGroup) {
  struct Case {
    std::int32_t subGroup;
    std::int32_t group;
    std::uint64_t portID;
    std::uint64_t expected;
  };
  const Case cases[] = {
      {0, 2, 0x12345, 0x12345},                 // no sub-group: port unchanged, group ignored
      {3, -1, 0x12345, 0x32345},                // sub-group over the low 16 bits of the port
      {3, 2, 0x12345, 0x2032345},               // group in bits 24-31
      {0x1FF, 2, 7, 0x2FF0007},                 // the group replaces the sub-group's upper bits
      {-1, 2, 0x100000001ULL, 0x100000001ULL},  // all 64 bits kept
      {0x12345, -1, 0xFFFF, 0x2345FFFF},        // sub-group keeps its low 16 bits
      {-2, 0x1AB, 0x10001, 0xABFE0001},         // group keeps its low 8 bits
  };
  for (const Case& c : cases) {
    CLinkPortIndex idx;
    idx.subGroupNo = c.subGroup;
    idx.groupNo = c.group;
    idx.portID = c.portID;
    EXPECT_EQ(ns_velkor::GetR1LinkPortId(idx), c.expected) << c.subGroup << " " << c.group << " " << c.portID;
  }
}

// The fill operations: keys read, and the fallbacks of missing keys.
TEST(CLinkPortIndexFill, ReadsKeysWithFallbacks) {
  FrameUtil::StrUIDParser parser;
  ASSERT_TRUE(parser.Parse("NE=1001,SH=1,SL=3,GRP=2,SUBGRP=4,PP=7"));
  CLinkPortIndex full = MarkedIndex();
  EXPECT_TRUE(full.FromPPUni(parser));
  EXPECT_EQ(full.nodeID, 1001u);
  EXPECT_EQ(full.shelfNo, 1);
  EXPECT_EQ(full.slotNo, 3);
  EXPECT_EQ(full.groupNo, 2);
  EXPECT_EQ(full.portID, 7u);
  EXPECT_EQ(full.subGroupNo, 4);
  EXPECT_EQ(full.strPortMOC, "PP");
  EXPECT_EQ(full.strPortFDN, "prev");  // not the fill's business

  ASSERT_TRUE(parser.Parse("ONE=5,SERIAL=x"));
  CLinkPortIndex sparse = MarkedIndex();
  EXPECT_FALSE(sparse.FromSerialPUni(parser));  // port VALUE is not a number
  EXPECT_EQ(sparse.nodeID, 5u);
  EXPECT_EQ(sparse.portID, 0u);
  EXPECT_EQ(sparse.groupNo, -1);
  EXPECT_EQ(sparse.subGroupNo, 0);
  EXPECT_EQ(sparse.shelfNo, -1);
  EXPECT_EQ(sparse.strPortMOC, "SERIAL");
}

}  // namespace
