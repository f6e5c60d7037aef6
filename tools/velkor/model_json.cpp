#include "tools/velkor/model_json.h"

#include <charconv>
#include <cstdlib>
#include <limits>
#include <type_traits>

#include "tools/velkor/io.h"

namespace velkor {

namespace {

using namespace ns_utilmib;

// A float as the shortest decimal that reads back as the same float, so that
// -0.1f shows as -0.1 and not as its widened double -0.10000000149011612.
double ShortestFloat(float value) {
  char text[32];
  const auto result = std::to_chars(text, text + sizeof text - 1, value);
  *result.ptr = '\0';
  return std::strtod(text, nullptr);
}

template <class Model>
Json ToJson(const Model& model);

template <class T>
Json FieldToJson(const T& value) {
  if constexpr (std::is_same_v<T, float>) {
    return ShortestFloat(value);
  } else if constexpr (std::is_same_v<T, bool> || std::is_floating_point_v<T>) {
    return value;
  } else if constexpr (std::is_integral_v<T>) {
    return IntegerToJson(value);
  } else if constexpr (std::is_same_v<T, std::string>) {
    return OctetsToJson(value);
  } else if constexpr (std::is_enum_v<T>) {
    const char* name = nullptr;
    DescribeEnumerators(value, [&](const char* enumerator, T described) {
      if (described == value) name = enumerator;
    });
    return name != nullptr ? Json(name) : Json(static_cast<std::underlying_type_t<T>>(value));
  } else {
    return ToJson(value);
  }
}

template <class Model>
Json ToJson(const Model& model) {
  Json object = Json::object();
  Model::DescribeFields([&](const char* name, auto member) { object[name] = FieldToJson(model.*member); });
  return object;
}

template <class Model>
void FromJson(const Json& json, Model& model, const std::string& path);

template <class T>
void FieldFromJson(const Json& json, T& value, const std::string& path) {
  if constexpr (std::is_same_v<T, bool>) {
    if (!json.is_boolean()) ThrowJsonError(path, "expected true or false, found " + JsonTypeName(json));
    value = json.get<bool>();
  } else if constexpr (std::is_integral_v<T>) {
    value = JsonInteger<T>(json, path);
  } else if constexpr (std::is_floating_point_v<T>) {
    const double number = JsonNumber(json, path);
    if (number > std::numeric_limits<T>::max() || number < std::numeric_limits<T>::lowest())
      ThrowJsonError(path, "number out of range");
    value = static_cast<T>(number);
  } else if constexpr (std::is_same_v<T, std::string>) {
    value = JsonToOctets(json, path);
  } else {
    FromJson(json, value, path);
  }
}

template <class Model>
void FromJson(const Json& json, Model& model, const std::string& path) {
  if (!json.is_object()) ThrowJsonError(path, "expected an object, found " + JsonTypeName(json));
  for (const auto& item : json.items()) {
    bool known = false;
    Model::DescribeFields([&](const char* name, auto) { known = known || item.key() == name; });
    if (!known) ThrowJsonError(path, "unknown field \"" + item.key() + "\"");
  }
  Model::DescribeFields([&](const char* name, auto member) {
    const auto given = json.find(name);
    if (given != json.end()) FieldFromJson(*given, model.*member, path + "." + name);
  });
}

}  // namespace

Json ModelToJson(const TNCPPortIndex& index) { return ToJson(index); }
Json ModelToJson(const TEFiberEnd& end) { return ToJson(end); }
Json ModelToJson(const TEFiberCable& cable) { return ToJson(cable); }
Json ModelToJson(const CLinkPortIndex& index) { return ToJson(index); }
Json ModelToJson(const CLinkMgrModel& model) { return ToJson(model); }

Json ModelToJson(const std::list<CLinkMgrModel>& models) {
  Json array = Json::array();
  for (const CLinkMgrModel& model : models) array.push_back(ToJson(model));
  return array;
}

void JsonToModel(const Json& json, TNCPPortIndex& index, const std::string& path) { FromJson(json, index, path); }
void JsonToModel(const Json& json, TEFiberCable& cable, const std::string& path) { FromJson(json, cable, path); }

Json ReturnCodeMapToJson(const ReturnCodeMap& map) {
  Json object = Json::object();
  for (const auto& [key, info] : map) object[std::to_string(key)] = ToJson(info);
  return object;
}

ReturnCodeMap JsonToReturnCodeMap(const Json& json, const std::string& path) {
  if (!json.is_object()) ThrowJsonError(path, "expected an object, found " + JsonTypeName(json));
  ReturnCodeMap map;
  for (const auto& item : json.items()) {
    const std::string& key = item.key();
    unsigned long number = 0;
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), number);
    if (key.empty() || error != std::errc() || end != key.data() + key.size())
      ThrowJsonError(path, "key \"" + key + "\" is not an unsigned decimal number");
    ns_velkor::TERetInfo info;
    FromJson(item.value(), info, path + "." + key);
    map[number] = info;
  }
  return map;
}

Json NameValueMapToJson(const std::map<std::string, std::string>& map) {
  Json object = Json::object();
  for (const auto& [name, value] : map) object[name] = FieldToJson(value);
  return object;
}

Json AlarmKeyMapToJson(const std::map<std::string, int>& map) {
  Json object = Json::object();
  for (const auto& [key, value] : map) object[key] = IntegerToJson(value);
  return object;
}

std::map<std::string, int> JsonToAlarmKeyMap(const Json& json, const std::string& path) {
  if (!json.is_object()) ThrowJsonError(path, "expected an object, found " + JsonTypeName(json));
  std::map<std::string, int> map;
  for (const auto& item : json.items()) map[item.key()] = JsonInteger<int>(item.value(), path + "." + item.key());
  return map;
}

Json PortStateMapToJson(const std::map<TNCPPortIndex, unsigned short>& map) {
  Json array = Json::array();
  for (const auto& [index, state] : map) array.push_back({{"portIndex", ToJson(index)}, {"useState", state}});
  return array;
}

}  // namespace velkor
