// The constructed values a BER reading has open, innermost last, and the one
// rule for where a fault sits: an item that runs past the end of the
// definite-length value holding it is at fault itself, or, with
// indefinite-length values between, the outermost of those (it learns only
// at its end-of-contents that it ran past). The decoder (AsnBuf) and the
// structure reader (AsnBerReader) both keep their open values here.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>

// What an open value holds; it says in words what ran past its end.
enum class AsnHolder : unsigned char { kValue, kRecord, kList, kSegments };

struct AsnOpenValue {
  std::size_t start;      // offset of its identifier octet
  std::size_t end;        // of its content, or kAsnNoEnd for the indefinite form
  unsigned long length;   // its content length, when definite
  AsnHolder holder;
  std::size_t outerLimit;  // the limit in force before it was opened (set by AsnOpenValues)
};

constexpr std::size_t kAsnNoEnd = ~std::size_t{0};

class AsnOpenValues {
 public:
  // At most this many values are open at once.
  static constexpr unsigned kMaxDepth = 32;

  unsigned Depth() const { return m_depth; }
  bool Empty() const { return m_depth == 0; }
  // False when `levels` more values would be too deep.
  bool MayOpen(unsigned levels) const { return m_depth + levels <= kMaxDepth; }
  // Opens a value; the caller has checked MayOpen(1).
  void Push(const AsnOpenValue& value) {
    AsnOpenValue& pushed = m_values[m_depth++];
    pushed = value;
    pushed.outerLimit = m_limit;
    if (value.end != kAsnNoEnd) m_limit = value.end;
  }
  void Pop() { m_limit = m_values[--m_depth].outerLimit; }
  const AsnOpenValue& Innermost() const { return m_values[m_depth - 1]; }

  // The end of the innermost definite-length value (kAsnNoEnd when none is
  // open): no item may run past it.
  std::size_t Limit() const { return m_limit; }
  // The innermost definite-length value, or null.
  const AsnOpenValue* Holder() const {
    for (unsigned depth = m_depth; depth-- > 0;) {
      if (m_values[depth].end != kAsnNoEnd) return &m_values[depth];
    }
    return nullptr;
  }
  // Where the fault sits when the item starting at `item` runs past Limit():
  // the item itself when that value holds it directly, else the value open
  // inside that one.
  std::size_t FaultAt(std::size_t item) const {
    for (unsigned depth = m_depth; depth-- > 0;) {
      if (m_values[depth].end == kAsnNoEnd) continue;
      return depth + 1 < m_depth ? m_values[depth + 1].start : item;
    }
    return item;
  }
  // The same when the input ends at `inputEnd` inside that item: definite
  // values it cuts short limit nothing, and with none left the end of the
  // input is at fault (kAsnNoEnd).
  std::size_t FaultAtCut(std::size_t item, std::size_t inputEnd) const {
    for (unsigned depth = m_depth; depth-- > 0;) {
      const std::size_t end = m_values[depth].end;
      if (end == kAsnNoEnd || end > inputEnd) continue;
      return depth + 1 < m_depth ? m_values[depth + 1].start : item;
    }
    return kAsnNoEnd;
  }

 private:
  AsnOpenValue m_values[kMaxDepth];
  unsigned m_depth = 0;
  std::size_t m_limit = kAsnNoEnd;  // the end of the innermost definite value
};
#pragma GCC visibility pop
