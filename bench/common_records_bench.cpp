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

namespace {

constexpr int kElements = 10000;

// Names of 9 octets ("name00042"), values of 16 octets ("value00000000042").
qcommon::QAsnNVSList MakeNvsList() {
  qcommon::QAsnNVSList list;
  char text[32];
  for (int i = 0; i < kElements; ++i) {
    qcommon::QAsnNameAndValueString* element = list.Append();
    std::snprintf(text, sizeof text, "name%05d", i);
    element->name.Set(text);
    std::snprintf(text, sizeof text, "value%011d", i);
    element->value.Set(text);
  }
  return list;
}

// One object identifier, an error code, the object's name; no description.
qcommon::QAsnErrInfoList MakeErrInfoList() {
  qcommon::QAsnErrInfoList list;
  char text[32];
  for (int i = 0; i < kElements; ++i) {
    qcommon::QAsnErrInfo* element = list.Append();
    element->objID.Append()->Set(100000 + i);
    element->errCode = 2000 + i % 50;
    std::snprintf(text, sizeof text, "object%05d", i);
    element->objName.GetOrCreate().Set(text);
  }
  return list;
}

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
