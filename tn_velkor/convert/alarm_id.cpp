// Alarm identifier strings: composed from two numbers and split back.
#include <climits>
#include <sstream>

#include "tn_velkor/ns_velkor.h"
#include "tn_velkor/convert/value_text.h"

namespace ns_velkor {
namespace alarm_id_detail {

const char kFaultIdKey[] = "sFaultID";
const char kAlarmGroupIdKey[] = "lAlarmGroupID";

inline int ValueOr0(const std::map<std::string, int>& map, const char* key) {
  const auto entry = map.find(key);
  return entry == map.end() ? 0 : entry->second;
}

inline std::string Combine(int faultId, int alarmGroupId) {
  return Convert2Str<int>(faultId) + "-" + Convert2Str<int>(alarmGroupId);
}

}  // namespace alarm_id_detail

std::string GetCombineStrByMapKeyValueAsNewAlarmID(const std::map<std::string, int>& map) {
  using namespace alarm_id_detail;
  return Combine(ValueOr0(map, kFaultIdKey), ValueOr0(map, kAlarmGroupIdKey));
}

std::string GetCombineStrByAsnOtherFaultRptAtrcAsNewAlarmID(const AsnOtherToSvrFaultRptStrc* record) {
  if (record == nullptr) return std::string();
  // The identifiers are 32-bit numbers carried in 64-bit INTEGER members.
  return alarm_id_detail::Combine(static_cast<int>(record->faultID.Value()),
                                  static_cast<int>(record->alarmGroupID.Value()));
}

void GetMapKeyValueByNewAlarmID(const std::string& text, std::map<std::string, int>& map) {
  int& faultId = map[alarm_id_detail::kFaultIdKey];
  int& alarmGroupId = map[alarm_id_detail::kAlarmGroupIdKey];
  // Plain formatted stream reads: their outcomes on malformed text (a value
  // kept, 0 stored, a limit stored) are what callers have always received.
  std::istringstream stream(text);
  stream >> faultId;
  // Only the separator goes: the group's own minus sign stays for the read.
  if (stream.good()) stream.ignore(INT_MAX, '-');
  stream >> alarmGroupId;
}

}  // namespace ns_velkor
