// The fast number <-> text conversions against the string-stream reference on
// arbitrary input: the bytes are read as a text by every instantiated
// Convert2Num type and, taken as bit patterns, written by every Convert2Str
// type. Any difference (texts byte for byte, values bit for bit) aborts.
#include <cstring>

#include "fuzz/fuzz_common.h"
#include "tests/value_text_oracle.h"
#include "tn_velkor/convert/value_text.h"

namespace {

template <class T>
void CheckNum(const std::string& text) {
  const T fast = ns_velkor::Convert2Num<T>(text);
  const T reference = value_text_oracle::StreamConvert2Num<T>(text);
  if (std::memcmp(&fast, &reference, sizeof(T)) != 0) std::abort();
}

// The first sizeof(T) bytes (zero-padded) as a value of T.
template <class T>
void CheckStr(const std::uint8_t* data, std::size_t size) {
  T value{};
  std::memcpy(&value, data, size < sizeof(T) ? size : sizeof(T));
  if (ns_velkor::Convert2Str<T>(value) != value_text_oracle::StreamConvert2Str<T>(value)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckNum<int>(text);
  CheckNum<long>(text);
  CheckNum<unsigned long>(text);
  CheckNum<unsigned short>(text);
  CheckNum<float>(text);
  CheckNum<double>(text);
  CheckStr<int>(data, size);
  CheckStr<long>(data, size);
  CheckStr<long long>(data, size);
  CheckStr<float>(data, size);
  CheckStr<double>(data, size);
  return 0;
}
