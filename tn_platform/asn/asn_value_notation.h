// Values in ASN.1 value notation, as a value assignment takes them, so that a
// printed value can be pasted after "name Type ::=":
//
//   {
//     strFDN '4E453D31'H /* "NE=1" */,
//     strMOC ''H,
//     neID 1001,
//     poSerialNum '00FF'H
//   }
//
// A record is { member value, ... } with absent optional members left out, a
// list { value, ... }, an OCTET STRING 'hex'H (with its text in a comment when
// it reads as UTF-8 text), an INTEGER decimal, a BOOLEAN TRUE or FALSE; an
// empty record or list is {}. Two blanks indent each level.
//
// Print (asn_type.h) keeps its own older layout: trace lines use it.
#pragma once
#pragma GCC visibility push(default)

#include <ostream>
#include <string>

#include "tn_platform/asn/asn_type.h"

// Writes `value` at indentation `level` (its inner lines indented from there).
void AsnWriteValueNotation(std::ostream& os, const AsnType& value, unsigned level = 0);
std::string AsnToValueNotation(const AsnType& value);
#pragma GCC visibility pop
