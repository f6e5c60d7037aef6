// A strict reader of JSON text into ASN.1 values, in either form of
// asn_json_form.h, driven by the records' member plans and the lists' element
// access: no document tree, one pass over the text.
//
// Refused, with an AsnDecodeError* (see asn_decode_error.h) whose path names
// the member ("QAsnErrInfoReturn.errInfoList[1].objID[0]") and whose offset is
// the octet of the text where the fault is:
//   - malformed JSON, invalid UTF-8 in a string, a lone surrogate escape;
//   - a JSON value of the wrong kind for the member;
//   - an unknown member, a member given twice, a missing mandatory member;
//   - an integer with a fraction or exponent, or outside the member's range
//     (32 bits for AsnTinyInt, 64 for AsnInt; read exactly, never as double);
//   - in JER: null, an odd number of hex digits, a character that is no hex
//     digit; in the readable form: a {"hex": ...} object with anything else.
// Keys of an object may come in any order.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <string>
#include <string_view>

#include "tn_platform/asn/asn_json_form.h"
#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/asn_type.h"

class AsnListBase;
class AsnOcts;
class AsnSequence;

// Reads `text`, exactly one JSON value with nothing but blanks around it,
// into `value`, a new default value (a list's elements are appended). The
// error path starts with the value's type name.
void AsnReadJson(AsnType& value, std::string_view text, AsnJsonForm form);

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
  // Skips blanks; the next character, or '\0' when the text is used up.
  char Peek();
  // Skips blanks and consumes `expected` (one of "[],"), else throws "expected
  // `what`".
  void Consume(char expected, const char* what);
  // Where the reader is, counted from the base.
  std::size_t Offset() const { return m_base + static_cast<std::size_t>(m_at - m_begin); }
  // Throws an AsnDecodeError about the current place.
  [[noreturn]] void Fail(const std::string& what);
  // True when the last error came from the text ending before the value did
  // (more text might have completed it).
  bool EndedEarly() const { return m_endedEarly; }

 private:
  void Read(AsnMemberKind kind, AsnType& value);
  void ReadRecord(AsnSequence& record);
  void ReadList(AsnListBase& list);
  void ReadOcts(AsnOcts& octets);
  long long ReadInteger(long long min, long long max);
  bool ReadBool();
  void ReadHexString(std::string& octets);
  void ReadString(std::string& text);
  std::string_view ReadKey();
  void SkipValue(unsigned depth);
  void SkipBlanks();
  void ExpectLiteral(const char* literal);
  std::string FoundText();
  [[noreturn]] void FailAt(const char* at, const std::string& what);
  [[noreturn]] void FailExpected(const char* expected);

  const char* m_begin;
  const char* m_at;
  const char* m_end;
  std::size_t m_base;
  bool m_jer;
  bool m_endedEarly = false;
  unsigned m_depth = 0;
  std::string m_scratch;  // a string's content, reused
  std::string m_key;      // a key with escapes, decoded
};
#pragma GCC visibility pop
