// First registration from many threads at once. Each thread uses, for the
// first time in this process, the reflection hook of records that were never
// used before and the descriptions of AsnOcts and AsnTinyInt; all threads must
// see one and the same class and type description, and ThreadSanitizer (in
// the build made by scripts/tsan.sh) must see no race.
//
// A program of its own: the first use has to be the first in its process.
// Exit status 0 when every check holds.
#include <atomic>
#include <cstdio>
#include <thread>
#include <vector>

#include "tn_velkor/qcommon/qasn_column.h"
#include "tn_velkor/qcommon/qasn_uni_res_id.h"
#include "tn_velkor/qcommon/qcommon_lists.h"
#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_platform/asn/asn_value_io.h"

namespace {

constexpr int kThreads = 16;

struct Seen {
  const refl::CClassInfor* uniResId = nullptr;
  const refl::CClassInfor* errInfo = nullptr;
  const refl::CClassInfor* column = nullptr;
  const refl::CCustomBasicTypeInfor* octs = nullptr;
  const refl::CCustomBasicTypeInfor* tinyInt = nullptr;
  std::size_t encodedLength = 0;
};

// Half of the threads start with the value types' descriptions, the other
// half with the records' hooks (which describe the same value types).
void Use(int index, Seen& seen) {
  if (index % 2 == 0) {
    refl::CGnlTypeInfor octs;
    octs.CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>();
    refl::CGnlTypeInfor tinyInt;
    tinyInt.CaptureTypeInfor<AsnTinyInt>();
    seen.octs = octs.CustomBasic();
    seen.tinyInt = tinyInt.CustomBasic();
  }
  qcommon::QAsnUniResID id;
  refl::CRefrence reference;
  id.BindReflection(reference);
  seen.uniResId = reference.ClassInfor();
  qcommon::QAsnErrInfoList list;
  list.Append()->objName.GetOrCreate().Set("x");
  seen.encodedLength = AsnEncodeValue(list).size();  // registers QAsnErrInfo on the way
  seen.errInfo = &qcommon::QAsnErrInfo::GetClassInfor();
  seen.column = &qcommon::QAsnColumn::GetClassInfor();
  if (index % 2 != 0) {
    seen.octs = seen.uniResId->Attributes()[0].type.CustomBasic();
    seen.tinyInt = seen.uniResId->Attributes()[2].type.CustomBasic();
  }
}

}  // namespace

int main() {
  if (refl::CClassInfor::Find("QAsnUniResID") != nullptr || refl::CClassInfor::Find("QAsnErrInfo") != nullptr) {
    std::fprintf(stderr, "a record was registered before its first use\n");
    return 1;
  }
  std::vector<Seen> seen(kThreads);
  std::atomic<int> ready{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([i, &seen, &ready] {
      // Start together, to make the first uses overlap.
      ready.fetch_add(1);
      while (ready.load() < kThreads) std::this_thread::yield();
      Use(i, seen[i]);
    });
  }
  for (std::thread& thread : threads) thread.join();

  int failures = 0;
  const Seen& first = seen[0];
  for (int i = 0; i < kThreads; ++i) {
    const Seen& s = seen[i];
    if (s.uniResId != first.uniResId || s.errInfo != first.errInfo || s.column != first.column ||
        s.octs != first.octs || s.tinyInt != first.tinyInt || s.encodedLength != first.encodedLength) {
      std::fprintf(stderr, "thread %d saw other descriptions than thread 0\n", i);
      ++failures;
    }
  }
  if (first.uniResId == nullptr || first.octs == nullptr || first.tinyInt == nullptr ||
      first.uniResId != refl::CClassInfor::Find("QAsnUniResID") || first.errInfo->Attributes().size() != 4 ||
      first.uniResId->Attributes()[3].type.CustomBasic() != first.octs ||
      first.errInfo->Attributes()[1].type.CustomBasic() != first.octs || first.encodedLength != 12) {
    std::fprintf(stderr, "the registered descriptions are not the expected ones\n");
    ++failures;
  }
  std::printf("%d threads registered QAsnUniResID, QAsnErrInfo and QAsnColumn once: %s\n", kThreads,
              failures == 0 ? "ok" : "FAILED");
  return failures == 0 ? 0 : 1;
}
