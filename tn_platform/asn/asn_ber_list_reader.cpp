#include "tn_platform/asn/asn_ber_list_reader.h"

#include <algorithm>

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/ber.h"

namespace {

// Octets enough for any header the decoder accepts: a five-octet tag and a
// length of one plus AsnDecodeLimits::kMaxLengthOctets octets, and then some.
constexpr std::size_t kHeaderRoom = 16;
// Octets kept past an element's end, so that a length inside it that runs
// past the element meets the same checks as in a whole-value decode.
constexpr std::size_t kLookAhead = 4096;

}  // namespace

AsnBerListReader::AsnBerListReader(AsnByteSource source, AsnType* (*createElement)(), std::string listTypeName,
                                   AsnTag listTag)
    : m_window(std::make_unique<AsnSourceWindow>(std::move(source))),
      m_element(createElement()),
      m_typeName(std::move(listTypeName)),
      m_listTag(listTag) {}

AsnBerListReader::~AsnBerListReader() = default;

std::size_t AsnBerListReader::Offset() const { return m_window->Offset(); }

void AsnBerListReader::Throw(AsnDecodeError* error) {
  m_state = State::kDone;
  error->AddTypeName(m_typeName.c_str());
  throw error;
}

void AsnBerListReader::ReadHeader() {
  m_window->Ensure(kHeaderRoom);
  const std::string_view available = m_window->Available();
  AsnBuf buf(reinterpret_cast<const unsigned char*>(available.data()), available.size());
  unsigned long octets = 0;
  AsnHeader header;
  try {
    header = BDecHeader(
        buf, octets, [this](AsnTag tag) { return tag == m_listTag; }, AsnLengthCheck::kPrimitiveOnly);
    if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, m_listTag, buf);
  } catch (AsnDecodeError* error) {
    Throw(error);
  }
  m_headerStart = m_window->Offset();
  m_window->Skip(buf.Offset());
  m_indefinite = header.length == kIndefiniteLength;
  m_length = header.length;
  m_state = State::kElements;
}

AsnType* AsnBerListReader::Next() {
  if (m_state == State::kStart) ReadHeader();
  if (m_state == State::kDone) return nullptr;
  if (m_indefinite) {
    // End-of-contents (or the input ending before it) is read as the whole
    // list reads it, from a view of the window's next two octets.
    m_window->Ensure(2);
    const std::string_view next = m_window->Available().substr(0, 2);
    if (next.empty() || next[0] == '\0') {
      AsnBuf eoc(reinterpret_cast<const unsigned char*>(next.data()), next.size());
      unsigned long octets = 0;
      try {
        BDecEoc(eoc, octets);
      } catch (AsnDecodeError* error) {
        error->MoveBy(m_window->Offset());
        Throw(error);
      }
      m_window->Skip(2);
      Finish();
      return nullptr;
    }
  } else if (m_consumed >= m_length) {
    Finish();
    return nullptr;
  } else if (!m_window->Ensure(1)) {
    Throw(new AsnDecodeError(m_window->Offset(),
                             "input ends " + AsnOctetCount(m_length - m_consumed) + " short of the value", true));
  }
  return DecodeElement();
}

AsnType* AsnBerListReader::DecodeElement() {
  const std::size_t elementStart = m_window->Offset();
  // Load the whole element by its header; an indefinite one grows the window
  // until it decodes or the input ends.
  m_window->Ensure(kHeaderRoom);
  bool loaded = false;  // the element's definite extent is in the window
  {
    const std::string_view available = m_window->Available();
    AsnBuf peek(reinterpret_cast<const unsigned char*>(available.data()), available.size());
    unsigned long octets = 0;
    try {
      const AsnHeader header = BDecHeader(peek, octets, [](AsnTag) { return true; }, AsnLengthCheck::kPrimitiveOnly);
      if (header.status == AsnHeader::kComplete && header.length != kIndefiniteLength) {
        const std::size_t extent = std::min<std::size_t>(peek.Offset() + header.length, ~std::size_t{0} - kLookAhead);
        m_window->Ensure(extent + kLookAhead);
        loaded = m_window->Available().size() >= extent || m_window->Ended();
      }
    } catch (AsnDecodeError* error) {
      delete error;  // the element's decode below reports it
    }
  }
  for (;;) {
    const std::string_view available = m_window->Available();
    AsnBuf buf(reinterpret_cast<const unsigned char*>(available.data()), available.size());
    if (m_acceptViolations) buf.AcceptConstraintViolations();
    unsigned long octets = 0;
    try {
      // The element sits inside the list, which is open around it as in a
      // whole-value decode: an element running past it is refused there.
      const AsnOpenValueGuard list(buf, 0, AsnHolder::kList, m_indefinite ? kIndefiniteLength : m_length,
                                   m_length - m_consumed);
      m_element->BDec(buf, octets, NIClass_BER);
      if (buf.ReadError()) AsnThrowInputEnds(buf.End(), "input ends in the length");  // a list element's
    } catch (AsnDecodeError* error) {
      // The element may go on past the window, and an error about the input
      // ending must see where it really ends: read more and decode again.
      if ((!loaded || error->InputEnds()) && !m_window->Ended() && m_window->Grow()) {
        delete error;
        continue;
      }
      error->MoveBy(elementStart);
      error->AddIndex(m_index);
      Throw(error);
    } catch (CSM_Exception* error) {
      const std::string what = error->Message();
      delete error;
      auto* located = new AsnDecodeError(elementStart, what);
      located->AddIndex(m_index);
      Throw(located);
    }
    m_window->Skip(buf.Offset());
    m_consumed += buf.Offset();
    ++m_index;
    return m_element.get();
  }
}

void AsnBerListReader::Finish() {
  m_state = State::kDone;
  const std::size_t used = m_window->Offset();
  std::size_t left = m_window->Available().size();
  m_window->Skip(left);
  while (m_window->Grow()) {  // counted, not kept
    left += m_window->Available().size();
    m_window->Skip(m_window->Available().size());
  }
  if (left > 0) Throw(new AsnDecodeError(used, AsnOctetCount(left) + " left over after the value"));
}
