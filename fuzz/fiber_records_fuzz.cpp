// Fiber records from arbitrary bytes. The first byte selects the record
// (even: QAsnFiberInfo, odd: QAsnFiberInfoTemplate); the rest is decoded as
// one whole value. Whatever decodes is converted to its model form, which must
// not fail, and must survive our own encoding: re-encoding the decoded record
// gives bytes that decode and re-encode to the same bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tn_velkor/ns_velkor.h"
#include "fuzz/fuzz_decode.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/csm_exception.h"

namespace {

void FuzzFiberInfo(std::string_view bytes) {
  qinventoryfiber::QAsnFiberInfo record;
  if (!FuzzDecode(record, bytes)) return;
  CheckReencoding(record);
  ns_utilmib::TEFiberCable cable;
  ns_velkor::Convert2FiberCable(record, cable);
  // The repaired cable must convert out again.
  qinventoryfiber::QAsnFiberInfo answer;
  ns_velkor::Convert2QAsnFiberInfo(cable, answer);
  CheckReencoding(answer);
}

void FuzzFiberInfoTemplate(std::string_view bytes) {
  qinventoryfiber::QAsnFiberInfoTemplate record;
  if (!FuzzDecode(record, bytes)) return;
  CheckReencoding(record);
  std::uint64_t mask = 0;
  ns_velkor::Convert2FiberInfoTemplateType(record, mask);
  // Only the twelve column bits exist, and they select the same columns again.
  qinventoryfiber::QAsnFiberInfoTemplate rebuilt;
  ns_velkor::Convert2QAsnFiberInfoTemplate(mask, rebuilt);
  std::uint64_t again = 0;
  ns_velkor::Convert2FiberInfoTemplateType(rebuilt, again);
  if (mask > 0xFFF || again != mask) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  (data[0] % 2 == 0 ? FuzzFiberInfo : FuzzFiberInfoTemplate)(bytes);  // the first byte picks the record type
  return 0;
}
