#include "tn_platform/asn/asn_byte_source.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t kChunk = 64 * 1024;

}  // namespace

AsnByteSource AsnBytesSource(std::string_view bytes) {
  return [bytes](char* data, std::size_t size) mutable {
    const std::size_t count = std::min(size, bytes.size());
    if (count > 0) std::memcpy(data, bytes.data(), count);
    bytes.remove_prefix(count);
    return count;
  };
}

bool AsnSourceWindow::ReadMore(std::size_t least) {
  if (m_ended) return false;
  // Drop what is consumed before reading, so the window never holds more
  // than the unconsumed octets and one read.
  if (m_at > 0) {
    m_data.erase(0, m_at);
    m_base += m_at;
    m_at = 0;
  }
  // Read in chunks, so that memory grows with the octets that come, never
  // with a count asked for (a length field may claim anything).
  const std::size_t want = std::max(least, kChunk);
  std::size_t got = 0;
  while (got < want) {
    const std::size_t had = m_data.size();
    const std::size_t step = std::min(kChunk, want - got);
    m_data.resize(had + step);
    const std::size_t count = m_source(&m_data[had], step);
    m_data.resize(had + count);
    if (count == 0) {
      m_ended = true;
      break;
    }
    got += count;
  }
  return got > 0;
}

bool AsnSourceWindow::Fill(std::size_t count) {
  while (m_data.size() - m_at < count) {
    if (!ReadMore(count - (m_data.size() - m_at))) return m_data.size() - m_at >= count;
  }
  return true;
}

bool AsnSourceWindow::Grow() { return ReadMore(m_data.size() - m_at); }

std::size_t AsnSourceWindow::Discard(std::size_t count) {
  std::size_t done = 0;
  for (;;) {
    const std::size_t step = std::min(count - done, m_data.size() - m_at);
    m_at += step;
    done += step;
    if (done == count || !ReadMore(1)) return done;
  }
}
