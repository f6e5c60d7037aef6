#include "tools/velkor/record_json.h"

#include <memory>
#include <vector>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_member.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tools/velkor/decode_errors.h"
#include "tools/velkor/io.h"

namespace velkor {

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
  try {
    return ParseJson(AsnToJson(value, AsnJsonForm::kReadable));
  } catch (CSM_Exception* exception) {
    ThrowBadInput(DecodeErrorMessage(exception, 0));
  }
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
  try {
    AsnReadJson(value, json.dump(), AsnJsonForm::kReadable);
  } catch (AsnDecodeError* error) {
    // The path as the caller names the value; the offset is the dump's, of no use.
    const std::unique_ptr<AsnDecodeError> owned(error);
    std::string where = owned->Path();
    where.replace(0, std::string(value.typeName()).size(), path);
    ThrowJsonError(where, owned->What());
  } catch (CSM_Exception* exception) {
    ThrowBadInput(DecodeErrorMessage(exception, 0));
  }
}

}  // namespace velkor
