// Reading a number at the start of a text exactly as formatted stream
// extraction in the classic locale reads it, without building a stream
// (private to the library; value_text.h is its one user).
//
// The rules the stream follows and these functions reproduce:
//  - only " \t\n\v\f\r" is skipped before the number;
//  - one optional sign for every type; on an unsigned type a "-" negates
//    modulo 2^N, after the magnitude has been checked against the type's range;
//  - integers: decimal digits only, at least one; out of range fails;
//  - floating: digits, one ".", more digits, then an exponent only after a
//    mantissa digit; the text so collected must be a whole number ("1e",
//    "1e+", "." fail); a result beyond the type's range fails, one too small
//    reads as a signed zero; "inf", "nan" and hex floats are not recognised.
// Whatever follows the number is ignored.
#pragma once

#include <charconv>
#include <limits>
#include <system_error>
#include <type_traits>

namespace ns_velkor {
namespace value_text {

inline bool IsClassicSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
inline bool IsDecimalDigit(char c) { return c >= '0' && c <= '9'; }

inline const char* SkipSpaceAndSign(const char* p, const char* end, bool& negative) {
  while (p != end && IsClassicSpace(*p)) ++p;
  negative = false;
  if (p != end && (*p == '-' || *p == '+')) {
    negative = *p == '-';
    ++p;
  }
  return p;
}

// The integer at the start of [p, end) into `out`; false when there is none
// or it is out of T's range.
template <class T>
bool ScanInteger(const char* p, const char* end, T& out) {
  using Magnitude = std::make_unsigned_t<T>;
  bool negative;
  p = SkipSpaceAndSign(p, end, negative);
  if (p == end || !IsDecimalDigit(*p)) return false;
  // A signed type takes one more below zero than above.
  const Magnitude largest = static_cast<Magnitude>(std::numeric_limits<T>::max());
  const Magnitude limit = std::is_signed_v<T> && negative ? static_cast<Magnitude>(largest + 1u) : largest;
  Magnitude magnitude = 0;
  for (; p != end && IsDecimalDigit(*p); ++p) {
    const Magnitude digit = static_cast<Magnitude>(*p - '0');
    if (magnitude > static_cast<Magnitude>(limit - digit) / 10u) return false;
    magnitude = static_cast<Magnitude>(magnitude * 10u + digit);
  }
  out = static_cast<T>(negative ? static_cast<Magnitude>(Magnitude{0} - magnitude) : magnitude);
  return true;
}

// For a nonzero mantissa [p, last) (digits, a point, an exponent) that does
// not fit the floating type: true when it is too small, false when too large.
// Decided by the decimal exponent of its first significant digit.
inline bool IsBelowRange(const char* p, const char* last) {
  long long position = 0;
  bool significant = false;
  bool point = false;
  for (; p != last && *p != 'e' && *p != 'E'; ++p) {
    if (*p == '.') {
      point = true;
    } else if (!point) {
      if (significant) {
        ++position;
      } else if (*p != '0') {
        significant = true;
      }
    } else if (!significant) {
      --position;
      significant = *p != '0';
    }
  }
  long long exponent = 0;
  bool negativeExponent = false;
  if (p != last) {
    ++p;  // the 'e'
    if (*p == '-' || *p == '+') negativeExponent = *p++ == '-';
    for (; p != last; ++p) {
      if (exponent < 1000000000LL) exponent = exponent * 10 + (*p - '0');
    }
  }
  return position + (negativeExponent ? -exponent : exponent) < 0;
}

// The floating value at the start of [p, end) into `out`; false when there
// is none or it is beyond T's range.
template <class T>
bool ScanFloating(const char* p, const char* end, T& out) {
  bool negative;
  p = SkipSpaceAndSign(p, end, negative);
  const char* const mantissa = p;
  bool digits = false;
  for (; p != end && IsDecimalDigit(*p); ++p) digits = true;
  if (p != end && *p == '.') {
    for (++p; p != end && IsDecimalDigit(*p); ++p) digits = true;
  }
  if (!digits) return false;
  if (p != end && (*p == 'e' || *p == 'E')) {
    ++p;
    if (p != end && (*p == '-' || *p == '+')) ++p;
    if (p == end || !IsDecimalDigit(*p)) return false;  // an exponent without digits spoils the whole text
    while (p != end && IsDecimalDigit(*p)) ++p;
  }
  T value{};
  const std::from_chars_result read = std::from_chars(mantissa, p, value);
  if (read.ec == std::errc::result_out_of_range) {
    if (!IsBelowRange(mantissa, p)) return false;
    value = T{0};
  } else if (read.ec != std::errc() || read.ptr != p) {
    return false;
  }
  out = negative ? -value : value;
  return true;
}

}  // namespace value_text
}  // namespace ns_velkor
