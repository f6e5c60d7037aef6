// The velkor tool's model JSON readers: the first octet picks TNCPPortIndex,
// TEFiberCable, the return-code map or the alarm key map; the rest is JSON
// text. A refusal is a ToolError and nothing else. What is accepted is stable:
// read, write, read again and write again give the same model and JSON.
#include <map>

#include "fuzz/fuzz_common.h"
#include "tools/velkor/io.h"
#include "tools/velkor/json.h"
#include "tools/velkor/model_json.h"

namespace {

using velkor::Json;

// True when `read` refuses its input with a ToolError.
template <class Read>
bool Refused(Read read) {
  try {
    read();
    return false;
  } catch (const velkor::ToolError&) {
    return true;
  }
}

template <class Model>
void FuzzModel(const Json& input) {
  Model model;
  if (Refused([&] { velkor::JsonToModel(input, model, "model"); })) return;
  const Json json = velkor::ModelToJson(model);
  Model again;
  velkor::JsonToModel(json, again, "model");
  if (velkor::ModelToJson(again) != json) std::abort();
}

void FuzzReturnCodeMap(const Json& input) {
  velkor::ReturnCodeMap map;
  if (Refused([&] { map = velkor::JsonToReturnCodeMap(input, "map"); })) return;
  const Json json = velkor::ReturnCodeMapToJson(map);
  const velkor::ReturnCodeMap again = velkor::JsonToReturnCodeMap(json, "map");
  if (again.size() != map.size() || velkor::ReturnCodeMapToJson(again) != json) std::abort();
}

void FuzzAlarmKeyMap(const Json& input) {
  std::map<std::string, int> map;
  if (Refused([&] { map = velkor::JsonToAlarmKeyMap(input, "map"); })) return;
  const Json json = velkor::AlarmKeyMapToJson(map);
  if (velkor::JsonToAlarmKeyMap(json, "map") != map) std::abort();
}

void (*const kReaders[])(const Json&) = {
    &FuzzModel<ns_utilmib::TNCPPortIndex>,
    &FuzzModel<ns_utilmib::TEFiberCable>,
    &FuzzReturnCodeMap,
    &FuzzAlarmKeyMap,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto reader = kReaders[data[0] % std::size(kReaders)];
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  Json input;
  if (Refused([&] { input = velkor::ParseJson(text); })) return 0;
  reader(input);
  return 0;
}
