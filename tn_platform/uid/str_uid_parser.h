// FrameUtil::StrUIDParser: reads identifier texts such as
// "NE=1001,SH=1,SL=3,PP=2": KEY=VALUE pairs joined by ",".
//
// - KEY: one or more of A-Z, 0-9 and "_". VALUE: any run of characters
//   without "," (it may be empty and may hold further "="; the pair splits at
//   its first "=").
// - The empty text is well formed and has no pairs. An empty pair (",," or a
//   trailing ","), a pair without "=" and an empty or ill-formed KEY make the
//   whole text ill formed.
// - The MOC of a text is the KEY of its last pair ("" when there is none).
//
//   StrUIDParser parser;
//   parser.Parse("NE=1001,SH=1,PP=2");   // true
//   parser.GetMOC();                     // "PP"
//   std::uint64_t ne = 0;
//   parser.GetValue(ne, "NE", 0);        // ne == 1001
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace FrameUtil {

class StrUIDParser {
 public:
  StrUIDParser() = default;

  // Parses `text`, replacing what an earlier Parse left. Returns false for an
  // ill-formed text; the parser then holds no pairs.
  bool Parse(std::string_view text);

  // The KEY of the last pair of the parsed text; "" when it has none.
  std::string GetMOC() const;
  // The MOC of `text`; "" when `text` does not parse.
  static std::string GetMOC(std::string_view text);

  // Stores into `number` the VALUE of the pair with KEY `key` read as an
  // unsigned decimal number (digits only, within 64 bits). `occurrence`
  // picks among pairs with that KEY: 0 the first, 1 the second, ...
  // Returns true when it stored; otherwise (no such pair, or a VALUE that is
  // not such a number) `number` is left unchanged and the result is false.
  bool GetValue(std::uint64_t& number, std::string_view key, unsigned occurrence) const;

  // The number of pairs of the parsed text.
  std::size_t PairCount() const { return m_pairs.size(); }

 private:
  std::vector<std::pair<std::string, std::string>> m_pairs;  // KEY, VALUE in text order
};

}  // namespace FrameUtil
#pragma GCC visibility pop
