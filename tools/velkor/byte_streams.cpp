#include "tools/velkor/byte_streams.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "tools/velkor/io.h"

namespace velkor {

namespace {

constexpr std::size_t kHeadSize = 4096;
constexpr std::size_t kCopyChunk = 64 * 1024;

bool IsStandardStream(const std::string& path) { return path.empty() || path == "-"; }

// Closes the descriptor when the last copy of the source goes.
struct Descriptor {
  int fd = STDIN_FILENO;
  std::string name;
  ~Descriptor() {
    if (fd != STDIN_FILENO) ::close(fd);
  }
};

}  // namespace

AsnByteSource InputSource(const std::string& path, std::shared_ptr<std::string> head) {
  int fd = STDIN_FILENO;
  std::string name = "standard input";
  if (!IsStandardStream(path)) {
    fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) ThrowBadInput("cannot open " + path + ": " + std::strerror(errno));
    name = path;
  }
  auto descriptor = std::make_shared<Descriptor>();
  descriptor->fd = fd;
  descriptor->name = name;
  struct stat status {};
  if (::fstat(fd, &status) == 0 && S_ISDIR(status.st_mode)) ThrowBadInput("cannot read " + name + ": it is a directory");
  return [descriptor, head](char* data, std::size_t size) -> std::size_t {
    for (;;) {
      const ssize_t got = ::read(descriptor->fd, data, size);
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) ThrowBadInput("cannot read " + descriptor->name + ": " + std::strerror(errno));
      if (head && head->size() < kHeadSize) {
        head->append(data, std::min(static_cast<std::size_t>(got), kHeadSize - head->size()));
      }
      return static_cast<std::size_t>(got);
    }
  };
}

std::size_t InputSize(const std::string& path) {
  struct stat status {};
  if (IsStandardStream(path) || ::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return 0;
  return static_cast<std::size_t>(status.st_size);
}

Spill::Spill() {
  const char* const tmpdir = std::getenv("TMPDIR");
  const std::string directory = tmpdir != nullptr && *tmpdir != '\0' ? tmpdir : "/tmp";
  std::string pattern = directory + "/velkor-spill-XXXXXX";
  // Unlinked as soon as it exists, with every signal held in between, so that
  // nothing can leave it behind.
  sigset_t all;
  sigset_t previous;
  sigfillset(&all);
  ::sigprocmask(SIG_BLOCK, &all, &previous);
  const int fd = ::mkstemp(pattern.data());
  const int error = errno;
  if (fd >= 0) ::unlink(pattern.c_str());
  ::sigprocmask(SIG_SETMASK, &previous, nullptr);
  m_file = fd >= 0 ? ::fdopen(fd, "w+b") : nullptr;
  if (m_file == nullptr) {
    const int why = fd >= 0 ? errno : error;
    if (fd >= 0) ::close(fd);
    ThrowBadInput("cannot make a temporary file in " + directory + ": " + std::strerror(why));
  }
}

Spill::~Spill() { std::fclose(m_file); }

void Spill::Append(std::string_view bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size()) {
    ThrowBadInput(std::string("cannot write a temporary file: ") + std::strerror(errno));
  }
  m_size += bytes.size();
}

void Spill::CopyTo(std::ostream& out, bool hex) {
  if (std::fflush(m_file) != 0 || std::fseek(m_file, 0, SEEK_SET) != 0) {
    ThrowBadInput(std::string("cannot read a temporary file: ") + std::strerror(errno));
  }
  std::vector<char> chunk(kCopyChunk);
  for (;;) {
    const std::size_t got = std::fread(chunk.data(), 1, chunk.size(), m_file);
    if (got == 0) break;
    const std::string_view piece(chunk.data(), got);
    if (hex) {
      out << EncodeHex(piece);
    } else {
      out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
    }
  }
  if (std::ferror(m_file)) ThrowBadInput(std::string("cannot read a temporary file: ") + std::strerror(errno));
}

AsnByteSource Spill::Source() {
  if (std::fflush(m_file) != 0) ThrowBadInput(std::string("cannot read a temporary file: ") + std::strerror(errno));
  const int fd = ::fileno(m_file);
  auto offset = std::make_shared<off_t>(0);
  return [fd, offset](char* data, std::size_t size) -> std::size_t {
    for (;;) {
      const ssize_t got = ::pread(fd, data, size, *offset);
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) ThrowBadInput(std::string("cannot read a temporary file: ") + std::strerror(errno));
      *offset += got;
      return static_cast<std::size_t>(got);
    }
  };
}

ReplayableInput::ReplayableInput(const std::string& path) : m_path(path) {
  struct stat status {};
  if (!IsStandardStream(path) && ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode)) return;
  m_copy = std::make_unique<Spill>();
  const AsnByteSource source = InputSource(path, nullptr);
  std::vector<char> chunk(kCopyChunk);
  for (std::size_t got; (got = source(chunk.data(), chunk.size())) != 0;) m_copy->Append({chunk.data(), got});
}

AsnByteSource ReplayableInput::Source() { return m_copy ? m_copy->Source() : InputSource(m_path, nullptr); }

}  // namespace velkor
