// The reference formulation of the number <-> text conversions: one
// read/write string stream in the classic locale with fixed notation and the
// default six decimals. Slow but obviously right; the library's fast path must
// give the same text, byte for byte, and the same value, bit for bit (the
// comparisons below). Shared by the tests, the fuzz target and the benchmarks.
#pragma once

#include <cstring>
#include <locale>
#include <sstream>
#include <string>
#include <type_traits>

#include "tn_velkor/convert/value_text.h"

namespace value_text_oracle {

inline std::stringstream NewStream() {
  std::stringstream stream;
  stream.imbue(std::locale::classic());
  stream.setf(std::ios::fixed, std::ios::floatfield);
  return stream;
}

template <class T>
std::string StreamConvert2Str(T value) {
  std::stringstream stream = NewStream();
  if constexpr (std::is_same_v<T, float>) {
    stream << static_cast<double>(value);
  } else {
    stream << value;
  }
  std::string token;
  stream >> token;
  return stream.fail() ? std::string() : token;
}

template <class T>
T StreamConvert2Num(const std::string& text) {
  T result{};
  std::stringstream stream = NewStream();
  stream.write(text.data(), static_cast<std::streamsize>(text.size()));
  stream >> result;
  return stream.fail() ? T{} : result;
}

// Whether Convert2Num<T> reads `text` as the stream does, bit for bit.
template <class T>
bool NumAgrees(const std::string& text) {
  const T fast = ns_velkor::Convert2Num<T>(text);
  const T reference = StreamConvert2Num<T>(text);
  return std::memcmp(&fast, &reference, sizeof(T)) == 0;
}

// The same for every instantiated Convert2Num type.
inline bool AllNumsAgree(const std::string& text) {
  return NumAgrees<int>(text) && NumAgrees<long>(text) && NumAgrees<unsigned long>(text) &&
         NumAgrees<unsigned short>(text) && NumAgrees<float>(text) && NumAgrees<double>(text);
}

// Whether Convert2Str<T> writes `value` as the stream does, byte for byte.
template <class T>
bool StrAgrees(T value) {
  return ns_velkor::Convert2Str<T>(value) == StreamConvert2Str<T>(value);
}

}  // namespace value_text_oracle
