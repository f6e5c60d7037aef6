// Records and lists as JSON, for any type of the catalogue, through the
// records' member plans (AsnMembersOf) and the lists' untyped element access:
//   - a record is an object with its members' names as keys, in declaration
//     order; an absent optional member is left out;
//   - an OCTET STRING is a JSON string when its content is UTF-8 text without
//     control characters, else {"hex": "<two hex digits per octet>"};
//   - an integer is a number, a BOOLEAN true or false;
//   - a list is an array of its elements;
//   - members whose names start with "//" are comments, skipped on reading.
//
// Example (qcommon::QAsnUniResID):
//   {"strFDN": "NE=1001,SH=1,SL=3,PP=2", "strMOC": "PP", "neID": 1001}
#pragma once

#include <string>

#include "tn_platform/asn/asn_type.h"
#include "tools/velkor/json.h"

namespace velkor {

// The JSON of `value` (a record, a list or one of the runtime's value classes).
Json ValueToJson(const AsnType& value);

// Fills `value`, a new default value, from `json`; a list's elements are
// appended (it is expected empty). `path` names the value in errors; members and
// elements extend it ("QAsnFiberInfo.attrList[2].name"). Every mandatory member
// must be given; an optional member may be left out or null (absent). Throws
// ToolError(bad input) "<path>: <what>" on an unknown or missing member, a
// JSON value of the wrong kind, an integer out of the member's range or bad hex.
void JsonToValue(const Json& json, AsnType& value, const std::string& path);

// A skeleton of `value`'s JSON to start a record from: every member with a
// default value (0, "", false; a list gets one element appended), and in each record
// with optional members a "//" member naming them. Readers skip members
// whose names start with "//", so the skeleton encodes as it is.
Json TemplateJson(AsnType& value);

// The JSON of an OCTET STRING's content, and the content of such JSON.
Json OctetsToJson(std::string_view octets);
std::string JsonToOctets(const Json& json, const std::string& path);

}  // namespace velkor
