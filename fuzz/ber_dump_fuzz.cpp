// The velkor tool's BER structure walker on arbitrary bytes. It must never
// read outside the input (the sanitizers watch), every item it reports must
// lie inside the input after the one before it, and bytes that the runtime
// decodes as a whole value must walk completely.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <ostream>
#include <streambuf>
#include <string_view>

#include "tn_velkor/qcommon/qcommon.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/csm_exception.h"
#include "tools/velkor/ber_dump.h"

namespace {

// Swallows the dump's text: only the walk is under test.
class NullBuffer : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
  std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

bool RuntimeDecodes(std::string_view bytes) {
  qcommon::QAsnNVSList list;
  try {
    AsnDecodeValue(list, bytes);
    return true;
  } catch (CSM_Exception* error) {
    delete error;
    return false;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::size_t lastOffset = 0;
  bool first = true;
  const velkor::BerWalkResult walk = velkor::WalkBer(bytes, [&](const velkor::BerItem& item) {
    if (item.offset >= size || (!first && item.offset <= lastOffset)) std::abort();
    if (!item.content.empty() &&
        (item.content.data() < bytes.data() || item.content.data() + item.content.size() > bytes.data() + size))
      std::abort();
    if (item.depth > AsnDecodeLimits::kMaxDepth) std::abort();
    lastOffset = item.offset;
    first = false;
  });
  if (!walk.complete && walk.error.empty()) std::abort();
  if (RuntimeDecodes(bytes) && !walk.complete) std::abort();

  NullBuffer sink;
  std::ostream os(&sink);
  velkor::DumpBer(bytes, os);
  return 0;
}
