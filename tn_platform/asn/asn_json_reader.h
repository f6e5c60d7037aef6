// The one reader of JSON text of ASN.1 values, in either form of
// asn_json_form.h, driven by the records' member plans and the lists' element
// types: no document tree, one pass over the text. What it reads goes to one
// of two places: into a value (AsnReadJson), or straight to BER octets
// through the encoder's tag, length and content writers (AsnJsonToBer), with
// the same refusals in the same words either way.
//
// Refused, with an AsnDecodeError* (see asn_decode_error.h) whose path names
// the member ("QAsnErrInfoReturn.errInfoList[1].objID[0]") and whose offset is
// the octet of the text where the fault is:
//   - an empty text, a text that starts with a UTF-8 byte-order mark, a text
//     that ends inside the value ("the text ends inside the value");
//   - malformed JSON, invalid UTF-8 in a string, a lone surrogate escape;
//   - a JSON value of the wrong kind for the member;
//   - an unknown member, a member given twice, a missing mandatory member;
//   - an integer with a fraction or exponent, or outside the member's range
//     (32 bits for AsnTinyInt, 64 for AsnInt; read exactly, never as double);
//   - in JER: null, an odd number of hex digits, a character that is no hex
//     digit; in the readable form: a {"hex": ...} object with anything else;
//   - a value whose BER would nest constructed values deeper than
//     AsnDecodeLimits::kMaxDepth (asn_buf.h), as the BER decoder refuses it:
//     explicit tags, records, lists and the insides of open values count, a
//     CHOICE without a tag does not, whatever the JSON's own nesting. So a
//     value one form accepts every form reads back, and a deep hostile text
//     (1,000,000 nested `not` alternatives of LDAP's Filter) is refused at
//     its 33rd level without running the stack out.
// Keys of an object may come in any order.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <string>
#include <string_view>

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_json_form.h"
#include "tn_platform/asn/asn_type.h"

// What a reader refusing ambiguous octets (RefuseAmbiguousOctets) throws
// about an OCTET STRING written as a non-empty string: the first place where
// JER and the readable form read other octets.
class AsnJsonAmbiguity : public AsnDecodeError {
 public:
  using AsnDecodeError::AsnDecodeError;
};

// Reads `text`, exactly one JSON value with nothing but blanks around it,
// into `value`, a new default value (a list's elements are appended). The
// error path starts with the value's type name.
void AsnReadJson(AsnType& value, std::string_view text, AsnJsonForm form);

// The BER encoding of the JSON text of one value of the type of
// `prototype`, a new default value (left as it is), written as the text is
// read, without building the value (a record whose members come out of
// declaration order is read into a copy of `prototype` first). Throws as
// AsnReadJson.
std::string AsnJsonToBer(const AsnType& prototype, std::string_view text, AsnJsonForm form);

// The same into `ber`, replacing what it held but keeping its memory. Once a
// type has been read once, a string kept across calls makes the conversion
// of text whose members come in declaration order allocation-free.
void AsnJsonToBerInto(const AsnType& prototype, std::string_view text, AsnJsonForm form, std::string& ber);

// The same for a text whose form is not given: in the form it is in, judged
// from the whole text (asn_json_either_form.h); returns that form. Throws as
// AsnJsonToBerInto, and an AsnJsonAmbiguity when both forms read the text to
// different octets.
AsnJsonForm AsnJsonToBerEitherForm(const AsnType& prototype, std::string_view text, std::string& ber);

// The reader itself, for readers of several values from one text (an array
// read element by element, JSON Lines).
class AsnJsonReader {
 public:
  // Reads `text`; error offsets count from `base`, the text's place in a
  // larger input.
  AsnJsonReader(std::string_view text, AsnJsonForm form, std::size_t base = 0);

  // Reads one JSON value at the current place into `value` (as AsnReadJson;
  // the error path is left for the caller to start).
  void ReadValue(AsnType& value);
  // Reads one JSON value at the current place, a value of the type of
  // `prototype` (a new default value, left as it is), and appends its BER
  // encoding to `ber`; on an error `ber` is as it was.
  void ReadEncoded(const AsnType& prototype, std::string& ber);
  // In JER, refuses every OCTET STRING written as a non-empty string with an
  // AsnJsonAmbiguity (AsnChooseJsonForm finds where two readings part).
  void RefuseAmbiguousOctets() { m_refuseAmbiguous = true; }
  // The values read sit inside `levels` constructed values (a streamed
  // list's elements inside the list), which count against the nesting limit.
  void SetLevelsAround(unsigned levels) { m_levelsAround = levels; }
  // Skips blanks; the next character, or '\0' when the text is used up.
  char Peek();
  // Where the reader is, counted from the base.
  std::size_t Offset() const { return m_base + static_cast<std::size_t>(m_at - m_begin); }
  // Throws an AsnDecodeError about the current place.
  [[noreturn]] void Fail(const std::string& what);
  // True when the last error came from the text ending before the value did
  // (more text might have completed it).
  bool EndedEarly() const { return m_endedEarly; }

 private:
  template <class Sink>
  friend class AsnJsonGrammar;

  const char* m_begin;
  const char* m_at;
  const char* m_end;
  std::size_t m_base;
  bool m_jer;
  bool m_refuseAmbiguous = false;
  bool m_endedEarly = false;
  unsigned m_levelsAround = 0;
  std::string m_scratch;  // a string's content with escapes decoded, reused
  std::string m_key;      // a key with escapes, decoded
};
#pragma GCC visibility pop
