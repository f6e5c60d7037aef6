// Whole-value encoding and decoding: the entry points the tool and the tests
// use. They never leave the buffer's read-error flag unread.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <string>
#include <string_view>

#include "tn_platform/asn/asn_type.h"

// Decodes exactly one complete value from `bytes`. Throws AsnDecodeError* (a
// CSM_Exception, see asn_decode_error.h) on a malformed encoding, when the
// input ends early, when the value's content does not take exactly the octets
// its definite length states (a list's elements running past it), or when
// octets are left over. The error's path starts with the value's type name;
// its offset counts from the start of `bytes`.
void AsnDecodeValue(AsnType& value, std::string_view bytes);

// Decodes one complete value from the front of `bytes` and returns how many
// octets it took (for inputs that hold several values one after another).
// Throws as AsnDecodeValue (octets after the value are not its concern).
std::size_t AsnDecodeFront(AsnType& value, std::string_view bytes);

// The BER encoding of `value`.
std::string AsnEncodeValue(AsnType& value);

// Encodes `value` into `buf`, replacing what the buffer held but keeping its
// memory, and returns the bytes (valid until `buf` is next written). A buffer
// kept across calls, or sized up front with AsnBuf(capacity), makes encoding
// allocation-free.
std::string_view AsnEncodeInto(AsnType& value, AsnBuf& buf);
#pragma GCC visibility pop
