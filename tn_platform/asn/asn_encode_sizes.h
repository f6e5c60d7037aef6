// AsnEncodeSizes: what the encoder's sizing pass learns for its writing pass.
//
// A value is encoded in two passes over the same members: the sizing pass
// adds up every value's length, and the writing pass writes each value once,
// front to back, into room measured exactly. The content lengths of
// constructed values (records and lists) are what the writing pass cannot
// see cheaply, so the sizing pass notes them here in the order the writing
// pass meets them: a constructed value takes its slot before its members.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <memory>

class AsnEncodeSizes {
 public:
  AsnEncodeSizes() = default;
  AsnEncodeSizes(const AsnEncodeSizes&) = delete;
  AsnEncodeSizes& operator=(const AsnEncodeSizes&) = delete;

  // Forgets every length, before a sizing pass.
  void Clear() {
    m_count = 0;
    m_next = 0;
  }
  // Takes the next slot, for a constructed value whose length is not known yet.
  std::size_t TakeSlot() {
    if (m_count == m_capacity) Grow();
    return m_count++;
  }
  void Set(std::size_t slot, unsigned long length) { m_lengths[slot] = length; }
  // Before the writing pass: the next length read is the first slot's.
  void StartReading() { m_next = 0; }
  // The next noted length, in the order the slots were taken.
  unsigned long Next() { return m_lengths[m_next++]; }

 private:
  static constexpr std::size_t kInlineSlots = 16;
  // Twice the room; the lengths noted so far are kept.
  void Grow();

  unsigned long* m_lengths = m_inline;
  std::size_t m_count = 0;
  std::size_t m_next = 0;
  std::size_t m_capacity = kInlineSlots;
  std::unique_ptr<unsigned long[]> m_heap;
  unsigned long m_inline[kInlineSlots];
};
#pragma GCC visibility pop
