// A value for the kinds whose new value is no value of the type: an OBJECT
// IDENTIFIER without arcs, an empty time, an open value without an
// encoding. Skeletons that must encode (a type's JSON template) take it.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_primitive.h"

// Gives `value` a sample value when its kind needs one; other kinds keep theirs.
void AsnGiveSampleValue(AsnPrimitive& value);
#pragma GCC visibility pop
