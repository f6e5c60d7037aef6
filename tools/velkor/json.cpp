#include "tools/velkor/json.h"

#include <algorithm>

#include "tools/velkor/io.h"

namespace velkor {

Json ParseJson(std::string_view text) {
  try {
    return Json::parse(text.begin(), text.end());
  } catch (const Json::exception& error) {
    // A syntax error, or a number too large for a double ("1e400", which
    // the parser reports as out_of_range). nlohmann prefixes its messages
    // with "[json.exception.parse_error.101] ".
    std::string what = error.what();
    const std::size_t close = what.find("] ");
    if (what.rfind("[json.exception", 0) == 0 && close != std::string::npos) what.erase(0, close + 2);
    ThrowBadInput("bad JSON: " + what);
  }
}

// Invalid UTF-8 (possible only in a map key) is shown as U+FFFD, not refused.
std::string JsonText(const Json& json) { return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n"; }

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
