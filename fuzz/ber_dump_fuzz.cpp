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
  std::size_t next = 0;  // the least offset the next item may have
  std::size_t breakItem = 0;
  const auto broken = FuzzWalk(bytes, kAsnDumpContentShown + 1, breakItem, [&](const AsnBerItem& item) {
    if (item.offset >= size || item.offset < next) std::abort();
    if (item.content.size() > item.length || item.depth > AsnDecodeLimits::kMaxDepth) std::abort();
    next = item.offset + 1;
  });
  if (broken && (broken->Offset() > size || broken->What().empty())) std::abort();
  qcommon::QAsnNVSList list;
  if (FuzzDecode(list, bytes) && broken) std::abort();

  NullBuffer sink;
  std::ostream os(&sink);
  try {
    AsnDumpBer(AsnBytesSource(bytes), os);
  } catch (AsnDecodeError* error) {
    delete error;
  }
  return 0;
}
