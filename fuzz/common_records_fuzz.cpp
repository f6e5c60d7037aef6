// Decodes arbitrary octets as one of the common records or lists of qcommon:
// the first octet chooses the type, the rest is the encoding. A malformed
// encoding must end in a CSM_Exception* and nothing else (no crash, no leak,
// no read out of bounds); a value that decodes must re-encode and decode again
// to the same octets.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "tn_velkor/qcommon/qasn_column.h"
#include "tn_velkor/qcommon/qasn_uni_res_id.h"
#include "tn_velkor/qcommon/qcommon_lists.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/csm_exception.h"

namespace {

using Create = AsnType* (*)();

template <class T>
AsnType* Make() {
  return new T();
}

const Create kTypes[] = {
    &Make<qcommon::QAsnNameAndValueString>,
    &Make<qcommon::QAsnUniResID>,
    &Make<qcommon::QAsnErrInfo>,
    &Make<qcommon::QAsnColumn>,
    &Make<qcommon::QAsnTinyIntList>,
    &Make<qcommon::QAsnNVSList>,
    &Make<qcommon::QAsnErrInfoList>,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const Create create = kTypes[data[0] % (sizeof kTypes / sizeof kTypes[0])];
  const std::string_view octets(reinterpret_cast<const char*>(data + 1), size - 1);
  const std::unique_ptr<AsnType> value(create());
  try {
    AsnDecodeValue(*value, octets);
  } catch (CSM_Exception* raw) {
    delete raw;
    return 0;
  }
  // Accepted input: our own encoding of the value is stable.
  const std::string encoded = AsnEncodeValue(*value);
  const std::unique_ptr<AsnType> again(create());
  try {
    AsnDecodeValue(*again, encoded);
  } catch (CSM_Exception* raw) {
    delete raw;
    std::abort();  // we refused our own encoding
  }
  if (AsnEncodeValue(*again) != encoded) std::abort();
  return 0;
}
