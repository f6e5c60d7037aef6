// AsnBerReader: reads BER bytes of any type item by item, in the order they
// stand, from a byte source read as it is consumed: memory stays bounded by
// the open nesting levels and a window of the input, whatever its size.
//
// It keeps the open constructed values as the decoder does (AsnOpenValues:
// their ends, or the indefinite form, the nesting limit and the one rule for
// where a fault sits): an item that runs past the value holding it is at
// fault itself (with indefinite-length values between, the one the definite
// value holds); an input that ends before the values open at that point do
// is at fault where it ends. Several top-level values may follow one another (a capture
// of records). Faults are thrown as AsnDecodeError* with offsets counted from
// the start of the input: the offsets the decoder's errors carry.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <string>
#include <string_view>

#include "tn_platform/asn/asn_byte_source.h"
#include "tn_platform/asn/asn_open_values.h"
#include "tn_platform/asn/ber.h"

// One item: a header (of a primitive or constructed value) or the
// end-of-contents octets that close an indefinite length.
struct AsnBerItem {
  std::size_t offset = 0;        // of the first identifier octet
  unsigned depth = 0;            // 0 for a top-level value
  AsnTag tag = 0;                // packed as ber.h packs tags
  bool endOfContents = false;    // the 00 00 that closes an indefinite length
  bool indefinite = false;       // constructed with indefinite length
  std::size_t headerLength = 0;  // identifier and length octets
  std::size_t length = 0;        // content octets (definite lengths only)
  std::string_view content;      // a primitive item's content, up to the reader's
                                 // keepContent octets (valid until the next call)
};

class AsnBerReader {
 public:
  // Reads `source`; of each primitive item's content the first `keepContent`
  // octets are kept for the caller, the rest is read past.
  AsnBerReader(AsnByteSource source, std::size_t keepContent);

  // The next item; false once the input ends after a complete top-level
  // value. Throws AsnDecodeError* where the bytes break: every item before
  // the fault has been returned.
  bool Next(AsnBerItem& item);
  // Where the item read last (or being read) starts.
  std::size_t ItemStart() const { return m_itemStart; }
  // Octets consumed so far.
  std::size_t Offset() const { return m_window.Offset(); }

 private:
  static constexpr std::size_t kNoLimit = kAsnNoEnd;

  bool InputEnded() { return !m_window.Ensure(1); }
  // The end of the innermost definite-length value open (its declared end,
  // which may lie past the end of a cut input), or kNoLimit.
  std::size_t Limit() const { return m_open.Limit(); }
  [[noreturn]] void RunsPast(std::size_t item, const std::string& what) const;
  // The input ends at `inputEnd` while reading the item at `item`: placed at
  // the end of the input when no value it cuts holds the fault, else at the
  // item at fault.
  [[noreturn]] void InputEnds(std::size_t item, std::size_t inputEnd, const std::string& cut,
                              const std::string& runsPast) const;
  void ReadHeader(AsnBerItem& item, unsigned long& length);
  void ReadContent(AsnBerItem& item);
  void OpenValue(const AsnBerItem& item, std::size_t end);
  [[noreturn]] static void Break(std::size_t offset, const std::string& what, bool inputEnds = false);

  AsnSourceWindow m_window;
  std::size_t m_keepContent;
  std::string m_kept;  // the kept content of a primitive item the window no longer holds
  AsnOpenValues m_open;
  std::size_t m_itemStart = 0;
};
#pragma GCC visibility pop
