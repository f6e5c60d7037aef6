#include "tools/velkor/usage.h"

#include <algorithm>
#include <cctype>

namespace velkor {

namespace {

std::size_t EditDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same =
          std::tolower(static_cast<unsigned char>(a[i - 1])) == std::tolower(static_cast<unsigned char>(b[j - 1]));
      const std::size_t next = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (same ? 0 : 1)});
      diagonal = row[j];
      row[j] = next;
    }
  }
  return row[b.size()];
}

// The text after `prefix` in `text`, or "" when `text` does not start so.
std::string After(const std::string& text, const std::string& prefix) {
  return text.rfind(prefix, 0) == 0 ? text.substr(prefix.size()) : std::string();
}

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace

std::string ClosestName(std::string_view word, const std::vector<std::string>& candidates) {
  std::string best;
  std::size_t bestDistance = std::max<std::size_t>(2, word.size() / 3) + 1;
  for (const std::string& candidate : candidates) {
    const std::size_t distance = EditDistance(word, candidate);
    if (distance < bestDistance) {
      best = candidate;
      bestDistance = distance;
    }
  }
  return best;
}

std::string DidYouMean(std::string_view word, const std::vector<std::string>& candidates) {
  const std::string closest = ClosestName(word, candidates);
  return closest.empty() ? std::string() : " (did you mean " + Quoted(closest) + "?)";
}

std::string UsageMessage(const CLI::ParseError& error) {
  const std::string what = error.what();
  if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr) {
    // The tool's own validators word these: "--mask: \"x\" is not a number".
    return what;
  }
  if (dynamic_cast<const CLI::ConversionError*>(&error) != nullptr) {
    // "Could not convert: --json = maybe". Every option that takes a value
    // has a validator that leaves text the parser converts, so what is left
    // is a flag given a value it does not know.
    const std::string rest = After(what, "Could not convert: ");
    const std::size_t equals = rest.find(" = ");
    if (equals != std::string::npos)
      return rest.substr(0, equals) + ": " + Quoted(rest.substr(equals + 3)) + " is neither true nor false";
  }
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
    // "The following argument(s) was/were not expected: a b"
    const std::size_t colon = what.find(": ");
    if (colon != std::string::npos) return "unexpected argument " + Quoted(what.substr(colon + 2));
  }
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
    if (what.find("subcommand") != std::string::npos) return "a command is required";
    const std::size_t is = what.find(" is required");
    if (is != std::string::npos) return "missing " + what.substr(0, is);
  }
  if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr) {
    const std::size_t excludes = what.find(" excludes ");
    if (excludes != std::string::npos)
      return what.substr(0, excludes) + " and " + what.substr(excludes + 10) + " cannot be given together";
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    // "--output: 1 required TEXT missing", "--ignore: At Most 3 required but received 4"
    const std::size_t colon = what.find(':');
    if (colon != std::string::npos) {
      const std::string name = what.substr(0, colon);
      const std::string most = After(what.substr(colon), ": At Most ");
      if (most.rfind("1 ", 0) == 0) return name + ": given more than once";
      if (!most.empty()) return name + ": at most " + most.substr(0, most.find(' ')) + " values";
      return name + (what.find("missing") != std::string::npos ? ": needs a value" : ": too many values");
    }
  }
  return what;
}

}  // namespace velkor
