// Error list into return-code map, on a 10,000-element list. Items are list
// elements, so the reported rate gives the time per element.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>

#include "tn_velkor/ns_velkor.h"

namespace {

constexpr int kElements = 10000;

// Distinct identifiers, every tenth element without one (synthetic keys),
// names of 11 octets.
qcommon::QAsnErrInfoList MakeErrorList() {
  qcommon::QAsnErrInfoList list;
  char name[32];
  for (int i = 0; i < kElements; ++i) {
    qcommon::QAsnErrInfo* element = list.Append();
    if (i % 10 != 0) element->objID.Append()->Set(100000 + i);
    element->errCode = 2000 + i % 50;
    std::snprintf(name, sizeof name, "object%05d", i);
    element->objName.GetOrCreate().Set(name);
  }
  return list;
}

void BM_ErrInfoListToMap(benchmark::State& state) {
  const qcommon::QAsnErrInfoList list = MakeErrorList();
  for (auto _ : state) {
    std::map<unsigned long, ns_velkor::TERetInfo> map;
    benchmark::DoNotOptimize(ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoList(list, map));
    benchmark::DoNotOptimize(map);
  }
  state.SetItemsProcessed(state.iterations() * kElements);
}
BENCHMARK(BM_ErrInfoListToMap)->Unit(benchmark::kMicrosecond);

// The usual follow-up: drop the tolerated codes from the filled map.
void BM_IgnoreTolerated(benchmark::State& state) {
  const qcommon::QAsnErrInfoList list = MakeErrorList();
  std::map<unsigned long, ns_velkor::TERetInfo> filled;
  ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoList(list, filled);
  for (auto _ : state) {
    state.PauseTiming();
    std::map<unsigned long, ns_velkor::TERetInfo> map = filled;
    state.ResumeTiming();
    benchmark::DoNotOptimize(ns_velkor::IgnoreMapRetCodeErrorCode(2000, map, 2001, 2002, 2003));
  }
  state.SetItemsProcessed(state.iterations() * kElements);
}
BENCHMARK(BM_IgnoreTolerated)->Unit(benchmark::kMicrosecond);

}  // namespace
