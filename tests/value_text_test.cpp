// The fast number <-> text conversions: pinned to exact values (fixed notation
// with six decimals, the neutral values for bad input, independence from the
// global locale), which anchor the string-stream reference
// (value_text_oracle.h); then against that reference over a large generated
// set: texts shaped like numbers, the integer limits and their neighbours,
// long mantissas, exact ties between neighbouring floating values, the edges
// of the floating ranges, and values of every bit pattern. Texts must match
// byte for byte and values bit for bit (-0.0 is not 0.0). Arbitrary bytes are
// value_text_fuzz's.
#include "tn_velkor/convert/value_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/test_bytes.h"
#include "tests/value_text_oracle.h"

namespace {

using namespace std::string_literals;
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

// ---- against the reference -------------------------------------------------------

// Reads `text` as every instantiated type; true when all agree with the stream.
bool AllNumsAgree(const std::string& text) {
  const bool agree = value_text_oracle::AllNumsAgree(text);
  if (!agree) ADD_FAILURE() << "Convert2Num of [" << test_bytes::ToHex(text) << "] differs from the stream";
  return agree;
}

template <class T>
bool StrAgrees(T value) {
  const bool agree = value_text_oracle::StrAgrees(value);
  if (!agree) ADD_FAILURE() << "Convert2Str<" << typeid(T).name() << "> of " << value << " differs from the stream";
  return agree;
}

// Runs `check` until it has failed ten times, so one fault does not flood the log.
template <class Check>
void UpToTenFailures(int count, Check check) {
  for (int i = 0, failures = 0; i < count && failures < 10; ++i) failures += !check(i);
}

std::string Digits(std::mt19937_64& random, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += static_cast<char>('0' + random() % 10);
  return text;
}

// A text that the extraction rules have something to say about: blanks, a
// sign, digits, a point, an exponent, then something that ends the number.
std::string NumberShaped(std::mt19937_64& random) {
  static const std::string blanks[] = {"", "", "", " ", "\t", "\n\v\f\r ", "\xa0", "_"};
  static const std::string signs[] = {"", "", "-", "+", "--", "+-", "-+"};
  static const std::string tails[] = {"", "", "", "x", "e", "E+", ".", "..5", " 7", "kg", "e-", "\0005"s, "inf", "1e5"};
  const auto pick = [&random](const auto& table) { return table[random() % std::size(table)]; };
  const std::size_t lengths[] = {0, 1, 1, 2, 3, 5, 10, 17, 19, 20, 21, 25, 40};
  std::string text = pick(blanks) + pick(signs) + std::string(random() % 4 == 0 ? random() % 5 : 0, '0') +
                     Digits(random, pick(lengths));
  if (random() % 2 == 0) text += "." + Digits(random, pick(lengths));
  if (random() % 2 == 0) {
    const std::size_t exponentLengths[] = {0, 1, 1, 2, 2, 3, 3, 4, 12};
    text += (random() % 2 == 0 ? "e" : "E") + pick(signs) + Digits(random, pick(exponentLengths));
  }
  const std::string tail = pick(tails);
  return text + (tail.empty() && random() % 8 == 0 ? "\0009"s : tail);
}

// The exact decimal text of `value` (long double holds a tie between two doubles exactly).
std::string ExactDecimal(long double value) {
  char text[6000];
  const auto written = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 5000);
  const std::string exact(text, written.ptr);
  const std::size_t exponent = exact.find('e');
  return exact.substr(0, exact.find_last_not_of('0', exponent - 1) + 1) + exact.substr(exponent);
}

// A finite value of random bits below the type's largest, and halfway to its upper neighbour.
template <class T, class Bits>
long double RandomTie(std::mt19937_64& random) {
  T below;
  do {
    const Bits bits = static_cast<Bits>(random());
    std::memcpy(&below, &bits, sizeof below);
  } while (!std::isfinite(below) || below == std::numeric_limits<T>::max());
  return (static_cast<long double>(below) + std::nextafter(below, std::numeric_limits<T>::infinity())) / 2;
}

std::string Int128Text(__int128 value) {
  unsigned __int128 magnitude = value < 0 ? -static_cast<unsigned __int128>(value) : value;
  std::string digits;
  do digits.insert(digits.begin(), static_cast<char>('0' + magnitude % 10));
  while ((magnitude /= 10) != 0);
  return value < 0 ? "-" + digits : digits;
}

