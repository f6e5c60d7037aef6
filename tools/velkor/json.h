// The JSON of the tool's models (records and lists have theirs in the
// runtime, asn_json_reader.h and asn_json_writer.h): nlohmann's JSON with members kept in
// the order they were written (records and models list their members in
// declaration order), and readers that name the offending member's path in
// their errors ("QAsnFiberInfo.aEndPort.level1ID: integer out of range").
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <type_traits>

namespace velkor {

using Json = nlohmann::ordered_json;

// Parses `text` as exactly one JSON document: nothing but blanks may follow
// it, and a NUL octet anywhere is refused. Throws ToolError(bad input)
// "bad JSON: <what>".
Json ParseJson(std::string_view text);

enum class JsonLayout {
  kIndented,  // two blanks per level, one member or element per line
  kOneLine,   // a line of JSON Lines
};

// `json` as text with a final line break.
std::string JsonText(const Json& json, JsonLayout layout = JsonLayout::kIndented);

// Throws ToolError(bad input) "<path>: <what>".
[[noreturn]] void ThrowJsonError(const std::string& path, const std::string& what);

// The JSON type's name for messages ("a string", "an array", ...).
std::string JsonTypeName(const Json& json);

// An integer as JSON: a number, or for 64-bit types a decimal string, as the
// protobuf JSON mapping has it, so that tools that hold numbers as doubles
// (jq, JavaScript) cannot round it.
template <class T>
Json IntegerToJson(T value) {
  static_assert(std::is_integral_v<T>, "integers only");
  if constexpr (sizeof(T) >= 8) {
    return std::to_string(value);
  } else {
    return value;
  }
}

// `text` as a JSON number when it is a decimal integer ("-12"), else null.
Json DecimalTextToJson(const std::string& text);

// An integer of type T from a JSON number without fraction or a string of
// decimal digits, range-checked.
template <class T>
T JsonInteger(const Json& given, const std::string& path) {
  static_assert(std::is_integral_v<T>, "integers only");
  Json parsed;
  if (given.is_string()) {
    parsed = DecimalTextToJson(given.get<std::string>());
    if (parsed.is_null()) ThrowJsonError(path, "expected an integer, found the string " + given.dump());
  }
  const Json& json = given.is_string() ? parsed : given;
  if (json.is_number_unsigned()) {
    const std::uint64_t value = json.get<std::uint64_t>();
    if (value <= static_cast<std::uint64_t>(std::numeric_limits<T>::max())) return static_cast<T>(value);
  } else if (json.is_number_integer()) {
    const std::int64_t value = json.get<std::int64_t>();
    if constexpr (std::is_signed_v<T>) {
      if (value >= static_cast<std::int64_t>(std::numeric_limits<T>::min()) &&
          value <= static_cast<std::int64_t>(std::numeric_limits<T>::max()))
        return static_cast<T>(value);
    } else if (value >= 0 && static_cast<std::uint64_t>(value) <= std::numeric_limits<T>::max()) {
      return static_cast<T>(value);
    }
  } else {
    ThrowJsonError(path, "expected an integer, found " + JsonTypeName(json));
  }
  ThrowJsonError(path, "integer " + json.dump() + " out of range (" + std::to_string(std::numeric_limits<T>::min()) +
                           " to " + std::to_string(std::numeric_limits<T>::max()) + ")");
}

// An OCTET STRING's content as JSON: a string when it is UTF-8 text without
// control characters, else {"hex": "<two hex digits per octet>"}; and the
// content of such JSON.
Json OctetsToJson(std::string_view octets);
std::string JsonToOctets(const Json& json, const std::string& path);

// A text from a JSON string.
std::string JsonString(const Json& json, const std::string& path);

// A floating-point number from a JSON number.
double JsonNumber(const Json& json, const std::string& path);

// The member `key` of the object `json`, or null when it has none. Throws
// when `json` is not an object.
const Json* JsonMember(const Json& json, const std::string& key, const std::string& path);

// Throws when `json` (an object) has a member not named in `known`.
void JsonExpectOnly(const Json& json, std::initializer_list<std::string_view> known, const std::string& path);

}  // namespace velkor
