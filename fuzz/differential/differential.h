// Our whole-value decode against asn1c's BER decoder, on the nine types of
// qcommon.asn, and the verdict on one input.
//
// asn1c accepts an input when ber_decode consumes all of it and the value
// passes asn_check_constraints. When both accept, both DER encodings must be
// the same octets. When only one side accepts, the independent BER walk
// (ber_walk.h) must find a form in the input that a line of the allowed
// verdicts (allowed_verdicts.txt) lets that side accept; when we are the side
// that refuses, the item with that form must be the one our error points at.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

constexpr std::size_t kDifferentialTypeCount = 9;

// The type names, in the order of qcommon.asn; an input's first octet picks
// one (modulo the count).
const char* DifferentialTypeName(std::size_t index);
// The index of a type name, or kDifferentialTypeCount when it is none of them.
std::size_t DifferentialTypeIndex(std::string_view name);

struct DifferentialVerdict {
  // "accepted" (both, same DER), "refused" (both), the kind of an allowed
  // disagreement ("integer-not-minimal", ...), or "unexplained".
  std::string verdict;
  bool explained = false;
  std::string details;  // what each side said, for a report
};

DifferentialVerdict CompareDecoders(std::size_t typeIndex, std::string_view bytes);
