// A structure dump of BER bytes of any type, for people: one line per item,
// as dump tools write them, read as the bytes come (AsnBerReader), so memory
// stays bounded by the open nesting levels whatever the input's size.
//
// Each line reads
//   "<offset> <header length>  <indent><tag>[ (<universal name>)], length <n>[: <content>]"
// with the offset and the count of identifier and length octets right-aligned
// in columns of 6 and 3, two blanks of indent per nesting level, "length
// indefinite" for the indefinite form and "end-of-contents" for the 00 00
// that ends it. Content is shown for primitive items: decimal for a universal
// INTEGER of up to 8 octets, TRUE/FALSE for a universal BOOLEAN of one octet,
// "text" when every octet is printable UTF-8 (a quote doubled), else 'hex'H.
// Long content is cut, not wrapped: only its first kAsnDumpContentShown octets
// are shown, followed by "..." (the length says how many there are).
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>

#include "tn_platform/asn/asn_ber_reader.h"
#include "tn_platform/asn/asn_byte_source.h"

constexpr std::size_t kAsnDumpContentShown = 64;

// Appends the line of `item` (read with at least kAsnDumpContentShown + 1
// octets of content kept) to `out`.
void AsnAppendDumpLine(std::string& out, const AsnBerItem& item);

// Writes the line of every item of `source` to `os` and returns how many
// items there were; `onTopLevel(values, offset)`, when given, is called at
// the start of each top-level value. Throws AsnDecodeError* where the bytes
// break, after writing the line of every item before it.
std::size_t AsnDumpBer(AsnByteSource source, std::ostream& os,
                       const std::function<void(std::size_t values, std::size_t offset)>& onTopLevel = {});
#pragma GCC visibility pop
