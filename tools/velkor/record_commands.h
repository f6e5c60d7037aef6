// The commands that work on records of any catalogue type: types, dump,
// decode and encode. Each takes its parsed arguments and returns what goes to
// the output; failures are ToolErrors.
#pragma once

#include <string>

namespace velkor {

// Where a command reads and writes.
struct InputOutput {
  std::string input;   // file, or "" / "-" for standard input
  std::string output;  // file, or "" for standard output
  bool hex = false;    // the command's bytes (input or output) are hex text
};

// `velkor types [TYPE] [--json]`.
std::string RunTypes(const std::string& only, bool json);

// `velkor dump [FILE]`. On broken bytes throws ToolError(bad input) whose
// partial output is the dump up to the break.
std::string RunDump(const InputOutput& io);

// `velkor decode TYPE [FILE] [--all] [--json]`.
std::string RunDecode(const std::string& type, const InputOutput& io, bool all, bool json);

// `velkor encode TYPE [FILE] [--all]`: JSON in, bytes out; with `all` the JSON
// is an array of values, encoded one after another.
std::string RunEncode(const std::string& type, const InputOutput& io, bool all);

}  // namespace velkor
