// The runtime's BER structure reader and dump on arbitrary bytes. They must
// never read outside the input (the sanitizers watch), every item must lie
// inside the input after the one before it, a break must be placed inside
// the input or at its end, and bytes that the runtime decodes as a whole
// value must read completely.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string_view>

#include "tn_platform/asn/asn_ber_dump.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/csm_exception.h"
#include "tn_velkor/qcommon/qcommon.h"

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
  AsnBerReader reader(AsnBytesSource(bytes), kAsnDumpContentShown + 1);
  AsnBerItem item;
  bool first = true;
  std::size_t lastOffset = 0;
  bool complete = true;
  try {
    while (reader.Next(item)) {
      if (item.offset >= size || (!first && item.offset <= lastOffset)) std::abort();
      if (item.content.size() > item.length || item.depth > AsnDecodeLimits::kMaxDepth) std::abort();
      lastOffset = item.offset;
      first = false;
    }
  } catch (AsnDecodeError* raw) {
    const std::unique_ptr<AsnDecodeError> error(raw);
    if (error->Offset() > size || error->What().empty()) std::abort();
    complete = false;
  }
  if (RuntimeDecodes(bytes) && !complete) std::abort();

  NullBuffer sink;
  std::ostream os(&sink);
  try {
    AsnDumpBer(AsnBytesSource(bytes), os);
  } catch (AsnDecodeError* error) {
    delete error;
  }
  return 0;
}
