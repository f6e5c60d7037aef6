#include "tools/velkor/validators.h"

#include <optional>

#include "tools/velkor/record_types.h"

namespace velkor {

namespace {

struct Integer {
  bool negative = false;
  std::uint64_t magnitude = 0;
  bool tooLarge = false;  // beyond 64 bits
};

// Decimal digits or 0x and hex digits after an optional '-'; nothing else.
std::optional<Integer> ParseInteger(const std::string& text) {
  Integer integer;
  std::size_t at = 0;
  if (at < text.size() && text[at] == '-') {
    integer.negative = true;
    ++at;
  }
  unsigned base = 10;
  if (text.compare(at, 2, "0x") == 0 || text.compare(at, 2, "0X") == 0) {
    base = 16;
    at += 2;
  }
  if (at == text.size()) return std::nullopt;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    unsigned digit = 0;
    if (c >= '0' && c <= '9') {
      digit = static_cast<unsigned>(c - '0');
    } else if (base == 16 && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'))) {
      digit = static_cast<unsigned>((c | 0x20) - 'a' + 10);
    } else {
      return std::nullopt;
    }
    if (integer.magnitude > (std::numeric_limits<std::uint64_t>::max() - digit) / base) integer.tooLarge = true;
    integer.magnitude = integer.magnitude * base + digit;
  }
  return integer;
}

bool InRange(const Integer& integer, std::int64_t min, std::uint64_t max) {
  if (integer.tooLarge) return false;
  if (!integer.negative || integer.magnitude == 0) return integer.magnitude <= max;
  // -magnitude >= min, computed on magnitudes: min is negative here.
  return min < 0 && integer.magnitude <= static_cast<std::uint64_t>(-(min + 1)) + 1;
}

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace

CLI::Option* IntegerIn(CLI::Option* option, std::int64_t min, std::uint64_t max) {
  const std::string range = std::to_string(min) + " to " + std::to_string(max);
  const CLI::Validator integer(
      [min, max, range](std::string& text) -> std::string {
        const std::optional<Integer> integer = ParseInteger(text);
        if (!integer) return Quoted(text) + " is not a number (decimal or 0x hex)";
        if (!InRange(*integer, min, max)) return Quoted(text) + " is out of range (" + range + ")";
        text = (integer->negative && integer->magnitude != 0 ? "-" : "") + std::to_string(integer->magnitude);
        return "";
      },
      "");
  return option->transform(integer)->type_name("NUMBER");
}

CLI::Validator RecordTypeName() {
  return CLI::Validator([](std::string& name) { return TypeNameProblem(name); }, "");
}

}  // namespace velkor
