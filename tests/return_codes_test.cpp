// Return-code maps from error lists and returns, single returns, and the
// removal of ignorable codes, with the trace lines they write.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "convert/ns_velkor.h"
#include "platform/trace/trace_sink.h"
#include "tests/trace_capture.h"

namespace {

using ns_velkor::TERetInfo;
using RetMap = std::map<unsigned long, TERetInfo>;

struct ErrEntry {
  std::vector<int> ids;
  int code;
  const char* name;  // null: objName absent
};

void Fill(qcommon::QAsnErrInfoList& list, const std::vector<ErrEntry>& entries) {
  for (const ErrEntry& entry : entries) {
    qcommon::QAsnErrInfo* element = list.Append();
    for (int id : entry.ids) element->objID.Append()->Set(id);
    element->errCode = entry.code;
    if (entry.name != nullptr) element->objName.GetOrCreate().Set(entry.name);
  }
}

// key -> (name, code), for whole-map comparisons.
std::map<unsigned long, std::pair<std::string, unsigned long>> Flatten(const RetMap& map) {
  std::map<unsigned long, std::pair<std::string, unsigned long>> flat;
  for (const auto& [key, info] : map) flat[key] = {info.strObjName, info.ulRetCode};
  return flat;
}

constexpr unsigned long kSynthetic = 1000000;

// ---- list conversion --------------------------------------------------------

TEST(ErrInfoListToMap, FilesEachElement) {
  struct Case {
    const char* what;
    std::vector<ErrEntry> list;
    unsigned long result;
    std::map<unsigned long, std::pair<std::string, unsigned long>> map;
  };
  const Case cases[] = {
      {"empty list", {}, 0, {}},
      {"duplicate identifier goes to a synthetic key",
       {{{5}, 2, "a"}, {{5}, 3, "b"}, {{7}, 4, "c"}},
       2,
       {{5, {"a", 2}}, {7, {"c", 4}}, {kSynthetic, {"b", 3}}}},
      {"empty objID takes synthetic keys in list order",
       {{{}, 1, "x"}, {{}, 2, "y"}},
       1,
       {{kSynthetic, {"x", 1}}, {kSynthetic + 1, {"y", 2}}}},
      {"result is the first non-zero code",
       {{{1}, 0, nullptr}, {{2}, 9, nullptr}, {{3}, 4, nullptr}},
       9,
       {{1, {"", 0}}, {2, {"", 9}}, {3, {"", 4}}}},
      {"only the first identifier counts", {{{8, 9}, 6, "p"}}, 6, {{8, {"p", 6}}}},
      {"negative code and identifier are sign-extended",
       {{{-3}, -1, nullptr}},
       ULONG_MAX,
       {{ULONG_MAX - 2, {"", ULONG_MAX}}}},
      {"identifier at a synthetic key is overwritten by a later synthetic one",
       {{{1000000}, 5, "real"}, {{}, 6, "anon"}},
       5,
       {{kSynthetic, {"anon", 6}}}},
      {"empty objName gives an empty name", {{{4}, 1, ""}}, 1, {{4, {"", 1}}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    qcommon::QAsnErrInfoList list;
    Fill(list, c.list);
    RetMap map;
    EXPECT_EQ(ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoList(list, map), c.result);
    EXPECT_EQ(Flatten(map), c.map);
  }
}

TEST(ErrInfoListToMap, NameEndsAtZeroByte) {
  qcommon::QAsnErrInfoList list;
  Fill(list, {{{1}, 1, nullptr}});
  list.First()->objName.GetOrCreate().Set("ab\0cd", 5);
  RetMap map;
  ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoList(list, map);
  EXPECT_EQ(map.at(1).strObjName, "ab");
}

TEST(ErrInfoListToMap, CallerEntriesTakePartAndSyntheticKeysRestartPerCall) {
  RetMap map{{5, TERetInfo{"caller", 77}}};
  qcommon::QAsnErrInfoList first;
  Fill(first, {{{5}, 1, "five"}, {{}, 2, "anon1"}});
  EXPECT_EQ(ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoList(first, map), 1u);
  // The caller's 5 stays; both new elements go to synthetic keys.
  EXPECT_EQ(Flatten(map), (std::map<unsigned long, std::pair<std::string, unsigned long>>{
                              {5, {"caller", 77}}, {kSynthetic, {"five", 1}}, {kSynthetic + 1, {"anon1", 2}}}));

  qcommon::QAsnErrInfoList second;
  Fill(second, {{{}, 3, "again"}});
  ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoList(second, map);
  EXPECT_EQ(map.size(), 3u);
  EXPECT_EQ(map.at(kSynthetic).strObjName, "again");
  EXPECT_EQ(map.at(kSynthetic).ulRetCode, 3u);
}

// ---- returns ------------------------------------------------------------------

qcommon::QAsnErrInfoReturn MakeReturn(int code, const std::vector<ErrEntry>* list) {
  qcommon::QAsnErrInfoReturn record;
  record.retCode = code;
  if (list != nullptr) Fill(record.errInfoList.GetOrCreate(), *list);
  return record;
}

std::string PrintOf(const AsnType& record) {
  std::ostringstream text;
  record.Print(text, 0, false);
  return text.str();
}

TEST(ErrInfoReturnToMap, SuccessLeavesMapAloneAndTracesNothing) {
  const std::vector<ErrEntry> list{{{1}, 4, "x"}};
  const qcommon::QAsnErrInfoReturn record = MakeReturn(0, &list);
  for (auto convert : {&ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn,
                       &ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn2}) {
    const TraceCapture capture;
    RetMap map{{1, TERetInfo{"one", 0}}};
    EXPECT_EQ(convert(record, map), 0u);
    EXPECT_EQ(Flatten(map), (std::map<unsigned long, std::pair<std::string, unsigned long>>{{1, {"one", 0}}}));
    EXPECT_TRUE(TraceCapture::Lines().empty());
  }
}

TEST(ErrInfoReturnToMap, FailureWithoutListDiffersBetweenTheTwoFunctions) {
  const qcommon::QAsnErrInfoReturn record = MakeReturn(5, nullptr);
  const RetMap before{{1, TERetInfo{"one", 0}}, {2, TERetInfo{"two", 9}}};

  RetMap kept = before;
  EXPECT_EQ(ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn(record, kept), 5u);
  EXPECT_EQ(Flatten(kept), Flatten(before));

  RetMap marked = before;
  EXPECT_EQ(ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn2(record, marked), 5u);
  EXPECT_EQ(Flatten(marked),
            (std::map<unsigned long, std::pair<std::string, unsigned long>>{{1, {"", 5}}, {2, {"", 5}}}));
}

TEST(ErrInfoReturnToMap, FailureWithListFilesItAndKeepsUnmentionedEntries) {
  const std::vector<ErrEntry> list{{{2}, -7, "two"}};
  const qcommon::QAsnErrInfoReturn record = MakeReturn(-2, &list);
  for (auto convert : {&ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn,
                       &ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn2}) {
    RetMap map{{1, TERetInfo{"one", 0}}};
    EXPECT_EQ(convert(record, map), ULONG_MAX - 1);
    EXPECT_EQ(Flatten(map), (std::map<unsigned long, std::pair<std::string, unsigned long>>{
                                {1, {"one", 0}}, {2, {"two", ULONG_MAX - 6}}}));
  }
}

TEST(ErrInfoReturnToMap, FailureTracesCodeThenRecord) {
  const std::vector<ErrEntry> list{{{3}, 8, "obj"}};
  const qcommon::QAsnErrInfoReturn record = MakeReturn(-5, &list);
  const TraceCapture capture;
  RetMap map;
  ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn(record, map);

  const auto& lines = TraceCapture::Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].module, "tn_velkor");
  EXPECT_EQ(lines[0].category, "INFO");
  EXPECT_EQ(lines[0].level, 3);
  EXPECT_EQ(lines[0].text, "QAsnErrInfoReturn failed -5, error snapshot:");
  EXPECT_EQ(lines[0].file, "tn_velkor_unity");
  EXPECT_EQ(lines[1].module, "tn_velkor");
  EXPECT_EQ(lines[1].category, "ASN");
  EXPECT_EQ(lines[1].file, "tn_velkor_unity");
  EXPECT_GT(lines[1].line, lines[0].line);
  EXPECT_EQ(lines[1].text, PrintOf(record));
  EXPECT_NE(lines[1].text.find("obj"), std::string::npos);
}

// ---- ignorable codes -------------------------------------------------------------

TEST(IgnoreMapRetCode, RemovesToleratedCodesAndDecidesResult) {
  struct Case {
    const char* what;
    unsigned long overall;
    std::map<unsigned long, unsigned long> codes;  // key -> code
    std::vector<unsigned long> remaining;
    unsigned long result;
  };
  const Case cases[] = {
      {"real failure stays", 8, {{1, 0}, {2, 7}, {3, 8}}, {3}, 8},
      {"every failure tolerated", 8, {{1, 0}, {2, 7}}, {}, 0},
      {"empty map does not clear the result", 8, {}, {}, 8},
      {"tolerated overall code", 7, {{1, 0}, {2, 7}, {3, 8}}, {3}, 0},
      {"tolerated overall code, empty map", 7, {}, {}, 0},
      {"nothing to remove", 8, {{4, 9}}, {4}, 8},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    RetMap map;
    for (const auto& [key, code] : c.codes) map[key] = TERetInfo{"n", code};
    const TraceCapture capture;
    EXPECT_EQ(ns_velkor::IgnoreMapRetCodeErrorCode(c.overall, map, 7, 0, 0), c.result);
    std::vector<unsigned long> keys;
    for (const auto& entry : map) keys.push_back(entry.first);
    EXPECT_EQ(keys, c.remaining);

    const auto& lines = TraceCapture::Lines();
    EXPECT_EQ(lines.size(), c.codes.size() - c.remaining.size());
    for (const auto& line : lines) {
      EXPECT_EQ(line.category, "INFO");
      EXPECT_EQ(line.level, 1);
      EXPECT_EQ(line.file, "tn_velkor_unity");
      EXPECT_EQ(line.text, "IgnoreMapRetCodeErrorCode iRetCode1 7, iRetCode2 0, iRetCode3 0");
    }
  }
}

TEST(IgnoreMapRetCode, AnyOfTheThreeCodesIsTolerated) {
  RetMap map{{1, TERetInfo{"", 11}}, {2, TERetInfo{"", 12}}, {3, TERetInfo{"", 13}}, {4, TERetInfo{"", 14}}};
  EXPECT_EQ(ns_velkor::IgnoreMapRetCodeErrorCode(13, map, 11, 12, 13), 0u);
  ASSERT_EQ(map.size(), 1u);
  EXPECT_EQ(map.begin()->first, 4u);
}

// ---- single return ------------------------------------------------------------------

TEST(SingleReturn, WritesCodeAndSuccess) {
  struct Case {
    unsigned long code;
    bool retCodePresent;  // before the call
    bool success;
    long long retCode;
  };
  const Case cases[] = {
      {0, false, true, 0},
      {0, true, true, 0},
      {5, false, false, 5},
      {5, true, false, 5},
      {1UL << 32, false, false, 0},
      {ULONG_MAX, true, false, -1},
      {0x80000000UL, false, false, INT32_MIN},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.code);
    AsnSingleReturn record;
    record.success = !c.success;
    const AsnInt* held = nullptr;
    if (c.retCodePresent) held = &(record.retCode.GetOrCreate() = 99);
    ns_velkor::Convert2AsnSingleReturn(c.code, &record);
    EXPECT_EQ(record.success.Value(), c.success);
    ASSERT_FALSE(record.retCode.IsNull());
    EXPECT_EQ(record.retCode->Value(), c.retCode);
    if (held != nullptr) {
      EXPECT_EQ(record.retCode.Get(), held);  // assigned in place
    }
  }
}

TEST(SingleReturn, NullRecordIsIgnored) { ns_velkor::Convert2AsnSingleReturn(3, nullptr); }

}  // namespace
