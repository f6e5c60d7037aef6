// Where a command's output goes, written as it is produced.
//
//   - standard output ("" or "-") and anything that is not a regular file
//     (a FIFO, a device, /dev/stdout, /dev/fd/N): written directly;
//   - a regular file or a new name: written to a temporary file beside it,
//     synced and renamed over it by Commit(), keeping the existing file's
//     mode; a symlink is followed, so its target is replaced and the link
//     stays. Until Commit() the target is untouched, and the temporary file
//     goes away on failure and on SIGINT, SIGTERM, SIGHUP and SIGPIPE.
//     An existing file the user may not write is refused, as a shell
//     redirection would be: without write permission (access(2)), and for
//     root, whom permissions do not stop, without the write bit of root's
//     class (owner, group or others), so a file made read-only stays as it is.
#pragma once

#include <memory>
#include <ostream>
#include <string>

namespace velkor {

class Output {
 public:
  // Opens the output. Throws ToolError(bad input) when it cannot be created.
  explicit Output(const std::string& path);
  ~Output();  // without Commit(): discards a temporary file
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  // Writing fails with ToolError(bad input) thrown out of the stream's
  // operations (a full disk, a closed pipe).
  std::ostream& Stream();

  // Flushes and, for a temporary file, syncs it and renames it over the
  // target. Throws ToolError(bad input) on failure.
  void Commit();

  // After a failure: flushes what a direct output has got (a dump up to the
  // break is worth seeing) and discards a temporary file.
  void Abandon();

 private:
  class Buffer;
  std::string m_path;       // as given
  std::string m_target;     // the file a temporary file replaces
  std::string m_tempPath;   // "" for direct output
  int m_fd = -1;
  bool m_ownsFd = false;    // not for standard output
  std::unique_ptr<Buffer> m_buffer;
  std::unique_ptr<std::ostream> m_stream;
};

}  // namespace velkor
