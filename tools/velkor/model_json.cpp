#include "tools/velkor/model_json.h"

#include <charconv>
#include <cstdlib>
#include <limits>
#include <tuple>
#include <type_traits>

#include "tools/velkor/io.h"

namespace velkor {

namespace {

using namespace ns_utilmib;

// Each model's fields, once, in declaration order: the JSON readers and
// writers below walk these tables.
template <class Model, class T>
struct Field {
  const char* name;
  T Model::*member;
};
template <class Model, class T>
constexpr Field<Model, T> F(const char* name, T Model::*member) {
  return {name, member};
}
template <class Model>
struct Tag {};

auto FieldsOf(Tag<TNCPPortIndex>) {
  using M = TNCPPortIndex;
  return std::make_tuple(F("level1ID", &M::level1ID), F("level2ID", &M::level2ID), F("level3ID", &M::level3ID),
                         F("level4ID", &M::level4ID), F("level3SubID", &M::level3SubID),
                         F("level2SubID", &M::level2SubID), F("strIndexText", &M::strIndexText));
}

auto FieldsOf(Tag<TEFiberEnd>) {
  using M = TEFiberEnd;
  return std::make_tuple(F("level2ID", &M::level2ID), F("level1ID", &M::level1ID), F("level2SubID", &M::level2SubID),
                         F("level3ID", &M::level3ID), F("level3SubID", &M::level3SubID), F("level4ID", &M::level4ID),
                         F("strIndexText", &M::strIndexText));
}

auto FieldsOf(Tag<TEFiberCable>) {
  using M = TEFiberCable;
  return std::make_tuple(
      F("fiberValue1", &M::fiberValue1), F("aEnd", &M::aEnd), F("zEnd", &M::zEnd),
      F("hybridMaxCapacity", &M::hybridMaxCapacity), F("cableType", &M::cableType), F("resetValue1", &M::resetValue1),
      F("fiberValue3", &M::fiberValue3), F("doubleValue", &M::doubleValue), F("floatValue", &M::floatValue),
      F("fiberValue2", &M::fiberValue2), F("fiberValue6", &M::fiberValue6), F("fiberText8", &M::fiberText8),
      F("fiberText2", &M::fiberText2), F("fiberText3", &M::fiberText3), F("fiberText4", &M::fiberText4),
      F("strUserLabel", &M::strUserLabel), F("buildTime", &M::buildTime), F("fiberValue5", &M::fiberValue5),
      F("memo", &M::memo), F("fiberText6", &M::fiberText6), F("fiberText7", &M::fiberText7),
      F("fiberText5", &M::fiberText5), F("resetValue2", &M::resetValue2), F("reserve", &M::reserve),
      F("srcPortFDN", &M::srcPortFDN), F("dstPortFDN", &M::dstPortFDN), F("modifyFlag", &M::modifyFlag),
      F("fiberText9", &M::fiberText9), F("fiberValue7", &M::fiberValue7), F("maintenanceState", &M::maintenanceState),
      F("delayTime", &M::delayTime), F("strCustomInfo", &M::strCustomInfo), F("lastModifyTime", &M::lastModifyTime));
}

auto FieldsOf(Tag<CLinkPortIndex>) {
  using M = CLinkPortIndex;
  return std::make_tuple(F("nodeID", &M::nodeID), F("oneID", &M::oneID), F("shelfNo", &M::shelfNo),
                         F("slotNo", &M::slotNo), F("groupNo", &M::groupNo), F("portID", &M::portID),
                         F("subGroupNo", &M::subGroupNo), F("portKind", &M::portKind), F("strPortFDN", &M::strPortFDN),
                         F("strPortMOC", &M::strPortMOC));
}

auto FieldsOf(Tag<CLinkMgrModel>) {
  using M = CLinkMgrModel;
  return std::make_tuple(
      F("linkID", &M::linkID), F("strText4", &M::strText4), F("srcPortIndex", &M::srcPortIndex),
      F("dstPortIndex", &M::dstPortIndex), F("tinyValue1", &M::tinyValue1), F("tinyValue2", &M::tinyValue2),
      F("p2mpLabel", &M::p2mpLabel), F("linkRate", &M::linkRate), F("strText2", &M::strText2),
      F("strText1", &M::strText1), F("strText3", &M::strText3), F("tinyValue4", &M::tinyValue4),
      F("tinyValue5", &M::tinyValue5), F("tinyValue3", &M::tinyValue3), F("buildTime", &M::buildTime),
      F("modifyTime", &M::modifyTime), F("strText7", &M::strText7), F("midNe", &M::midNe),
      F("strLinkFDN", &M::strLinkFDN), F("strUserLabel", &M::strUserLabel), F("srcNeName", &M::srcNeName),
      F("srcCpName", &M::srcCpName), F("srcSubCardName", &M::srcSubCardName), F("srcPortName", &M::srcPortName),
      F("dstNeName", &M::dstNeName), F("dstCpName", &M::dstCpName), F("dstSubCardName", &M::dstSubCardName),
      F("dstPortName", &M::dstPortName), F("srcPortInfoType", &M::srcPortInfoType),
      F("dstPortInfoType", &M::dstPortInfoType), F("protectGroupID", &M::protectGroupID), F("strText5", &M::strText5),
      F("strText6", &M::strText6), F("srcPortIpAddr", &M::srcPortIpAddr), F("dstPortIpAddr", &M::dstPortIpAddr),
      F("srcPortAlias", &M::srcPortAlias), F("dstPortAlias", &M::dstPortAlias), F("intValue2", &M::intValue2),
      F("intValue3", &M::intValue3), F("intValue1", &M::intValue1), F("tinyValue5Mirror", &M::tinyValue5Mirror),
      F("optTinyValue", &M::optTinyValue), F("strRemark", &M::strRemark));
}

auto FieldsOf(Tag<ns_velkor::TERetInfo>) {
  using M = ns_velkor::TERetInfo;
  return std::make_tuple(F("strObjName", &M::strObjName), F("ulRetCode", &M::ulRetCode));
}

const char* const kLinkPortKindNames[] = {"kNone", "kPhysical", "kLogical", "kSerial", "kSubInterface"};

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
  } else if constexpr (std::is_same_v<T, LinkPortKind>) {
    const auto index = static_cast<std::size_t>(value);
    return index < std::size(kLinkPortKindNames) ? Json(kLinkPortKindNames[index]) : Json(static_cast<int>(value));
  } else {
    return ToJson(value);
  }
}

