#include "tools/velkor/output.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <streambuf>
#include <vector>

#include "tools/velkor/io.h"

namespace velkor {

namespace {

constexpr std::size_t kBufferSize = 64 * 1024;
constexpr int kMaxSymlinks = 40;  // as the kernel's own limit on a path

std::string SystemError() { return std::strerror(errno); }

// ---- the temporary file and signals ----------------------------------------------

// The temporary file a signal handler removes. A plain array: the handler may
// only make async-signal-safe calls.
char g_pendingTemp[PATH_MAX + 1];
volatile std::sig_atomic_t g_hasPendingTemp = 0;
const int kCleanupSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGPIPE};

extern "C" void RemoveTempAndDie(int signal) {
  if (g_hasPendingTemp) ::unlink(g_pendingTemp);
  std::signal(signal, SIG_DFL);
  std::raise(signal);  // ends the process as the signal would have
}

// Creates the temporary file from `pattern` (mkstemp) with the handlers in
// place and the signals held back until the handlers know its name, so that
// no signal can leave it behind.
int CreateWatchedTemp(std::string& pattern) {
  sigset_t held;
  sigset_t previousMask;
  sigemptyset(&held);
  for (const int signal : kCleanupSignals) {
    sigaddset(&held, signal);
    // A signal the caller chose to ignore stays ignored (nohup).
    struct sigaction previous {};
    ::sigaction(signal, nullptr, &previous);
    if (previous.sa_handler != SIG_IGN) std::signal(signal, RemoveTempAndDie);
  }
  ::sigprocmask(SIG_BLOCK, &held, &previousMask);
  const int fd = pattern.size() <= PATH_MAX ? ::mkstemp(pattern.data()) : -1;
  if (fd >= 0) {
    std::memcpy(g_pendingTemp, pattern.c_str(), pattern.size() + 1);
    g_hasPendingTemp = 1;
  } else if (pattern.size() > PATH_MAX) {
    errno = ENAMETOOLONG;
  }
  const int savedErrno = errno;
  ::sigprocmask(SIG_SETMASK, &previousMask, nullptr);
  errno = savedErrno;
  return fd;
}

void UnwatchTemp() { g_hasPendingTemp = 0; }

// ---- where the output goes -----------------------------------------------------------

bool IsStandardOutput(const std::string& path) { return path.empty() || path == "-" || path == "/dev/stdout"; }

// Names that stand for an open descriptor of this process: replacing what
// they resolve to would cut the descriptor's file from under it.
bool IsDescriptorName(const std::string& path) {
  return path.rfind("/dev/fd/", 0) == 0 || path.rfind("/proc/", 0) == 0 || path == "/dev/stderr";
}

std::string DirectoryOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// `path` with every symlink followed, as far as the names exist (a dangling
// link names the file to create).
std::string FollowLinks(std::string path) {
  for (int i = 0; i < kMaxSymlinks; ++i) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return path;
    std::vector<char> target(PATH_MAX + 1);
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size() - 1);
    if (length < 0) return path;
    const std::string next(target.data(), static_cast<std::size_t>(length));
    path = next.front() == '/' ? next : DirectoryOf(path) + "/" + next;
  }
  errno = ELOOP;
  ThrowBadInput("cannot write " + path + ": " + SystemError());
}

// Whether the user may write the existing file `path` (`status`), as a shell
// redirection onto it would be allowed. For root, whom the kernel lets write
// anything, the write bit of its class (owner, group, others) decides, so a
// file made read-only is not replaced behind its owner's back.
bool MayWrite(const std::string& path, const struct stat& status) {
  if (::geteuid() != 0) return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
  const mode_t bit = status.st_uid == 0 ? S_IWUSR : status.st_gid == ::getegid() ? S_IWGRP : S_IWOTH;
  return (status.st_mode & bit) != 0;
}

// Writes all of `data` to `fd`; false on failure (errno tells why).
bool WriteAll(int fd, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(fd, data, size);
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    data += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

}  // namespace

// A stream buffer over a descriptor. A failed write throws ToolError, which
// the stream passes on (its exception mask includes badbit).
class Output::Buffer : public std::streambuf {
 public:
  Buffer(int fd, std::string name) : m_fd(fd), m_name(std::move(name)), m_data(kBufferSize) {
    setp(m_data.data(), m_data.data() + m_data.size());
  }

 protected:
  int_type overflow(int_type c) override {
    Drain();
    if (!traits_type::eq_int_type(c, traits_type::eof())) {
      *pptr() = traits_type::to_char_type(c);
      pbump(1);
    }
    return traits_type::not_eof(c);
  }

