// The command-line parser's side of the tool: each subcommand is a CLI11 App
// with a runner that does the work after parsing, so that parsing mistakes
// (exit 2) and failures of the work (exit 1) stay apart.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "tools/velkor/record_commands.h"

namespace velkor {

struct Runner {
  std::string name;                           // "decode", "convert fiber-to-cable"
  std::function<std::string()> run;           // returns the command's output
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

// The input FILE argument and -o.
inline void AddInputOutput(CLI::App& sub, InputOutput& io) {
  sub.add_option("FILE", io.input, "Input file (default: standard input)");
  sub.add_option("-o,--output", io.output, "Output file (default: standard output)");
}

// The input FILE argument, -o and --hex for a command that reads or writes
// record bytes; `hexHelp` says which side the flag is for.
inline void AddBytesOptions(CLI::App& sub, InputOutput& io, const std::string& hexHelp) {
  AddInputOutput(sub, io);
  sub.add_flag("--hex", io.hex, hexHelp);
}

// Registers the subcommands of `velkor convert`.
void AddConvertCommands(CLI::App& convert, Runners& runners);

}  // namespace velkor
