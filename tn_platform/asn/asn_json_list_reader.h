// Reads the elements of a list from JSON text one at a time, without holding
// the whole text or the whole list: a JSON array of elements, or JSON Lines
// (one element per line, blank lines skipped). Memory stays bounded by the
// largest element. The text is an array when its first character other than
// a blank is '['.
//
// Errors are the strict reader's (asn_json_reader.h), their path starting
// with "<list type>[index]" and their offset counted from the start of the
// text. A text that starts with a UTF-8 byte-order mark is refused; an empty
// one holds no element.
#pragma once
#pragma GCC visibility push(default)

#include <memory>
#include <string>

#include "tn_platform/asn/asn_byte_source.h"
#include "tn_platform/asn/asn_json_form.h"
#include "tn_platform/asn/asn_type.h"
#include "tn_platform/asn/ber.h"

class AsnJsonListReader {
 public:
  // `createElement` makes a new default element; `listTypeName` starts the
  // path of errors.
  AsnJsonListReader(AsnByteSource source, AsnJsonForm form, AsnType* (*createElement)(), std::string listTypeName);
  ~AsnJsonListReader();
  AsnJsonListReader(const AsnJsonListReader&) = delete;
  AsnJsonListReader& operator=(const AsnJsonListReader&) = delete;

  // The next element; null after the last one, once the rest of the text is
  // checked to be blank. Throws AsnDecodeError*.
  std::unique_ptr<AsnType> Next();
  // The next element's BER encoding, appended to `ber`, written as the text
  // is read (AsnJsonReader::ReadEncoded). False after the last one. Throws as
  // Next(), leaving `ber` as it was.
  bool NextEncoded(std::string& ber);
  // Refuses ambiguous octets as AsnJsonReader::RefuseAmbiguousOctets does.
  void RefuseAmbiguousOctets() { m_refuseAmbiguous = true; }
  // The values are a list's elements, not whole values one after another:
  // the list's level counts against the nesting limit, as in its BER.
  void ReadInsideList() { m_levelsAround = 1; }
  // Elements returned so far.
  unsigned long Count() const { return m_index; }

 private:
  template <class ReadOne>
  void ReadElement(ReadOne&& readOne);
  bool StartElement();
  void EndElement();
  static constexpr int kEnd = -1;
  int PeekChar();
  void SkipBlanks(bool lineBlanksOnly);
  void Finish();
  [[noreturn]] void Throw(AsnDecodeError* error);
  [[noreturn]] void Fail(const std::string& what);

  AsnSourceWindow m_window;
  AsnJsonForm m_form;
  bool m_refuseAmbiguous = false;
  unsigned m_levelsAround = 0;
  AsnType* (*m_createElement)();
  std::string m_typeName;
  std::unique_ptr<AsnType> m_prototype;  // an element, for NextEncoded
  enum class State { kStart, kArray, kLines, kDone } m_state = State::kStart;
  unsigned long m_index = 0;
};

// The identifier and length octets that make `contentLength` octets of
// encoded elements (NextEncoded's, one after another) the encoding of a list
// whose own tag is `tag` (a SEQUENCE OF's unless tags are written on it).
std::string AsnEncodedListHeader(unsigned long contentLength, AsnTag tag = kTagSequence);
#pragma GCC visibility pop
