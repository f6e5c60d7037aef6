// Link port indexes from resource identifiers, the R1 link port id, and the
// model library's fill operations they rely on.
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "tn_platform/uid/str_uid_parser.h"
#include "tn_velkor/ns_velkor.h"

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
  constexpr LinkPortKind kNone = LinkPortKind::kNone;
  struct Case {
    std::optional<std::string> fdn;  // nullopt: strFDN without content
    const char* moc;
    bool acceptNode, result;
    std::uint64_t nodeID, portID;
    const char *portFDN, *portMOC;
    LinkPortKind kind;
  };
  const Case cases[] = {
      // Refused before anything is set.
      {std::nullopt, "NE", true, false, 77, 88, "prev", "prevMOC", kNone},
      {"NE", "NE", true, false, 77, 88, "prev", "prevMOC", kNone},         // no "="
      {"NE=1,pp=2", "FR", true, false, 77, 88, "prev", "prevMOC", kNone},  // lower-case class
      // Data whose text is empty (it starts with a NUL) parses: marked "--" and refused.
      {std::string("\0NE=1", 5), "NE", true, false, 77, 88, "--", "prevMOC", kNone},
      // Node ends.
      {"NE=1001", "NE", true, true, 1001, 88, "NE=1001", "NE", kNone},
      {"NE=9,ONE=5", "ONE", true, true, 5, 88, "NE=9,ONE=5", "ONE", kNone},
      {"NE=9,FR=3", "FR", true, true, 9, 88, "NE=9,FR=3", "FR", kNone},  // every class but ONE reads NE
      {"NE=1,PP=2", "PP", true, true, 1, 88, "NE=1,PP=2", "PP", kNone},  // node path wins
      {"NE=1001", "NE", false, false, 77, 88, "NE=1001", "prevMOC", kNone},
      {"NE=1001", "NEX", true, false, 77, 88, "NE=1001", "prevMOC", kNone},  // exact match only
      // Port ends.
      {"NE=1,PP=2", "FR", true, true, 1, 2, "NE=1,PP=2", "PP", LinkPortKind::kPhysical},
      {"NE=1,LP=3", "NE", true, true, 1, 3, "NE=1,LP=3", "LP", LinkPortKind::kLogical},
      {"NE=1,SERIAL=4", "FR", false, true, 1, 4, "NE=1,SERIAL=4", "SERIAL", LinkPortKind::kSerial},
      {"NE=1,SUBIF=5", "FR", true, true, 1, 5, "NE=1,SUBIF=5", "SUBIF", LinkPortKind::kSubInterface},
      // SDH anywhere in the class, and unknown classes.
      {"NE=1,SDH=2", "FR", true, false, 77, 88, "NE=1,SDH=2", "prevMOC", kNone},
      {"NE=1,XSDHY=2", "FR", true, false, 77, 88, "NE=1,XSDHY=2", "prevMOC", kNone},  // SDH inside the class
      {"NE=1,PP2=2", "FR", true, false, 77, 88, "NE=1,PP2=2", "prevMOC", kNone},      // near a port class
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.fdn.value_or("(no data)") + " / " + c.moc);
    qcommon::QAsnUniResID res;
    if (c.fdn) res.strFDN.Set(c.fdn->data(), c.fdn->size());
    CLinkPortIndex idx = MarkedIndex();
    EXPECT_EQ(ns_velkor::Convert2LinkPortIndexByQAsnUniRes(res, idx, c.moc, c.acceptNode), c.result);
    EXPECT_EQ(std::make_tuple(idx.nodeID, idx.portID, idx.strPortFDN, idx.strPortMOC, idx.portKind),
              std::make_tuple(c.nodeID, c.portID, c.portFDN, c.portMOC, c.kind));
  }
}

TEST(GetR1LinkPortId, PacksSubGroupAndGroup) {
  const std::tuple<std::int32_t, std::int32_t, std::uint64_t, std::uint64_t> cases[] = {
      // subGroupNo, groupNo, portID, expected
      {0, 2, 0x12345, 0x12345},                 // no sub-group: port unchanged, group ignored
      {3, -1, 0x12345, 0x32345},                // sub-group over the low 16 bits of the port
      {3, 2, 0x12345, 0x2032345},               // group in bits 24-31
      {0x1FF, 2, 7, 0x2FF0007},                 // the group replaces the sub-group's upper bits
      {-1, 2, 0x100000001ULL, 0x100000001ULL},  // all 64 bits kept
      {0x12345, -1, 0xFFFF, 0x2345FFFF},        // sub-group keeps its low 16 bits
      {-2, 0x1AB, 0x10001, 0xABFE0001},         // group keeps its low 8 bits
  };
  for (const auto& [subGroup, group, portID, expected] : cases) {
    CLinkPortIndex idx;
    idx.subGroupNo = subGroup;
    idx.groupNo = group;
    idx.portID = portID;
    EXPECT_EQ(ns_velkor::GetR1LinkPortId(idx), expected) << subGroup << " " << group << " " << portID;
  }
}

// The fill operations: keys read, and the fallbacks of missing keys.
TEST(CLinkPortIndexFill, ReadsKeysWithFallbacks) {
  FrameUtil::StrUIDParser parser;
  ASSERT_TRUE(parser.Parse("NE=1001,SH=1,SL=3,GRP=2,SUBGRP=4,PP=7"));
  CLinkPortIndex idx = MarkedIndex();
  EXPECT_TRUE(idx.FromPPUni(parser));
  EXPECT_EQ(std::make_tuple(idx.nodeID, idx.shelfNo, idx.slotNo, idx.groupNo, idx.portID, idx.subGroupNo,
                            idx.strPortMOC, idx.strPortFDN),  // the identifier text is not the fill's business
            std::make_tuple(1001u, 1, 3, 2, 7u, 4, "PP", "prev"));

  ASSERT_TRUE(parser.Parse("ONE=5,SERIAL=x"));
  idx = MarkedIndex();
  EXPECT_FALSE(idx.FromSerialPUni(parser));  // port VALUE is not a number
  EXPECT_EQ(
      std::make_tuple(idx.nodeID, idx.shelfNo, idx.slotNo, idx.groupNo, idx.portID, idx.subGroupNo, idx.strPortMOC),
      std::make_tuple(5u, -1, -1, -1, 0u, 0, "SERIAL"));
}

}  // namespace
