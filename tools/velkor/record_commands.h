// The commands that work on records of any catalogue type: types, dump,
// decode and encode. Each takes its parsed arguments and writes to `out` as it
// goes, so a long capture needs no more memory than the input itself;
// failures are ToolErrors.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "tn_platform/asn/asn_json_form.h"

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

// `velkor template TYPE [--compact] [--jer]`: a JSON skeleton of the type (see
// TemplateJson); with `jer`, the same values in JER, without comments.
void RunTemplate(const std::string& type, bool compact, bool jer, std::ostream& out);

struct DecodeOptions {
  std::string type;
  InputOutput io;
  bool all = false;        // every record of a capture
  bool json = false;       // JSON instead of value notation
  bool compact = false;    // JSON on one line per record (JSON Lines with `all`); implies `json`
  bool keepGoing = false;  // with `all`: report a broken record and go on
  bool jer = false;        // JER (X.697) instead of the readable JSON; implies `json`
  bool lines = false;      // a list type: one element per line (JSON Lines); implies `json`
  bool acceptViolations = false;  // take values outside their constraints, each reported on stderr
};

// `velkor decode TYPE [FILE] [--all] [--json] [--compact] [--keep-going]
// [--jer] [--lines] [--accept-constraint-violations]`. A list type (without `all`) is decoded and written one
// element at a time, so memory stays bounded by the largest element.
void RunDecode(const DecodeOptions& options, std::ostream& out);

// `velkor encode TYPE [FILE] [--all] [--jer | --readable]`: JSON in, bytes
// out; with `all` the JSON is an array of values or one value per line,
// encoded one after another. A list type's elements (a JSON array, or one
// element per line) are read and encoded one at a time, held in a temporary
// file until the list's length is known. Nothing is written when any part of
// the input is refused. Without a `form` the input's form is judged from the
// whole input (asn_json_either_form.h); an input both forms read to different
// bytes is refused, naming its first ambiguous member and both flags.
void RunEncode(const std::string& type, const InputOutput& io, bool all, std::optional<AsnJsonForm> form,
               std::ostream& out);

}  // namespace velkor