template <class Model>
Json ToJson(const Model& model) {
  Json object = Json::object();
  std::apply([&](const auto&... field) { ((object[field.name] = FieldToJson(model.*(field.member))), ...); },
             FieldsOf(Tag<Model>{}));
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
  } else if constexpr (std::is_same_v<T, LinkPortKind>) {
    const std::string name = JsonString(json, path);
    for (std::size_t i = 0; i < std::size(kLinkPortKindNames); ++i) {
      if (name == kLinkPortKindNames[i]) {
        value = static_cast<LinkPortKind>(i);
        return;
      }
    }
    ThrowJsonError(path, "unknown port kind \"" + name + "\"");
  } else {
    FromJson(json, value, path);
  }
}

template <class Model>
void FromJson(const Json& json, Model& model, const std::string& path) {
  if (!json.is_object()) ThrowJsonError(path, "expected an object, found " + JsonTypeName(json));
  const auto fields = FieldsOf(Tag<Model>{});
  for (const auto& item : json.items()) {
    bool known = false;
    std::apply([&](const auto&... field) { ((known = known || item.key() == field.name), ...); }, fields);
    if (!known) ThrowJsonError(path, "unknown field \"" + item.key() + "\"");
  }
  std::apply(
      [&](const auto&... field) {
        ((json.contains(field.name) ? FieldFromJson(json[field.name], model.*(field.member), path + "." + field.name)
                                    : void()),
         ...);
      },
      fields);
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
