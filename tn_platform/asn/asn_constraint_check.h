// Constraint checks on values (AsnBounds on record members, asn_bounds.h).
// Decoding refuses a member value outside its bounds with an AsnDecodeError
// placed at the member, as any other fault; reading JSON refuses it at the
// member's JSON value; encoding refuses it with a CSM_Exception naming the
// record and member. A decode may instead accept violations and report them
// (AsnDecodeBudget::violations, asn_value_io.h): real data is not always clean.
// Extensible constraints, permitted alphabets and the constraint forms the
// record compiler does not turn into bounds are not checked.
#pragma once
#pragma GCC visibility push(default)

#include <functional>
#include <string>
#include <vector>

#include "tn_platform/asn/asn_bounds.h"
#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/asn_type.h"

// "" when `value`, of `kind`, keeps `bounds`; else the violation's words.
std::string AsnBoundsViolation(const AsnBounds& bounds, AsnMemberKind kind, const AsnType& value);

// One value outside its constraint: where ("Limits.ports[2].number") and what.
struct AsnConstraintViolation {
  std::string path;
  std::string message;
};

// Every member value of `value` (nested ones too) outside its bounds, in
// the order a depth-first walk meets them; the paths start with the type name.
std::vector<AsnConstraintViolation> AsnFindConstraintViolations(const AsnType& value);

// Brings a member value of `kind` within `bounds` when it is not: an INTEGER
// to the nearest bound, a size to the nearest bound by cutting the end off or
// adding zero octets, spaces, 0 bits, or list elements that `fillElement`
// gives a value (a list too long is made anew). For programs that make
// sample values.
using AsnElementFiller = std::function<void(AsnType& element)>;
void AsnFitToBounds(const AsnBounds& bounds, AsnMemberKind kind, AsnType& value,
                    const AsnElementFiller& fillElement);
// The same for a member with bounds of its own (AsnMemberStep::bounds).
inline void AsnFitToBounds(const AsnMemberStep& step, AsnType& value, const AsnElementFiller& fillElement) {
  if (step.bounds.Active()) AsnFitToBounds(step.bounds, step.kind, value, fillElement);
}

// Throws the CSM_Exception* that refuses to encode `record`'s `member`.
[[noreturn]] void AsnThrowEncodeViolation(const char* record, const char* member, const std::string& violation);
#pragma GCC visibility pop
