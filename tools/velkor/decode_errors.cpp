#include "tools/velkor/decode_errors.h"

#include <memory>

#include "tn_platform/asn/asn_decode_error.h"

namespace velkor {

std::string DecodeErrorMessage(CSM_Exception* exception, std::size_t base) {
  const std::unique_ptr<CSM_Exception> owned(exception);
  if (auto* located = dynamic_cast<AsnDecodeError*>(owned.get())) located->MoveBy(base);
  return owned->Message();
}

}  // namespace velkor
