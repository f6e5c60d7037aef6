// Our whole-value decode against asn1c's BER decoder (ber_decode taking the
// whole input, then asn_check_constraints) on the nine types of qcommon.asn.
// Both accepting must give the same DER; one side accepting alone must be
// explained by a form the BER walk (ber_walk.h) finds, which kAllowed lets
// that side accept, at the item our error points at when we refuse.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

constexpr std::size_t kDifferentialTypeCount = 9;

// The index of a type name (in the order of qcommon.asn), or
// kDifferentialTypeCount when it is none of them.
std::size_t DifferentialTypeIndex(std::string_view name);

struct DifferentialVerdict {
  // "accepted" (both, same DER), "refused" (both), the kind of an allowed
  // disagreement ("integer-not-minimal", ...), or "unexplained".
  std::string verdict;
  bool explained = false;
  std::string details;  // what each side said, for a report
};

DifferentialVerdict CompareDecoders(std::size_t typeIndex, std::string_view bytes);
