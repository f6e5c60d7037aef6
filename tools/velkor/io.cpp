#include "tools/velkor/io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <iostream>

namespace velkor {

namespace {

// Inputs shorter than this finish too quickly for a progress line to help.
constexpr std::size_t kProgressMinBytes = 1u << 20;
// Least time between two updates of the progress line.
constexpr long long kProgressIntervalMillis = 200;
// Reading grows the buffer by at least this much at a time.
constexpr std::size_t kReadChunk = 1u << 16;

bool IsStandardStream(const std::string& path) { return path.empty() || path == "-"; }

std::string SystemError() { return std::strerror(errno); }

long long NowMillis() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace

void ThrowBadInput(const std::string& message) { throw ToolError(kExitBadInput, message); }
void ThrowBadUsage(const std::string& message) { throw ToolError(kExitBadUsage, message); }

// Reads all of `fd`; sized from the start when its size is known (a file),
// so a large capture takes its own size and no more.
static std::string ReadAll(int fd, const std::string& name) {
  struct stat status {};
  if (::fstat(fd, &status) == 0 && S_ISDIR(status.st_mode)) ThrowBadInput("cannot read " + name + ": it is a directory");
  std::string data;
  if (::fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0)
    data.reserve(static_cast<std::size_t>(status.st_size) + kReadChunk);  // room to see the end
  std::size_t size = 0;
  for (;;) {
    if (data.size() - size < kReadChunk) data.resize(std::max(data.capacity(), size + kReadChunk));
    const ssize_t got = ::read(fd, data.data() + size, data.size() - size);
    if (got < 0) {
      if (errno == EINTR) continue;
      ThrowBadInput("cannot read " + name + ": " + SystemError());
    }
    if (got == 0) break;
    size += static_cast<std::size_t>(got);
  }
  data.resize(size);
  return data;
}

std::string ReadInput(const std::string& path) {
  if (IsStandardStream(path)) return ReadAll(STDIN_FILENO, "standard input");
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) ThrowBadInput("cannot open " + path + ": " + SystemError());
  try {
    std::string data = ReadAll(fd, path);
    ::close(fd);
    return data;
  } catch (...) {
    ::close(fd);
    throw;
  }
}

std::string ReadBytes(const std::string& path, bool hex, bool base64) {
  std::string input = ReadInput(path);
  if (hex) return DecodeHex(input);
  if (base64) return DecodeBase64(input);
  return input;
}

bool BytesAsHex(bool hex, const std::string& path) {
  return hex || (IsStandardStream(path) && ::isatty(STDOUT_FILENO));
}

std::string FormatBytes(std::string_view bytes, bool hex, const std::string& path) {
  return BytesAsHex(hex, path) ? EncodeHex(bytes) + "\n" : std::string(bytes);
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
