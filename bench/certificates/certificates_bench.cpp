// X.509 on real data: Debian's CA certificates (tests/ca_certificates.h) as
// the RFC 5280 modules' Certificate. Items are certificates, so the reported
// rate gives the time per certificate over the whole set.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/ca_certificates.h"
#include "tests/recordc/corpus/ietf/rfc5280.h"
#include "tn_platform/asn/asn_value_io.h"

namespace {

using Certificate = rfc5280_pkix1explicit88::Certificate;

std::vector<std::string> Certificates() {
  std::vector<std::string> ders;
  for (auto& [name, der] : ca_certificates::Load()) ders.push_back(std::move(der));
  return ders;
}

void DecodeAndFree(benchmark::State& state) {
  const std::vector<std::string> ders = Certificates();
  for (auto _ : state) {
    for (const std::string& der : ders) {
      Certificate certificate;
      AsnDecodeValue(certificate, der);
      benchmark::DoNotOptimize(&certificate);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(ders.size()));
}

void Encode(benchmark::State& state) {
  std::vector<std::unique_ptr<Certificate>> certificates;
  for (const std::string& der : Certificates()) {
    certificates.push_back(std::make_unique<Certificate>());
    AsnDecodeValue(*certificates.back(), der);
  }
  for (auto _ : state) {
    for (const auto& certificate : certificates) {
      std::string der = AsnEncodeValue(*certificate);
      benchmark::DoNotOptimize(der.data());
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(certificates.size()));
}

void DecodeReEncodeAndFree(benchmark::State& state) {
  const std::vector<std::string> ders = Certificates();
  for (auto _ : state) {
    for (const std::string& der : ders) {
      Certificate certificate;
      AsnDecodeValue(certificate, der);
      std::string again = AsnEncodeValue(certificate);
      benchmark::DoNotOptimize(again.data());
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(ders.size()));
}

BENCHMARK(DecodeAndFree);
BENCHMARK(Encode);
BENCHMARK(DecodeReEncodeAndFree);

}  // namespace
