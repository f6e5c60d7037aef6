// The fast number <-> text conversions against the string-stream reference
// (value_text_oracle.h) over a large generated set: random bytes, texts shaped
// like numbers, the integer limits and their neighbours, long mantissas and
// exact ties between neighbouring floating values, and values of every bit
// pattern. Texts must match byte for byte and values bit for bit (-0.0 is not 0.0).
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tests/test_bytes.h"
#include "tests/value_text_oracle.h"
#include "tn_velkor/convert/value_text.h"

namespace {

using value_text_oracle::StreamConvert2Num;
using value_text_oracle::StreamConvert2Str;

template <class T>
bool SameBits(T a, T b) {
  return std::memcmp(&a, &b, sizeof(T)) == 0;
}

// The bits of a value, for the failure messages.
template <class T>
std::string Bits(T value) {
  return test_bytes::ToHex(std::string_view(reinterpret_cast<const char*>(&value), sizeof(T)));
}

std::string Printable(const std::string& text) {
  std::string shown;
  for (unsigned char c : text) {
    if (c >= 0x20 && c < 0x7f) {
      shown += static_cast<char>(c);
    } else {
      static const char digits[] = "0123456789abcdef";
      shown += "\\x";
      shown += digits[c >> 4];
      shown += digits[c & 15];
    }
  }
  return shown;
}

// Reads `text` as every instantiated type; true when all agree with the stream.
template <class T>
bool NumAgrees(const std::string& text) {
  const T fast = ns_velkor::Convert2Num<T>(text);
  const T reference = StreamConvert2Num<T>(text);
  if (SameBits(fast, reference)) return true;
  ADD_FAILURE() << "Convert2Num<" << typeid(T).name() << ">(\"" << Printable(text) << "\"): " << Bits(fast)
                << " != stream " << Bits(reference);
  return false;
}

bool AllNumsAgree(const std::string& text) {
  return NumAgrees<int>(text) & NumAgrees<long>(text) & NumAgrees<unsigned long>(text) &
         NumAgrees<unsigned short>(text) & NumAgrees<float>(text) & NumAgrees<double>(text);
}

template <class T>
bool StrAgrees(T value) {
  const std::string fast = ns_velkor::Convert2Str<T>(value);
  const std::string reference = StreamConvert2Str<T>(value);
  if (fast == reference) return true;
  ADD_FAILURE() << "Convert2Str<" << typeid(T).name() << ">(" << Bits(value) << "): \"" << fast << "\" != stream \""
                << reference << '"';
  return false;
}

// Stops a table after a few failures so one fault does not flood the log.
class FailureBudget {
 public:
  bool Spend(bool agreed) { return agreed || ++failures_ < 10; }

