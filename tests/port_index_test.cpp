// Port indexes in both directions, virtual port numbers and use-state maps.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tn_velkor/ns_velkor.h"

namespace {

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

std::optional<int> Opt(const refl::MayNullPointer<AsnTinyInt>& h) {
  return h.IsNull() ? std::nullopt : std::optional<int>(h->Value());
}
std::optional<std::string> Opt(const refl::MayNullPointer<AsnOcts>& h) {
  return h.IsNull() ? std::nullopt : std::optional<std::string>(h->view());
}

// A record as levels 1 to 4, level2SubID, level3SubID and strIndexText.
using RecordView = std::tuple<int, int, int, int, std::optional<int>, std::optional<int>, std::optional<std::string>>;

RecordView View(const qcommon::QAsnPortIndex& r) {
  return {r.level1ID, r.level2ID, r.level3ID, r.level4ID, Opt(r.level2SubID), Opt(r.level3SubID), Opt(r.strIndexText)};
}

// The record holds every optional component before when startFull is true.
TEST(Convert2QAsnPortIndex, SubLevelsTextAndLevels) {
  const std::tuple<const char*, TNCPPortIndex, bool, RecordView> cases[] = {
      {"-1 empties a present component", {1, 2, 3, 4, -1, -1, "t"}, true, {1, 2, 3, 4, {}, {}, "t"}},
      {"-1 on an empty record", {1, 2, 3, 4, -1, -1, ""}, false, {1, 2, 3, 4, {}, {}, ""}},
      {"other negatives are present", {1, 2, 3, 4, -7, -2, "x"}, false, {1, 2, 3, 4, -2, -7, "x"}},
      {"0 is present", {0, 0, 0, 0, 0, 0, ""}, true, {0, 0, 0, 0, 0, 0, ""}},
      {"text stops at NUL", {5, 6, 7, 8, 1, 2, std::string("ab\0cd", 5)}, true, {5, 6, 7, 8, 2, 1, "ab"}},
      {"levels keep low 32 bits",
       {0xFFFFFFFFULL, 0x100000005ULL, 0x80000000ULL, 0, -1, -1, ""},
       false,
       {-1, 5, INT32_MIN, 0, {}, {}, ""}},
  };
  for (const auto& [what, index, startFull, expected] : cases) {
    SCOPED_TRACE(what);
    qcommon::QAsnPortIndex record;
    if (startFull) {
      record.level2SubID.GetOrCreate().Set(99);
      record.level3SubID.GetOrCreate().Set(98);
      record.strIndexText.GetOrCreate().Set("old text");
    }
    ns_velkor::Convert2QAsnPortIndex(index, record);
    EXPECT_EQ(View(record), expected);
  }
}

TEST(Convert2CPPortIndex, OverwritesEveryField) {
  const std::pair<RecordView, TNCPPortIndex> cases[] = {
      {{1, 2, 3, 4, {}, {}, {}}, {1, 2, 3, 4, -1, -1, ""}},  // absent sub-levels give -1 (and -1 gives absent)
      {{1, 2, 3, 4, -1, 6, "abc"}, {1, 2, 3, 4, 6, -1, "abc"}},
      {{0, 0, 0, 0, 0, 0, std::string("ab\0cd", 5)}, {0, 0, 0, 0, 0, 0, "ab"}},  // text stops at NUL
      // Levels widen with sign: a record level of -1 becomes 2^64-1.
      {{-1, INT32_MIN, 0x7FFFFFFF, -2, {}, {}, {}},
       {UINT64_MAX, 0xFFFFFFFF80000000ULL, 0x7FFFFFFF, UINT64_MAX - 1, -1, -1, ""}},
  };
  for (const auto& [view, expected] : cases) {
    SCOPED_TRACE(::testing::PrintToString(expected.level1ID));
    const auto& [level1, level2, level3, level4, level2Sub, level3Sub, text] = view;
    qcommon::QAsnPortIndex record;
    record.level1ID = level1;
    record.level2ID = level2;
    record.level3ID = level3;
    record.level4ID = level4;
    if (level2Sub) record.level2SubID.GetOrCreate().Set(*level2Sub);
    if (level3Sub) record.level3SubID.GetOrCreate().Set(*level3Sub);
    if (text) record.strIndexText.GetOrCreate().Set(text->data(), text->size());
    TNCPPortIndex index{9, 9, 9, 9, 9, 9, "stale"};
    ns_velkor::Convert2CPPortIndex(record, index);
    EXPECT_EQ(index, expected);
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

}  // namespace
