// AsnDecodeError: what the runtime throws, by pointer to a heap object, for
// input it cannot decode. It carries where the fault is as data:
//
//   Offset()  the offset of the first octet of the item at fault (the
//             tag-length-value whose tag, length or content is wrong; an
//             item that runs past the end of the value holding it is at
//             fault itself), or, when the input ends before the values
//             that hold it do, the end of the input (InputEnds()). Offsets
//             count from the start of the input given to AsnDecodeValue /
//             AsnDecodeFront, so they are the ones a structure dump of that
//             input shows for the item, or where it says the bytes break.
//   Path()    where the item sits in the value: the outermost type name,
//             then ".member" per record member and "[index]" (from 0) per
//             list element: "QAsnErrInfoReturn.errInfoList[1].objID[0]".
//   What()    what is wrong, in words ("wrong tag [UNIVERSAL 4] primitive
//             (OCTET STRING), expected [UNIVERSAL 2] primitive (INTEGER)").
//
// Message() and what() read "PATH: WHAT at offset N" ("WHAT at offset N"
// while the path is empty). The error code is kAsnDecodeError (-54).
//
// The path grows as the error unwinds: the innermost codec throws with the
// fault alone, each record adds its member, each list its element index and
// the whole-value decode the type name. Every error is thrown placed: a
// codec decoding content places it at the item whose tag the buffer read last
// (AsnBuf::ItemStart()). Nothing of this is formatted unless an error is
// thrown.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <string>

#include "tn_platform/asn/csm_exception.h"

class AsnDecodeError : public CSM_Exception {
 public:
  // `inputEnds`: the error is about the input ending (see InputEnds()).
  AsnDecodeError(std::size_t offset, std::string what, bool inputEnds = false);

  std::size_t Offset() const { return m_offset; }
  const std::string& Path() const { return m_path; }
  const std::string& What() const { return m_what; }

  // True for an input that ends before the values that hold the fault do.
  bool InputEnds() const { return m_inputEnds; }

  // Adds, in front of the path, ".name" (a record member), "[index]" (a list
  // element) or the type name of the outermost value.
  void AddMember(const char* name);
  void AddIndex(unsigned long index);
  void AddTypeName(const char* name);
  // Counts the offset from `base` octets earlier (a value inside a larger
  // input, such as one record of a capture).
  void MoveBy(std::size_t base);

 private:
  void Compose();

  std::size_t m_offset;
  std::string m_path;
  std::string m_what;
  bool m_inputEnds = false;
};

// "1 octet", "2 octets": counts in messages.
std::string AsnOctetCount(std::size_t count);

// Throws a new AsnDecodeError about the item starting at `offset`.
[[noreturn]] void AsnThrowDecodeError(std::size_t offset, const std::string& what);
// Throws a new AsnDecodeError about an input that ends, placed at its end,
// `inputEnd` (AsnBuf::End()).
[[noreturn]] void AsnThrowInputEnds(std::size_t inputEnd, const std::string& what);
#pragma GCC visibility pop