 private:
  int failures_ = 0;
};

std::string Int128Text(__int128 value) {
  if (value == 0) return "0";
  const bool negative = value < 0;
  unsigned __int128 magnitude = negative ? -static_cast<unsigned __int128>(value) : value;
  std::string digits;
  for (; magnitude != 0; magnitude /= 10) digits.insert(digits.begin(), static_cast<char>('0' + magnitude % 10));
  return negative ? "-" + digits : digits;
}

std::string Digits(std::mt19937_64& random, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += static_cast<char>('0' + random() % 10);
  return text;
}

// A text that the extraction rules have something to say about: blanks, a
// sign, digits, a point, an exponent, then something that ends the number.
std::string NumberShaped(std::mt19937_64& random) {
  static const char* const blanks[] = {"", "", "", " ", "\t", "\n\v\f\r ", "\xa0", "_"};
  static const char* const signs[] = {"", "", "-", "+", "--", "+-", "-+"};
  static const char* const tails[] = {"", "", "", "x", "e", "E+", ".", "..5", " 7", "kg", "e-", "\0" "5", "inf", "1e5"};
  auto pick = [&random](const auto& table) { return std::string(table[random() % (sizeof table / sizeof *table)]); };
  std::string text = pick(blanks) + pick(signs);
  const std::size_t lengths[] = {0, 1, 1, 2, 3, 5, 10, 17, 19, 20, 21, 25, 40};
  const std::size_t leading = random() % 4 == 0 ? random() % 5 : 0;
  text += std::string(leading, '0') + Digits(random, lengths[random() % std::size(lengths)]);
  if (random() % 2 == 0) text += "." + Digits(random, lengths[random() % std::size(lengths)]);
  if (random() % 2 == 0) {
    text += random() % 2 == 0 ? "e" : "E";
    text += pick(signs);
    const std::size_t exponentLengths[] = {0, 1, 1, 2, 2, 3, 3, 4, 12};
    text += Digits(random, exponentLengths[random() % std::size(exponentLengths)]);
  }
  std::string tail = pick(tails);
  if (tail.empty() && random() % 8 == 0) tail = std::string(1, '\0') + "9";
  return text + tail;
}

std::string RandomBytes(std::mt19937_64& random) {
  static const char alphabet[] = " \t\n+-.eE0123456789xXinfaN\0";
  std::string text;
  const std::size_t length = random() % 12;
  for (std::size_t i = 0; i < length; ++i) {
    text += random() % 4 == 0 ? static_cast<char>(random()) : alphabet[random() % (sizeof alphabet)];
  }
  return text;
}

// The exact decimal text of `value` (long double holds a tie between two
// doubles exactly).
std::string ExactDecimal(long double value) {
  char text[6000];
  const auto written = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 5000);
  std::string exact(text, written.ptr);
  const std::size_t exponent = exact.find('e');
  const std::size_t last = exact.find_last_not_of('0', exponent - 1);
  return exact.substr(0, last + 1) + exact.substr(exponent);
}

TEST(ValueTextDifferential, ReadsLikeTheStream) {
  std::mt19937_64 random(20261122);
  FailureBudget budget;
  for (int i = 0; i < 60000 && budget.Spend(AllNumsAgree(NumberShaped(random))); ++i) {
  }
  for (int i = 0; i < 30000 && budget.Spend(AllNumsAgree(RandomBytes(random))); ++i) {
  }
}

TEST(ValueTextDifferential, ReadsIntegerLimitsAndTheirNeighbours) {
  const __int128 limits[] = {0,
                             std::numeric_limits<int>::min(),
                             std::numeric_limits<int>::max(),
                             std::numeric_limits<long>::min(),
                             std::numeric_limits<long>::max(),
                             std::numeric_limits<unsigned long>::max(),
                             std::numeric_limits<unsigned short>::max()};
  FailureBudget budget;
  for (__int128 limit : limits) {
    for (__int128 delta : {-10, -1, 0, 1, 10}) {
      for (__int128 value : {limit + delta, -(limit + delta)}) {
        const std::string text = Int128Text(value);
        for (const std::string& variant : {text, " " + text + "x", "+" + text, text + ".9", "000" + text}) {
          if (!budget.Spend(AllNumsAgree(variant))) return;
        }
      }
    }
  }
}

