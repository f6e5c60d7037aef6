// AsnType: the root of every ASN.1 value class.
//
// Virtual slots, in this order: 0 destructor, 1 deleting destructor, 2 Clone,
// 3 BDec, 4 BEnc, 5 Print, 6 typeName. Derived classes add theirs after these.
//
// Every value class derives from AsnType alone (single, non-virtual
// inheritance), so the address of an object is also the address of its
// AsnType part. The generic record codec relies on this when it reaches a
// member through the reflection library's untyped pointers.
#pragma once
#pragma GCC visibility push(default)

#include <ostream>

#include "tn_platform/asn/asn_buf.h"

class AsnType {
 public:
  virtual ~AsnType() = default;
  // A new copy of this value, owned by the caller.
  virtual AsnType* Clone() const = 0;
  // Decodes a complete encoding (tag, length, content) of this value from
  // `buf`, adding the octets read to `bytesDecoded`. Throws CSM_Exception*.
  virtual void BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum format) = 0;
  // Encodes this value in front of what `buf` holds; returns the octets written.
  virtual unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum format) = 0;
  // Writes the value in readable value notation at indentation `level`;
  // `lineBreak` asks for a line break before it.
  virtual void Print(std::ostream& os, unsigned long level, bool lineBreak) const = 0;
  virtual const char* typeName() const = 0;

 protected:
  AsnType() = default;
  AsnType(const AsnType&) = default;
  AsnType& operator=(const AsnType&) = default;
};
#pragma GCC visibility pop
