// The reference formulation of the number <-> text conversions: one
// read/write string stream in the classic locale with fixed notation and the
// default six decimals. Slow but obviously right; the library's fast path must
// give the same text, byte for byte, and the same value, bit for bit. Shared by
// the tests, the fuzz target and the benchmarks.
#pragma once

#include <locale>
#include <sstream>
#include <string>
#include <type_traits>

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

}  // namespace value_text_oracle
