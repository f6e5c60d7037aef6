// The BER structure reader and dump on arbitrary bytes: every item lies in
// the input after the one before it, a break is placed inside the input or at
// its end, and bytes that decode as a whole value read completely.
#include <ostream>
#include <streambuf>

#include "fuzz/fuzz_common.h"
#include "tn_platform/asn/asn_ber_dump.h"

namespace {

// Swallows the dump's text: only the walk is under test.
class NullBuffer : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
  std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

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
  qcommon::QAsnNVSList list;
  if (FuzzDecode(list, bytes) && !complete) std::abort();

  NullBuffer sink;
  std::ostream os(&sink);
  try {
    AsnDumpBer(AsnBytesSource(bytes), os);
  } catch (AsnDecodeError* error) {
    delete error;
  }
  return 0;
}
