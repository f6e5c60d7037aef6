// The man page and the bash completion, both made from the command-line
// parser's own description of the tool (names, descriptions, options, help
// texts and examples), so they cannot drift from `--help`. The build writes
// them with `velkor --man` and `velkor --bash-completion` and installs them.
#pragma once

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

namespace velkor {

// velkor(1) in roff.
void WriteManPage(std::ostream& os, const CLI::App& app, const std::string& version);

// A bash completion script: commands, their options, record types (asked of
// `velkor types` when completing) and file names.
void WriteBashCompletion(std::ostream& os, const CLI::App& app);

}  // namespace velkor
