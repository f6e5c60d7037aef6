#include "tools/velkor/decode_errors.h"

#include <vector>

#include "tools/velkor/ber_dump.h"

namespace velkor {

namespace {

constexpr std::size_t kOpenEnded = static_cast<std::size_t>(-1);  // an indefinite length's end
const std::string kAtOffset = " at offset ";

struct Span {
  std::size_t offset;
  std::size_t end;
};

struct PastTheOctet {};  // ends the walk once it has gone past the octet sought

}  // namespace

std::size_t ItemHolding(std::string_view bytes, std::size_t at, bool constructedOnly) {
  std::vector<Span> open;  // the constructed items around the current one
  std::size_t found = kOpenEnded;
  try {
    WalkBer(bytes, [&](const BerItem& item) {
      if (item.offset > at) throw PastTheOctet{};
      while (!open.empty() && open.back().end <= item.offset) open.pop_back();
      if (item.endOfContents) {
        if (!open.empty()) open.pop_back();
        return;
      }
      const std::size_t end = item.indefinite ? kOpenEnded : item.offset + item.headerLength + item.length;
      if (TagIsConstructed(item.tag)) {
        open.push_back({item.offset, end});
      } else if (!constructedOnly && at < end) {
        found = item.offset;
      }
    });
  } catch (const PastTheOctet&) {
  }
  if (found != kOpenEnded) return found;
  while (!open.empty() && open.back().end <= at) open.pop_back();
  return open.empty() ? at : open.back().offset;
}

std::string LocateDecodeError(const std::string& message, std::string_view bytes, std::size_t base,
                              const std::string& type) {
  const std::size_t at = message.rfind(kAtOffset);
  std::size_t digitsEnd = at == std::string::npos ? at : at + kAtOffset.size();
  std::size_t reached = 0;
  while (digitsEnd != std::string::npos && digitsEnd < message.size() && message[digitsEnd] >= '0' &&
         message[digitsEnd] <= '9')
    reached = reached * 10 + static_cast<std::size_t>(message[digitsEnd++] - '0');
  if (at == std::string::npos || digitsEnd == at + kAtOffset.size()) {
    // A message without an offset (a list's wrong tag) is about the value itself.
    return message + " (" + type + kAtOffset + std::to_string(base) + ")";
  }
  // Left-over octets start where the runtime stopped; any other defect lies
  // in the octets it had read, the last of which is just before the offset.
  // Something missing is the enclosing value's fault, not its last member's.
  std::size_t item = reached;
  if (message.find("left over") == std::string::npos && reached > 0) {
    const bool missing = message.find("missing") != std::string::npos;
    item = ItemHolding(bytes, reached - 1, missing);
  }
  return message.substr(0, at + kAtOffset.size()) + std::to_string(base + item) + message.substr(digitsEnd);
}

}  // namespace velkor
