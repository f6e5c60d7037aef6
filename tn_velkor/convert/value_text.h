// Number <-> text conversion shared by the converters (private to the library).
//
// Both directions run through one read/write string stream in the classic
// locale with fixed notation and the default precision of six decimals, so
// results never depend on the process's global locale. Neither reports an
// error: a conversion that fails gives the empty text or zero.
//
//   Convert2Str<int>(-15)            -> "-15"
//   Convert2Str<double>(1.0)         -> "1.000000"   (never an exponent)
//   Convert2Num<int>("  42kg")       -> 42           (rest of the text ignored)
//   Convert2Num<int>("99999999999")  -> 0            (out of range)
//   Convert2Num<unsigned short>("-1")-> 65535        (wraps, as stream extraction does)
#pragma once

#include <locale>
#include <sstream>
#include <string>
#include <type_traits>

namespace ns_velkor {
namespace value_text {

// A fresh stream set up the same way for both directions.
inline void PrepareStream(std::stringstream& stream) {
  stream.imbue(std::locale::classic());
  stream.unsetf(std::ios::scientific);
  stream.setf(std::ios::fixed);
}

}  // namespace value_text

// The text of `value`: decimal integers; fixed notation with six decimals for
// floating values (a float is widened to double first); inf and nan as words.
template <class T>
std::string Convert2Str(T value) {
  std::stringstream stream;
  value_text::PrepareStream(stream);
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

// The number at the start of `text` (leading white space skipped, the rest
// ignored); 0 when there is none or it is out of T's range.
template <class T>
T Convert2Num(const std::string& text) {
  T result{};
  std::stringstream stream;
  value_text::PrepareStream(stream);
  stream.write(text.data(), static_cast<std::streamsize>(text.size()));
  if (stream.fail()) return T{};
  stream >> result;
  if (stream.fail()) return T{};
  return result;
}

}  // namespace ns_velkor
