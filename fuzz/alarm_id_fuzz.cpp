// Alarm identifiers ("<faultID>-<alarmGroupID>"). Splitting arbitrary text
// must give both keys of the map and leave its other keys alone. Composing
// any two 32-bit numbers (the input's first eight octets) and splitting the
// identifier gives the two numbers back, and the identifier is their
// decimal texts joined by "-".
#include <cstring>
#include <map>

#include "fuzz/fuzz_common.h"
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

void FuzzRoundTrip(std::int32_t faultId, std::int32_t alarmGroupId) {
  const std::map<std::string, int> map{{kFaultId, faultId}, {kAlarmGroupId, alarmGroupId}};
  const std::string text = ns_velkor::GetCombineStrByMapKeyValueAsNewAlarmID(map);
  if (text != std::to_string(faultId) + "-" + std::to_string(alarmGroupId)) std::abort();
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
