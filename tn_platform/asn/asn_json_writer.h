// JSON text of ASN.1 values, written directly from the records' member plans
// and the lists' element access (no document tree), in either form of
// asn_json_form.h. Any value of a catalogued type can be written: a record, a
// list, or one of the runtime's value classes.
//
// Example (qcommon::QAsnColumn, one line):
//   kJer       {"strCondition":"4e453d31"}
//   kReadable  {"strCondition":"NE=1"}
#pragma once
#pragma GCC visibility push(default)

#include <string>

#include "tn_platform/asn/asn_json_form.h"
#include "tn_platform/asn/asn_type.h"

// Appends the JSON of `value` to `out`, without a final line break. With
// kIndented, lines after the first are indented as if the value stood at
// nesting `level` (two blanks per level), so that an element of an array
// written by the caller lines up. Throws CSM_Exception* for a value class the
// runtime does not know.
void AsnWriteJson(std::string& out, const AsnType& value, AsnJsonForm form, AsnJsonLayout layout,
                  unsigned level = 0);

// The JSON of `value`, without a final line break.
std::string AsnToJson(const AsnType& value, AsnJsonForm form, AsnJsonLayout layout = AsnJsonLayout::kOneLine);

// A template to start a document of `value`'s type from: `value` (a new
// default value) is first given every member, an optional one made with its
// defaults and a list one default element, then written. In the readable
// form each record with optional members starts with a "//" member naming
// them, a comment the reader skips, so the template reads as it is.
std::string AsnJsonTemplate(AsnType& value, AsnJsonForm form, AsnJsonLayout layout);

// Appends `text` (UTF-8) as a JSON string: quotes, \" \\ \b \f \n \r \t, and
// \u00XX for the other control characters; everything else as it is.
void AsnWriteJsonString(std::string& out, std::string_view text);
#pragma GCC visibility pop
