// The command-line parser's side of the tool: each subcommand is a CLI11 App
// with a runner that does the work after parsing, so that parsing mistakes
// (exit 2) and failures of the work (exit 1) stay apart.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>

#include "tools/velkor/record_commands.h"
#include "tools/velkor/validators.h"

namespace velkor {

struct Runner {
  std::string name;                           // "decode", "convert fiber-to-cable"
  std::function<void(std::ostream&)> run;     // writes the command's output as it goes
  std::shared_ptr<const std::string> output;  // where the output goes ("" = standard output)
};

using Runners = std::map<const CLI::App*, Runner>;

// Adds a subcommand to `parent` with a description and, after the options,
// an example in its help.
inline CLI::App* AddSubcommand(CLI::App& parent, const std::string& name, const std::string& description,
                               const std::string& example) {
  CLI::App* sub = parent.add_subcommand(name, description);
  sub->footer("Example:\n  " + example + "\n");
  return sub;
}

// -o.
inline void AddOutput(CLI::App& sub, std::string& output) {
  sub.add_option("-o,--output", output, "Output file (default: standard output)");
}

// The input FILE argument and -o.
inline void AddInputOutput(CLI::App& sub, InputOutput& io) {
  sub.add_option("FILE", io.input, "Input file (default: standard input)");
  AddOutput(sub, io.output);
}

// The required TYPE argument: a name of the type catalogue.
inline void AddTypeArgument(CLI::App& sub, std::string& type) {
  sub.add_option("TYPE", type, "Record or list type (see velkor types)")->required()->check(RecordTypeName());
}

// What --hex and --base64 say for a command that reads record bytes.
inline const char* const kHexInputHelp =
    "The input is hex text: any blanks, colons or commas between octets, 0x before each octet, "
    "and xxd or od dumps (their offsets and text columns are skipped) all do";
inline const char* const kBase64InputHelp = "The input is Base64 text (PEM-style -----BEGIN/END lines are skipped)";

// The --hex and --base64 flags of a command that reads record bytes.
inline void AddBytesInputFlags(CLI::App& sub, InputOutput& io) {
  CLI::Option* hex = sub.add_flag("--hex", io.hex, kHexInputHelp);
  sub.add_flag("--base64", io.base64, kBase64InputHelp)->excludes(hex);
}

// The input FILE argument and -o of a command that reads record bytes, and
// its --hex and --base64 flags.
inline void AddBytesInputOptions(CLI::App& sub, InputOutput& io) {
  AddInputOutput(sub, io);
  AddBytesInputFlags(sub, io);
}

// Registers the subcommands of `velkor convert`.
void AddConvertCommands(CLI::App& convert, Runners& runners);

}  // namespace velkor
