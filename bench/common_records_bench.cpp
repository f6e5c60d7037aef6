// Encoding and decoding of the common record lists, and the name/value map
// conversion, on 10,000-element lists. Items are list elements, so the
// reported rate gives the time per element.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>

#include "tn_velkor/qcommon/qcommon.h"
#include "tn_velkor/ns_velkor.h"
#include "tn_platform/asn/asn_value_io.h"
#include "bench/common_lists.h"

namespace {

using bench_lists::kElements;
using bench_lists::MakeErrInfoList;
using bench_lists::MakeNvsList;

template <class List>
void Encode(benchmark::State& state, List& list) {
  for (auto _ : state) {
    std::string bytes = AsnEncodeValue(list);
    benchmark::DoNotOptimize(bytes.data());
  }
  state.SetItemsProcessed(state.iterations() * kElements);
}

template <class List>
void Decode(benchmark::State& state, List& list) {
  const std::string bytes = AsnEncodeValue(list);
  List decoded;
  for (auto _ : state) {
    AsnDecodeValue(decoded, bytes);
    benchmark::DoNotOptimize(decoded.Count());
  }
  state.SetItemsProcessed(state.iterations() * kElements);
  state.counters["bytes_per_element"] = static_cast<double>(bytes.size()) / kElements;
}

void BM_NvsListEncode(benchmark::State& state) {
  qcommon::QAsnNVSList list = MakeNvsList();
  Encode(state, list);
}
BENCHMARK(BM_NvsListEncode);

void BM_NvsListDecode(benchmark::State& state) {
  qcommon::QAsnNVSList list = MakeNvsList();
  Decode(state, list);
}
BENCHMARK(BM_NvsListDecode);

void BM_ErrInfoListEncode(benchmark::State& state) {
  qcommon::QAsnErrInfoList list = MakeErrInfoList();
  Encode(state, list);
}
BENCHMARK(BM_ErrInfoListEncode);

void BM_ErrInfoListDecode(benchmark::State& state) {
  qcommon::QAsnErrInfoList list = MakeErrInfoList();
  Decode(state, list);
}
BENCHMARK(BM_ErrInfoListDecode);

void BM_Convert2MapKeyValue(benchmark::State& state) {
  const qcommon::QAsnNVSList list = MakeNvsList();
  for (auto _ : state) {
    std::map<std::string, std::string> map;
    ns_velkor::Convert2MapKeyValue(list, map);
    benchmark::DoNotOptimize(map.size());
  }
  state.SetItemsProcessed(state.iterations() * kElements);
}
BENCHMARK(BM_Convert2MapKeyValue);

}  // namespace
