// Every record and list type of the catalogue from arbitrary octets: the
// first octet picks the type (fuzz_catalogue.h), the rest is decoded as one
// whole value. A malformed encoding must end in a CSM_Exception* and nothing
// else (no crash, no leak, no read out of bounds). A value that decodes must
// survive our own encoding: encode -> decode gives the same value (compared
// in value notation, which does not go through the encoder) and re-encoding
// gives the same octets. A copy (Clone) must be the same value too.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "fuzz/fuzz_catalogue.h"
#include "fuzz/fuzz_decode.h"
#include "tn_platform/asn/asn_value_io.h"

namespace {

std::string Notation(const AsnType& value) {
  std::ostringstream os;
  value.Print(os, 0, false);
  return os.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const AsnCatalogueEntry& type = FuzzChooseType(data[0]);
  const std::string_view octets(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::unique_ptr<AsnType> value(type.create());
  if (!FuzzDecode(*value, octets)) return 0;

  const std::string notation = Notation(*value);
  const std::string encoded = AsnEncodeValue(*value);
  const std::unique_ptr<AsnType> again(type.create());
  if (!FuzzDecode(*again, encoded)) std::abort();  // we refused our own encoding
  if (Notation(*again) != notation || AsnEncodeValue(*again) != encoded) std::abort();

  const std::unique_ptr<AsnType> copy(value->Clone());
  if (Notation(*copy) != notation || AsnEncodeValue(*copy) != encoded) std::abort();
  return 0;
}
