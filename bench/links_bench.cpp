// Link list conversion (1,000 links, 20 attributes each) and the port
// use-state map (10,000 elements). Items are links and list elements, so the
// reported rate gives the time per item; "time_per_link" states it directly.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <list>
#include <map>

#include "tn_velkor/ns_velkor.h"

namespace {

constexpr int kLinks = 1000;
constexpr int kAttributesPerLink = 20;
constexpr int kUseStates = 10000;

void AddAttribute(qcommon::QAsnNVSList& list, const char* name, const char* value) {
  qcommon::QAsnNameAndValueString* element = list.Append();
  element->name.Set(name);
  element->value.Set(value);
}

// Port ends on both sides, every key the conversion reads plus four it does
// not, so that lookups see a realistic map.
qinventorylinkexterior::QAsnLinkInfoList MakeLinkList() {
  static const char* const kTextKeys[] = {"srcNeName",     "dstNeName",     "srcPortName",    "dstPortName",
                                          "srcCpName",     "dstCpName",     "srcSubCardName", "dstSubCardName",
                                          "srcPortIpAddr", "dstPortIpAddr", "srcPortAlias",   "dstPortAlias"};
  qinventorylinkexterior::QAsnLinkInfoList list;
  char text[64];
  for (int i = 0; i < kLinks; ++i) {
    qinventorylinkexterior::QAsnLinkInfo* link = list.Append();
    std::snprintf(text, sizeof text, "LINK=%d", i);
    link->linkResID.strFDN.Set(text);
    std::snprintf(text, sizeof text, "NE=%d,SH=1,SL=%d,GRP=2,SUBGRP=3,PP=%d", 1000 + i, i % 16, i % 48);
    link->srcResID.strFDN.Set(text);
    link->srcResID.strMOC.Set("PP");
    std::snprintf(text, sizeof text, "NE=%d,SH=1,SL=%d,LP=%d", 2000 + i, i % 16, i % 48);
    link->dstResID.strFDN.Set(text);
    link->dstResID.strMOC.Set("LP");
    link->strText1.Set("text one");
    link->tinyValue1 = i;
    link->optTinyValue.GetOrCreate().Set(i % 7);
    qcommon::QAsnNVSList& attributes = link->attrList.GetOrCreate();
    for (const char* key : kTextKeys) {
      std::snprintf(text, sizeof text, "%s-%d", key, i);
      AddAttribute(attributes, key, text);
    }
    AddAttribute(attributes, "BuildTime_t", "1500000000");
    AddAttribute(attributes, "P2MPLable", "300");
    AddAttribute(attributes, "MidNe", "17");
    AddAttribute(attributes, "a_oneID", "42");
    for (const char* key : {"Extra1", "Extra2", "Extra3", "Extra4"}) AddAttribute(attributes, key, "x");
  }
  return list;
}

void BM_Convert2LinkMgrModelList(benchmark::State& state) {
  const qinventorylinkexterior::QAsnLinkInfoList list = MakeLinkList();
  if (list.First()->attrList->Count() != kAttributesPerLink) state.SkipWithError("wrong attribute count");
  for (auto _ : state) {
    std::list<ns_utilmib::CLinkMgrModel> models;
    ns_velkor::Convert2LinkMgrModelList(list, models);
    benchmark::DoNotOptimize(models);
  }
  state.SetItemsProcessed(state.iterations() * kLinks);
  // Seconds per link, printed with an SI prefix ("6.7us").
  state.counters["time_per_link"] =
      benchmark::Counter(kLinks, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_Convert2LinkMgrModelList)->Unit(benchmark::kMillisecond);

// Five states in turn, half of them selected; 1,000 distinct ports, so later
// elements overwrite earlier entries as a real port scan would.
qinventoryport::QAsnPortUseStateList MakeUseStateList() {
  qinventoryport::QAsnPortUseStateList list;
  for (int i = 0; i < kUseStates; ++i) {
    qinventoryport::QAsnPortUseState* element = list.Append();
    element->portIndex.level1ID = 1000 + i % 10;
    element->portIndex.level2ID = 1;
    element->portIndex.level3ID = (i / 10) % 100;
    element->portIndex.level4ID = 1;
    element->portIndex.strIndexText.GetOrCreate().Set("port");
    element->useState = i % 5;
  }
  return list;
}

void BM_Convert2MapCpPortIndex2State(benchmark::State& state) {
  const qinventoryport::QAsnPortUseStateList list = MakeUseStateList();
  for (auto _ : state) {
    std::map<ns_utilmib::TNCPPortIndex, unsigned short> map;
    ns_velkor::Convert2MapCpPortIndex2State(list, map, 0b10101);
    benchmark::DoNotOptimize(map);
  }
  state.SetItemsProcessed(state.iterations() * kUseStates);
}
BENCHMARK(BM_Convert2MapCpPortIndex2State);

}  // namespace
