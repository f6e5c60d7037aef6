#include "tn_platform/asn/asn_encode_sizes.h"

#include <algorithm>

void AsnEncodeSizes::Grow() {
  const std::size_t capacity = 2 * m_capacity;
  std::unique_ptr<unsigned long[]> lengths(new unsigned long[capacity]);
  std::copy(m_lengths, m_lengths + m_count, lengths.get());
  m_heap = std::move(lengths);
  m_lengths = m_heap.get();
  m_capacity = capacity;
}
