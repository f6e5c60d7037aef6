// The process's trace sink: where every trace line of every module goes.
//
// Default sink: silent, unless the environment variable TN_TRACE is set when
// the first line is written: TN_TRACE=stderr writes to standard error, any
// other value is a file path that lines are appended to. A host program or a
// test installs its own sink with SetTraceSink (and restores the old one).
#pragma once
#pragma GCC visibility push(default)

#include <string>

namespace ns_utility {

struct TraceLine {
  std::string module;    // "tn_velkor"
  std::string category;  // "INFO", "ASN", "TIME"
  std::string file;      // source file as the compiler named it
  int line;
  int level;
  std::string text;
};

// A sink receives each line; it may be called from any thread at once.
using TraceSink = void (*)(const TraceLine& line);

// Installs `sink` (null: the default sink) and returns the one it replaces.
TraceSink SetTraceSink(TraceSink sink);

// Hands a line to the installed sink.
void EmitTrace(const TraceLine& line);

// The default text form of a line:
// "<module> <category> <file>:<line> [<level>] <text>"; an empty module, or an
// empty file with its line, is left out ("TIME [1] Init tn_velkor took 3 us").
std::string FormatTraceLine(const TraceLine& line);

}  // namespace ns_utility
#pragma GCC visibility pop
