// The value classes with their own codec (tests/primitive_kinds.h: NULL,
// ENUMERATED, BIT STRING, the identifiers, REAL, big INTEGERs, the strings,
// the times, open values, with and without names): the first octet picks a
// class in the order of their names, the rest is read as BER and as JSON text
// in both forms. A refusal is a located AsnDecodeError; what is accepted is
// stable (FuzzStable).
#include <cstdint>
#include <iterator>
#include <memory>

#include "fuzz/fuzz_common.h"
#include "tests/primitive_kinds.h"

namespace {

std::unique_ptr<AsnType> Create(std::uint8_t pick) {
  return std::unique_ptr<AsnType>(std::next(test_kinds::Kinds().begin(), pick % test_kinds::Kinds().size())->second());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto stable = [](std::uint8_t pick, const AsnType& value) {
    FuzzStable(value, [pick] { return Create(pick); });
  };
  return FuzzValueReaders(data, size, Create, stable);
}
