#include "tools/velkor/io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

namespace velkor {

namespace {

// Inputs shorter than this finish too quickly for a progress line to help.
constexpr std::size_t kProgressMinBytes = 1u << 20;
// Least time between two updates of the progress line.
constexpr long long kProgressIntervalMillis = 200;

bool IsStandardStream(const std::string& path) { return path.empty() || path == "-"; }

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string SystemError() { return std::strerror(errno); }

// Writes all of `data` to `fd`; false on failure (errno tells why).
bool WriteAll(int fd, std::string_view data) {
  while (!data.empty()) {
    const ssize_t written = ::write(fd, data.data(), data.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    data.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

long long NowMillis() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace

void ThrowBadInput(const std::string& message) { throw ToolError(kExitBadInput, message); }
void ThrowBadUsage(const std::string& message) { throw ToolError(kExitBadUsage, message); }

std::string ReadInput(const std::string& path) {
  if (IsStandardStream(path)) {
    std::string data{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    if (std::cin.bad()) ThrowBadInput("cannot read standard input");
    return data;
  }
  std::ifstream file(path, std::ios::binary);
  if (!file) ThrowBadInput("cannot open " + path + ": " + SystemError());
  std::string data{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (file.bad()) ThrowBadInput("cannot read " + path);
  return data;
}

std::string DecodeHex(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 2);
  int high = -1;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (IsBlank(c)) continue;
    const int digit = HexDigit(c);
    if (digit < 0) {
      const unsigned code = static_cast<unsigned char>(c);
      std::string shown = code >= 0x20 && code < 0x7F ? "'" + std::string(1, c) + "'" : "octet " + std::to_string(code);
      ThrowBadInput("bad hex: " + shown + " at position " + std::to_string(i) + " is not a hex digit");
    }
    if (high < 0) {
      high = digit;
    } else {
      bytes.push_back(static_cast<char>((high << 4) | digit));
      high = -1;
    }
  }
  if (high >= 0) ThrowBadInput("bad hex: odd number of hex digits");
  return bytes;
}

std::string EncodeHex(std::string_view bytes) {
  static const char kDigits[] = "0123456789abcdef";
  std::string text;
  text.reserve(bytes.size() * 2);
  for (const char c : bytes) {
    const unsigned octet = static_cast<unsigned char>(c);
    text.push_back(kDigits[octet >> 4]);
    text.push_back(kDigits[octet & 0x0F]);
  }
  return text;
}

std::string ReadBytes(const std::string& path, bool hex) {
  std::string input = ReadInput(path);
  return hex ? DecodeHex(input) : input;
}

void WriteOutput(const std::string& path, std::string_view data) {
  if (IsStandardStream(path)) {
    std::cout.write(data.data(), static_cast<std::streamsize>(data.size()));
    std::cout.flush();
    if (!std::cout) ThrowBadInput("cannot write standard output");
    return;
  }
  // The temporary file sits beside the target so that rename() replaces the
  // target in one step (same file system) and never exposes a partial file.
  const std::size_t slash = path.rfind('/');
  const std::string directory = slash == std::string::npos ? "." : path.substr(0, slash);
  const std::string base = slash == std::string::npos ? path : path.substr(slash + 1);
  std::string tempPath = directory + "/." + base + ".velkor-XXXXXX";
  std::vector<char> tempName(tempPath.begin(), tempPath.end());
  tempName.push_back('\0');
  const int fd = ::mkstemp(tempName.data());
  if (fd < 0) ThrowBadInput("cannot write " + path + ": " + SystemError());
  tempPath = tempName.data();
  // mkstemp creates the file readable by its owner only; give it the mode a
  // plainly created file would have.
  const mode_t mask = ::umask(0);
  ::umask(mask);
  bool ok = ::fchmod(fd, 0666 & ~mask) == 0 && WriteAll(fd, data) && ::fsync(fd) == 0;
  const std::string why = ok ? std::string() : SystemError();
  ok = (::close(fd) == 0) && ok;
  if (ok && ::rename(tempPath.c_str(), path.c_str()) != 0) {
    const std::string renameWhy = SystemError();
    ::unlink(tempPath.c_str());
    ThrowBadInput("cannot write " + path + ": " + renameWhy);
  }
  if (!ok) {
    ::unlink(tempPath.c_str());
    ThrowBadInput("cannot write " + path + ": " + (why.empty() ? SystemError() : why));
  }
}

std::string FormatBytes(std::string_view bytes, bool hex, const std::string& path) {
  if (hex || (IsStandardStream(path) && ::isatty(STDOUT_FILENO))) return EncodeHex(bytes) + "\n";
  return std::string(bytes);
}

Progress::Progress(std::string command, std::size_t totalBytes)
    : m_command(std::move(command)),
      m_total(totalBytes),
      m_enabled(totalBytes >= kProgressMinBytes && ::isatty(STDERR_FILENO)) {}

Progress::~Progress() {
  if (m_shown) std::cerr << "\r\x1b[K" << std::flush;
}

void Progress::Update(std::size_t items, std::size_t bytesDone) {
  if (!m_enabled) return;
  const long long now = NowMillis();
  if (m_shown && now - m_lastMillis < kProgressIntervalMillis) return;
  m_lastMillis = now;
  m_shown = true;
  const unsigned percent = m_total == 0 ? 100u : static_cast<unsigned>(bytesDone * 100 / m_total);
  std::cerr << "\rvelkor: " << m_command << ": " << items << " records, " << percent << "%" << std::flush;
}

}  // namespace velkor
