// The two JSON forms of ASN.1 values the runtime reads and writes, and how
// the text is laid out.
//
// kJer: the JSON encoding rules of ASN.1 (ITU-T X.697), what other ASN.1 tools
// read and write. The top-level value is bare; a SEQUENCE is an object whose
// keys are the member identifiers in declaration order, an absent OPTIONAL
// member left out; a SEQUENCE OF is an array; an INTEGER a JSON number of any
// size; an OCTET STRING a string of two hex digits per octet (written in lower
// case, read in either); a BOOLEAN true or false.
//
// kReadable: the form engineers read. As kJer, except that an OCTET STRING is
// a JSON string when its content is UTF-8 text without control characters,
// else {"hex": "<two hex digits per octet>"}, and that a 64-bit INTEGER
// (AsnInt) is a decimal string ("9007199254740993"), so that tools holding
// numbers as doubles cannot round it. On reading, every integer may be a
// number or a decimal string, an optional member may be null (absent), and
// members whose names start with "//" are comments.
#pragma once
#pragma GCC visibility push(default)

enum class AsnJsonForm { kReadable, kJer };

enum class AsnJsonLayout {
  kIndented,  // two blanks per level, one member or element per line
  kOneLine,   // no blanks and no line breaks (a line of JSON Lines)
};
#pragma GCC visibility pop
