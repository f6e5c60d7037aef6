// Reads an encoded SEQUENCE OF or SET OF one element at a time, without building the
// list: memory stays bounded by the largest element, whatever the list's
// length. For services that process long lists as they arrive, and for the
// tool's streaming decode.
//
// It refuses exactly what decoding the whole list with AsnDecodeValue refuses
// (a wrong outer tag, an element that fails, elements running past the list's
// length or the input ending short, octets left over), with the same
// AsnDecodeError: path "<list type>[index]..." and offsets counted from the
// start of the input.
#pragma once
#pragma GCC visibility push(default)

#include <memory>
#include <string>

#include "tn_platform/asn/asn_byte_source.h"
#include "tn_platform/asn/asn_type.h"
#include "tn_platform/asn/ber.h"

class AsnBerListReader {
 public:
  // `createElement` makes a new default element (a catalogue entry's
  // createElement); `listTypeName` starts the path of errors; `listTag` is
  // the list's own tag (a list type with EXPLICIT tags is not read here).
  AsnBerListReader(AsnByteSource source, AsnType* (*createElement)(), std::string listTypeName,
                   AsnTag listTag = kTagSequence);
  ~AsnBerListReader();
  AsnBerListReader(const AsnBerListReader&) = delete;
  AsnBerListReader& operator=(const AsnBerListReader&) = delete;

  // The next element, decoded into the reader's one element value (valid,
  // and the caller's to change, until the next call); null after the last
  // one, once the list's end and the end of the input are checked. Throws
  // AsnDecodeError*.
  AsnType* Next();
  // Takes element values outside their constraints instead of refusing
  // them; the caller lists them (AsnFindConstraintViolations).
  void AcceptConstraintViolations() { m_acceptViolations = true; }
  // Elements returned so far.
  unsigned long Count() const { return m_index; }
  // Octets of the input consumed so far.
  std::size_t Offset() const;

 private:
  void ReadHeader();
  AsnType* DecodeElement();
  void Finish();
  [[noreturn]] void Throw(AsnDecodeError* error);

  std::unique_ptr<AsnSourceWindow> m_window;
  std::unique_ptr<AsnType> m_element;  // decoding replaces its content: one serves every element
  std::string m_typeName;
  AsnTag m_listTag;
  enum class State { kStart, kElements, kDone } m_state = State::kStart;
  bool m_indefinite = false;
  bool m_acceptViolations = false;
  unsigned long m_length = 0;    // the content length, when definite
  unsigned long m_consumed = 0;  // content octets decoded so far
  unsigned long m_index = 0;
  std::size_t m_headerStart = 0;
};

// Calls `visit(element, index)` for each element of the SEQUENCE OF encoded in
// `bytes`, each decoded in turn into one element made by `createElement`.
// Throws as AsnBerListReader.
template <class Visitor>
void AsnVisitEncodedList(std::string_view bytes, AsnType* (*createElement)(), const std::string& listTypeName,
                         Visitor&& visit) {
  AsnBerListReader reader(AsnBytesSource(bytes), createElement, listTypeName);
  while (AsnType* element = reader.Next()) visit(*element, reader.Count() - 1);
}
#pragma GCC visibility pop
