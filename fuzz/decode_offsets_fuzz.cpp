// Where decoding errors point: the first octet picks a catalogue type, the
// rest is decoded as one whole value. A refusal is at the start of an item the
// structure walk (velkor dump) shows or where that walk breaks; a fault other
// than the input ending may also be the item the walk broke in (a wrong tag
// on an item whose length runs past the input). Octets left over after a
// value are placed at its end, and the value alone walks completely.
#include <unordered_set>

#include "fuzz/fuzz_common.h"
#include "tn_platform/asn/asn_ber_reader.h"

namespace {

// The error of decoding `bytes` as a whole value of `type`, or null.
std::unique_ptr<AsnDecodeError> DecodeError(const AsnCatalogueEntry& type, std::string_view bytes) {
  const std::unique_ptr<AsnType> value(type.create());
  return FuzzRefusal(type.name, bytes.size(), [&] { AsnDecodeValue(*value, bytes); });
}

// Where the structure walk (AsnBerReader, behind velkor dump) of `bytes`
// breaks, and the item it was reading; `starts` gets every item it shows.
struct Walk {
  bool complete = true;
  std::size_t breakOffset = 0;
  std::size_t breakItem = 0;
};
Walk WalkBytes(std::string_view bytes, std::unordered_set<std::size_t>* starts) {
  AsnBerReader reader(AsnBytesSource(bytes), 0);
  AsnBerItem item;
  Walk walk;
  try {
    while (reader.Next(item)) {
      if (starts != nullptr) starts->insert(item.offset);
    }
  } catch (AsnDecodeError* raw) {
    const std::unique_ptr<AsnDecodeError> error(raw);
    walk = Walk{false, error->Offset(), reader.ItemStart()};
  }
  return walk;
}

void CheckAgainstWalk(std::string_view bytes, const AsnDecodeError& error) {
  const std::size_t offset = error.Offset();
  if (bytes.empty()) return;
  std::unordered_set<std::size_t> starts;
  const Walk walk = WalkBytes(bytes, &starts);
  if (starts.count(offset) != 0) return;
  if (!walk.complete && (walk.breakOffset == offset || (walk.breakItem == offset && !error.InputEnds()))) return;
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const AsnCatalogueEntry& type = FuzzChooseType(data[0]);
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::unique_ptr<AsnDecodeError> error = DecodeError(type, bytes);
  if (error == nullptr) return 0;

  // Octets left over: the value takes exactly the octets before them.
  const std::unique_ptr<AsnType> front(type.create());
  std::size_t used = 0;
  try {
    used = AsnDecodeFront(*front, bytes);
  } catch (CSM_Exception* raw) {
    delete raw;
    CheckAgainstWalk(bytes, *error);
    return 0;
  }
  const std::string_view value = bytes.substr(0, used);
  if (error->Offset() != used || DecodeError(type, value) != nullptr || !WalkBytes(value, nullptr).complete) {
    std::abort();
  }
  return 0;
}
