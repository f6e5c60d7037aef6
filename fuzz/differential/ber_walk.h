// A small BER walker of its own, independent of the codec: it reads any input
// as nested tag-length-value items, knowing nothing of the records but which
// primitive tags hold INTEGERs, and reports where the input uses a form that
// asn1c tolerates and we refuse (or the reverse). The differential fuzz
// target explains a disagreement between the two decoders by these findings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A primitive tag whose content is an INTEGER: class bits (0x00 universal,
// 0x80 context-specific, ...) and tag number.
struct BerIntegerTag {
  std::uint8_t tagClass;
  std::uint32_t number;
};

struct BerFinding {
  std::string kind;    // "integer-not-minimal", ... (see WalkBer)
  std::size_t offset;  // the first octet of the item that has it
};

// The items of `bytes` in order, as far as they can be read, and what is
// noteworthy about each: an INTEGER whose first nine bits are all equal
// (integer-not-minimal) or without content (integer-empty), a primitive with
// the indefinite length (indefinite-primitive; the walk stops), a tag number
// below 31 in the long form (high-tag-low-number) or whose first octet is 0x80
// (high-tag-leading-zero), a length of more than 8 octets whose value fits 64
// bits (length-over-8-octets), and a constructed item inside 32 others
// (nested-deeper-than-32; the walk does not go into it).
std::vector<BerFinding> WalkBer(std::string_view bytes, const std::vector<BerIntegerTag>& integerTags);
