// What kind of value an AsnType is, for generic code that meets values
// outside a member plan (a list's elements, a top-level value).
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/asn_type.h"

// The kind of `value`. Throws CSM_Exception* for a value class the runtime
// does not know.
AsnMemberKind AsnKindOf(const AsnType& value);
#pragma GCC visibility pop
