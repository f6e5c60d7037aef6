// Whole-value encoding and decoding: the entry points the tool and the tests
// use. They never leave the buffer's read-error flag unread.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tn_platform/asn/asn_constraint_check.h"
#include "tn_platform/asn/asn_type.h"

// What one whole-value decode may build. Without a budget a decode takes at
// most 23 bytes of heap per input octet plus 4 KiB at its peak, accepted or
// refused (the README's "Memory" says how that is measured); nearly all of
// it is list elements, each a whole value in memory for as few as 3 octets
// of input. A service that wants a tighter cap gives a budget: a decode that
// would make more list elements (of every list in the value together, nested
// ones included) is refused with an AsnDecodeError about the first element
// too many ("more than N list elements, the decode's budget"); the elements
// made so far go with the value or with its next decode.
//
// A member value outside its constraint (asn_constraint_check.h) is refused
// like any other fault, unless `violations` is given: the decode then
// accepts such values and lists each there (path and message), in order.
struct AsnDecodeBudget {
  static constexpr std::size_t kUnlimited = ~std::size_t{0};
  std::size_t maxListElements = kUnlimited;
  std::vector<AsnConstraintViolation>* violations = nullptr;
};

// Decodes exactly one complete value from `bytes`. Throws AsnDecodeError* (a
// CSM_Exception, see asn_decode_error.h) on a malformed encoding, when the
// input ends early, when the value's content does not take exactly the octets
// its definite length states (a list's elements running past it), or when
// octets are left over. The error's path starts with the value's type name;
// its offset counts from the start of `bytes`.
void AsnDecodeValue(AsnType& value, std::string_view bytes);
void AsnDecodeValue(AsnType& value, std::string_view bytes, const AsnDecodeBudget& budget);

// Decodes one complete value from the front of `bytes` and returns how many
// octets it took (for inputs that hold several values one after another).
// Throws as AsnDecodeValue (octets after the value are not its concern).
std::size_t AsnDecodeFront(AsnType& value, std::string_view bytes);
std::size_t AsnDecodeFront(AsnType& value, std::string_view bytes, const AsnDecodeBudget& budget);

// The BER encoding of `value`, which stays as it was.
std::string AsnEncodeValue(const AsnType& value);

// Encodes `value` into `buf`, replacing what the buffer held but keeping its
// memory, and returns the bytes (valid until `buf` is next written). A buffer
// kept across calls, or sized up front with AsnBuf(capacity), makes encoding
// allocation-free.
std::string_view AsnEncodeInto(const AsnType& value, AsnBuf& buf);
#pragma GCC visibility pop