TEST(ValueTextDifferential, ReadsLongMantissasAndExactTies) {
  std::mt19937_64 random(7);
  FailureBudget budget;
  for (int i = 0; i < 4000; ++i) {
    // Hundreds of digits on either side of the point, with and without an exponent.
    std::string text = Digits(random, 1 + random() % 400) + "." + Digits(random, random() % 400);
    if (i % 2 == 0) text += "e" + std::to_string(static_cast<int>(random() % 800) - 400);
    if (!budget.Spend(AllNumsAgree(text))) return;

    // Halfway between two neighbouring doubles, and two floats, exactly, plus
    // the same text nudged by a trailing digit.
    double below;
    do {
      const std::uint64_t bits = random();
      std::memcpy(&below, &bits, sizeof below);
    } while (!std::isfinite(below) || below == std::numeric_limits<double>::max());
    const long double tie = (static_cast<long double>(below) + std::nextafter(below, HUGE_VAL)) / 2;
    const std::string exact = ExactDecimal(tie);
    const std::size_t exponent = exact.find('e');
    const std::string nudged = exact.substr(0, exponent) + (exact.find('.') < exponent ? "" : ".") + "0001" +
                               exact.substr(exponent);
    float belowFloat;
    do {
      const std::uint32_t bits = static_cast<std::uint32_t>(random());
      std::memcpy(&belowFloat, &bits, sizeof belowFloat);
    } while (!std::isfinite(belowFloat) || belowFloat == std::numeric_limits<float>::max());
    const long double floatTie =
        (static_cast<long double>(belowFloat) + std::nextafter(belowFloat, HUGE_VALF)) / 2;
    if (!budget.Spend(AllNumsAgree(exact) & AllNumsAgree(nudged) & AllNumsAgree(ExactDecimal(floatTie)))) return;
  }
}

TEST(ValueTextDifferential, ReadsTheEdgesOfTheFloatingRanges) {
  const char* const texts[] = {
      "1e", "1e+", "1e-", ".", "-", "+", "-.", ".e5", "5.", "5.e3", "-0", "-0.0e0", "0e999999999999",
      "-1e-400", "1e-400", "1e-46", "-1e-46", "1e39", "-1e39", "3.4028235e38", "3.40282357e38",
      "1.7976931348623157e308", "1.7976931348623159e308", "-1.7976931348623159e308", "2.4703282292062327e-324",
      "2.4703282292062328e-324", "4.9406564584124654e-324", "1.401298464324817e-45", "7.006492321624085e-46",
      "7.006492321624086e-46", "0.000000000000000000000000000000000000000000000000001e-300", "1e-2147483649",
      "1e2147483648", "1000000000000000000000000000000000000000e-2147483647", "inf", "nan", "-nan", "infinity",
      "0x1p3", "1,5", "1 5", "1.5.5", "1e5e5", "1e+-5", "1E5", "1e0005"};
  FailureBudget budget;
  for (const char* text : texts) {
    if (!budget.Spend(AllNumsAgree(text))) return;
  }
}

TEST(ValueTextDifferential, WritesLikeTheStream) {
  std::mt19937_64 random(11);
  FailureBudget budget;
  const double specials[] = {0.0, -0.0, 0.5, 1.5, 2.5, -2.5, 0.0000005, 0.0000015, 0.0000025, 1e300, -1e308,
                             std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min(),
                             std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::quiet_NaN()};
  for (double value : specials) {
    if (!budget.Spend(StrAgrees(value) & StrAgrees(static_cast<float>(value)))) return;
  }
  for (int i = 0; i < 30000; ++i) {
    const std::uint64_t bits = random();
    double anyDouble;
    float anyFloat;
    std::memcpy(&anyDouble, &bits, sizeof anyDouble);
    const std::uint32_t floatBits = static_cast<std::uint32_t>(bits >> 16);
    std::memcpy(&anyFloat, &floatBits, sizeof anyFloat);
    // Values of a few units with a half in the seventh decimal: ties, or
    // nearly, for the six-decimal rounding.
    const double nearTie = static_cast<double>(static_cast<long>(bits % 20000000) - 10000000) / 1e6 + 5e-7;
    const bool agreed = StrAgrees(anyDouble) & StrAgrees(anyFloat) & StrAgrees(nearTie) &
                        StrAgrees(static_cast<float>(nearTie)) & StrAgrees(static_cast<int>(bits)) &
                        StrAgrees(static_cast<long>(bits)) & StrAgrees(static_cast<long long>(bits >> (bits % 64)));
    if (!budget.Spend(agreed)) return;
  }
  for (long long value : {0LL, -1LL, std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max()}) {
    if (!budget.Spend(StrAgrees(value) & StrAgrees(static_cast<long>(value)) & StrAgrees(static_cast<int>(value)))) return;
  }
}

}  // namespace
