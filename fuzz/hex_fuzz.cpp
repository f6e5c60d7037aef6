// The velkor tool's hex input (`--hex`): arbitrary text must decode or end in
// a ToolError, nothing else. What decodes is checked against the rules: one
// octet per two hex digits, blanks ignored, so writing the octets as hex and
// reading that back gives the same octets. And any octets written as hex
// read back unchanged.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tools/velkor/io.h"

namespace {

bool IsHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);

  // Any octets, written and read back.
  if (velkor::DecodeHex(velkor::EncodeHex(text)) != text) std::abort();

  std::string octets;
  try {
    octets = velkor::DecodeHex(text);
  } catch (const velkor::ToolError&) {
    return 0;
  }
  std::size_t digits = 0;
  for (const char c : text) digits += IsHexDigit(c) ? 1 : 0;
  if (octets.size() * 2 != digits) std::abort();
  if (velkor::DecodeHex(velkor::EncodeHex(octets)) != octets) std::abort();
  return 0;
}
