// Number <-> text conversions, pinned to exact values: fixed notation with six
// decimals, the neutral values for bad input, the edge cases of the stream
// rules, and independence from the global locale. The reference these values
// anchor is compared with every instance in value_text_differential_test.
#include "tn_velkor/convert/value_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

using ns_velkor::Convert2Num;
using ns_velkor::Convert2Str;

TEST(Convert2Str, IntegersAndFixedNotation) {
  const std::pair<std::string, const char*> cases[] = {
      {Convert2Str<int>(-15), "-15"},
      {Convert2Str<int>(INT_MIN), "-2147483648"},
      {Convert2Str<double>(1.0), "1.000000"},
      {Convert2Str<double>(-0.1), "-0.100000"},
      {Convert2Str<double>(2.5e-7), "0.000000"},
      {Convert2Str<double>(0.0000006), "0.000001"},
      {Convert2Str<double>(-0.0), "-0.000000"},
      {Convert2Str<double>(1e20), "100000000000000000000.000000"},  // 21 digits, no exponent
      {Convert2Str<double>(std::numeric_limits<double>::infinity()), "inf"},
      {Convert2Str<double>(std::numeric_limits<double>::quiet_NaN()), "nan"},
      // A float is printed from its exact widened value.
      {Convert2Str<float>(-0.1f), "-0.100000"},
      {Convert2Str<float>(FLT_MAX), "340282346638528859811704183484516925440.000000"},
  };
  for (const auto& [actual, expected] : cases) EXPECT_EQ(actual, expected);
}

TEST(Convert2Num, Int) {
  const std::pair<std::string, int> cases[] = {
      {"", 0},
      {"abc", 0},
      {"  42kg", 42},  // rest of the text ignored
      {"3.9", 3},
      {"+7", 7},
      {"-2147483648", INT_MIN},
      {"2147483647", INT_MAX},
      {"2147483648", 0},  // out of range: 0, not the limit
      {"-2147483649", 0},
      {"0x1F", 0},  // decimal only
      {"\t\n 5", 5},
      {std::string("12\0 34", 6), 12},
      {"- 5", 0},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(Convert2Num<int>(text), value) << '"' << text << '"';
}

TEST(Convert2Num, OtherTypes) {
  EXPECT_EQ(Convert2Num<long>("9223372036854775807"), LONG_MAX);
  EXPECT_EQ(Convert2Num<long>("-9223372036854775808"), LONG_MIN);
  EXPECT_EQ(Convert2Num<long>("9223372036854775808"), 0);
  EXPECT_EQ(Convert2Num<unsigned long>("18446744073709551615"), ULONG_MAX);
  EXPECT_EQ(Convert2Num<unsigned long>("18446744073709551616"), 0u);
  EXPECT_EQ(Convert2Num<unsigned long>("-1"), ULONG_MAX);  // wraps like stream extraction
  EXPECT_EQ(Convert2Num<unsigned short>("65535"), 65535);
  EXPECT_EQ(Convert2Num<unsigned short>("70000"), 0);
  EXPECT_EQ(Convert2Num<unsigned short>("-1"), 65535);
  EXPECT_EQ(Convert2Num<unsigned short>(" 80/tcp"), 80);

  EXPECT_EQ(Convert2Num<double>("-2.5e3m"), -2500.0);
  EXPECT_EQ(Convert2Num<double>("1e400"), 0.0);
  EXPECT_EQ(Convert2Num<double>("1e-400"), 0.0);  // too small: zero without failure
  EXPECT_EQ(Convert2Num<double>("inf"), 0.0);
  EXPECT_EQ(Convert2Num<double>("nan"), 0.0);
  EXPECT_EQ(Convert2Num<float>("-0.1"), -0.1f);
  EXPECT_EQ(Convert2Num<float>("1e39"), 0.0f);                                // beyond float's range
  EXPECT_EQ(Convert2Num<double>(Convert2Str<double>(1.23456789)), 1.234568);  // six decimals there and back
}

// A decimal comma and digits grouped in threes with a full stop.
class CommaDecimals : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(ValueTextLocale, CustomGlobalLocaleWithDecimalComma) {
  const std::locale previous = std::locale::global(std::locale(std::locale::classic(), new CommaDecimals));
  std::ostringstream check;  // the global locale is in force for ordinary streams
  check << std::fixed << 1234.5;
  EXPECT_EQ(check.str(), "1.234,500000");
  EXPECT_EQ(Convert2Str<double>(1234.5), "1234.500000");
  EXPECT_EQ(Convert2Str<float>(-0.1f), "-0.100000");
  EXPECT_EQ(Convert2Str<long long>(-1234567890123LL), "-1234567890123");
  EXPECT_EQ(Convert2Num<double>("1234.5"), 1234.5);
  EXPECT_EQ(Convert2Num<double>("1,5"), 1.0);
  EXPECT_EQ(Convert2Num<int>("1.234"), 1);
  EXPECT_EQ(Convert2Num<unsigned long>("1.234"), 1u);
  std::locale::global(previous);
}

}  // namespace
