// A byte source that gives its input a few octets at a time, so that the
// streaming readers meet every item cut at every place between two reads.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "tn_platform/asn/asn_byte_source.h"

inline AsnByteSource Trickle(std::string_view bytes, std::size_t step) {
  return [bytes, step](char* data, std::size_t size) mutable {
    const std::size_t count = std::min({size, step, bytes.size()});
    std::copy(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count), data);
    bytes.remove_prefix(count);
    return count;
  };
}
