// The text of an octet string, as every converter reads it (private to the
// library): empty when the octet string has no content; otherwise its octets
// up to the first zero byte, searched within the content's length.
#pragma once

#include <cstring>
#include <string>

#include "tn_platform/asn/asn_octs.h"

namespace ns_velkor {

inline std::string OctsText(const AsnOcts& octs) {
  const unsigned char* data = octs.data();
  if (octs.Len() == 0 || data == nullptr) return std::string();
  const void* zero = std::memchr(data, 0, octs.Len());
  const std::size_t length =
      zero ? static_cast<std::size_t>(static_cast<const unsigned char*>(zero) - data) : octs.Len();
  return std::string(reinterpret_cast<const char*>(data), length);
}

}  // namespace ns_velkor
