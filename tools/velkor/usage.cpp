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
      const bool same = std::tolower(static_cast<unsigned char>(a[i - 1])) ==
                        std::tolower(static_cast<unsigned char>(b[j - 1]));
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
  if (dynamic_cast<const CLI::ConversionError*>(&error) != nullptr) {
    // "Could not convert: --mask = x"
    const std::string rest = After(what, "Could not convert: ");
    const std::size_t equals = rest.find(" = ");
    if (equals != std::string::npos) {
      return rest.substr(0, equals) + ": " + Quoted(rest.substr(equals + 3)) + " is not a number in range";
    }
  }
  if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr) {
    // "--mask: Value 70000 not in range 0 to 65535"
    const std::size_t colon = what.find(": Value ");
    const std::size_t range = what.find(" not in range ");
    if (colon != std::string::npos && range != std::string::npos && range > colon) {
      const std::string value = what.substr(colon + 8, range - colon - 8);
      const bool number = !value.empty() && value.find_first_not_of("0123456789") == std::string::npos;
      return what.substr(0, colon) + ": " + Quoted(value) +
             (number ? " is out of range (" + what.substr(range + 14) + ")" : " is not a number");
    }
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
    const std::size_t colon = what.find(':');
    const bool missing = what.find("missing") != std::string::npos;
    if (colon != std::string::npos) return what.substr(0, colon) + (missing ? ": needs a value" : ": too many values");
  }
  return what;
}

}  // namespace velkor
