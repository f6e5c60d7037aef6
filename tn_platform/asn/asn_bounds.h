// AsnBounds: a constraint a record member's value keeps, as the record
// compiler writes it on a member line (asn_member_lines.h): the value of an
// INTEGER, or the size of an OCTET STRING (octets), a character string
// (characters), a BIT STRING (bits) or a list (elements), within
// [lower, upper]. Constant data: a member without one costs nothing.
#pragma once
#pragma GCC visibility push(default)

#include <climits>
#include <string>

struct AsnBounds {
  enum class Of : unsigned char { kNothing, kValue, kSize };
  static constexpr long long kNoLower = LLONG_MIN;
  static constexpr long long kNoUpper = LLONG_MAX;

  Of of = Of::kNothing;
  long long lower = kNoLower;
  long long upper = kNoUpper;

  static constexpr AsnBounds Values(long long lower, long long upper) { return {Of::kValue, lower, upper}; }
  static constexpr AsnBounds Sizes(long long lower, long long upper) { return {Of::kSize, lower, upper}; }
  constexpr bool Active() const { return of != Of::kNothing; }
  constexpr bool Holds(long long measured) const { return lower <= measured && measured <= upper; }
  // "value 70000 is outside 0..65535", "size 9 is outside SIZE (1..8)".
  std::string Violation(long long measured) const;
};
#pragma GCC visibility pop
