#include "tn_platform/asn/asn_json_list_reader.h"

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_value_io.h"

AsnJsonListReader::AsnJsonListReader(AsnByteSource source, AsnJsonForm form, AsnType* (*createElement)(),
                                     std::string listTypeName)
    : m_window(std::move(source)), m_form(form), m_createElement(createElement), m_typeName(std::move(listTypeName)) {}

AsnJsonListReader::~AsnJsonListReader() = default;

void AsnJsonListReader::Throw(AsnDecodeError* error) {
  m_state = State::kDone;
  error->AddTypeName(m_typeName.c_str());
  throw error;
}

void AsnJsonListReader::Fail(const std::string& what) { Throw(new AsnDecodeError(m_window.Offset(), what)); }

// The next character, kEnd at the end of the text (a NUL octet is a character).
int AsnJsonListReader::PeekChar() {
  return m_window.Ensure(1) ? static_cast<unsigned char>(m_window.Available()[0]) : kEnd;
}

// Skips blanks; `lineBlanksOnly` stops at a line break.
void AsnJsonListReader::SkipBlanks(bool lineBlanksOnly) {
  for (int c = PeekChar(); c == ' ' || c == '\t' || c == '\r' || (c == '\n' && !lineBlanksOnly); c = PeekChar()) {
    m_window.Skip(1);
  }
}

void AsnJsonListReader::Finish() {
  SkipBlanks(false);
  if (PeekChar() != kEnd) Fail("content after the value");
  m_state = State::kDone;
}

// Moves to the next element; false when there is none.
bool AsnJsonListReader::StartElement() {
  if (m_state == State::kDone) return false;
  SkipBlanks(false);
  if (m_state == State::kStart) {
    if (PeekChar() == '[') {
      m_state = State::kArray;
      m_window.Skip(1);
      SkipBlanks(false);
      if (PeekChar() == ']') {
        m_window.Skip(1);
        Finish();
        return false;
      }
    } else {
      m_state = State::kLines;
    }
  }
  if (m_state == State::kLines && PeekChar() == kEnd) {
    m_state = State::kDone;
    return false;
  }
  return true;
}

// After an element: the end of its line, or ',' or ']'.
void AsnJsonListReader::EndElement() {
  ++m_index;
  if (m_state == State::kLines) {
    SkipBlanks(true);
    const int c = PeekChar();
    if (c != '\n' && c != kEnd) Fail("content after the value on its line");
    return;
  }
  SkipBlanks(false);
  const int c = PeekChar();
  if (c == ']') {
    m_window.Skip(1);
    Finish();
  } else if (c == ',') {
    m_window.Skip(1);
  } else if (c == kEnd) {
    Fail("the text ends inside the array");
  } else {
    Fail("expected ',' or ']' after an element");
  }
}

std::unique_ptr<AsnType> AsnJsonListReader::Next() {
  if (!StartElement()) return nullptr;
  for (;;) {
    const std::string_view available = m_window.Available();
    AsnJsonReader reader(available, m_form, m_window.Offset());
    std::unique_ptr<AsnType> element(m_createElement());
    try {
      reader.ReadValue(*element);
      // A value that reaches the end of what is read may go on (a number).
      if (reader.Offset() - m_window.Offset() == available.size() && !m_window.Ended() && m_window.Grow()) continue;
    } catch (AsnDecodeError* error) {
      // The element may go on in text not read yet: read more and start it again.
      if (reader.EndedEarly() && !m_window.Ended() && m_window.Grow()) {
        delete error;
        continue;
      }
      error->AddIndex(m_index);
      Throw(error);
    }
    m_window.Skip(reader.Offset() - m_window.Offset());
    EndElement();
    return element;
  }
}

bool AsnJsonListReader::NextEncoded(std::string& ber) {
  if (!StartElement()) return false;
  if (!m_transcoder) {
    const std::unique_ptr<AsnType> prototype(m_createElement());
    m_transcoder = std::make_unique<AsnJsonTranscoder>(*prototype, m_form);
  }
  for (;;) {
    const std::string_view available = m_window.Available();
    const std::size_t had = ber.size();
    const std::size_t used = m_transcoder->Transcode(available, ber);
    if (used > 0 && (used < available.size() || m_window.Ended())) {
      m_window.Skip(used);
      EndElement();
      return true;
    }
    ber.resize(had);
    // A value that reaches the end of what is read may go on: read more.
    if (used == 0 || !m_window.Grow()) break;
  }
  // The strict reader: what the fast path does not take, faults included,
  // and an element cut by the end of what is read.
  const std::unique_ptr<AsnType> element = Next();
  ber += AsnEncodeValue(*element);
  return true;
}
