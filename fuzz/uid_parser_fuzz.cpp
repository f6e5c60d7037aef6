// The identifier parser (FrameUtil::StrUIDParser) on arbitrary text, against
// a plain reading of the identifier syntax written here: KEY=VALUE pairs
// joined by ",", KEY one or more of A-Z, 0-9 and "_", VALUE anything without
// ",". The parser must agree on whether the text is well formed, on its
// pairs' count and MOC, and on which VALUEs GetValue reads as numbers.
#include <charconv>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

#include "fuzz/fuzz_common.h"
#include "tn_platform/uid/str_uid_parser.h"

namespace {

using Pairs = std::vector<std::pair<std::string_view, std::string_view>>;

bool IsKeyChar(char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'; }

// The pairs of `text`, or nothing when it is ill formed.
std::optional<Pairs> ReferencePairs(std::string_view text) {
  Pairs pairs;
  if (text.empty()) return pairs;
  while (true) {
    const std::size_t comma = text.find(',');
    const std::string_view pair = text.substr(0, comma);
    const std::size_t equals = pair.find('=');
    if (equals == std::string_view::npos || equals == 0) return std::nullopt;
    const std::string_view key = pair.substr(0, equals);
    for (const char c : key) {
      if (!IsKeyChar(c)) return std::nullopt;
    }
    pairs.emplace_back(key, pair.substr(equals + 1));
    if (comma == std::string_view::npos) return pairs;
    text.remove_prefix(comma + 1);
  }
}

// The unsigned decimal number `value` stands for, if any (digits only, within
// 64 bits), read by the standard library.
std::optional<std::uint64_t> ReferenceNumber(std::string_view value) {
  std::uint64_t number = 0;
  const char* end = value.data() + value.size();
  const std::from_chars_result read = std::from_chars(value.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
  return number;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  FrameUtil::StrUIDParser parser;
  const bool parsed = parser.Parse(text);
  const std::optional<Pairs> pairs = ReferencePairs(text);
  if (parsed != pairs.has_value()) std::abort();
  const std::string moc = pairs && !pairs->empty() ? std::string(pairs->back().first) : std::string();
  if (parser.GetMOC() != moc || FrameUtil::StrUIDParser::GetMOC(text) != moc) std::abort();
  if (!pairs) {
    if (parser.PairCount() != 0) std::abort();
    return 0;
  }
  if (parser.PairCount() != pairs->size()) std::abort();

  std::map<std::string_view, unsigned> seen;  // occurrences of each KEY so far
  for (const auto& [key, value] : *pairs) {
    const unsigned occurrence = seen[key]++;
    std::uint64_t number = 0x5A5A5A5A5A5A5A5AULL;
    const bool stored = parser.GetValue(number, key, occurrence);
    const std::optional<std::uint64_t> expected = ReferenceNumber(value);
    if (stored != expected.has_value()) std::abort();
    if (number != (expected ? *expected : 0x5A5A5A5A5A5A5A5AULL)) std::abort();
  }
  // One occurrence past the last of a KEY finds nothing and leaves the number.
  for (const auto& [key, count] : seen) {
    std::uint64_t number = 7;
    if (parser.GetValue(number, key, count) || number != 7) std::abort();
  }
  return 0;
}
