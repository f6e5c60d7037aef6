// Decoding errors that point where the dump points. The runtime names the
// offset it had reached when it gave up (after the octets it found wrong);
// people compare errors with `velkor dump`, which shows where each item
// starts. These helpers restate the error at the start of the item at fault.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velkor {

// The offset in `bytes` of the first octet of the innermost item that holds
// octet `at` (constructed items only when `constructedOnly`); `at` itself
// when no item read before the bytes break holds it.
std::size_t ItemHolding(std::string_view bytes, std::size_t at, bool constructedOnly);

// The runtime's `message` about decoding `bytes` as `type`, with its offset
// moved to the start of the item at fault and counted from `base` octets
// before `bytes` (the value's place in a capture).
std::string LocateDecodeError(const std::string& message, std::string_view bytes, std::size_t base,
                              const std::string& type);

}  // namespace velkor
