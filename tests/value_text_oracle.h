// The reference formulation of the number <-> text conversions: one
// read/write string stream in the classic locale with fixed notation and the
// default six decimals. Slow (the stream is built for every call) but
// obviously right; the library's fast path must give the same text, byte for
// byte, and the same value, bit for bit. Shared by the tests, the fuzz target
// and the benchmarks.
#pragma once

#include <locale>
#include <sstream>
#include <string>
#include <type_traits>

namespace value_text_oracle {

inline void PrepareStream(std::stringstream& stream) {
  stream.imbue(std::locale::classic());
  stream.unsetf(std::ios::scientific);
  stream.setf(std::ios::fixed);
}

template <class T>
std::string StreamConvert2Str(T value) {
  std::stringstream stream;
  PrepareStream(stream);
  if constexpr (std::is_same_v<T, float>) {
    stream << static_cast<double>(value);
  } else {
    stream << value;
  }
  if (stream.fail()) return std::string();
  std::string token;
  stream >> token;
  if (stream.fail()) return std::string();
  return token;
}

template <class T>
T StreamConvert2Num(const std::string& text) {
  T result{};
  std::stringstream stream;
  PrepareStream(stream);
  stream.write(text.data(), static_cast<std::streamsize>(text.size()));
  if (stream.fail()) return T{};
  stream >> result;
  if (stream.fail()) return T{};
  return result;
}

}  // namespace value_text_oracle
