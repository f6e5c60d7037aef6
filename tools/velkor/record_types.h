// The record and list types the tool knows: every entry of AsnCatalogue, as
// the interface modules registered them when they were loaded. Nothing here
// names a record type: a type added to the catalogue later needs no tool code.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tn_platform/asn/asn_constraint_check.h"
#include "tn_platform/asn/asn_type.h"
#include "tn_qmodules/asn_catalogue.h"
#include "tools/velkor/json.h"

namespace velkor {

// "" when `name` is a catalogue type as CreateCatalogued takes it, else why
// not ("unknown record type \"QAsnPortIdx\" (did you mean ...)").
std::string TypeNameProblem(std::string_view name);

// A new default value of the catalogue type `name` ("QAsnFiberInfo").
// Throws ToolError(bad usage) for a name the catalogue does not hold.
std::unique_ptr<AsnType> CreateCatalogued(std::string_view name);

// The catalogue entry of `name`. Throws as CreateCatalogued.
const AsnCatalogueEntry& CatalogueEntryOf(std::string_view name);

// Decodes `bytes` as one complete `value`. Throws ToolError(bad input) with the
// runtime's message, which names the record, member and byte offset. With
// `violations`, values outside their constraints are taken and listed there.
void DecodeBytes(AsnType& value, std::string_view bytes,
                 std::vector<AsnConstraintViolation>* violations = nullptr);

// Decodes one value from the front of `bytes`; returns the octets it took.
// Throws as DecodeBytes, with offsets counted from `base` octets before
// `bytes` (the value's place in a capture).
std::size_t DecodeFrontBytes(AsnType& value, std::string_view bytes, std::size_t base = 0,
                             std::vector<AsnConstraintViolation>* violations = nullptr);

// The BER encoding of `value` (the runtime's encoder is not const, but
// encoding leaves the value as it was).
std::string EncodeBytes(const AsnType& value);

// Writes `value` in ASN.1 value notation (asn_value_notation.h).
void PrintValue(std::ostream& os, const AsnType& value);

// Writes every catalogue type (or only the one named `only`, when not empty)
// with its members: name, type, mandatory or optional, and the optional
// member's tag number. A list shows its element type. Throws ToolError(bad
// usage) when `only` names no catalogue type.
void DescribeTypes(std::ostream& os, std::string_view only);

// The same as JSON: [{"name", "module", "kind": "record"|"list",
// "members": [{"name", "type", "optional", "number"}] | "element"}].
Json DescribeTypesJson(std::string_view only);

}  // namespace velkor
