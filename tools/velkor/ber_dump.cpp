#include "tools/velkor/ber_dump.h"

#include <cstdint>
#include <iomanip>
#include <memory>
#include <vector>

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_octs.h"

namespace velkor {

namespace {

// One open constructed value.
struct Frame {
  std::size_t start;      // offset of its identifier octet
  std::size_t limit;      // no item inside may run past this offset (for an
                          // indefinite length: the input's end, as for a
                          // decoder, which learns only at its end-of-contents
                          // that it ran past the value holding it)
  bool indefinite;        // closed by end-of-contents rather than by reaching `limit`
  std::size_t shortBy;    // octets of its content the input lacks (a cut capture)
};

// Thrown inside the walk for a defect it finds itself; the tag and length
// readers of ber.h report theirs as AsnDecodeError*.
struct Break {
  std::string what;
  std::size_t offset;
};

[[noreturn]] void BreakAt(std::size_t offset, const std::string& what) {
  throw Break{what + " at offset " + std::to_string(offset), offset};
}

class Walker {
 public:
  Walker(std::string_view bytes, const std::function<void(const BerItem&)>& visit)
      : m_bytes(bytes), m_buf(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()), m_visit(visit) {}

  std::size_t Items() const { return m_items; }
  // Where the item read last (or being read) starts.
  std::size_t CurrentItem() const { return m_current; }

  void Run() {
    for (;;) {
      // Definite-length values end where their content ends; a value the
      // input cuts short ends the walk there.
      while (!m_frames.empty() && !m_frames.back().indefinite && m_buf.Offset() == m_frames.back().limit) {
        const Frame& frame = m_frames.back();
        if (frame.shortBy > 0) BreakAt(CutAt(), "input ends " + AsnOctetCount(frame.shortBy) + " short of the value");
        m_frames.pop_back();
      }
      const std::size_t limit = m_frames.empty() ? m_bytes.size() : m_frames.back().limit;
      if (m_buf.Offset() == limit) {
        if (m_frames.empty()) return;
        InputEnds(m_frames.back().start, "input ends before the end-of-contents of the value",
                  "end-of-contents missing before the end of its enclosing value");
      }
      Item(limit);
    }
  }

 private:
  // The item at fault when the item starting at `itemOffset` runs past the
  // end of the definite value that limits it: the item, or, with indefinite
  // values between, the one of them that value holds. When the input ends
  // (`cut`), definite values it cuts short limit nothing, and with none left
  // the end of the input is at fault.
  std::size_t FaultAt(std::size_t itemOffset, bool cut) const {
    for (std::size_t depth = m_frames.size(); depth-- > 0;) {
      const Frame& frame = m_frames[depth];
      if (frame.indefinite || (cut && frame.shortBy > 0)) continue;
      return depth + 1 < m_frames.size() ? m_frames[depth + 1].start : itemOffset;
    }
    return cut ? m_bytes.size() : itemOffset;
  }
  std::size_t CutAt(std::size_t itemOffset) const { return FaultAt(itemOffset, true); }
  // The same, between items: the innermost open value ends short.
  std::size_t CutAt() const { return CutAt(m_frames.empty() ? m_bytes.size() : m_frames.back().start); }

  // Breaks at the item at fault for the item starting at `itemOffset`, which
  // runs past the value that holds it.
  [[noreturn]] void RunsPast(std::size_t itemOffset, const std::string& what) const {
    const std::size_t at = FaultAt(itemOffset, false);
    BreakAt(at, at == itemOffset ? what : "value runs past its enclosing value");
  }

  // Reads the identifier and length octets of `item`, which must end by
  // `limit`; returns the length (kIndefiniteLength for the indefinite form).
  // The length is not checked against the input: a cut capture still shows
  // the items it holds.
  unsigned long ReadHeader(BerItem& item, std::size_t limit) {
    unsigned long octets = 0;
    try {
      item.tag = BDecTag(m_buf, octets);
      if (m_buf.ReadError()) InputEnds(item.offset, "input ends inside a tag", "tag runs past its enclosing value");
      if (m_buf.Offset() > limit) RunsPast(item.offset, "tag runs past its enclosing value");
      const unsigned long length = BDecLenOctets(m_buf, octets, item.offset);
      if (m_buf.ReadError()) {
        InputEnds(item.offset, "input ends inside a length", "length octets run past their enclosing value");
      }
      if (m_buf.Offset() > limit) RunsPast(item.offset, "length octets run past their enclosing value");
      return length;
    } catch (AsnDecodeError* raw) {  // malformed tag or length octets
      const std::unique_ptr<AsnDecodeError> error(raw);
      BreakAt(error->Offset(), error->What());
    }
  }

  // Breaks where the input ending at the item starting at `itemOffset` puts
  // the fault: at the end of the input (`cut`), or at the item that runs past
  // a value the input holds whole (`runsPast`).
  [[noreturn]] void InputEnds(std::size_t itemOffset, const std::string& cut, const std::string& runsPast) const {
    const std::size_t at = CutAt(itemOffset);
    if (at == m_bytes.size()) BreakAt(at, cut);
    BreakAt(at, at == itemOffset ? runsPast : "value runs past its enclosing value");
  }

