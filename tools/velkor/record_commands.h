// The commands that work on records of any catalogue type: types, dump,
// decode and encode. Each takes its parsed arguments and writes to `out` as it
// goes, so a long capture needs no more memory than the input itself;
// failures are ToolErrors.
#pragma once

#include <ostream>
#include <string>

namespace velkor {

// Where a command reads and writes.
struct InputOutput {
  std::string input;    // file, or "" / "-" for standard input
  std::string output;   // file, or "" for standard output
  bool hex = false;     // the command's bytes (input or output) are hex text
  bool base64 = false;  // the command's input bytes are Base64 text
};

// `velkor types [TYPE] [--json] [--compact]`; `compact` writes JSON Lines,
// one type per line.
void RunTypes(const std::string& only, bool json, bool compact, std::ostream& out);

// `velkor dump [FILE]`: one line per item, written as it is read. On broken
// bytes the items before the break are out already; throws ToolError(bad
// input) naming the break's offset.
void RunDump(const InputOutput& io, std::ostream& out);

// `velkor template TYPE [--compact]`: a JSON skeleton of the type (see
// TemplateJson).
void RunTemplate(const std::string& type, bool compact, std::ostream& out);

struct DecodeOptions {
  std::string type;
  InputOutput io;
  bool all = false;        // every record of a capture
  bool json = false;       // JSON instead of value notation
  bool compact = false;    // JSON on one line per record (JSON Lines with `all`); implies `json`
  bool keepGoing = false;  // with `all`: report a broken record and go on
};

// `velkor decode TYPE [FILE] [--all] [--json] [--compact] [--keep-going]`.
void RunDecode(const DecodeOptions& options, std::ostream& out);

// `velkor encode TYPE [FILE] [--all]`: JSON in, bytes out; with `all` the JSON
// is an array of values or one value per line, encoded one after another.
void RunEncode(const std::string& type, const InputOutput& io, bool all, std::ostream& out);

}  // namespace velkor
