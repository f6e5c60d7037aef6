// The streams behind the tool's streaming list commands: input read as it
// is consumed, and record bytes held back in a temporary file until all of
// them are known (a list's length comes before its elements, and a refused
// document must leave no output).
#pragma once

#include <cstdio>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "tn_platform/asn/asn_byte_source.h"

namespace velkor {

// The input `path` ("" or "-": standard input) as a source read on demand.
// `head` receives its first octets (up to 4096), for hints on failure.
// Throws ToolError(bad input) when it cannot be opened or read.
AsnByteSource InputSource(const std::string& path, std::shared_ptr<std::string> head);

// The size of the file `path`, 0 for standard input or anything else.
std::size_t InputSize(const std::string& path);

// Octets appended in pieces to an unnamed temporary file in $TMPDIR (/tmp
// when TMPDIR is unset or empty), gone when the object or the process ends,
// then copied out in one go. Throws ToolError(bad input) naming the directory
// when the file cannot be made there.
class Spill {
 public:
  Spill();
  ~Spill();
  Spill(const Spill&) = delete;
  Spill& operator=(const Spill&) = delete;

  void Append(std::string_view bytes);
  std::size_t Size() const { return m_size; }
  // Writes everything appended, in order, to `out`: as it is, or as
  // lower-case hex digits when `hex`.
  void CopyTo(std::ostream& out, bool hex);
  // Everything appended so far, from the start, as a source read on demand;
  // valid while the spill lives and is not appended to.
  AsnByteSource Source();

 private:
  std::FILE* m_file;
  std::size_t m_size = 0;
};

// The input `path` ("" or "-": standard input) as sources that each read it
// from the start: a regular file is opened again for each, anything else
// (standard input, a pipe) is copied once into a spill.
class ReplayableInput {
 public:
  explicit ReplayableInput(const std::string& path);
  AsnByteSource Source();

 private:
  std::string m_path;
  std::unique_ptr<Spill> m_copy;
};

}  // namespace velkor
