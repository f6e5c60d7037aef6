// The velkor tool's text input forms (`--hex`, `--base64`) and its hint for
// text given without them: arbitrary text must decode or end in a ToolError,
// nothing else. Any octets written as hex read back unchanged, and so do the
// octets a hex text decoded to.
#include "fuzz/fuzz_common.h"
#include "tools/velkor/io.h"
#include "tools/velkor/text_forms.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);

  if (velkor::DecodeHex(velkor::EncodeHex(text)) != text) std::abort();
  velkor::TextFormHint(text);
  try {
    const std::string octets = velkor::DecodeHex(text);
    if (velkor::DecodeHex(velkor::EncodeHex(octets)) != octets) std::abort();
  } catch (const velkor::ToolError&) {
  }
  try {
    velkor::DecodeBase64(text);
  } catch (const velkor::ToolError&) {
  }
  return 0;
}
