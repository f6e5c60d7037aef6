#include "tn_platform/uid/str_uid_parser.h"

#include <limits>

namespace FrameUtil {
namespace {

bool IsKeyCharacter(char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'; }

bool IsKey(std::string_view key) {
  if (key.empty()) return false;
  for (const char c : key) {
    if (!IsKeyCharacter(c)) return false;
  }
  return true;
}

// Digits only, and no wrap-around: a VALUE beyond 64 bits is not a number.
bool ReadDecimal(std::string_view text, std::uint64_t& number) {
  if (text.empty()) return false;
  std::uint64_t value = 0;
  constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
  for (const char c : text) {
    if (c < '0' || c > '9') return false;
    const unsigned digit = static_cast<unsigned>(c - '0');
    if (value > (kMax - digit) / 10) return false;
    value = value * 10 + digit;
  }
  number = value;
  return true;
}

}  // namespace

bool StrUIDParser::Parse(std::string_view text) {
  m_pairs.clear();
  if (text.empty()) return true;
  std::vector<std::pair<std::string, std::string>> pairs;
  std::size_t start = 0;
  while (true) {
    const std::size_t comma = text.find(',', start);
    const std::string_view pair =
        text.substr(start, comma == std::string_view::npos ? std::string_view::npos : comma - start);
    const std::size_t equals = pair.find('=');
    if (equals == std::string_view::npos || !IsKey(pair.substr(0, equals))) return false;
    pairs.emplace_back(std::string(pair.substr(0, equals)), std::string(pair.substr(equals + 1)));
    if (comma == std::string_view::npos) break;
    start = comma + 1;
  }
  m_pairs = std::move(pairs);
  return true;
}

std::string StrUIDParser::GetMOC() const { return m_pairs.empty() ? std::string() : m_pairs.back().first; }

std::string StrUIDParser::GetMOC(std::string_view text) {
  StrUIDParser parser;
  return parser.Parse(text) ? parser.GetMOC() : std::string();
}

bool StrUIDParser::GetValue(std::uint64_t& number, std::string_view key, unsigned occurrence) const {
  for (const auto& [pairKey, value] : m_pairs) {
    if (pairKey != key) continue;
    if (occurrence-- == 0) return ReadDecimal(value, number);
  }
  return false;
}

}  // namespace FrameUtil
