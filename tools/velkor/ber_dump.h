// A structure dump of BER bytes of any type: every tag-length-value item with
// its offset, tag, length and (for primitive items) content, nested by depth.
//
// The walk keeps an explicit stack instead of recursing, refuses nesting
// deeper than AsnDecodeLimits::kMaxDepth, and never reads outside the input:
// each item must fit in its enclosing value, and an indefinite-length value
// must end with end-of-contents inside its own enclosing value (the items
// inside it are read on until then, as a decoder reads them). Several
// top-level values may follow one another (a capture of records).
#pragma once

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>

#include "tn_platform/asn/ber.h"

namespace velkor {

struct BerItem {
  std::size_t offset = 0;      // of the first identifier octet
  unsigned depth = 0;          // 0 for a top-level value
  AsnTag tag = 0;              // packed as ber.h packs tags
  bool endOfContents = false;  // the 00 00 that closes an indefinite length
  bool indefinite = false;     // constructed with indefinite length
  std::size_t headerLength = 0;  // identifier and length octets
  std::size_t length = 0;      // content octets (definite lengths only)
  std::string_view content;    // the content of a primitive item
};

struct BerWalkResult {
  std::size_t items = 0;  // items visited
  bool complete = true;   // false when the bytes break
  std::string error;      // what broke, ending "at offset N"
  std::size_t breakOffset = 0;  // that N
  std::size_t breakItem = 0;    // where the item it was reading starts
};

// Visits every item of `bytes` in order. Stops at the first defect and says
// where it is; what was visited before it stays visited.
BerWalkResult WalkBer(std::string_view bytes, const std::function<void(const BerItem&)>& visit);

// Writes the line of one item:
//   "<offset>  <indent><tag>[ (<universal name>)], length <n>[: <content>]"
// with two blanks of indent per depth ("end-of-contents" for 00 00). Content
// is decimal for a universal INTEGER of up to 8 octets, TRUE/FALSE for a
// universal BOOLEAN, "text" when every octet is printable, else 'hex'H.
void WriteBerItem(std::ostream& os, const BerItem& item);

// Writes the line of every item to `os`; returns the walk's result.
BerWalkResult DumpBer(std::string_view bytes, std::ostream& os);

}  // namespace velkor
