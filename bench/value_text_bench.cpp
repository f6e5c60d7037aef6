// Number <-> text conversions, one benchmark per instance the converters
// use; each iteration is one call, so the time per iteration is ns per call.
#include <benchmark/benchmark.h>

#include <string>

#include "tn_velkor/convert/value_text.h"

namespace {

template <class T>
void RunConvert2Str(benchmark::State& state, T value) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    std::string text = ns_velkor::Convert2Str<T>(value);
    benchmark::DoNotOptimize(text);
  }
  state.SetItemsProcessed(state.iterations());
}

template <class T>
void RunConvert2Num(benchmark::State& state, const char* source) {
  const std::string text = source;
  for (auto _ : state) {
    T value = ns_velkor::Convert2Num<T>(text);
    benchmark::DoNotOptimize(value);
  }
  state.SetItemsProcessed(state.iterations());
}

// Values of the size that alarm identifiers and fiber attributes carry.
void BM_Convert2Str_int(benchmark::State& state) { RunConvert2Str<int>(state, -2147483647); }
BENCHMARK(BM_Convert2Str_int);
void BM_Convert2Str_long(benchmark::State& state) { RunConvert2Str<long>(state, 1700000000L); }
BENCHMARK(BM_Convert2Str_long);
void BM_Convert2Str_long_long(benchmark::State& state) { RunConvert2Str<long long>(state, 123456789012LL); }
BENCHMARK(BM_Convert2Str_long_long);
void BM_Convert2Str_float(benchmark::State& state) { RunConvert2Str<float>(state, -0.1f); }
BENCHMARK(BM_Convert2Str_float);
void BM_Convert2Str_double(benchmark::State& state) { RunConvert2Str<double>(state, 1234.5678); }
BENCHMARK(BM_Convert2Str_double);

void BM_Convert2Num_int(benchmark::State& state) { RunConvert2Num<int>(state, "-2147483647"); }
BENCHMARK(BM_Convert2Num_int);
void BM_Convert2Num_long(benchmark::State& state) { RunConvert2Num<long>(state, "1700000000"); }
BENCHMARK(BM_Convert2Num_long);
void BM_Convert2Num_unsigned_long(benchmark::State& state) {
  RunConvert2Num<unsigned long>(state, "18446744073709551615");
}
BENCHMARK(BM_Convert2Num_unsigned_long);
void BM_Convert2Num_unsigned_short(benchmark::State& state) { RunConvert2Num<unsigned short>(state, "65535"); }
BENCHMARK(BM_Convert2Num_unsigned_short);
void BM_Convert2Num_float(benchmark::State& state) { RunConvert2Num<float>(state, "-0.1"); }
BENCHMARK(BM_Convert2Num_float);
void BM_Convert2Num_double(benchmark::State& state) { RunConvert2Num<double>(state, "1234.567800"); }
BENCHMARK(BM_Convert2Num_double);
// A failed conversion (out of range) costs about as much as a good one.
void BM_Convert2Num_int_out_of_range(benchmark::State& state) { RunConvert2Num<int>(state, "99999999999"); }
BENCHMARK(BM_Convert2Num_int_out_of_range);

}  // namespace
