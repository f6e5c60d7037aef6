// Where decoding errors point: the first octet picks a catalogue type, the
// rest is decoded as one whole value. A refusal is at the start of an item the
// structure walk (velkor dump) shows or where that walk breaks; a fault other
// than the input ending may also be the item the walk broke in (a wrong tag
// on an item whose length runs past the input). Octets left over after a
// value are placed at its end, and the value alone walks completely.
#include "fuzz/fuzz_common.h"

namespace {

// The error of decoding `bytes` as a whole value of `type`, or null.
std::unique_ptr<AsnDecodeError> DecodeError(const AsnCatalogueEntry& type, std::string_view bytes) {
  const std::unique_ptr<AsnType> value(type.create());
  return FuzzRefusal(type.name, bytes.size(), [&] { AsnDecodeValue(*value, bytes); });
}

void CheckAgainstWalk(std::string_view bytes, const AsnDecodeError& error) {
  const std::size_t offset = error.Offset();
  bool shown = false;
  std::size_t breakItem = 0;
  const auto broken = FuzzWalk(bytes, 0, breakItem, [&](const AsnBerItem& item) {
    if (item.offset == offset) shown = true;
  });
  if (shown || bytes.empty()) return;
  if (broken && (broken->Offset() == offset || (breakItem == offset && !error.InputEnds()))) return;
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
  if (error->Offset() != used || DecodeError(type, value) != nullptr) std::abort();
  std::size_t breakItem = 0;
  if (FuzzWalk(value, 0, breakItem, [](const AsnBerItem&) {}) != nullptr) std::abort();
  return 0;
}
