// Fiber, link and port-state records from arbitrary bytes: the first byte
// picks one of four types, the rest is decoded as one whole value. Whatever
// decodes is converted to its model form, which must keep the conversions'
// promises (records_fuzz re-encodes the records themselves).
#include <list>
#include <map>

#include "fuzz/fuzz_common.h"

namespace {

void FuzzFiberInfo(std::string_view bytes) {
  qinventoryfiber::QAsnFiberInfo record;
  if (!FuzzDecode(record, bytes)) return;
  ns_utilmib::TEFiberCable cable;
  ns_velkor::Convert2FiberCable(record, cable);
  // The repaired cable must convert out again.
  qinventoryfiber::QAsnFiberInfo answer;
  ns_velkor::Convert2QAsnFiberInfo(cable, answer);
  FuzzReencoded(answer);
}

void FuzzFiberInfoTemplate(std::string_view bytes) {
  qinventoryfiber::QAsnFiberInfoTemplate record;
  if (!FuzzDecode(record, bytes)) return;
  std::uint64_t mask = 0;
  ns_velkor::Convert2FiberInfoTemplateType(record, mask);
  // Only the twelve column bits exist, and they select the same columns again.
  qinventoryfiber::QAsnFiberInfoTemplate rebuilt;
  ns_velkor::Convert2QAsnFiberInfoTemplate(mask, rebuilt);
  std::uint64_t again = 0;
  ns_velkor::Convert2FiberInfoTemplateType(rebuilt, again);
  if (mask > 0xFFF || again != mask) std::abort();
}

void FuzzLinkList(std::string_view bytes) {
  qinventorylinkexterior::QAsnLinkInfoList list;
  if (!FuzzDecode(list, bytes)) return;
  std::list<ns_utilmib::CLinkMgrModel> models(1);
  ns_velkor::Convert2LinkMgrModelList(list, models);
  if (models.size() != list.Count() + 1) std::abort();
  auto model = std::next(models.begin());
  for (list.MoveFirst(); const qinventorylinkexterior::QAsnLinkInfo* record = list.Current(); list.MoveNext()) {
    if (model->tinyValue5Mirror != model->tinyValue5) std::abort();
    if (model->optTinyValue != (record->optTinyValue.IsNull() ? 0 : record->optTinyValue->Value())) std::abort();
    for (const ns_utilmib::CLinkPortIndex* end : {&model->srcPortIndex, &model->dstPortIndex}) {
      // The R1 id of a port with a sub-group fits in 32 bits.
      if (end->subGroupNo != 0 && end->subGroupNo != -1 && end->portID > 0xFFFFFFFFULL) std::abort();
    }
    ++model;
  }
}

void FuzzPortUseStates(std::string_view bytes) {
  qinventoryport::QAsnPortUseStateList list;
  if (!FuzzDecode(list, bytes)) return;
  for (const unsigned short mask : {0x0000, 0x001F, 0xFFE0, 0x000A}) {
    std::map<ns_utilmib::TNCPPortIndex, unsigned short> map;
    ns_velkor::Convert2MapCpPortIndex2State(list, map, mask);
    if (map.size() > list.Count()) std::abort();
    for (const auto& [index, state] : map) {
      if (state > 4 || ((mask >> state) & 1U) == 0) std::abort();
      // Out to a record and back gives the same index.
      qcommon::QAsnPortIndex record;
      ns_velkor::Convert2QAsnPortIndex(index, record);
      ns_utilmib::TNCPPortIndex back;
      ns_velkor::Convert2CPPortIndex(record, back);
      if (back != index) std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  void (*const targets[])(std::string_view) = {FuzzFiberInfo, FuzzFiberInfoTemplate, FuzzLinkList, FuzzPortUseStates};
  targets[data[0] % 4](std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1));
  return 0;
}
