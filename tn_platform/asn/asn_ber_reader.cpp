#include "tn_platform/asn/asn_ber_reader.h"

#include <algorithm>

#include "tn_platform/asn/asn_decode_error.h"

namespace {

// Octets enough for any header: a tag of four octets and a length of one
// plus 126 octets.
constexpr std::size_t kHeaderRoom = 136;

}  // namespace

AsnBerReader::AsnBerReader(AsnByteSource source, std::size_t keepContent)
    : m_window(std::move(source)), m_keepContent(keepContent) {}

void AsnBerReader::Break(std::size_t offset, const std::string& what, bool inputEnds) {
  throw new AsnDecodeError(offset, what, inputEnds);
}

void AsnBerReader::RunsPast(std::size_t item, const std::string& what) const {
  const std::size_t at = m_open.FaultAt(item);
  Break(at, at == item ? what : "value runs past its enclosing value");
}

void AsnBerReader::InputEnds(std::size_t item, std::size_t inputEnd, const std::string& cut,
                             const std::string& runsPast) const {
  const std::size_t at = m_open.FaultAtCut(item, inputEnd);
  if (at == kAsnNoEnd) Break(inputEnd, cut, true);
  Break(at, at == item ? runsPast : "value runs past its enclosing value");
}

void AsnBerReader::ReadHeader(AsnBerItem& item, unsigned long& length) {
  m_window.Ensure(kHeaderRoom);
  const std::string_view available = m_window.Available();
  // The window holds kHeaderRoom octets unless the input ends first.
  const std::size_t inputEnd = item.offset + available.size();
  const std::size_t limit = Limit();
  AsnBuf buf(reinterpret_cast<const unsigned char*>(available.data()), available.size());
  unsigned long octets = 0;
  // Malformed tag or length octets are placed at the item; a length no
  // input holds says how many octets the input has left.
  const auto placed = [&](AsnDecodeError* error) {
    error->MoveBy(item.offset);
    const std::string& what = error->What();
    const std::size_t past = what.find(" runs past the input (");
    if (past == std::string::npos) return error;
    const std::size_t left = m_window.Discard(kNoLimit) - buf.Offset();
    auto* counted = new AsnDecodeError(item.offset, what.substr(0, past) + " runs past the input (" +
                                                        AsnOctetCount(left) + " left)");
    delete error;
    return counted;
  };
  try {
    item.tag = BDecTag(buf, octets);
  } catch (AsnDecodeError* error) {
    throw placed(error);
  }
  if (buf.ReadError()) InputEnds(item.offset, inputEnd, "input ends inside a tag", "tag runs past its enclosing value");
  if (item.offset + buf.Offset() > limit) RunsPast(item.offset, "tag runs past its enclosing value");
  try {
    length = BDecLenOctets(buf, octets, 0);
  } catch (AsnDecodeError* error) {
    throw placed(error);
  }
  if (buf.ReadError()) {
    InputEnds(item.offset, inputEnd, "input ends inside a length", "length octets run past their enclosing value");
  }
  if (item.offset + buf.Offset() > limit) RunsPast(item.offset, "length octets run past their enclosing value");
  item.headerLength = buf.Offset();
  m_window.Skip(buf.Offset());
}

void AsnBerReader::ReadContent(AsnBerItem& item) {
  const std::size_t keep = std::min<std::size_t>(item.length, m_keepContent);
  m_window.Ensure(keep);
  const std::string_view available = m_window.Available();
  m_kept.assign(available.data(), std::min(keep, available.size()));
  const std::size_t contentStart = m_window.Offset();
  const std::size_t got = m_window.Discard(item.length);
  if (got < item.length) {
    const std::size_t limit = Limit();
    const std::size_t declared = (limit == kNoLimit ? contentStart + got : limit) - contentStart;
    InputEnds(item.offset, contentStart + got, "input ends " + AsnOctetCount(item.length - got) + " short of the value",
              "length " + std::to_string(item.length) + " runs past its enclosing value (" +
                  AsnOctetCount(declared) + " left)");
  }
  item.content = m_kept;
}

void AsnBerReader::OpenValue(const AsnBerItem& item, std::size_t end) {
  if (!m_open.MayOpen(1)) {
    Break(item.offset, AsnDecodeLimits::TooDeepText());
  }
  m_open.Push(AsnOpenValue{item.offset, end, item.length, AsnHolder::kValue, 0});
}

bool AsnBerReader::Next(AsnBerItem& item) {
  // Definite-length values end where their content ends.
  const std::size_t at = m_window.Offset();
  while (!m_open.Empty() && m_open.Innermost().end == at) m_open.Pop();
  if (InputEnded()) {
    if (m_open.Empty()) return false;
    const AsnOpenValue& open = m_open.Innermost();
    if (open.end == kNoLimit) {
      InputEnds(open.start, at, "input ends before the end-of-contents of the value",
                "end-of-contents missing before the end of its enclosing value");
    }
    // A definite value the input cuts short.
    const std::size_t fault = m_open.FaultAtCut(open.start, at);
    Break(fault == kAsnNoEnd ? at : fault, "input ends " + AsnOctetCount(open.end - at) + " short of the value",
          fault == kAsnNoEnd);
  }

  // Inside an indefinite-length value that has reached the end of the
  // definite one holding it, any item runs past.
  if (at >= Limit()) RunsPast(at, "value runs past its enclosing value");
  item = AsnBerItem();
  item.offset = at;
  item.depth = m_open.Depth();
  m_itemStart = at;
  const std::size_t limit = Limit();
  unsigned long length = 0;
  ReadHeader(item, length);
  const std::size_t contentStart = at + item.headerLength;

  if (item.tag == 0) {  // end-of-contents is 00 00
    if (length != 0) Break(item.offset, "end-of-contents with content");
    if (m_open.Empty() || m_open.Innermost().end != kNoLimit) {
      Break(item.offset, "end-of-contents outside an indefinite-length value");
    }
    item.endOfContents = true;
    item.depth = m_open.Depth() - 1;
    m_open.Pop();
    return true;
  }

  const bool constructed = TagIsConstructed(item.tag);
  if (length == kIndefiniteLength) {
    // Only constructed values may use the indefinite form.
    if (!constructed) Break(item.offset, "indefinite length on a primitive value");
    item.indefinite = true;
    OpenValue(item, kNoLimit);
    return true;
  }
  item.length = length;
  if (limit != kNoLimit && length > limit - contentStart) {
    RunsPast(item.offset, "length " + std::to_string(length) + " runs past its enclosing value (" +
                              AsnOctetCount(limit - contentStart) + " left)");
  }
  if (constructed) {
    // Its end may lie past the end of a cut input: the items it holds are
    // read up to the cut.
    OpenValue(item, contentStart + length);
    return true;
  }
  ReadContent(item);
  return true;
}
