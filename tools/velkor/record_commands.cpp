#include "tools/velkor/record_commands.h"

#include <memory>
#include <sstream>

#include "tools/velkor/ber_dump.h"
#include "tools/velkor/io.h"
#include "tools/velkor/json.h"
#include "tools/velkor/record_json.h"
#include "tools/velkor/record_types.h"

namespace velkor {

std::string RunTypes(const std::string& only, bool json) {
  if (json) return JsonText(DescribeTypesJson(only));
  std::ostringstream os;
  DescribeTypes(os, only);
  return os.str();
}

std::string RunDump(const InputOutput& io) {
  const std::string bytes = ReadBytes(io.input, io.hex);
  std::ostringstream os;
  Progress progress("dump", bytes.size());
  std::size_t values = 0;
  const BerWalkResult result = WalkBer(bytes, [&](const BerItem& item) {
    WriteBerItem(os, item);
    if (item.depth == 0) progress.Update(++values, item.offset);
  });
  if (!result.complete) throw ToolError(kExitBadInput, "bytes break: " + result.error).WithPartial(os.str());
  return os.str();
}

std::string RunDecode(const std::string& type, const InputOutput& io, bool all, bool json) {
  CreateCatalogued(type);  // an unknown type is a usage mistake, whatever the input
  const std::string bytes = ReadBytes(io.input, io.hex);
  std::ostringstream text;
  Json array = Json::array();
  std::string_view rest(bytes);
  std::size_t count = 0;
  Progress progress("decode", bytes.size());
  do {
    const std::unique_ptr<AsnType> value = CreateCatalogued(type);
    const std::size_t offset = bytes.size() - rest.size();
    try {
      if (all) {
        rest.remove_prefix(DecodeFrontBytes(*value, rest));
      } else {
        DecodeBytes(*value, rest);
        rest = {};
      }
    } catch (ToolError& error) {
      std::string what = error.what();
      if (all)
        what = "record " + std::to_string(count + 1) + " (offsets count from its start at " + std::to_string(offset) +
               "): " + what;
      std::string partial = json ? (count > 0 ? JsonText(array) : std::string()) : text.str();
      throw ToolError(kExitBadInput, what).WithPartial(std::move(partial));
    }
    ++count;
    if (json) {
      Json valueJson = ValueToJson(*value);
      if (!all) return JsonText(valueJson);
      array.push_back(std::move(valueJson));
    } else {
      PrintValue(text, *value);
      text << '\n';
    }
    progress.Update(count, bytes.size() - rest.size());
  } while (all && !rest.empty());
  return json ? JsonText(array) : text.str();
}

std::string RunEncode(const std::string& type, const InputOutput& io, bool all) {
  CreateCatalogued(type);
  const Json json = ParseJson(ReadInput(io.input));
  std::string bytes;
  if (all) {
    if (!json.is_array()) ThrowJsonError(type, "--all expects an array, found " + JsonTypeName(json));
    for (std::size_t i = 0; i < json.size(); ++i) {
      const std::unique_ptr<AsnType> value = CreateCatalogued(type);
      JsonToValue(json[i], *value, type + "[" + std::to_string(i) + "]");
      bytes += EncodeBytes(*value);
    }
  } else {
    const std::unique_ptr<AsnType> value = CreateCatalogued(type);
    JsonToValue(json, *value, type);
    bytes = EncodeBytes(*value);
  }
  return FormatBytes(bytes, io.hex, io.output);
}

}  // namespace velkor
