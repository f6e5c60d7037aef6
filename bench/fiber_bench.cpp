// Fiber cable conversions, one cable per iteration: the reported time per
// item is the time per cable. Each conversion out fills a fresh record, as a
// service module answering a request does (a reused record would collect five
// more attribute entries per call).
#include <benchmark/benchmark.h>

#include <string>

#include "tn_velkor/ns_velkor.h"
#include "tn_platform/asn/asn_value_io.h"

namespace {

// A cable with texts of typical length on every field the conversion maps.
ns_utilmib::TEFiberCable MakeCable() {
  ns_utilmib::TEFiberCable cable;
  cable.fiberValue1 = 12;
  cable.aEnd = {1, 1001, -1, 3, -1, 2, "NE=1001,SH=1,SL=3,PP=2"};
  cable.zEnd = {1, 1002, -1, 4, 0, 1, "NE=1002,SH=1,SL=4,PP=1"};
  cable.hybridMaxCapacity = 48;
  cable.fiberValue3 = 2;
  cable.doubleValue = 12.75;
  cable.floatValue = 0.35f;
  cable.fiberValue2 = 96;
  cable.fiberValue6 = 1;
  cable.fiberText8 = "G.652D";
  cable.fiberText2 = "Fiber-1001-1002";
  cable.fiberText3 = "duct 7";
  cable.fiberText4 = "owner: north";
  cable.buildTime = 1700000000;
  cable.fiberValue5 = 3;
  cable.memo = "spliced at km 4.2";
  cable.fiberText6 = "vendor A";
  cable.fiberText7 = "contract 42";
  cable.fiberText5 = "Fiber-1001-1002 main";
  cable.reserve = 1;
  cable.srcPortFDN = "NE=1001,SH=1,SL=3,PP=2";
  cable.dstPortFDN = "NE=1002,SH=1,SL=4,PP=1";
  cable.maintenanceState = 1;
  cable.delayTime = 21;
  return cable;
}

void BM_Convert2QAsnFiberInfo(benchmark::State& state) {
  const ns_utilmib::TEFiberCable cable = MakeCable();
  for (auto _ : state) {
    qinventoryfiber::QAsnFiberInfo record;
    ns_velkor::Convert2QAsnFiberInfo(cable, record);
    benchmark::DoNotOptimize(&record);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Convert2QAsnFiberInfo);

void BM_Convert2FiberCable(benchmark::State& state) {
  qinventoryfiber::QAsnFiberInfo record;
  ns_velkor::Convert2QAsnFiberInfo(MakeCable(), record);
  ns_utilmib::TEFiberCable cable;
  for (auto _ : state) {
    ns_velkor::Convert2FiberCable(record, cable);
    benchmark::DoNotOptimize(&cable);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Convert2FiberCable);

// cable -> record -> BER -> record -> cable.
void BM_FiberRoundTrip(benchmark::State& state) {
  const ns_utilmib::TEFiberCable cable = MakeCable();
  ns_utilmib::TEFiberCable back;
  for (auto _ : state) {
    qinventoryfiber::QAsnFiberInfo outgoing;
    ns_velkor::Convert2QAsnFiberInfo(cable, outgoing);
    const std::string bytes = AsnEncodeValue(outgoing);
    qinventoryfiber::QAsnFiberInfo incoming;
    AsnDecodeValue(incoming, bytes);
    ns_velkor::Convert2FiberCable(incoming, back);
    benchmark::DoNotOptimize(&back);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FiberRoundTrip);

}  // namespace