TEST(ValueTextDifferential, ReadsGeneratedTextsLikeTheStream) {
  std::mt19937_64 random(20261122);
  UpToTenFailures(60000, [&](int) { return AllNumsAgree(NumberShaped(random)); });
  UpToTenFailures(4000, [&](int i) {
    // Hundreds of digits on either side of the point, with and without an exponent.
    std::string text = Digits(random, 1 + random() % 400) + "." + Digits(random, random() % 400);
    if (i % 2 == 0) text += "e" + std::to_string(static_cast<int>(random() % 800) - 400);
    // Exactly halfway between two neighbouring doubles (and floats), and nudged past it.
    const std::string tie = ExactDecimal(RandomTie<double, std::uint64_t>(random));
    const std::size_t exponent = tie.find('e');
    const std::string nudged =
        tie.substr(0, exponent) + (tie.find('.') < exponent ? "" : ".") + "0001" + tie.substr(exponent);
    return AllNumsAgree(text) & AllNumsAgree(tie) & AllNumsAgree(nudged) &
           AllNumsAgree(ExactDecimal(RandomTie<float, std::uint32_t>(random)));
  });
}

TEST(ValueTextDifferential, ReadsLimitsAndRangeEdgesLikeTheStream) {
  std::vector<std::string> texts;
  for (const std::vector<std::string>& row : test_bytes::Golden("conversions/number_texts.golden")) {
    texts.push_back(row[0]);
  }
  for (const __int128 limit :
       {__int128{0}, __int128{std::numeric_limits<int>::min()}, __int128{std::numeric_limits<int>::max()},
        __int128{std::numeric_limits<long>::min()}, __int128{std::numeric_limits<long>::max()},
        __int128{std::numeric_limits<unsigned long>::max()}, __int128{65535}}) {
    for (const int delta : {-10, -1, 0, 1, 10}) {
      for (const __int128 value : {limit + delta, -(limit + delta)}) {
        const std::string text = Int128Text(value);
        texts.insert(texts.end(), {text, " " + text + "x", "+" + text, text + ".9", "000" + text});
      }
    }
  }
  UpToTenFailures(static_cast<int>(texts.size()), [&](int i) { return AllNumsAgree(texts[i]); });
}

TEST(ValueTextDifferential, WritesLikeTheStream) {
  using Limits = std::numeric_limits<double>;
  constexpr double kMax = Limits::max(), kInf = Limits::infinity(), kNaN = Limits::quiet_NaN();
  const double specials[] = {0.0,   -0.0,   0.5,  1.5,   2.5,  -2.5, 0.0000005, 0.0000015,           0.0000025,
                             1e300, -1e308, kMax, -kInf, kInf, kNaN, -kNaN,     Limits::denorm_min()};
  UpToTenFailures(std::size(specials),
                  [&](int i) { return StrAgrees(specials[i]) & StrAgrees(static_cast<float>(specials[i])); });
  std::mt19937_64 random(11);
  UpToTenFailures(30000, [&](int i) {
    // The first four: 0, -1 and the limits of long long; then random bits.
    const std::uint64_t limits[] = {0, ~0ULL, 1ULL << 63, (1ULL << 63) - 1};
    const std::uint64_t bits = i < 4 ? limits[i] : random();
    double anyDouble;
    float anyFloat;
    std::memcpy(&anyDouble, &bits, sizeof anyDouble);
    const std::uint32_t floatBits = static_cast<std::uint32_t>(bits >> 16);
    std::memcpy(&anyFloat, &floatBits, sizeof anyFloat);
    // A few units with a half in the seventh decimal: ties, or nearly, for the six-decimal rounding.
    const double nearTie = static_cast<double>(static_cast<long>(bits % 20000000) - 10000000) / 1e6 + 5e-7;
    return StrAgrees(anyDouble) & StrAgrees(anyFloat) & StrAgrees(nearTie) & StrAgrees(static_cast<float>(nearTie)) &
           StrAgrees(static_cast<int>(bits)) & StrAgrees(static_cast<long>(bits)) &
           StrAgrees(static_cast<long long>(bits >> (bits % 64)));
  });
}

}  // namespace
