// Alarm identifier strings: composing from maps and fault reports, splitting
// well-formed and malformed texts, and round trips at the extremes.
#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>

#include "tn_velkor/ns_velkor.h"

namespace {

using AlarmMap = std::map<std::string, int>;

TEST(AlarmIdCompose, FromMapAndFaultReport) {
  struct Case {
    AlarmMap map;
    const char* expected;
  };
  const Case cases[] = {
      {{{"sFaultID", 12}, {"lAlarmGroupID", 34}}, "12-34"},
      {{}, "0-0"},
      {{{"sFaultID", 5}}, "5-0"},
      {{{"lAlarmGroupID", 5}}, "0-5"},
      {{{"sFaultID", 12}, {"lAlarmGroupID", 34}, {"other", 99}, {"lAlarmGroupId", 1}}, "12-34"},
      {{{"sFaultID", 12}, {"lAlarmGroupID", -7}}, "12--7"},
  };
  for (const Case& c : cases) {
    const AlarmMap before = c.map;
    EXPECT_EQ(ns_velkor::GetCombineStrByMapKeyValueAsNewAlarmID(c.map), c.expected);
    EXPECT_EQ(c.map, before);
  }

  EXPECT_EQ(ns_velkor::GetCombineStrByAsnOtherFaultRptAtrcAsNewAlarmID(nullptr), "");
  AsnOtherToSvrFaultRptStrc record;
  record.faultID = (1LL << 32) + 3;  // read as an int: the low 32 bits
  record.alarmGroupID = -1;
  record.neID = 77;  // other members play no part
  EXPECT_EQ(ns_velkor::GetCombineStrByAsnOtherFaultRptAtrcAsNewAlarmID(&record), "3--1");
}

// Sentinels standing for "unchanged" in the split table.
constexpr int kOldFault = 111;
constexpr int kOldGroup = 222;

TEST(AlarmIdSplit, WellFormedAndMalformedTexts) {
  struct Case {
    std::string text;
    int fault;
    int group;
  };
  const Case cases[] = {
      {"12-34", 12, 34},
      {"", kOldFault, kOldGroup},
      {"   ", kOldFault, kOldGroup},
      {"12", 12, kOldGroup},
      {"12-", 12, kOldGroup},
      {"12 34", 12, kOldGroup},
      {"12x-34", 12, 34},
      {"12-34x", 12, 34},
      {"x-34", 0, kOldGroup},
      {"12-x", 12, 0},
      {"12--34", 12, -34},
      {"+5-7", 5, 7},
      {" 12 - 34 ", 12, 34},
      {"\t12\n-\t34\n", 12, 34},
      {"2147483648-1", INT_MAX, kOldGroup},
      {"-2147483649-1", INT_MIN, kOldGroup},
      {"12-2147483648", 12, INT_MAX},
      {"-", 0, kOldGroup},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE("text \"" + c.text + "\"");
    AlarmMap map{{"sFaultID", kOldFault}, {"lAlarmGroupID", kOldGroup}, {"third", 3}};
    ns_velkor::GetMapKeyValueByNewAlarmID(c.text, map);
    EXPECT_EQ(map, (AlarmMap{{"sFaultID", c.fault}, {"lAlarmGroupID", c.group}, {"third", 3}}));
  }

  AlarmMap missing{{"lAlarmGroupID", 8}};  // missing entries are created with zero
  ns_velkor::GetMapKeyValueByNewAlarmID("", missing);
  EXPECT_EQ(missing, (AlarmMap{{"sFaultID", 0}, {"lAlarmGroupID", 8}}));
}

TEST(AlarmIdRoundTrip, ExtremeValuesComeBack) {
  const int values[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX};
  for (int fault : values) {
    for (int group : values) {
      SCOPED_TRACE(std::to_string(fault) + "/" + std::to_string(group));
      const std::string text =
          ns_velkor::GetCombineStrByMapKeyValueAsNewAlarmID({{"sFaultID", fault}, {"lAlarmGroupID", group}});
      AlarmMap split{{"sFaultID", 5}, {"lAlarmGroupID", 6}};
      ns_velkor::GetMapKeyValueByNewAlarmID(text, split);
      EXPECT_EQ(split, (AlarmMap{{"sFaultID", fault}, {"lAlarmGroupID", group}}));
      AsnOtherToSvrFaultRptStrc record;
      record.faultID = fault;
      record.alarmGroupID = group;
      EXPECT_EQ(ns_velkor::GetCombineStrByAsnOtherFaultRptAtrcAsNewAlarmID(&record), text);
    }
  }
  EXPECT_EQ(ns_velkor::GetCombineStrByMapKeyValueAsNewAlarmID({{"sFaultID", INT_MIN}, {"lAlarmGroupID", INT_MAX}}),
            "-2147483648-2147483647");
}

}  // namespace
