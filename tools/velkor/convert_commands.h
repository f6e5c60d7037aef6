// The subcommands of `velkor convert`: one per conversion of the library.
// Each reads its input (record bytes or model JSON), calls the library and
// returns the other side (model JSON or record bytes).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/velkor/record_commands.h"

namespace velkor {

// The arguments of every convert subcommand; each uses only some of them.
struct ConvertOptions {
  InputOutput io;
  bool compact = false;               // --compact: JSON on one line
  std::string text;                   // kTakesText: the positional text
  std::uint64_t unsignedNumber = 0;   // kTakesUnsigned: the positional number
  int signedNumber = 0;               // kTakesSigned: the positional number
  std::string mapFile;                // --map: a return-code map to start from
  bool fillAll = false;               // --fill-all: the Return2 variant
  std::optional<unsigned long> code;  // --code: the overall code for ignore-codes
  std::vector<unsigned long> ignore;  // --ignore: up to three tolerated codes
  unsigned short mask = 0x1F;         // --mask: the use states to keep
  std::string moc;                    // --moc: the node class a link end may be
  bool acceptNode = false;            // --accept-node
};

// What a subcommand takes besides the common options.
enum ConvertTakes : unsigned {
  kTakesFile = 1 << 0,      // FILE and --hex (record bytes in or out)
  kTakesJsonFile = 1 << 1,  // FILE of JSON, no --hex
  kTakesText = 1 << 2,      // instead of FILE: a required positional text
  kTakesUnsigned = 1 << 3,  // instead of FILE: a required positional 64-bit unsigned number
  kTakesSigned = 1 << 4,    // instead of FILE: a required positional int
  kTakesBytesOut = 1 << 5,  // --hex for the output bytes
  kWritesJson = 1 << 6,     // --compact
  kTakesMap = 1 << 7,       // --map
  kTakesFillAll = 1 << 8,   // --fill-all
  kTakesCodes = 1 << 9,     // --code and --ignore
  kTakesMask = 1 << 10,     // --mask
  kTakesLinkEnd = 1 << 11,  // --moc and --accept-node
};

struct ConvertCommand {
  const char* name;
  const char* description;
  const char* example;
  unsigned takes;            // ConvertTakes bits
  const char* argumentName;  // with a positional argument: "MASK", "ID", ...
  const char* argumentHelp;
  std::string (*run)(const ConvertOptions& options);
};

// Every convert subcommand, in the order `velkor convert --help` shows them.
const std::vector<ConvertCommand>& ConvertCommands();

}  // namespace velkor
