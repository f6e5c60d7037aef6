// Alarm identifier strings: composing from maps and fault reports, splitting
// well-formed and malformed texts; the extremes both ways.
#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>
#include <tuple>
#include <utility>

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

// Sentinels standing for "unchanged" in the split table.
constexpr int kOldFault = 111;
constexpr int kOldGroup = 222;

TEST(AlarmIdSplit, WellFormedAndMalformedTexts) {
  const std::tuple<std::string, int, int> cases[] = {
      {"12-34", 12, 34},
      {"", kOldFault, kOldGroup},                    // nothing to read: both unchanged
      {"12", 12, kOldGroup},                         // no separator: group unchanged
      {"12-", 12, kOldGroup},                        // nothing after the separator: unchanged
      {"12 34", 12, kOldGroup},                      // a blank is no separator
      {"12x-34", 12, 34},                            // junk after a number is skipped up to the separator
      {"x-34", 0, kOldGroup},                        // unreadable fault: 0, and the group is not read
      {"12-x", 12, 0},                               // unreadable group: 0
      {"12--34", 12, -34},                           // negative group
      {"+5-7", 5, 7},                                // explicit plus
      {"\t12\n-\t34\n", 12, 34},                     // any white space around the numbers
      {"2147483648-1", INT_MAX, kOldGroup},          // overflow clamps and stops
      {"-2147483649-1", INT_MIN, kOldGroup},         // underflow likewise
      {"12-2147483648", 12, INT_MAX},                // overflow in the group
      {"-", 0, kOldGroup},                           // a lone separator is a failed number
      {"-2147483648-2147483647", INT_MIN, INT_MAX},  // the extremes come back
  };
  for (const auto& [text, fault, group] : cases) {
    SCOPED_TRACE("text \"" + text + "\"");
    AlarmMap map{{"sFaultID", kOldFault}, {"lAlarmGroupID", kOldGroup}, {"third", 3}};
    ns_velkor::GetMapKeyValueByNewAlarmID(text, map);
    EXPECT_EQ(map, (AlarmMap{{"sFaultID", fault}, {"lAlarmGroupID", group}, {"third", 3}}));
  }

  AlarmMap missing{{"lAlarmGroupID", 8}};  // missing entries are created with zero
  ns_velkor::GetMapKeyValueByNewAlarmID("", missing);
  EXPECT_EQ(missing, (AlarmMap{{"sFaultID", 0}, {"lAlarmGroupID", 8}}));
}

}  // namespace
