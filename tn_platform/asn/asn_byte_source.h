// Where a stream reader gets its octets from: a function that fills up to
// `size` octets at `data` and returns how many it gave, 0 at the end. A file,
// a pipe or a socket serves as well as bytes in memory.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

using AsnByteSource = std::function<std::size_t(char* data, std::size_t size)>;

// A source that gives `bytes` (which must outlive it), then ends.
AsnByteSource AsnBytesSource(std::string_view bytes);

// The octets read from a source, kept in one window that slides forward:
// readers consume from the front and ask for more at the back, so memory
// stays bounded by what a reader needs at once (one element of a list).
class AsnSourceWindow {
 public:
  explicit AsnSourceWindow(AsnByteSource source) : m_source(std::move(source)) {}

  // Makes at least `count` octets from the current place available, as far as
  // the source goes; true when it could.
  bool Ensure(std::size_t count) { return m_data.size() - m_at >= count || Fill(count); }
  // Reads more, at least as much as the window holds (so that retrying a
  // value that did not fit costs linear time); false at the end of the source.
  bool Grow();
  // The octets available from the current place.
  std::string_view Available() const { return std::string_view(m_data).substr(m_at); }
  // Consumes `count` available octets.
  void Skip(std::size_t count) { m_at += count; }
  // Consumes up to `count` octets, reading what the window does not hold
  // without keeping it; returns how many there were (fewer when the source
  // ends first).
  std::size_t Discard(std::size_t count);
  // Where the current place is in the whole input.
  std::size_t Offset() const { return m_base + m_at; }
  // True when the source has ended (nothing more will come).
  bool Ended() const { return m_ended; }

 private:
  bool Fill(std::size_t count);
  bool ReadMore(std::size_t least);

  AsnByteSource m_source;
  std::string m_data;
  std::size_t m_at = 0;    // the current place in m_data
  std::size_t m_base = 0;  // offset of m_data[0] in the input
  bool m_ended = false;
};
#pragma GCC visibility pop
