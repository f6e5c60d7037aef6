// Return-code maps from error lists and returns, single returns, and the
// removal of ignorable codes, with the trace lines they write.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "tests/trace_capture.h"
#include "tn_velkor/ns_velkor.h"

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

// The map as "key:name=code ...", keys and codes read as signed numbers.
std::string Text(const RetMap& map) {
  std::string text;
  for (const auto& [key, info] : map) {
    if (!text.empty()) text += ' ';
    text += std::to_string(static_cast<long>(key)) + ':' + info.strObjName + '=' +
            std::to_string(static_cast<long>(info.ulRetCode));
  }
  return text;
}

TEST(ErrInfoListToMap, FilesEachElement) {
  struct Case {
    const char* what;
    std::vector<ErrEntry> list;
    unsigned long result;
    const char* map;
  };
  const Case cases[] = {
      {"empty list", {}, 0, ""},
      {"taken id: synthetic key", {{{5}, 2, "a"}, {{5}, 3, "b"}, {{7}, 4, "c"}}, 2, "5:a=2 7:c=4 1000000:b=3"},
      {"no id: synthetic keys in list order", {{{}, 1, "x"}, {{}, 2, "y"}}, 1, "1000000:x=1 1000001:y=2"},
      {"result: the first non-zero code", {{{1}, 0, nullptr}, {{2}, 9, ""}, {{3}, 4, nullptr}}, 9, "1:=0 2:=9 3:=4"},
      {"only the first identifier counts", {{{8, 9}, 6, "p"}}, 6, "8:p=6"},
      {"negative code and identifier are sign-extended", {{{-3}, -1, nullptr}}, ULONG_MAX, "-3:=-1"},
      {"a later synthetic key overwrites an id", {{{1000000}, 5, "real"}, {{}, 6, "anon"}}, 5, "1000000:anon=6"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    qcommon::QAsnErrInfoList list;
    Fill(list, c.list);
    RetMap map;
    EXPECT_EQ(ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoList(list, map), c.result);
    EXPECT_EQ(Text(map), c.map);
  }
}

TEST(ErrInfoListToMap, CallerEntriesTakePartAndSyntheticKeysRestartPerCall) {
  RetMap map{{5, TERetInfo{"caller", 77}}};
  qcommon::QAsnErrInfoList first;
  Fill(first, {{{5}, 1, "five"}, {{}, 2, nullptr}});
  first.Current()->objName.GetOrCreate().Set("ab\0cd", 5);  // the name ends at the zero byte
  EXPECT_EQ(ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoList(first, map), 1u);
  EXPECT_EQ(Text(map), "5:caller=77 1000000:five=1 1000001:ab=2");
  qcommon::QAsnErrInfoList second;
  Fill(second, {{{}, 3, "again"}});
  ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoList(second, map);
  EXPECT_EQ(Text(map), "5:caller=77 1000000:again=3 1000001:ab=2");
}

TEST(ErrInfoReturnToMap, FilesTheListAndTracesFailures) {
  struct Case {
    const char* what;
    int code;
    bool list;  // errInfoList present: {2: "two", -7}
    unsigned long result;
    const char* after;   // the map {1:one=0, 4:four=9} after the first function
    const char* after2;  // ... after the second
  };
  const Case cases[] = {
      {"success", 0, true, 0, "1:one=0 4:four=9", "1:one=0 4:four=9"},
      {"failure without list", 5, false, 5, "1:one=0 4:four=9", "1:=5 4:=5"},
      {"failure with list", -2, true, ULONG_MAX - 1, "1:one=0 2:two=-7 4:four=9", "1:one=0 2:two=-7 4:four=9"},
  };
  for (const Case& c : cases) {
    qcommon::QAsnErrInfoReturn record;
    record.retCode = c.code;
    if (c.list) Fill(record.errInfoList.GetOrCreate(), {{{2}, -7, "two"}});
    for (const bool second : {false, true}) {
      SCOPED_TRACE(std::string(c.what) + (second ? ", Return2" : ", Return"));
      RetMap map{{1, TERetInfo{"one", 0}}, {4, TERetInfo{"four", 9}}};
      const TraceCapture capture;
      EXPECT_EQ(second ? ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn2(record, map)
                       : ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn(record, map),
                c.result);
      EXPECT_EQ(Text(map), second ? c.after2 : c.after);

      const auto& lines = TraceCapture::Lines();
      if (c.code == 0) {
        EXPECT_TRUE(lines.empty());  // success writes no trace
        continue;
      }
      // The code at INFO level 3, then the whole record at ASN.
      ASSERT_EQ(lines.size(), 2u);
      EXPECT_EQ(ns_utility::FormatTraceLine(lines[0]),
                "tn_velkor INFO tn_velkor_unity:" + std::to_string(lines[0].line) + " [3] QAsnErrInfoReturn failed " +
                    std::to_string(c.code) + ", error snapshot:");
      std::ostringstream printed;
      record.Print(printed, 0, false);
      EXPECT_EQ(std::make_tuple(lines[1].module, lines[1].category, lines[1].text, lines[1].file),
                std::make_tuple("tn_velkor", "ASN", printed.str(), "tn_velkor_unity"));
      EXPECT_GT(lines[1].line, lines[0].line);
    }
  }
}

TEST(IgnoreMapRetCode, RemovesToleratedCodesAndDecidesResult) {
  struct Case {
    const char* what;
    unsigned long overall;
    std::vector<unsigned long> codes;  // under the keys 1, 2, ...
    const char* remaining;
    unsigned long result;
  };
  const Case cases[] = {
      {"real failure stays", 8, {0, 7, 8}, "3:=8", 8},
      {"every failure tolerated", 8, {0, 7}, "", 0},
      {"empty map does not clear the result", 8, {}, "", 8},
      {"tolerated overall code", 7, {0, 7, 8}, "3:=8", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    RetMap map;
    for (unsigned long code : c.codes) map[map.size() + 1] = TERetInfo{"", code};
    const TraceCapture capture;
    EXPECT_EQ(ns_velkor::IgnoreMapRetCodeErrorCode(c.overall, map, 7, 0, 0), c.result);
    EXPECT_EQ(Text(map), c.remaining);
    const auto& lines = TraceCapture::Lines();
    EXPECT_EQ(lines.size(), c.codes.size() - map.size());  // one per removal
    for (const auto& line : lines) {
      EXPECT_EQ(std::make_tuple(line.category, line.level, line.text),
                std::make_tuple("INFO", 1, "IgnoreMapRetCodeErrorCode iRetCode1 7, iRetCode2 0, iRetCode3 0"));
    }
  }
  RetMap map{{1, TERetInfo{"", 11}}, {2, TERetInfo{"", 12}}, {3, TERetInfo{"", 13}}, {4, TERetInfo{"", 14}}};
  EXPECT_EQ(ns_velkor::IgnoreMapRetCodeErrorCode(13, map, 11, 12, 13), 0u);  // any of the three is tolerated
  EXPECT_EQ(Text(map), "4:=14");
}

TEST(SingleReturn, WritesCodeAndSuccess) {
  // code, retCode present before the call, success, retCode
  const std::tuple<unsigned long, bool, bool, long long> cases[] = {
      {0, true, true, 0},            // success
      {5, false, false, 5},          // failure makes retCode present
      {1UL << 32, false, false, 0},  // narrows to 0, yet a failure
      {ULONG_MAX, true, false, -1},  // low 32 bits, signed
  };
  for (const auto& [code, present, success, retCode] : cases) {
    SCOPED_TRACE(code);
    AsnSingleReturn record;
    record.success = !success;
    if (present) record.retCode.GetOrCreate() = 99;
    ns_velkor::Convert2AsnSingleReturn(code, &record);
    EXPECT_EQ(record.success.Value(), success);
    ASSERT_FALSE(record.retCode.IsNull());
    EXPECT_EQ(record.retCode->Value(), retCode);
  }
  ns_velkor::Convert2AsnSingleReturn(3, nullptr);  // a null record is ignored
}

}  // namespace
