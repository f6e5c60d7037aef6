// Encoding and decoding a 10,000-element SEQUENCE OF INTEGER list. The
// per_element counter is the time of one pass divided by the elements
// (printed with its unit, e.g. "6.1ns").
#include <benchmark/benchmark.h>

#include <string>

#include "tn_velkor/qcommon/qcommon.h"
#include "tn_platform/asn/asn_value_io.h"

namespace {

constexpr int kElements = 10000;

// Values of one to four content octets, as identifiers and codes are.
qcommon::QAsnTinyIntList MakeList() {
  qcommon::QAsnTinyIntList list;
  for (int i = 0; i < kElements; ++i) list.Append()->Set((i % 4 == 0) ? i * 40503 : i - kElements / 2);
  return list;
}

void ReportPerElement(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * kElements);
  state.counters["per_element"] =
      benchmark::Counter(kElements, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_TinyIntListEncode(benchmark::State& state) {
  qcommon::QAsnTinyIntList list = MakeList();
  for (auto _ : state) {
    AsnBuf buf;
    benchmark::DoNotOptimize(list.BEnc(buf, NIClass_BER));
    benchmark::DoNotOptimize(buf.EncodedData());
  }
  ReportPerElement(state);
}
BENCHMARK(BM_TinyIntListEncode);

void BM_TinyIntListDecode(benchmark::State& state) {
  qcommon::QAsnTinyIntList source = MakeList();
  const std::string octets = AsnEncodeValue(source);
  qcommon::QAsnTinyIntList list;
  for (auto _ : state) {
    AsnDecodeValue(list, octets);  // replaces the elements of the pass before
    benchmark::DoNotOptimize(list.First());
  }
  ReportPerElement(state);
}
BENCHMARK(BM_TinyIntListDecode);

}  // namespace
