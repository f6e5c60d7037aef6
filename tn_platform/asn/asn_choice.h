// AsnChoice: a CHOICE. Its class is a record class (AsnRecord<R, AsnChoice>)
// whose members are the alternatives, each held like an optional member
// (refl::MayNullPointer) with its own tags; a value has exactly one present.
// It has no tag of its own: the alternative's is on the wire, and a tag on
// a CHOICE is EXPLICIT. An extensible CHOICE keeps an alternative it does not
// know as its whole encoding (Which() == kUnknown) and writes it back.
//
// A new value has no alternative: one is chosen (Choose, or the alternative's
// holder set with the others empty) before it is encoded; encoding a CHOICE
// with none throws a CSM_Exception*.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>

#include "tn_platform/asn/asn_sequence.h"

class AsnChoice : public AsnSequence {
 public:
  static constexpr std::size_t kNone = ~std::size_t{0};
  static constexpr std::size_t kUnknown = kNone - 1;

  // The index of the alternative present (in declaration order), kUnknown
  // for an unknown one kept as its encoding, or kNone.
  std::size_t Which() const;
  // Makes alternative `index` the only one present (a new default value of
  // its type unless it was present already) and returns it.
  AsnType& Choose(std::size_t index);
  // Decodes the alternative whose header was read last; the alternative
  // present before is gone.
  void DecodeAlternative(AsnBuf& buf, const AsnHeader& header);

 protected:
  AsnChoice() = default;
  AsnChoice(const AsnChoice&) = default;
  AsnChoice& operator=(const AsnChoice&) = default;
};

// Throws the CSM_Exception* for encoding `choice`, which has no alternative.
[[noreturn]] void AsnThrowNoAlternative(const AsnChoice& choice);
#pragma GCC visibility pop
