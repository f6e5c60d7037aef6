#include "tools/velkor/json.h"

#include <algorithm>

#include "tn_platform/asn/asn_octs.h"
#include "tools/velkor/io.h"

namespace velkor {

namespace {

// nlohmann prefixes its messages with "[json.exception.parse_error.101] ".
std::string ParseErrorText(const Json::exception& error) {
  std::string what = error.what();
  const std::size_t close = what.find("] ");
  if (what.rfind("[json.exception", 0) == 0 && close != std::string::npos) what.erase(0, close + 2);
  return what;
}

}  // namespace

Json ParseJson(std::string_view text) {
  // The parser would take a NUL for the end of its input and accept whatever
  // garbage follows it.
  const std::size_t nul = text.find('\0');
  if (nul != std::string_view::npos) ThrowBadInput("bad JSON: NUL octet at position " + std::to_string(nul));
  try {
    return Json::parse(text.begin(), text.end(), nullptr, true, false);
  } catch (const Json::exception& error) {
    // A syntax error, or a number too large for a double ("1e400"), which
    // the parser reports as out_of_range.
    ThrowBadInput("bad JSON: " + ParseErrorText(error));
  }
}

// Invalid UTF-8 (possible only in a map key) is shown as U+FFFD, not refused.
std::string JsonText(const Json& json, JsonLayout layout) {
  const int indent = layout == JsonLayout::kIndented ? 2 : -1;
  return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

void ThrowJsonError(const std::string& path, const std::string& what) { ThrowBadInput(path + ": " + what); }

std::string JsonTypeName(const Json& json) {
  switch (json.type()) {
    case Json::value_t::null:
      return "null";
    case Json::value_t::object:
      return "an object";
    case Json::value_t::array:
      return "an array";
    case Json::value_t::string:
      return "a string";
    case Json::value_t::boolean:
      return "a boolean";
    case Json::value_t::number_float:
      return "a number with a fraction";
    default:
      return "a number";
  }
}

Json DecimalTextToJson(const std::string& text) {
  const std::size_t digits = text.size() - (text.rfind('-', 0) == 0 ? 1 : 0);
  if (digits == 0 || digits > 20 || text.find_first_not_of("0123456789", text.size() - digits) != std::string::npos)
    return nullptr;
  try {
    Json number = Json::parse(text);
    // 20 digits may be beyond 64 bits: the parser then gives a double.
    return number.is_number_integer() ? number : Json(nullptr);
  } catch (const Json::exception&) {
    return nullptr;
  }
}

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

std::string JsonString(const Json& json, const std::string& path) {
  if (!json.is_string()) ThrowJsonError(path, "expected a string, found " + JsonTypeName(json));
  return json.get<std::string>();
}

double JsonNumber(const Json& json, const std::string& path) {
  if (!json.is_number()) ThrowJsonError(path, "expected a number, found " + JsonTypeName(json));
  return json.get<double>();
}

const Json* JsonMember(const Json& json, const std::string& key, const std::string& path) {
  if (!json.is_object()) ThrowJsonError(path, "expected an object, found " + JsonTypeName(json));
  const auto found = json.find(key);
  return found == json.end() ? nullptr : &*found;
}

void JsonExpectOnly(const Json& json, std::initializer_list<std::string_view> known, const std::string& path) {
  if (!json.is_object()) ThrowJsonError(path, "expected an object, found " + JsonTypeName(json));
  for (const auto& member : json.items()) {
    if (std::find(known.begin(), known.end(), member.key()) == known.end())
      ThrowJsonError(path, "unknown member \"" + member.key() + "\"");
  }
}

}  // namespace velkor