  void Item(std::size_t limit) {
    BerItem item;
    item.offset = m_buf.Offset();
    m_current = item.offset;
    item.depth = static_cast<unsigned>(m_frames.size());
    const unsigned long length = ReadHeader(item, limit);
    const std::size_t contentStart = m_buf.Offset();
    item.headerLength = contentStart - item.offset;

    if (item.tag == 0) {  // X.690 8.1.5: end-of-contents is 00 00
      if (length != 0) BreakAt(item.offset, "end-of-contents with content");
      if (m_frames.empty() || !m_frames.back().indefinite) {
        BreakAt(item.offset, "end-of-contents outside an indefinite-length value");
      }
      item.endOfContents = true;
      item.depth = static_cast<unsigned>(m_frames.size() - 1);
      Visit(item);
      const std::size_t closed = m_frames.back().start;
      m_frames.pop_back();
      if (!m_frames.empty() && !m_frames.back().indefinite && m_buf.Offset() > m_frames.back().limit) {
        BreakAt(closed, "value runs past its enclosing value");
      }
      return;
    }

    const bool constructed = TagIsConstructed(item.tag);
    if (length == kIndefiniteLength) {
      // X.690 8.1.3.2: only constructed values may use the indefinite form.
      if (!constructed) BreakAt(item.offset, "indefinite length on a primitive value");
      item.indefinite = true;
      Open(item, Frame{item.offset, m_bytes.size(), true, 0});
      return;
    }
    item.length = length;
    const std::size_t left = limit - contentStart;
    if (length > left) {
      // Past the end of the input itself (every enclosing value cut short
      // too): a cut capture, whose constructed items are shown up to the cut.
      // An item that runs past what its enclosing value declares (also one
      // the input cuts short) is at fault itself.
      const bool inputEnds = limit == m_bytes.size() && (m_frames.empty() || m_frames.back().shortBy > 0 ||
                                                         m_frames.back().indefinite);
      const std::size_t declared = left + (m_frames.empty() ? 0 : m_frames.back().shortBy);
      const std::string runsPast = "length " + std::to_string(length) + " runs past its enclosing value (" +
                                   AsnOctetCount(declared) + " left)";
      if (!inputEnds || (m_frames.size() > 0 && !m_frames.back().indefinite && length > declared)) {
        RunsPast(item.offset, runsPast);
      }
      if (!constructed) InputEnds(item.offset, "input ends " + AsnOctetCount(length - left) + " short of the value", runsPast);
      Open(item, Frame{item.offset, limit, false, length - left});
      return;
    }
    if (constructed) {
      Open(item, Frame{item.offset, contentStart + length, false, 0});
      return;
    }
    item.content = m_bytes.substr(contentStart, length);
    m_buf.GetSeg(length);
    Visit(item);
  }

  void Open(const BerItem& item, Frame frame) {
    if (m_frames.size() >= AsnDecodeLimits::kMaxDepth) {
      BreakAt(item.offset,
              "constructed values nested deeper than " + std::to_string(AsnDecodeLimits::kMaxDepth) + " levels");
    }
    Visit(item);
    m_frames.push_back(frame);
  }

  void Visit(const BerItem& item) {
    ++m_items;
    m_visit(item);
  }

  std::string_view m_bytes;
  AsnBuf m_buf;
  const std::function<void(const BerItem&)>& m_visit;
  std::vector<Frame> m_frames;
  std::size_t m_items = 0;
  std::size_t m_current = 0;
};

void WriteContent(std::ostream& os, const BerItem& item) {
  const bool universal = TagClassOf(item.tag) == AsnTagClass::kUniversal;
  const unsigned number = TagNumber(item.tag);
  if (universal && number == 2 && !item.content.empty() && item.content.size() <= 8) {
    // Two's complement, most significant octet first (X.690 8.3.3).
    std::int64_t value = static_cast<signed char>(item.content[0]);
    for (std::size_t i = 1; i < item.content.size(); ++i)
      value = static_cast<std::int64_t>(static_cast<std::uint64_t>(value) << 8) |
              static_cast<unsigned char>(item.content[i]);
    os << value;
    return;
  }
  if (universal && number == 1 && item.content.size() == 1) {
    os << (item.content[0] != 0 ? "TRUE" : "FALSE");
    return;
  }
  PrintOctets(os, item.content);
}

}  // namespace

BerWalkResult WalkBer(std::string_view bytes, const std::function<void(const BerItem&)>& visit) {
  Walker walker(bytes, visit);
  BerWalkResult result;
  try {
    walker.Run();
  } catch (const Break& defect) {
    result.complete = false;
    result.error = defect.what;
    result.breakOffset = defect.offset;
    result.breakItem = walker.CurrentItem();
  }
  result.items = walker.Items();
  return result;
}

void WriteBerItem(std::ostream& os, const BerItem& item) {
  os << std::setw(6) << item.offset << "  " << std::string(2 * item.depth, ' ');
  if (item.endOfContents) {
    os << "end-of-contents\n";
    return;
  }
  os << TagToString(item.tag);
  if (TagClassOf(item.tag) == AsnTagClass::kUniversal) {
    if (const char* name = UniversalTagName(TagNumber(item.tag))) os << " (" << name << ')';
  }
  if (item.indefinite) {
    os << ", length indefinite\n";
    return;
  }
  os << ", length " << item.length;
  if (!TagIsConstructed(item.tag)) {
    os << ": ";
    WriteContent(os, item);
  }
  os << '\n';
}

BerWalkResult DumpBer(std::string_view bytes, std::ostream& os) {
  return WalkBer(bytes, [&os](const BerItem& item) { WriteBerItem(os, item); });
}

}  // namespace velkor
