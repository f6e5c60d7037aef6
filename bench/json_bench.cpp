// JSON beside the codec, in one run, on the common record lists (10,000
// elements of QAsnNVSList and of QAsnErrInfoList, bench/common_lists.h): BER bytes -> JSON text
// against the library's own decode of the same bytes, and JSON text -> BER
// bytes against its own encode of the same value, in JER and in the readable
// form. Each benchmark reports per_element; the ratios JSON / codec are the
// figures to watch (README, Performance).
#include <benchmark/benchmark.h>

#include <string>

#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_value_io.h"
#include "bench/common_lists.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

using bench_lists::kElements;
using bench_lists::MakeErrInfoList;
using bench_lists::MakeNvsList;

void ReportPerElement(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * kElements);
  state.counters["per_element"] =
      benchmark::Counter(kElements, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// The library's own decode: bytes into a fresh value, freed.
template <class List, List (*Make)()>
void BM_Decode(benchmark::State& state) {
  List source = Make();
  const std::string octets = AsnEncodeValue(source);
  for (auto _ : state) {
    List list;
    AsnDecodeValue(list, octets);
    benchmark::DoNotOptimize(list.First());
  }
  ReportPerElement(state);
}

// Bytes -> JSON text: decoded into a fresh value, written, freed.
template <class List, List (*Make)(), AsnJsonForm kForm>
void BM_ToJson(benchmark::State& state) {
  List source = Make();
  const std::string octets = AsnEncodeValue(source);
  std::string text;
  for (auto _ : state) {
    List list;
    AsnDecodeValue(list, octets);
    text.clear();
    AsnWriteJson(text, list, kForm, AsnJsonLayout::kOneLine);
    benchmark::DoNotOptimize(text.data());
  }
  ReportPerElement(state);
}

// The library's own encode: a value into a buffer kept across passes.
template <class List, List (*Make)()>
void BM_Encode(benchmark::State& state) {
  List list = Make();
  AsnBuf buf;
  for (auto _ : state) benchmark::DoNotOptimize(AsnEncodeInto(list, buf).data());
  ReportPerElement(state);
}

// JSON text -> bytes, as a service or `velkor encode` does it: written as
// the text is read, into a string kept across passes as Encode's buffer is
// (AsnJsonToBerInto).
template <class List, List (*Make)(), AsnJsonForm kForm>
void BM_FromJson(benchmark::State& state) {
  List source = Make();
  const std::string text = AsnToJson(source, kForm);
  std::string ber;
  const List prototype{};
  for (auto _ : state) {
    AsnJsonToBerInto(prototype, text, kForm, ber);
    benchmark::DoNotOptimize(ber.data());
  }
  ReportPerElement(state);
}

// JSON text -> value -> bytes: the reader building the value.
template <class List, List (*Make)(), AsnJsonForm kForm>
void BM_ReadJson(benchmark::State& state) {
  List source = Make();
  const std::string text = AsnToJson(source, kForm);
  AsnBuf buf;
  for (auto _ : state) {
    List list;
    AsnReadJson(list, text, kForm);
    benchmark::DoNotOptimize(AsnEncodeInto(list, buf).data());
  }
  ReportPerElement(state);
}

using Nvs = qcommon::QAsnNVSList;
using ErrInfo = qcommon::QAsnErrInfoList;
constexpr AsnJsonForm kJer = AsnJsonForm::kJer;
constexpr AsnJsonForm kReadable = AsnJsonForm::kReadable;

BENCHMARK_TEMPLATE(BM_Decode, Nvs, MakeNvsList)->Name("BM_NvsList/Decode");
BENCHMARK_TEMPLATE(BM_ToJson, Nvs, MakeNvsList, kJer)->Name("BM_NvsList/ToJer");
BENCHMARK_TEMPLATE(BM_ToJson, Nvs, MakeNvsList, kReadable)->Name("BM_NvsList/ToReadableJson");
BENCHMARK_TEMPLATE(BM_Encode, Nvs, MakeNvsList)->Name("BM_NvsList/Encode");
BENCHMARK_TEMPLATE(BM_FromJson, Nvs, MakeNvsList, kJer)->Name("BM_NvsList/FromJer");
BENCHMARK_TEMPLATE(BM_FromJson, Nvs, MakeNvsList, kReadable)->Name("BM_NvsList/FromReadableJson");
BENCHMARK_TEMPLATE(BM_ReadJson, Nvs, MakeNvsList, kJer)->Name("BM_NvsList/ReadJerIntoValue");
BENCHMARK_TEMPLATE(BM_Decode, ErrInfo, MakeErrInfoList)->Name("BM_ErrInfoList/Decode");
BENCHMARK_TEMPLATE(BM_ToJson, ErrInfo, MakeErrInfoList, kJer)->Name("BM_ErrInfoList/ToJer");
BENCHMARK_TEMPLATE(BM_ToJson, ErrInfo, MakeErrInfoList, kReadable)->Name("BM_ErrInfoList/ToReadableJson");
BENCHMARK_TEMPLATE(BM_Encode, ErrInfo, MakeErrInfoList)->Name("BM_ErrInfoList/Encode");
BENCHMARK_TEMPLATE(BM_FromJson, ErrInfo, MakeErrInfoList, kJer)->Name("BM_ErrInfoList/FromJer");
BENCHMARK_TEMPLATE(BM_FromJson, ErrInfo, MakeErrInfoList, kReadable)->Name("BM_ErrInfoList/FromReadableJson");
BENCHMARK_TEMPLATE(BM_ReadJson, ErrInfo, MakeErrInfoList, kJer)->Name("BM_ErrInfoList/ReadJerIntoValue");

}  // namespace
