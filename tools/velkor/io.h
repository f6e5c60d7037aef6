// Input, output and errors of the velkor tool.
//
// Every failure a command reports is a ToolError: a one-line message and the
// exit code it ends the program with (1 bad input, 2 bad usage). main() prints
// it as "velkor: <command>: <message>" on standard error.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tools/velkor/text_forms.h"

namespace velkor {

enum ExitCode : int { kExitOk = 0, kExitBadInput = 1, kExitBadUsage = 2 };

class ToolError : public std::runtime_error {
 public:
  ToolError(ExitCode code, const std::string& message) : std::runtime_error(message), m_code(code) {}
  ExitCode Code() const { return m_code; }

 private:
  ExitCode m_code;
};

// Shorthands for the two kinds of failure.
[[noreturn]] void ThrowBadInput(const std::string& message);
[[noreturn]] void ThrowBadUsage(const std::string& message);

// The whole content of `path`, or of standard input when `path` is empty or
// "-". Throws ToolError(bad input) when the file cannot be read.
std::string ReadInput(const std::string& path);

// Record bytes from the input: the input itself, or the octets its hex text
// (`hex`) or Base64 text (`base64`) stands for.
std::string ReadBytes(const std::string& path, bool hex, bool base64 = false);

// True when record bytes for `path` are written as hex text: when `hex` is
// set, or when they would go raw to a terminal (`path` empty and standard
// output a terminal).
bool BytesAsHex(bool hex, const std::string& path);

// Record bytes as output: hex text with a final line break when BytesAsHex,
// else the bytes themselves.
std::string FormatBytes(std::string_view bytes, bool hex, const std::string& path);

// A progress line on standard error ("velkor: decode: 1200 records, 48%"),
// shown only when standard error is a terminal and the input is long. Updates
// at most a few times a second; the line is cleared when the object ends.
class Progress {
 public:
  Progress(std::string command, std::size_t totalBytes);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // Reports `items` done after `bytesDone` of the input.
  void Update(std::size_t items, std::size_t bytesDone);

 private:
  std::string m_command;
  std::size_t m_total;
  bool m_enabled;
  bool m_shown = false;
  long long m_lastMillis = 0;
};

}  // namespace velkor
