// Port indexes in both directions, virtual port numbers and use-state maps.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "convert/ns_velkor.h"

namespace {

using ns_utilmib::TNCPPortIndex;
using PortStateMap = std::map<TNCPPortIndex, unsigned short>;

constexpr int PortNo(std::uint32_t portClass, std::uint32_t number) {
  return static_cast<int>((portClass << 16) | number);
}

TEST(IsVirtualPort, ClassAndNumberBoundaries) {
  struct Case {
    int portNo;
    bool isVirtual;
  };
  const Case cases[] = {
      {PortNo(16, 40000), false},
      {PortNo(16, 40001), true},
      {PortNo(16, 40959), true},
      {PortNo(16, 40960), false},
      {PortNo(1, 50), false},
      {PortNo(1, 51), true},
      {PortNo(1, 255), true},
      {PortNo(1, 256), false},
      {PortNo(2, 51), false},
      {PortNo(0, 40001), false},
      {PortNo(17, 40001), false},
      {PortNo(0, 51), false},
      {-1, false},
      {static_cast<int>(0x8010'9C41U), false},  // class 0x8010: sign bit set
      {static_cast<int>(0xFFFF'0033U), false},  // class 0xFFFF, number 51
  };
  for (const Case& c : cases) EXPECT_EQ(ns_velkor::isVirtualPort(c.portNo), c.isVirtual) << std::hex << c.portNo;
}

struct RecordView {
  int level1, level2, level3, level4;
  std::optional<int> level2Sub, level3Sub;
  std::optional<std::string> text;
};

RecordView View(const qcommon::QAsnPortIndex& record) {
  RecordView view{record.level1ID, record.level2ID, record.level3ID, record.level4ID, {}, {}, {}};
  if (!record.level2SubID.IsNull()) view.level2Sub = record.level2SubID->Value();
  if (!record.level3SubID.IsNull()) view.level3Sub = record.level3SubID->Value();
  if (!record.strIndexText.IsNull()) view.text = std::string(record.strIndexText->view());
  return view;
}

TEST(Convert2QAsnPortIndex, SubLevelsTextAndLevels) {
  struct Case {
    const char* what;
    TNCPPortIndex index;
    bool startFull;  // the record holds every optional component before
    RecordView expected;
  };
  const Case cases[] = {
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
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    qcommon::QAsnPortIndex record;
    if (c.startFull) {
      record.level2SubID.GetOrCreate().Set(99);
      record.level3SubID.GetOrCreate().Set(98);
      record.strIndexText.GetOrCreate().Set("old text");
    }
    const AsnTinyInt* heldBefore = record.level3SubID.Get();
    ns_velkor::Convert2QAsnPortIndex(c.index, record);
    const RecordView got = View(record);
    EXPECT_EQ(got.level1, c.expected.level1);
    EXPECT_EQ(got.level2, c.expected.level2);
    EXPECT_EQ(got.level3, c.expected.level3);
    EXPECT_EQ(got.level4, c.expected.level4);
    EXPECT_EQ(got.level2Sub, c.expected.level2Sub);
    EXPECT_EQ(got.level3Sub, c.expected.level3Sub);
    EXPECT_EQ(got.text, c.expected.text);
    if (heldBefore != nullptr && got.level3Sub) {
      EXPECT_EQ(record.level3SubID.Get(), heldBefore) << "held object reused";
    }
  }
}

TEST(Convert2CPPortIndex, OverwritesEveryField) {
  struct Case {
    const char* what;
    RecordView record;
    bool emptyText;  // text present with length 0
    TNCPPortIndex expected;
  };
  const Case cases[] = {
      {"all optional absent", {1, 2, 3, 4, {}, {}, {}}, false, {1, 2, 3, 4, -1, -1, ""}},
      {"present -1 and values", {1, 2, 3, 4, -1, 6, "abc"}, false, {1, 2, 3, 4, 6, -1, "abc"}},
      {"present empty text", {0, 0, 0, 0, 0, 0, {}}, true, {0, 0, 0, 0, 0, 0, ""}},
      {"-1 level widens with sign",
       {-1, INT32_MIN, 0x7FFFFFFF, -2, {}, {}, {}},
       false,
       {UINT64_MAX, 0xFFFFFFFF80000000ULL, 0x7FFFFFFF, UINT64_MAX - 1, -1, -1, ""}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    qcommon::QAsnPortIndex record;
    record.level1ID = c.record.level1;
    record.level2ID = c.record.level2;
    record.level3ID = c.record.level3;
    record.level4ID = c.record.level4;
    if (c.record.level2Sub) record.level2SubID.GetOrCreate().Set(*c.record.level2Sub);
    if (c.record.level3Sub) record.level3SubID.GetOrCreate().Set(*c.record.level3Sub);
    if (c.record.text) record.strIndexText.GetOrCreate().Set(c.record.text->c_str());
    if (c.emptyText) record.strIndexText.GetOrCreate();
    TNCPPortIndex index{9, 9, 9, 9, 9, 9, "stale"};
    ns_velkor::Convert2CPPortIndex(record, index);
    EXPECT_EQ(index, c.expected);
  }
}

TEST(Convert2CPPortIndex, TextStopsAtZeroByte) {
  qcommon::QAsnPortIndex record;
  record.strIndexText.GetOrCreate().Set("ab\0cd", 5);
  TNCPPortIndex index;
  ns_velkor::Convert2CPPortIndex(record, index);
  EXPECT_EQ(index.strIndexText, "ab");
}

TEST(PortIndex, SubLevelMinusOneAndAbsentStandForEachOther) {
  // Out and back: -1 comes back as -1 (absent on the wire in between).
  const TNCPPortIndex index{1, 2, 3, 4, -1, -1, "p"};
  qcommon::QAsnPortIndex record;
  ns_velkor::Convert2QAsnPortIndex(index, record);
  TNCPPortIndex back;
  ns_velkor::Convert2CPPortIndex(record, back);
  EXPECT_EQ(back, index);
  // In and back out: a present -1 comes back absent.
  qcommon::QAsnPortIndex withMinusOne;
  withMinusOne.level2SubID.GetOrCreate().Set(-1);
  TNCPPortIndex model;
  ns_velkor::Convert2CPPortIndex(withMinusOne, model);
  qcommon::QAsnPortIndex out;
  ns_velkor::Convert2QAsnPortIndex(model, out);
  EXPECT_TRUE(out.level2SubID.IsNull());
}

// ---- use-state lists ----------------------------------------------------------

struct UseState {
  int level1;
  int level4;
  int state;
};

void Fill(qinventoryport::QAsnPortUseStateList& list, const std::vector<UseState>& elements) {
  for (const UseState& e : elements) {
    qinventoryport::QAsnPortUseState* element = list.Append();
    element->portIndex.level1ID = e.level1;
    element->portIndex.level4ID = e.level4;
    element->useState = e.state;
  }
}

TNCPPortIndex Port(int level1, int level4) {
  return TNCPPortIndex{static_cast<std::uint64_t>(level1), 0, 0, static_cast<std::uint64_t>(level4), -1, -1, ""};
}

TEST(Convert2MapCpPortIndex2State, MaskSelectsStatesAndLastWins) {
  struct Case {
    const char* what;
    std::vector<UseState> elements;
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
