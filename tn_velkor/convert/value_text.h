// Number <-> text conversion shared by the converters (private to the library).
//
// The results are those of one read/write string stream in the classic locale
// with fixed notation and the default precision of six decimals, so they never
// depend on the process's global locale; the work is done with <charconv> and
// a scanner that follows the stream's extraction rules (value_text_scan.h),
// without building a stream per call. Neither reports an error: a conversion
// that fails gives the empty text or zero.
//
//   Convert2Str<int>(-15)            -> "-15"
//   Convert2Str<double>(1.0)         -> "1.000000"   (never an exponent)
//   Convert2Num<int>("  42kg")       -> 42           (rest of the text ignored)
//   Convert2Num<int>("99999999999")  -> 0            (out of range)
//   Convert2Num<unsigned short>("-1")-> 65535        (wraps, as stream extraction does)
#pragma once

#include <charconv>
#include <string>
#include <type_traits>

#include "tn_velkor/convert/value_text_scan.h"

namespace ns_velkor {

// The text of `value`: decimal integers; fixed notation with six decimals for
// floating values (a float is widened to double first); inf and nan as words,
// with a minus sign when the value carries one.
template <class T>
std::string Convert2Str(T value) {
  static_assert(std::is_arithmetic_v<T> && !std::is_same_v<T, bool>, "a number");
  // The longest fixed text of a double: sign, 309 digits, point, 6 decimals.
  char text[328];
  std::to_chars_result written;
  if constexpr (std::is_floating_point_v<T>) {
    written = std::to_chars(text, text + sizeof text, static_cast<double>(value), std::chars_format::fixed, 6);
  } else {
    written = std::to_chars(text, text + sizeof text, value);
  }
  if (written.ec != std::errc()) return std::string();
  return std::string(text, written.ptr);
}

// The number at the start of `text` (leading white space skipped, the rest
// ignored); 0 when there is none or it is out of T's range.
template <class T>
T Convert2Num(const std::string& text) {
  T result{};
  bool read;
  if constexpr (std::is_floating_point_v<T>) {
    read = value_text::ScanFloating(text.data(), text.data() + text.size(), result);
  } else {
    read = value_text::ScanInteger(text.data(), text.data() + text.size(), result);
  }
  return read ? result : T{};
}

}  // namespace ns_velkor
