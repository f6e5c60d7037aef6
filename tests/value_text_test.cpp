// Number <-> text conversions pinned to exact values, which anchor the stream
// reference that value_text_differential_test compares every instance with:
// fixed notation with six decimals, the neutral values for bad input, and
// independence from the global locale.
#include "tn_velkor/convert/value_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <utility>

namespace {

using ns_velkor::Convert2Num;
using ns_velkor::Convert2Str;

TEST(ValueText, ExactValues) {
  const std::pair<std::string, std::string> cases[] = {
      {Convert2Str<int>(INT_MIN), "-2147483648"},
      {Convert2Str<double>(-0.1), "-0.100000"},
      {Convert2Str<double>(2.5e-7), "0.000000"},
      {Convert2Str<double>(-0.0), "-0.000000"},
      {Convert2Str<double>(1e20), "100000000000000000000.000000"},  // no exponent
      {Convert2Str<double>(std::numeric_limits<double>::quiet_NaN()), "nan"},
      {Convert2Str<float>(FLT_MAX), "340282346638528859811704183484516925440.000000"},  // the exact widened value
      {std::to_string(Convert2Num<int>("  42kg")), "42"},                               // rest of the text ignored
      {std::to_string(Convert2Num<int>("2147483648")), "0"},                            // out of range: 0
      {std::to_string(Convert2Num<unsigned short>("-1")), "65535"},                     // wraps
      {std::to_string(Convert2Num<double>("1e400")), "0.000000"},
      {std::to_string(Convert2Num<double>("-2.5e3m")), "-2500.000000"},
  };
  for (const auto& [actual, expected] : cases) EXPECT_EQ(actual, expected);
}

// A decimal comma and digits grouped in threes with a full stop.
class CommaDecimals : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(ValueText, IgnoresTheGlobalLocale) {
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
