// Alarm identifiers ("<faultID>-<alarmGroupID>"). Splitting arbitrary text
// must give both keys of the map and leave its other keys alone. Composing
// any two 32-bit numbers (the input's first eight octets) and splitting the
// identifier gives the two numbers back, and the identifier has the form
// "<number>-<number>".
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

#include "tn_velkor/ns_velkor.h"

namespace {

const char kFaultId[] = "sFaultID";
const char kAlarmGroupId[] = "lAlarmGroupID";

void FuzzSplit(const std::string& text) {
  std::map<std::string, int> map{{"other", 5}};
  ns_velkor::GetMapKeyValueByNewAlarmID(text, map);
  if (map.size() != 3 || map.count(kFaultId) != 1 || map.count(kAlarmGroupId) != 1 || map["other"] != 5)
    std::abort();
}

bool IsNumber(const std::string& text) {
  const std::size_t start = !text.empty() && text[0] == '-' ? 1 : 0;
  if (text.size() == start || text.size() - start > 10) return false;
  return text.find_first_not_of("0123456789", start) == std::string::npos;
}

void FuzzRoundTrip(std::int32_t faultId, std::int32_t alarmGroupId) {
  const std::map<std::string, int> map{{kFaultId, faultId}, {kAlarmGroupId, alarmGroupId}};
  const std::string text = ns_velkor::GetCombineStrByMapKeyValueAsNewAlarmID(map);
  // The separator is the first "-" after the first character.
  const std::size_t separator = text.find('-', 1);
  if (separator == std::string::npos || !IsNumber(text.substr(0, separator)) ||
      !IsNumber(text.substr(separator + 1)))
    std::abort();
  std::map<std::string, int> back;
  ns_velkor::GetMapKeyValueByNewAlarmID(text, back);
  if (back != map) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzSplit(std::string(reinterpret_cast<const char*>(data), size));
  if (size >= 8) {
    std::int32_t numbers[2];
    std::memcpy(numbers, data, sizeof numbers);
    FuzzRoundTrip(numbers[0], numbers[1]);
  }
  return 0;
}
