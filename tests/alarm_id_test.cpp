// Alarm identifier strings: composing from maps and fault reports, splitting
// well-formed and malformed texts; the extremes both ways.
#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>
#include <utility>

#include "tests/test_bytes.h"
#include "tn_velkor/ns_velkor.h"

namespace {

using AlarmMap = std::map<std::string, int>;

TEST(AlarmIdCompose, FromMapAndFaultReport) {
  const std::pair<AlarmMap, const char*> cases[] = {
      {{{"sFaultID", 5}}, "5-0"},                                                                 // missing: 0
      {{{"sFaultID", 12}, {"lAlarmGroupID", 34}, {"other", 99}, {"lAlarmGroupId", 1}}, "12-34"},  // exact keys only
      {{{"sFaultID", 12}, {"lAlarmGroupID", -7}}, "12--7"},                                       // sign kept
      {{{"sFaultID", INT_MIN}, {"lAlarmGroupID", INT_MAX}}, "-2147483648-2147483647"},
  };
  for (const auto& [map, expected] : cases) {
    const AlarmMap before = map;
    EXPECT_EQ(ns_velkor::GetCombineStrByMapKeyValueAsNewAlarmID(map), expected);
    EXPECT_EQ(map, before);  // missing keys are not added
  }

  EXPECT_EQ(ns_velkor::GetCombineStrByAsnOtherFaultRptAtrcAsNewAlarmID(nullptr), "");
  AsnOtherToSvrFaultRptStrc record;
  record.faultID = (1LL << 32) + 3;  // read as an int: the low 32 bits
  record.alarmGroupID = -1;
  record.neID = 77;  // other members play no part
  EXPECT_EQ(ns_velkor::GetCombineStrByAsnOtherFaultRptAtrcAsNewAlarmID(&record), "3--1");
}

// tests/conversions/alarm_id_split.golden.
TEST(AlarmIdSplit, WellFormedAndMalformedTexts) {
  for (const std::vector<std::string>& row : test_bytes::Golden("conversions/alarm_id_split.golden")) {
    const std::string text = row[0] == "-" ? "" : test_bytes::Unescaped(row[0]);
    SCOPED_TRACE("text \"" + text + "\"");
    AlarmMap map{{"sFaultID", 111}, {"lAlarmGroupID", 222}, {"third", 3}};
    ns_velkor::GetMapKeyValueByNewAlarmID(text, map);
    EXPECT_EQ(map, (AlarmMap{{"sFaultID", std::stoi(row[1])}, {"lAlarmGroupID", std::stoi(row[2])}, {"third", 3}}));
  }

  AlarmMap missing{{"lAlarmGroupID", 8}};  // missing entries are created with zero
  ns_velkor::GetMapKeyValueByNewAlarmID("", missing);
  EXPECT_EQ(missing, (AlarmMap{{"sFaultID", 0}, {"lAlarmGroupID", 8}}));
}

}  // namespace
