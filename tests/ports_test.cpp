// Ports: port indexes in both directions, virtual port numbers, use-state
// maps, link port indexes from resource identifiers and the identifier texts
// they are read from, and the R1 link port id.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "tests/test_bytes.h"
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

// tests/conversions/port_use_states.golden.
TEST(Convert2MapCpPortIndex2State, MaskSelectsStatesAndLastWins) {
  for (const std::vector<std::string>& row : test_bytes::Golden("conversions/port_use_states.golden")) {
    SCOPED_TRACE(row[0] + " mask " + row[1]);
    qinventoryport::QAsnPortUseStateList list;
    std::istringstream elements(row[0]);
    int level1, level4, state;
    for (char slash; elements >> level1 >> slash >> level4 >> slash >> state;) Fill(list, {{level1, level4, state}});
    PortStateMap map;
    ns_velkor::Convert2MapCpPortIndex2State(list, map, static_cast<unsigned short>(std::stoul(row[1], nullptr, 16)));
    std::string text;
    for (const auto& [index, selected] : map) {
      EXPECT_EQ(index, Port(static_cast<int>(index.level1ID), static_cast<int>(index.level4ID)));  // nothing else set
      text += (text.empty() ? "" : " ") + std::to_string(index.level1ID) + "/" + std::to_string(index.level4ID) + "=" +
              std::to_string(selected);
    }
    EXPECT_EQ(text.empty() ? "-" : text, row[2]);
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

// tests/conversions/link_port_by_moc.golden.
TEST(Convert2LinkPortIndexByQAsnUniRes, DecidesByMoc) {
  for (const std::vector<std::string>& row : test_bytes::Golden("conversions/link_port_by_moc.golden")) {
    SCOPED_TRACE(row[0] + " / " + row[1]);
    qcommon::QAsnUniResID res;
    const std::string fdn = test_bytes::Unescaped(row[0]);
    if (row[0] != "-") res.strFDN.Set(fdn.data(), fdn.size());
    CLinkPortIndex idx = MarkedIndex();
    EXPECT_EQ(ns_velkor::Convert2LinkPortIndexByQAsnUniRes(res, idx, row[1].c_str(), row[2] == "yes"),
              row[3] == "true");
    EXPECT_EQ(std::make_tuple(idx.nodeID, idx.portID, idx.strPortFDN, idx.strPortMOC, idx.portKind),
              std::make_tuple(std::stoull(row[4]), std::stoull(row[5]), row[6], row[7],
                              static_cast<LinkPortKind>(std::stoi(row[8]))));
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

// tests/conversions/r1_link_port_id.golden.
TEST(GetR1LinkPortId, PacksSubGroupAndGroup) {
  for (const std::vector<std::string>& row : test_bytes::Golden("conversions/r1_link_port_id.golden")) {
    CLinkPortIndex idx;
    idx.subGroupNo = static_cast<std::int32_t>(std::stol(row[0], nullptr, 16));
    idx.groupNo = static_cast<std::int32_t>(std::stol(row[1], nullptr, 16));
    idx.portID = std::stoull(row[2], nullptr, 16);
    EXPECT_EQ(ns_velkor::GetR1LinkPortId(idx), std::stoull(row[3], nullptr, 16)) << row[0] << " " << row[1];
  }
}

}  // namespace
