// Every catalogue type from arbitrary octets: the first octet picks the type,
// the rest is decoded as one whole value. A refusal must be located
// (FuzzRefusal); a value that decodes must survive our own encoding
// (FuzzReencoded) as the same value, compared in value notation (which does
// not go through the encoder; a SET OF's elements in any order), and so must
// a copy (Clone).
#include <sstream>

#include "fuzz/fuzz_common.h"

namespace {

std::string Notation(const AsnType& value) {
  std::ostringstream os;
  value.Print(os, 0, false);
  return os.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::unique_ptr<AsnType> value(FuzzChooseType(data[0]).create());
  if (!FuzzDecode(*value, std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1))) return 0;

  const std::string notation = Notation(*value);
  if (!FuzzSameLines(Notation(*FuzzReencoded(*value)), notation)) std::abort();
  const std::unique_ptr<AsnType> copy(value->Clone());
  if (Notation(*copy) != notation || AsnEncodeValue(*copy) != AsnEncodeValue(*value)) std::abort();
  return 0;
}
