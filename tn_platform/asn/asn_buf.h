// AsnBuf: the runtime's octet buffer.
//
// Encoding puts each value in front of what the buffer already holds. A
// record or list is measured first and then written front to back into room
// taken in front (ReserveFront), so nothing is guessed and nothing moves;
// the single-octet and segment writers put octets in front one run at a time.
// Decoding reads forward through a read-only view of the caller's bytes; a
// read past the end yields 0 and sets the read-error flag instead of reading
// out of bounds. The buffer is the decoder's reader: it keeps the
// constructed values open at the read position (AsnOpenValues), the nesting
// limit and the list-element budget, and says where a fault sits: an item
// that runs past the value holding it is at fault (ThrowRunsPast), an input
// that ends before the values holding the read position do is at fault where
// it ends (ThrowInputEnds).
#pragma once
#pragma GCC visibility push(default)

// Every header of the runtime rests on this one: a consumer compiled below
// C++17 learns it here, in one line, instead of deep inside a template.
#if __cplusplus < 201703L
#error "tn_velkor's headers need C++17 (-std=c++17 or later)"
#endif

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_encode_sizes.h"
#include "tn_platform/asn/asn_open_values.h"

// The encoding rules a value is coded with. The runtime implements BER only;
// every caller passes 1.
enum NIClass_EncodingFormatEnum { NIClass_BER = 1 };

// Decoding limits, one place for all of them.
struct AsnDecodeLimits {
  // Constructed values nested deeper than this are refused: a value of a
  // type that holds itself (LDAP's Filter) nests as deep as its input does,
  // and every reader walks it with the call stack. The JSON reader counts
  // the levels the value's BER would open (asn_json_reader.h), so that what
  // one form accepts every other form reads back.
  static constexpr unsigned kMaxDepth = AsnOpenValues::kMaxDepth;
  // What a refusal of deeper nesting says.
  static std::string TooDeepText();
  // A long-form length whose value needs more octets than this is refused
  // (leading zero octets do not count: up to 126 length octets are read).
  static constexpr unsigned kMaxLengthOctets = 8;
};

class AsnBuf {
 public:
  // An empty buffer for encoding.
  AsnBuf() = default;
  // An empty buffer for encoding with room for `capacity` octets, so that an
  // encoding up to that size never grows it.
  explicit AsnBuf(std::size_t capacity) { AddBuffer(capacity); }
  // A buffer for decoding `size` octets at `data`. The octets are not copied:
  // they must outlive the buffer.
  AsnBuf(const unsigned char* data, std::size_t size);
  AsnBuf(const AsnBuf&) = delete;
  AsnBuf& operator=(const AsnBuf&) = delete;

  // ---- encoding ----------------------------------------------------------
  // Puts one octet in front of what is already written.
  void PutByteRvs(unsigned char octet) {
    if (m_front == m_block.get()) AddBuffer(0);
    *--m_front = octet;
  }
  // Puts `size` octets in front, in their own order.
  void PutSegRvs(const unsigned char* data, std::size_t size) {
    if (static_cast<std::size_t>(m_front - m_block.get()) < size) AddBuffer(size);
    if (size == 0) return;
    m_front -= size;
    std::memcpy(m_front, data, size);
  }
  // Takes `size` octets of room in front of what is written and returns
  // where they start; the caller fills them front to back.
  unsigned char* ReserveFront(std::size_t size) {
    if (static_cast<std::size_t>(m_front - m_block.get()) < size) AddBuffer(size);
    m_front -= size;
    return m_front;
  }
  // The encoder's notes between its sizing and its writing pass, kept with
  // the buffer so that encoding into a kept buffer allocates nothing.
  AsnEncodeSizes& EncodeSizes() { return m_sizes; }
  // Makes room in front for at least `size` more octets (at least one when 0),
  // moving what is written into a larger block.
  void AddBuffer(std::size_t size);
  // Forgets what was written and keeps the block, so that one buffer serves
  // encoding after encoding without allocating again.
  void ClearEncoded() { m_front = m_block.get() + m_blockSize; }
  const unsigned char* EncodedData() const { return m_front; }
  std::size_t EncodedLength() const { return m_blockSize - static_cast<std::size_t>(m_front - m_block.get()); }
  std::string EncodedBytes() const;
  std::string_view EncodedView() const {
    return std::string_view(reinterpret_cast<const char*>(m_front), EncodedLength());
  }