  std::streamsize xsputn(const char* data, std::streamsize size) override {
    const auto count = static_cast<std::size_t>(size);
    if (count > static_cast<std::size_t>(epptr() - pptr())) {
      Drain();
      if (count >= m_data.size()) {
        Write(data, count);
        return size;
      }
    }
    std::memcpy(pptr(), data, count);
    pbump(static_cast<int>(count));
    return size;
  }

  int sync() override {
    Drain();
    return 0;
  }

 private:
  void Drain() {
    const char* begin = pbase();
    const auto size = static_cast<std::size_t>(pptr() - begin);
    setp(m_data.data(), m_data.data() + m_data.size());
    Write(begin, size);
  }

  void Write(const char* data, std::size_t size) {
    if (!WriteAll(m_fd, data, size)) ThrowBadInput("cannot write " + m_name + ": " + SystemError());
  }

  int m_fd;
  std::string m_name;
  std::vector<char> m_data;
};

Output::Output(const std::string& path) : m_path(path) {
  std::string name = path;
  if (IsStandardOutput(path)) {
    m_fd = STDOUT_FILENO;
    name = "standard output";
  } else {
    struct stat status {};
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if ((exists && !S_ISREG(status.st_mode)) || IsDescriptorName(path)) {
      // A FIFO or device is written as it is: renaming would replace the node.
      m_fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
      if (m_fd < 0) ThrowBadInput("cannot write " + path + ": " + SystemError());
    } else {
      // Beside the target, so that rename() replaces it in one step (same file
      // system) and never exposes a partial file.
      m_target = FollowLinks(path);
      if (exists && !MayWrite(m_target, status)) {
        errno = EACCES;
        ThrowBadInput("cannot write " + path + ": " + SystemError());
      }
      const std::size_t slash = m_target.rfind('/');
      const std::string base = slash == std::string::npos ? m_target : m_target.substr(slash + 1);
      std::string pattern = DirectoryOf(m_target) + "/." + base + ".velkor-XXXXXX";
      m_fd = CreateWatchedTemp(pattern);
      if (m_fd < 0) ThrowBadInput("cannot write " + path + ": " + SystemError());
      m_tempPath = pattern;
      // mkstemp makes the file private; give it the target's mode, or the one
      // a plainly created file would have.
      mode_t mode = 0;
      if (exists) {
        mode = status.st_mode & 07777;
        if (status.st_uid != ::geteuid() || status.st_gid != ::getegid()) {
          if (::fchown(m_fd, status.st_uid, status.st_gid) != 0) {
            // Not ours to give away: the new file keeps our ownership.
          }
        }
      } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
      }
      if (::fchmod(m_fd, mode) != 0) {
        const std::string why = SystemError();
        Abandon();
        ThrowBadInput("cannot write " + path + ": " + why);
      }
    }
    m_ownsFd = true;
  }
  m_buffer = std::make_unique<Buffer>(m_fd, name);
  m_stream = std::make_unique<std::ostream>(m_buffer.get());
  m_stream->exceptions(std::ios::badbit);
}

Output::~Output() {
  try {
    Abandon();
  } catch (...) {
    // A failed flush while unwinding has already been reported or is moot.
  }
}

std::ostream& Output::Stream() { return *m_stream; }

void Output::Commit() {
  m_stream->flush();
  if (m_tempPath.empty()) {
    if (m_ownsFd && ::close(m_fd) != 0) ThrowBadInput("cannot write " + m_path + ": " + SystemError());
    m_ownsFd = false;
    m_fd = -1;
    return;
  }
  bool ok = ::fsync(m_fd) == 0;
  std::string why = ok ? std::string() : SystemError();
  if (::close(m_fd) != 0 && ok) {
    ok = false;
    why = SystemError();
  }
  m_ownsFd = false;
  m_fd = -1;
  if (ok && ::rename(m_tempPath.c_str(), m_target.c_str()) != 0) {
    ok = false;
    why = SystemError();
  }
  if (!ok) {
    Abandon();
    ThrowBadInput("cannot write " + m_path + ": " + why);
  }
  m_tempPath.clear();
  UnwatchTemp();
}

void Output::Abandon() {
  if (m_stream && m_tempPath.empty() && m_fd >= 0) {
    m_stream->exceptions(std::ios::goodbit);  // a failing flush has nothing left to tell
    m_stream->flush();
  }
  if (m_ownsFd) ::close(m_fd);
  m_ownsFd = false;
  m_fd = -1;
  if (!m_tempPath.empty()) {
    ::unlink(m_tempPath.c_str());
    m_tempPath.clear();
    UnwatchTemp();
  }
}

}  // namespace velkor
