// Number <-> text conversions, one benchmark per instance the converters
// use, each beside the string-stream reference it replaces (BM_Stream*); each
// iteration is one call, so the time per iteration is ns per call.
#include <benchmark/benchmark.h>

#include <string>

#include "tests/value_text_oracle.h"
#include "tn_velkor/convert/value_text.h"

namespace {

template <class T, std::string (*Convert)(T)>
void RunConvert2Str(benchmark::State& state, T value) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    std::string text = Convert(value);
    benchmark::DoNotOptimize(text);
  }
  state.SetItemsProcessed(state.iterations());
}

template <class T, T (*Convert)(const std::string&)>
void RunConvert2Num(benchmark::State& state, const char* source) {
  const std::string text = source;
  for (auto _ : state) {
    T value = Convert(text);
    benchmark::DoNotOptimize(value);
  }
  state.SetItemsProcessed(state.iterations());
}

// Values of the size that alarm identifiers and fiber attributes carry.
#define TN_BENCH_STR(T, name, value)                                                                     \
  void BM_Convert2Str_##name(benchmark::State& state) {                                                  \
    RunConvert2Str<T, ns_velkor::Convert2Str<T>>(state, value);                                          \
  }                                                                                                      \
  BENCHMARK(BM_Convert2Str_##name);                                                                      \
  void BM_StreamConvert2Str_##name(benchmark::State& state) {                                            \
    RunConvert2Str<T, value_text_oracle::StreamConvert2Str<T>>(state, value);                            \
  }                                                                                                      \
  BENCHMARK(BM_StreamConvert2Str_##name);

#define TN_BENCH_NUM(T, name, text)                                                                      \
  void BM_Convert2Num_##name(benchmark::State& state) { RunConvert2Num<T, ns_velkor::Convert2Num<T>>(state, text); } \
  BENCHMARK(BM_Convert2Num_##name);                                                                      \
  void BM_StreamConvert2Num_##name(benchmark::State& state) {                                            \
    RunConvert2Num<T, value_text_oracle::StreamConvert2Num<T>>(state, text);                             \
  }                                                                                                      \
  BENCHMARK(BM_StreamConvert2Num_##name);

TN_BENCH_STR(int, int, -2147483647)
TN_BENCH_STR(long, long, 1700000000L)
TN_BENCH_STR(long long, long_long, 123456789012LL)
TN_BENCH_STR(float, float, -0.1f)
TN_BENCH_STR(double, double, 1234.5678)

TN_BENCH_NUM(int, int, "-2147483647")
TN_BENCH_NUM(long, long, "1700000000")
TN_BENCH_NUM(unsigned long, unsigned_long, "18446744073709551615")
TN_BENCH_NUM(unsigned short, unsigned_short, "65535")
TN_BENCH_NUM(float, float, "-0.1")
TN_BENCH_NUM(double, double, "1234.567800")
// A failed conversion (out of range) costs about as much as a good one.
TN_BENCH_NUM(int, int_out_of_range, "99999999999")

}  // namespace
