// The record JSON reader and writer of the velkor tool (`velkor encode` and
// `decode --json`): the first octet picks a catalogue type, the rest is JSON
// text. Text the reader refuses must end in a ToolError and nothing else. What
// it accepts must be stable: JSON -> record -> JSON -> record -> JSON gives
// the same JSON the second time, and the record's BER encoding decodes to a
// record with the same JSON.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "fuzz/fuzz_catalogue.h"
#include "fuzz/fuzz_decode.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tools/velkor/io.h"
#include "tools/velkor/json.h"
#include "tools/velkor/record_json.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const AsnCatalogueEntry& type = FuzzChooseType(data[0]);
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::unique_ptr<AsnType> value(type.create());
  try {
    velkor::JsonToValue(velkor::ParseJson(text), *value, type.name);
  } catch (const velkor::ToolError&) {
    return 0;
  }

  const velkor::Json json = velkor::ValueToJson(*value);
  const std::unique_ptr<AsnType> again(type.create());
  velkor::JsonToValue(json, *again, type.name);  // an exception here escapes: a finding
  if (velkor::ValueToJson(*again) != json) std::abort();
  // The text the tool writes reads back as the same JSON.
  if (velkor::ParseJson(velkor::JsonText(json)) != json) std::abort();

  const std::unique_ptr<AsnType> decoded(type.create());
  if (!FuzzDecode(*decoded, AsnEncodeValue(*value))) std::abort();
  if (velkor::ValueToJson(*decoded) != json) std::abort();
  return 0;
}
