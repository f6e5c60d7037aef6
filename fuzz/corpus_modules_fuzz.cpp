// Any type of the public modules compiled for the tests (tests/recordc/corpus/:
// SNMP, LDAP, X.509, CMS and the notation-feature modules), from arbitrary
// octets: the first two octets pick a catalogue type, the rest is read as
// BER and as JSON text in both forms. A refusal is a located AsnDecodeError;
// what is accepted is stable (FuzzStable).
#include "fuzz/fuzz_common.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::vector<AsnCatalogueEntry>& types = FuzzCatalogue();
  const AsnCatalogueEntry& type = types[(std::size_t{data[0]} << 8 | data[1]) % types.size()];
  const auto create = [&type] { return std::unique_ptr<AsnType>(type.create()); };
  // FuzzValueReaders reads what follows its first octet, here the second one.
  return FuzzValueReaders(data + 1, size - 1, [&create](std::uint8_t) { return create(); },
                          [&create](std::uint8_t, const AsnType& value) { FuzzStable(value, create); });
}
