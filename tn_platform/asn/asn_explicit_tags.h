// Reading a value through its tags (asn_tagging.h): the EXPLICIT ones around
// it, each holding exactly one value, down to the value's own tag, whose
// header is handed to the value's decoder. Members, alternatives, list
// elements and whole values with explicit tags all read through here.
#pragma once
#pragma GCC visibility push(default)

#include <type_traits>

#include "tn_platform/asn/asn_tagging.h"
#include "tn_platform/asn/ber.h"

// Decodes the content of a value whose own header was read (its tag one the
// value takes, its length); errors are placed at the header's start.
using AsnContentDecoder = void (*)(void* context, AsnBuf& buf, const AsnHeader& header);

// The explicit tag `chain.tags[level - 1]` was read with content `length`:
// reads what it holds, `chain.tags[level]` onwards, and hands the value's own
// header to `decode`. `eitherForm`: the value's own tag is also taken in the
// constructed form. A headerless own tag takes any tag (an open value any
// but end-of-contents; a CHOICE's decoder judges it).
void AsnDecodeInsideExplicit(AsnBuf& buf, const AsnTagChain& chain, bool eitherForm, unsigned level,
                             unsigned long length, AsnContentDecoder decode, void* context);

// Decodes one whole value under `chain` from the front of `buf`, as a
// record's or list's own BDec does, adding the octets read to `bytesDecoded`.
void AsnDecodeUnderTags(AsnBuf& buf, const AsnTagChain& chain, bool eitherForm, unsigned long& bytesDecoded,
                        AsnContentDecoder decode, void* context);

// Both with a callable `decode(buf, header)`.
template <class Decode>
void AsnDecodeInsideExplicit(AsnBuf& buf, const AsnTagChain& chain, bool eitherForm, unsigned long length,
                             Decode&& decode) {
  using Callable = std::remove_reference_t<Decode>;
  AsnDecodeInsideExplicit(
      buf, chain, eitherForm, 1, length,
      [](void* context, AsnBuf& in, const AsnHeader& header) { (*static_cast<Callable*>(context))(in, header); },
      &decode);
}
template <class Decode>
void AsnDecodeUnderTags(AsnBuf& buf, const AsnTagChain& chain, bool eitherForm, unsigned long& bytesDecoded,
                        Decode&& decode) {
  using Callable = std::remove_reference_t<Decode>;
  AsnDecodeUnderTags(
      buf, chain, eitherForm, bytesDecoded,
      [](void* context, AsnBuf& in, const AsnHeader& header) { (*static_cast<Callable*>(context))(in, header); },
      &decode);
}
#pragma GCC visibility pop
