#include "tools/velkor/record_json.h"

#include <vector>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_member.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tools/velkor/io.h"

namespace velkor {

namespace {

Json RecordToJson(const AsnSequence& record) {
  Json object = Json::object();
  for (const AsnMember& member : AsnMembersOf(record)) {
    if (const AsnType* value = member.Value()) object[member.Name()] = ValueToJson(*value);
  }
  return object;
}

void JsonToRecord(const Json& json, AsnSequence& record, const std::string& path) {
  if (!json.is_object()) ThrowJsonError(path, "expected an object, found " + JsonTypeName(json));
  const std::vector<AsnMember> members = AsnMembersOf(record);
  for (const auto& item : json.items()) {
    if (item.key().rfind("//", 0) == 0) continue;  // a comment
    bool known = false;
    for (const AsnMember& member : members) known = known || member.Name() == item.key();
    if (!known) ThrowJsonError(path, std::string(record.typeName()) + " has no member \"" + item.key() + "\"");
  }
  for (const AsnMember& member : members) {
    const std::string memberPath = path + "." + member.Name();
    const auto found = json.find(member.Name());
    if (found == json.end() || found->is_null()) {
      if (!member.IsOptional()) ThrowJsonError(memberPath, "missing (a mandatory member)");
      member.Reset();
      continue;
    }
    JsonToValue(*found, *member.ValueOrCreate(), memberPath);
  }
}

}  // namespace

Json OctetsToJson(std::string_view octets) {
  if (AsnOctetsAreText(octets)) return std::string(octets);
  return Json{{"hex", EncodeHex(octets)}};
}

std::string JsonToOctets(const Json& json, const std::string& path) {
  if (json.is_string()) return json.get<std::string>();
  if (json.is_object() && json.size() == 1 && json.contains("hex") && json["hex"].is_string()) {
    try {
      return DecodeHex(json["hex"].get<std::string>());
    } catch (const ToolError& error) {
      ThrowJsonError(path, error.what());
    }
  }
  ThrowJsonError(path, "expected a string or {\"hex\": \"...\"}, found " + JsonTypeName(json));
}

Json ValueToJson(const AsnType& value) {
  if (const auto* record = dynamic_cast<const AsnSequence*>(&value)) return RecordToJson(*record);
  if (const auto* list = dynamic_cast<const AsnListBase*>(&value)) {
    Json array = Json::array();
    list->ForEachElement([&array](const AsnType& element) { array.push_back(ValueToJson(element)); });
    return array;
  }
  if (const auto* octets = dynamic_cast<const AsnOcts*>(&value)) return OctetsToJson(octets->view());
  if (const auto* tiny = dynamic_cast<const AsnTinyInt*>(&value)) return tiny->Value();
  if (const auto* integer = dynamic_cast<const AsnInt*>(&value)) return IntegerToJson(integer->Value());
  if (const auto* boolean = dynamic_cast<const AsnBool*>(&value)) return boolean->Value();
  ThrowBadInput(std::string("values of type ") + value.typeName() + " have no JSON form");
}

Json TemplateJson(AsnType& value) {
  if (auto* record = dynamic_cast<AsnSequence*>(&value)) {
    Json object = Json::object();
    std::string optional;
    for (const AsnMember& member : AsnMembersOf(*record)) {
      if (member.IsOptional()) optional += (optional.empty() ? "" : ", ") + std::string(member.Name());
    }
    if (!optional.empty()) object["//"] = "optional: " + optional + " (leave out or null for absent)";
    for (const AsnMember& member : AsnMembersOf(*record)) object[member.Name()] = TemplateJson(*member.ValueOrCreate());
    return object;
  }
  if (auto* list = dynamic_cast<AsnListBase*>(&value)) return Json::array({TemplateJson(list->AppendElement())});
  return ValueToJson(value);
}

void JsonToValue(const Json& json, AsnType& value, const std::string& path) {
  if (auto* record = dynamic_cast<AsnSequence*>(&value)) {
    JsonToRecord(json, *record, path);
  } else if (auto* list = dynamic_cast<AsnListBase*>(&value)) {
    if (!json.is_array()) ThrowJsonError(path, "expected an array, found " + JsonTypeName(json));
    for (std::size_t i = 0; i < json.size(); ++i)
      JsonToValue(json[i], list->AppendElement(), path + "[" + std::to_string(i) + "]");
  } else if (auto* octets = dynamic_cast<AsnOcts*>(&value)) {
    const std::string content = JsonToOctets(json, path);
    octets->Set(content.data(), content.size());
  } else if (auto* tiny = dynamic_cast<AsnTinyInt*>(&value)) {
    tiny->Set(JsonInteger<int>(json, path));
  } else if (auto* integer = dynamic_cast<AsnInt*>(&value)) {
    integer->Set(JsonInteger<long long>(json, path));
  } else if (auto* boolean = dynamic_cast<AsnBool*>(&value)) {
    if (!json.is_boolean()) ThrowJsonError(path, "expected true or false, found " + JsonTypeName(json));
    boolean->Set(json.get<bool>());
  } else {
    ThrowJsonError(path, std::string("values of type ") + value.typeName() + " have no JSON form");
  }
}

}  // namespace velkor
