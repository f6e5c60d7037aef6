// Usage mistakes in the tool's own words, and the closest known name for a
// mistyped one.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace velkor {

// The candidate closest to `word` by edit distance (case ignored), when it is
// close enough to be what was meant; "" otherwise.
std::string ClosestName(std::string_view word, const std::vector<std::string>& candidates);

// ` (did you mean "X"?)` for ClosestName's answer, "" for none.
std::string DidYouMean(std::string_view word, const std::vector<std::string>& candidates);

// One line for a mistake the command-line parser found ("missing TYPE",
// "--hex and --base64 cannot be given together"), without the parser's own
// wording. The tool's validators word their messages themselves.
std::string UsageMessage(const CLI::ParseError& error);

}  // namespace velkor
