#include "tn_platform/asn/asn_json_list_reader.h"

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/ber.h"

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
    if (m_window.Ensure(3) && m_window.Available().substr(0, 3) == "\xEF\xBB\xBF") {
      Fail("JSON text starts with a byte-order mark (save it as UTF-8 without one)");
    }
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

// Reads one element at the current place with `readOne(reader)`, which
// undoes what it did when it throws; reads more of the text and starts the
// element again when it may go on beyond what is read.
template <class ReadOne>
void AsnJsonListReader::ReadElement(ReadOne&& readOne) {
  for (;;) {
    const std::string_view available = m_window.Available();
    AsnJsonReader reader(available, m_form, m_window.Offset());
    if (m_refuseAmbiguous) reader.RefuseAmbiguousOctets();
    reader.SetLevelsAround(m_levelsAround);
    try {
      readOne(reader, false);
      // A value that reaches the end of what is read may go on (a number).
      if (reader.Offset() - m_window.Offset() == available.size() && !m_window.Ended() && m_window.Grow()) {
        readOne(reader, true);
        continue;
      }
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
    return;
  }
}

std::unique_ptr<AsnType> AsnJsonListReader::Next() {
  if (!StartElement()) return nullptr;
  std::unique_ptr<AsnType> element;
  ReadElement([&](AsnJsonReader& reader, bool undo) {
    element.reset(undo ? nullptr : m_createElement());
    if (!undo) reader.ReadValue(*element);
  });
  return element;
}

bool AsnJsonListReader::NextEncoded(std::string& ber) {
  if (!StartElement()) return false;
  if (!m_prototype) m_prototype.reset(m_createElement());
  const std::size_t had = ber.size();
  ReadElement([&](AsnJsonReader& reader, bool undo) {
    if (undo) {
      ber.resize(had);
    } else {
      reader.ReadEncoded(*m_prototype, ber);
    }
  });
  return true;
}

std::string AsnEncodedListHeader(unsigned long contentLength, AsnTag tag) {
  unsigned char header[16];
  const unsigned char* const end = AsnWriteHeader(header, tag, contentLength);
  return std::string(reinterpret_cast<const char*>(header), static_cast<std::size_t>(end - header));
}
