// The fast number <-> text conversions against the string-stream reference on
// arbitrary input: the bytes are read as a text by every instantiated
// Convert2Num type and, taken as bit patterns, written by every Convert2Str
// type. Any difference (texts byte for byte, values bit for bit) aborts.
#include <cstring>

#include "fuzz/fuzz_common.h"
#include "tests/value_text_oracle.h"

namespace {

// The first sizeof(T) bytes (zero-padded) as a value of T, written as the stream writes it.
template <class T>
bool StrAgrees(const std::uint8_t* data, std::size_t size) {
  T value{};
  std::memcpy(&value, data, size < sizeof(T) ? size : sizeof(T));
  return value_text_oracle::StrAgrees(value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (!value_text_oracle::AllNumsAgree(std::string(reinterpret_cast<const char*>(data), size)) ||
      !StrAgrees<int>(data, size) || !StrAgrees<long>(data, size) || !StrAgrees<long long>(data, size) ||
      !StrAgrees<float>(data, size) || !StrAgrees<double>(data, size)) {
    std::abort();
  }
  return 0;
}
