// Decodes arbitrary octets as a SEQUENCE OF INTEGER list. A malformed input
// must end in a CSM_Exception*, never in a crash, a sanitizer report or an
// allocation sized by a length field. A list that decodes must encode to a
// canonical form that decodes to the same values and encodes the same again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "tn_velkor/qcommon/qasn_tiny_int_list.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/csm_exception.h"

namespace {

std::vector<int> Values(const qcommon::QAsnTinyIntList& list) {
  std::vector<int> values;
  for (list.MoveFirst(); const AsnTinyInt* element = list.Current(); list.MoveNext()) values.push_back(*element);
  return values;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  qcommon::QAsnTinyIntList list;
  try {
    AsnDecodeValue(list, std::string_view(reinterpret_cast<const char*>(data), size));
  } catch (CSM_Exception* error) {
    delete error;
    return 0;
  }
  const std::string canonical = AsnEncodeValue(list);
  qcommon::QAsnTinyIntList back;
  AsnDecodeValue(back, canonical);  // an exception here escapes: a finding
  if (Values(back) != Values(list) || AsnEncodeValue(back) != canonical) std::abort();
  return 0;
}
