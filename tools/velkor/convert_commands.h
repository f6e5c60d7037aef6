// The subcommands of `velkor convert`: one per conversion of the library.
// Each reads its input (record bytes or model JSON), calls the library and
// returns the other side (model JSON or record bytes).
#pragma once

#include <string>
#include <vector>

#include "tools/velkor/record_commands.h"

namespace velkor {

// The arguments of every convert subcommand; each uses only some of them.
struct ConvertOptions {
  InputOutput io;
  std::string argument;               // the positional argument of commands that take no file
  std::string mapFile;                // --map: a return-code map to start from
  bool fillAll = false;               // --fill-all: the Return2 variant
  std::string code;                   // --code: the overall code for ignore-codes
  std::vector<unsigned long> ignore;  // --ignore: up to three tolerated codes
  unsigned mask = 0x1F;               // --mask: the use states to keep (16 bits)
  std::string moc;                    // --moc: the node class a link end may be
  bool acceptNode = false;            // --accept-node
};

// What a subcommand takes besides the common options.
enum ConvertTakes : unsigned {
  kTakesFile = 1 << 0,      // FILE and --hex (record bytes in or out)
  kTakesJsonFile = 1 << 1,  // FILE of JSON, no --hex
  kTakesArgument = 1 << 2,  // a required positional argument instead of FILE
  kTakesBytesOut = 1 << 3,  // --hex for the output bytes
  kTakesMap = 1 << 4,       // --map
  kTakesFillAll = 1 << 5,   // --fill-all
  kTakesCodes = 1 << 6,     // --code and --ignore
  kTakesMask = 1 << 7,      // --mask
  kTakesLinkEnd = 1 << 8,   // --moc and --accept-node
};

struct ConvertCommand {
  const char* name;
  const char* description;
  const char* example;
  unsigned takes;            // ConvertTakes bits
  const char* argumentName;  // with kTakesArgument: "MASK", "ID", ...
  const char* argumentHelp;
  std::string (*run)(const ConvertOptions& options);
};

// Every convert subcommand, in the order `velkor convert --help` shows them.
const std::vector<ConvertCommand>& ConvertCommands();

}  // namespace velkor
