#include "tn_platform/asn/asn_buf.h"

#include <algorithm>
#include <cstring>

#include "tn_platform/asn/ber.h"


AsnBuf::AsnBuf(const unsigned char* data, std::size_t size) : m_begin(data), m_read(data), m_end(data + size) {}

void AsnBuf::AddBuffer(std::size_t size) {
  const std::size_t used = EncodedLength();
  // Grow geometrically so that a long encoding costs amortised O(1) per octet.
  const std::size_t newSize = std::max<std::size_t>({256, m_blockSize * 2, used + std::max<std::size_t>(size, 1)});
  std::unique_ptr<unsigned char[]> block(new unsigned char[newSize]);
  unsigned char* front = block.get() + (newSize - used);
  if (used != 0) std::memcpy(front, m_front, used);
  m_block = std::move(block);
  m_blockSize = newSize;
  m_front = front;
}

std::string AsnBuf::EncodedBytes() const {
  return std::string(reinterpret_cast<const char*>(EncodedData()), EncodedLength());
}

std::string AsnDecodeLimits::TooDeepText() {
  return "constructed values nested deeper than " + std::to_string(kMaxDepth) + " levels";
}

void AsnBuf::ThrowTooDeep(std::size_t start) { AsnThrowDecodeError(start, AsnDecodeLimits::TooDeepText()); }

void AsnBuf::ThrowTooManyElements() const {
  // About the element being made: the list's caller has not read past it.
  AsnThrowDecodeError(Offset(), "more than " + std::to_string(m_elementLimit) +
                                    " list elements, the decode's budget");
}

void AsnBuf::ThrowRunsPast(std::size_t item, Overrun how, unsigned long length) const {
  const AsnOpenValue* holder = m_open.Holder();
  const std::size_t at = m_open.FaultAt(item);
  std::string what;
  switch (holder->holder) {
    case AsnHolder::kList:
      what = AsnListOverrunText(holder->length);
      break;
    case AsnHolder::kSegments:
      what = "OCTET STRING segment runs past its enclosing value";
      break;
    case AsnHolder::kRecord:
      if (at != item || how == Overrun::kItem) {
        what = "runs past the end of the record";
      } else if (how == Overrun::kHeader) {
        what = "header runs past the end of the record";
      } else {
        what = "length " + std::to_string(length) + " runs past the end of the record (" +
               AsnOctetCount(holder->end - Offset()) + " left in it)";
      }
      break;
    case AsnHolder::kValue:
      what = "value runs past its enclosing value";
      break;
  }
  throw new AsnDecodeError(at, what);
}

void AsnBuf::ThrowInputEnds(std::size_t item, const std::string& what) const {
  if (m_open.FaultAtCut(item, End()) != kAsnNoEnd) ThrowRunsPast(item, Overrun::kItem);
  AsnThrowInputEnds(End(), what);
}
