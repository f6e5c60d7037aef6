// Ports: port indexes in both directions, virtual port numbers, use-state
// maps, link port indexes from resource identifiers and the identifier texts
// they are read from, and the R1 link port id.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "tn_platform/uid/str_uid_parser.h"
#include "tn_velkor/ns_velkor.h"

namespace {

using FrameUtil::StrUIDParser;
using ns_utilmib::CLinkPortIndex;
using ns_utilmib::LinkPortKind;
using ns_utilmib::TNCPPortIndex;
using PortStateMap = std::map<TNCPPortIndex, unsigned short>;

constexpr int PortNo(std::uint32_t portClass, std::uint32_t number) {
  return static_cast<int>((portClass << 16) | number);
}

// Port class, number in the class, and whether that port is virtual. Class
// 0x8010 has the sign bit set; class and number 0xFFFF make -1.
TEST(IsVirtualPort, ClassAndNumberBoundaries) {
  const std::tuple<std::uint32_t, std::uint32_t, bool> cases[] = {
      {16, 40000, false}, {16, 40001, true}, {16, 40959, true},       {16, 40960, false},     {1, 50, false},
      {1, 51, true},      {1, 255, true},    {1, 256, false},         {2, 51, false},         {0, 40001, false},
      {17, 40001, false}, {0, 51, false},    {0xFFFF, 0xFFFF, false}, {0x8010, 40001, false}, {0xFFFF, 51, false}};
  for (const auto& [portClass, number, isVirtual] : cases)
    EXPECT_EQ(ns_velkor::isVirtualPort(PortNo(portClass, number)), isVirtual) << portClass << "/" << number;
}

// A record as levels 1 to 4, level2SubID, level3SubID and strIndexText.
using RecordView = std::tuple<int, int, int, int, std::optional<int>, std::optional<int>, std::optional<std::string>>;

RecordView View(const qcommon::QAsnPortIndex& r) {
  const auto text = [](const auto& h) { return h.IsNull() ? std::nullopt : std::optional<std::string>(h->view()); };
  const auto number = [](const auto& h) { return h.IsNull() ? std::nullopt : std::optional<int>(h->Value()); };
  return {r.level1ID,          r.level2ID, r.level3ID, r.level4ID, number(r.level2SubID), number(r.level3SubID),
          text(r.strIndexText)};
}

// Model index and record, converted one way (out: Convert2QAsnPortIndex, onto
// an empty record and onto one holding every optional component) or the other
// (in: Convert2CPPortIndex, onto a stale index) or both.
TEST(PortIndex, BothDirections) {
  enum Direction { kOut = 1, kIn = 2, kBoth = 3 };
  const std::tuple<const char*, TNCPPortIndex, RecordView, int> cases[] = {
      {"-1 is absent", {1, 2, 3, 4, -1, -1, ""}, {1, 2, 3, 4, {}, {}, ""}, kBoth},
      {"other negatives are present", {1, 2, 3, 4, -7, -2, "x"}, {1, 2, 3, 4, -2, -7, "x"}, kBoth},
      {"0 is present", {0, 0, 0, 0, 0, 0, ""}, {0, 0, 0, 0, 0, 0, ""}, kBoth},
      {"absent text reads as empty", {1, 2, 3, 4, -1, -1, ""}, {1, 2, 3, 4, {}, {}, {}}, kIn},
      {"a present -1 reads as -1", {1, 2, 3, 4, 6, -1, "abc"}, {1, 2, 3, 4, -1, 6, "abc"}, kIn},
      {"text stops at NUL", {5, 6, 7, 8, 1, 2, std::string("ab\0cd", 5)}, {5, 6, 7, 8, 2, 1, "ab"}, kOut},
      {"text stops at NUL", {0, 0, 0, 0, 0, 0, "ab"}, {0, 0, 0, 0, 0, 0, std::string("ab\0cd", 5)}, kIn},
      {"levels keep low 32 bits",
       {0xFFFFFFFFULL, 0x100000005ULL, 0x80000000ULL, 0, -1, -1, ""},
       {-1, 5, INT32_MIN, 0, {}, {}, ""},
       kOut},
      {"levels widen with sign",
       {UINT64_MAX, 0xFFFFFFFF80000000ULL, 0x7FFFFFFF, UINT64_MAX - 1, -1, -1, ""},
       {-1, INT32_MIN, 0x7FFFFFFF, -2, {}, {}, {}},
       kIn},
  };
  for (const auto& [what, index, view, direction] : cases) {
    SCOPED_TRACE(what);
    for (const bool startFull : {false, true}) {
      if ((direction & kOut) == 0) break;
      qcommon::QAsnPortIndex record;
      if (startFull) {
        record.level2SubID.GetOrCreate().Set(99);
        record.level3SubID.GetOrCreate().Set(98);
        record.strIndexText.GetOrCreate().Set("old text");
      }
      ns_velkor::Convert2QAsnPortIndex(index, record);
      EXPECT_EQ(View(record), view) << (startFull ? "onto a full record" : "onto an empty record");
    }
    if ((direction & kIn) == 0) continue;
    const auto& [level1, level2, level3, level4, level2Sub, level3Sub, text] = view;
    qcommon::QAsnPortIndex record;
    record.level1ID = level1;
    record.level2ID = level2;
    record.level3ID = level3;
    record.level4ID = level4;
    if (level2Sub) record.level2SubID.GetOrCreate().Set(*level2Sub);
    if (level3Sub) record.level3SubID.GetOrCreate().Set(*level3Sub);
    if (text) record.strIndexText.GetOrCreate().Set(text->data(), text->size());
    TNCPPortIndex stale{9, 9, 9, 9, 9, 9, "stale"};
    ns_velkor::Convert2CPPortIndex(record, stale);
    EXPECT_EQ(stale, index);
  }
}

// ---- use-state lists ----------------------------------------------------------

// Appends elements of level1ID, level4ID and use state.
void Fill(qinventoryport::QAsnPortUseStateList& list, const std::vector<std::tuple<int, int, int>>& elements) {
  for (const auto& [level1, level4, state] : elements) {
    qinventoryport::QAsnPortUseState* element = list.Append();
    element->portIndex.level1ID = level1;
    element->portIndex.level4ID = level4;
    element->useState = state;
  }
}

TNCPPortIndex Port(int level1, int level4) {
  return TNCPPortIndex{static_cast<std::uint64_t>(level1), 0, 0, static_cast<std::uint64_t>(level4), -1, -1, ""};
}

TEST(Convert2MapCpPortIndex2State, MaskSelectsStatesAndLastWins) {
  struct Case {
    const char* what;
    std::vector<std::tuple<int, int, int>> elements;
    unsigned short mask;
    PortStateMap expected;
  };
  const Case cases[] = {
      {"mask 0 selects nothing", {{1, 1, 0}, {1, 2, 1}}, 0, {}},
      {"bit n selects state n",
       {{1, 0, 0}, {1, 1, 1}, {1, 2, 2}, {1, 3, 3}, {1, 4, 4}},
       0b10101,
       {{Port(1, 0), 0}, {Port(1, 2), 2}, {Port(1, 4), 4}}},
      {"states 5 and up never", {{1, 5, 5}, {1, 6, 15}, {1, 7, 0x7FFF}}, 0xFFFF, {}},
      {"low 16 bits of the state",
       {{1, 1, 0x10003}, {1, 2, -1}, {1, 3, 0x10000}},
       0xFFFF,
       {{Port(1, 1), 3}, {Port(1, 3), 0}}},
      {"last of equal indexes wins", {{2, 2, 1}, {2, 2, 3}}, 0b1010, {{Port(2, 2), 3}}},
      {"unselected later one does not overwrite", {{2, 2, 3}, {2, 2, 1}}, 0b1000, {{Port(2, 2), 3}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    qinventoryport::QAsnPortUseStateList list;
    Fill(list, c.elements);
    PortStateMap map;
    ns_velkor::Convert2MapCpPortIndex2State(list, map, c.mask);
    EXPECT_EQ(map, c.expected);
  }
}

TEST(Convert2MapCpPortIndex2State, KeepsCallerEntriesAndResetsWorkingIndex) {
  qinventoryport::QAsnPortUseStateList list;
  Fill(list, {{1, 1, 2}});
  list.First()->portIndex.level2SubID.GetOrCreate().Set(5);
  list.First()->portIndex.strIndexText.GetOrCreate().Set("x");
  Fill(list, {{1, 2, 2}});  // no sub-level, no text: nothing of the element before may stay
  PortStateMap map{{Port(9, 9), 4}, {Port(1, 2), 0}};
  ns_velkor::Convert2MapCpPortIndex2State(list, map, 0xFFFF);
  TNCPPortIndex first = Port(1, 1);
  first.level2SubID = 5;
  first.strIndexText = "x";
  EXPECT_EQ(map, (PortStateMap{{Port(9, 9), 4}, {first, 2}, {Port(1, 2), 2}}));
}

// ---- identifier texts ------------------------------------------------------------

// Parsing, the MOC and GetValue against a plain reading of the identifier
// syntax are uid_parser_fuzz's (its seeds text_* and numbers hold the edge
// texts). Here what one text cannot show: a failed parse forgets the text
// before it, and a KEY matches whole.
TEST(StrUIDParser, FailedParseForgetsEarlierTextAndKeysMatchWhole) {
  StrUIDParser parser;
  ASSERT_TRUE(parser.Parse("NE=1001,PP=2"));
  std::uint64_t number = 5;
  EXPECT_FALSE(parser.GetValue(number, "N", 0));
  EXPECT_FALSE(parser.Parse("bad"));
  EXPECT_EQ(std::make_tuple(parser.GetMOC(), parser.PairCount()), std::make_tuple(std::string(), std::size_t{0}));
  EXPECT_FALSE(parser.GetValue(number, "NE", 0));
  EXPECT_EQ(number, 5u);
}

// ---- link port indexes ------------------------------------------------------------

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

// The fill operations succeed when node and port are read; missing keys fall
// back (the keys read are link_model_test's). The identifier text is not theirs.
TEST(CLinkPortIndexFill, SucceedsOnNodeAndPortElseFallsBack) {
  StrUIDParser parser;
  CLinkPortIndex idx = MarkedIndex();
  ASSERT_TRUE(parser.Parse("NE=1001,PP=7"));
  EXPECT_TRUE(idx.FromPPUni(parser));
  ASSERT_TRUE(parser.Parse("ONE=5,SERIAL=x"));
  EXPECT_FALSE(idx.FromSerialPUni(parser));  // port VALUE is not a number
  EXPECT_EQ(std::make_tuple(idx.nodeID, idx.shelfNo, idx.slotNo, idx.groupNo, idx.portID, idx.subGroupNo,
                            idx.strPortMOC, idx.strPortFDN),
            std::make_tuple(5u, -1, -1, -1, 0u, 0, "SERIAL", "prev"));
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

}  // namespace