  // ---- decoding ----------------------------------------------------------
  // The next octet; 0 with the read-error flag set when none is left.
  unsigned char GetByte() {
    if (m_read == m_end) {
      m_readError = true;
      return 0;
    }
    return *m_read++;
  }
  // The next octet without consuming it; false when none is left.
  bool PeekByte(unsigned char& octet) const {
    if (m_read == m_end) return false;
    octet = *m_read;
    return true;
  }
  // The next `size` octets, consumed; null with the read-error flag set when
  // fewer are left (nothing is consumed then).
  const unsigned char* GetSeg(std::size_t size) {
    if (Remaining() < size) {
      m_readError = true;
      return nullptr;
    }
    const unsigned char* segment = m_read;
    m_read += size;
    return segment;
  }
  std::size_t Remaining() const { return static_cast<std::size_t>(m_end - m_read); }
  // The offset of the end of the input.
  std::size_t End() const { return static_cast<std::size_t>(m_end - m_begin); }
  // The first octet of the input (for a look at an item already passed).
  const unsigned char* Begin() const { return m_begin; }
  // Octets consumed since the start of the input.
  std::size_t Offset() const { return static_cast<std::size_t>(m_read - m_begin); }
  bool ReadError() const { return m_readError; }
  // ---- the open values and where a fault sits --------------------------------
  // Where the item whose tag was read last starts (BDecTag notes it).
  std::size_t ItemStart() const { return m_itemStart; }
  void NoteItemStart() { m_itemStart = Offset(); }
  // Opens the constructed value whose tag was read last (or the one starting
  // at `start`), its content of `length` octets (kIndefiniteLength) starting
  // here, or of which `rest` octets are still ahead. One level more than
  // AsnDecodeLimits::kMaxDepth throws an AsnDecodeError about that value.
  void OpenValue(AsnHolder holder, unsigned long length) { OpenValueAt(m_itemStart, holder, length, length); }
  [[gnu::always_inline]] void OpenValueAt(std::size_t start, AsnHolder holder, unsigned long length,
                                          unsigned long rest) {
    if (!m_open.MayOpen(1)) ThrowTooDeep(start);
    const bool indefinite = length == ~0UL;  // kIndefiniteLength (ber.h)
    m_open.Push(AsnOpenValue{start, indefinite ? kAsnNoEnd : Offset() + rest, indefinite ? 0 : length, holder, 0});
  }
  void CloseValue() { m_open.Pop(); }
  // True when `levels` more constructed levels may be opened.
  bool MayEnterConstructed(unsigned levels) const { return m_open.MayOpen(levels); }
  // Octets the item at the read position may take: up to the end of the
  // innermost definite-length value open, or of the input, whichever is first.
  std::size_t Available() const {
    const std::size_t limit = m_open.Limit();
    const std::size_t offset = Offset();
    if (limit == kAsnNoEnd) return Remaining();
    return limit <= offset ? 0 : std::min(Remaining(), limit - offset);
  }
  // The end of the innermost definite-length value open, or kAsnNoEnd.
  std::size_t Limit() const { return m_open.Limit(); }
  // How an item ran past the value holding it.
  enum class Overrun : unsigned char {
    kItem,    // it starts at its end, or the input ends inside the item
    kHeader,  // its identifier and length octets run past it
    kLength,  // its definite `length` does
  };
  // Throws the AsnDecodeError for the item starting at `item`, whose content
  // would start at the read position, running past the value that limits it
  // (Limit()), in the words of that value's kind; placed by the one rule.
  [[noreturn]] void ThrowRunsPast(std::size_t item, Overrun how, unsigned long length = 0) const;
  // Throws for the input ending while the item starting at `item` is read:
  // `what`, placed at the end of the input, unless a value that lies whole in
  // the input holds the item (then the item runs past it).
  [[noreturn]] void ThrowInputEnds(std::size_t item, const std::string& what) const;

  // The list elements this decode may still make, of every list together: a
  // whole-value decode's budget (AsnDecodeBudget, asn_value_io.h). Unlimited
  // unless limited. A list counts each element as it makes it; one too many
  // throws an AsnDecodeError about that element.
  void LimitListElements(std::size_t count) {
    m_elementLimit = count;
    m_elementsLeft = count;
  }
  void CountListElement() {
    if (m_elementsLeft == 0) ThrowTooManyElements();
    --m_elementsLeft;
  }
  // Whether this decode takes member values outside their bounds
  // (asn_bounds.h) instead of refusing them: its caller reports them.
  void AcceptConstraintViolations() { m_acceptViolations = true; }
  bool AcceptsConstraintViolations() const { return m_acceptViolations; }

 private:
  [[noreturn]] static void ThrowTooDeep(std::size_t start);
  [[noreturn]] void ThrowTooManyElements() const;

  // Encoding block: the written octets are [m_front, m_block + m_blockSize).
  std::unique_ptr<unsigned char[]> m_block;
  std::size_t m_blockSize = 0;
  unsigned char* m_front = nullptr;
  AsnEncodeSizes m_sizes;

  // Decoding view.
  const unsigned char* m_begin = nullptr;
  const unsigned char* m_read = nullptr;
  const unsigned char* m_end = nullptr;
  bool m_readError = false;
  std::size_t m_itemStart = 0;
  AsnOpenValues m_open;
  std::size_t m_elementLimit = ~std::size_t{0};
  bool m_acceptViolations = false;
  std::size_t m_elementsLeft = ~std::size_t{0};
};

// Keeps one constructed value open for as long as it lives, so the open
// values stay right on every way out of a decode, exceptions included.
class AsnOpenValueGuard {
 public:
  // Both inlined: every record and list decoded opens one.
  // The value whose tag was read last.
  [[gnu::always_inline]] AsnOpenValueGuard(AsnBuf& buf, AsnHolder holder, unsigned long length) : m_buf(buf) {
    m_buf.OpenValue(holder, length);
  }
  // The value starting at `start`, `rest` octets of its content ahead.
  [[gnu::always_inline]] AsnOpenValueGuard(AsnBuf& buf, std::size_t start, AsnHolder holder, unsigned long length,
                                           unsigned long rest)
      : m_buf(buf) {
    m_buf.OpenValueAt(start, holder, length, rest);
  }
  ~AsnOpenValueGuard() { m_buf.CloseValue(); }
  AsnOpenValueGuard(const AsnOpenValueGuard&) = delete;
  AsnOpenValueGuard& operator=(const AsnOpenValueGuard&) = delete;

 private:
  AsnBuf& m_buf;
};
#pragma GCC visibility pop
