// Record bytes written as text, the forms people paste: hex (plain, with
// separators or 0x prefixes, or a dump of xxd, od -t x1 or hexdump -C) and
// Base64 (bare or PEM-armoured).
#pragma once

#include <string>
#include <string_view>

namespace velkor {

// The octets that hex text stands for, in either case. Accepted:
//   - digits with or without blanks, colons, commas or semicolons between
//     them ("300d", "30 0d", "30:0d", "30,0d");
//   - "0x" before an octet ("0x30 0x0d", "0x5" is 05);
//   - dumps with an offset first on each line: xxd ("00000000: 300d ...  0."),
//     od -t x1 ("0000000 30 0d", a last line holding only the offset) and
//     hexdump -C ("00000000  30 0d ... |0.|"); their text columns are skipped.
// Throws ToolError(bad input) naming the offending character, its line and
// column, or an odd number of digits.
std::string DecodeHex(std::string_view text);

// The octets Base64 text stands for (either alphabet, padding optional).
// Blanks and PEM-style armour lines ("-----BEGIN ...-----") are ignored.
// Throws ToolError(bad input) naming the offending character's position.
std::string DecodeBase64(std::string_view text);

// Lower-case hex of `bytes`, two digits per octet, no separators.
std::string EncodeHex(std::string_view bytes);

// When `input`, taken as raw bytes, looks like hex or Base64 text: a hint to
// add to an error (" (the input looks like hex text: add --hex)"); else "".
std::string TextFormHint(std::string_view input);

}  // namespace velkor
