// Port indexes, virtual port numbers, port use states and link port indexes.
#include <cstdint>

#include "tn_velkor/ns_velkor.h"
#include "tn_velkor/convert/record_values.h"
#include "tn_platform/uid/str_uid_parser.h"

namespace ns_velkor {
namespace ports_detail {

// -1 and an absent component stand for each other; any other value, other
// negative ones included, is present. A held object is reused.
void SetSubLevel(refl::MayNullPointer<AsnTinyInt>& holder, std::int32_t subLevel) {
  if (subLevel == -1) {
    holder.Reset();
  } else {
    holder.GetOrCreate().Set(subLevel);
  }
}

// Use states 0 to 4 are selected by bits 0 to 4 of the mask; higher states
// never are, whatever the upper bits say.
constexpr unsigned kUseStateCount = 5;

bool IsSelectedState(std::uint16_t state, std::uint16_t stateMask) {
  return state < kUseStateCount && ((stateMask >> state) & 1U) != 0;
}

}  // namespace ports_detail

bool isVirtualPort(int portNo) {
  const std::uint32_t value = static_cast<std::uint32_t>(portNo);
  const std::uint32_t portClass = value >> 16;
  const std::uint32_t number = value & 0xFFFFU;
  return (portClass == 16 && number >= 40001 && number <= 40959) || (portClass == 1 && number >= 51 && number <= 255);
}

void Convert2QAsnPortIndex(const ns_utilmib::TNCPPortIndex& index, qcommon::QAsnPortIndex& record) {
  using namespace ports_detail;
  record.level1ID.Set(LowLevel(index.level1ID));
  record.level2ID.Set(LowLevel(index.level2ID));
  SetSubLevel(record.level2SubID, index.level2SubID);
  record.level3ID.Set(LowLevel(index.level3ID));
  SetSubLevel(record.level3SubID, index.level3SubID);
  record.level4ID.Set(LowLevel(index.level4ID));
  record.strIndexText.GetOrCreate().Set(index.strIndexText.c_str());
}

void Convert2CPPortIndex(const qcommon::QAsnPortIndex& record, ns_utilmib::TNCPPortIndex& index) {
  ReadPortIndex(record, index);
}

void Convert2MapCpPortIndex2State(const qinventoryport::QAsnPortUseStateList& list,
                                  std::map<ns_utilmib::TNCPPortIndex, unsigned short>& map, unsigned short stateMask) {
  ns_utilmib::TNCPPortIndex index;
  for (list.MoveFirst(); const qinventoryport::QAsnPortUseState* element = list.Current(); list.MoveNext()) {
    const auto state = static_cast<std::uint16_t>(element->useState.Value());
    if (!ports_detail::IsSelectedState(state, stateMask)) continue;
    index.Init();
    Convert2CPPortIndex(element->portIndex, index);
    map[index] = state;
  }
}

bool Convert2LinkPortIndexByQAsnUniRes(const qcommon::QAsnUniResID& res, ns_utilmib::CLinkPortIndex& idx,
                                       const std::string& moc, bool acceptNode) {
  if (res.strFDN.data() == nullptr) return false;
  const std::string text = OctsText(res.strFDN);
  FrameUtil::StrUIDParser parser;
  if (!parser.Parse(text)) return false;
  idx.strPortFDN = text;
  if (idx.strPortFDN.empty()) {
    idx.strPortFDN = "--";
    return false;
  }
  const std::string mocOfText = parser.GetMOC();
  if (acceptNode && mocOfText == moc) {
    parser.GetValue(idx.nodeID, mocOfText == "ONE" ? "ONE" : "NE", 0);
    idx.strPortMOC = moc;
    return true;
  }
  // SDH end points are never link ends here, whatever else the class says.
  if (mocOfText.find("SDH") != std::string::npos) return false;
  if (mocOfText == "PP") {
    idx.FromPPUni(parser);
  } else if (mocOfText == "LP") {
    idx.FromLMPUni(parser);
  } else if (mocOfText == "SERIAL") {
    idx.FromSerialPUni(parser);
  } else if (mocOfText == "SUBIF") {
    idx.FromSubIfUni(parser);
  } else {
    return false;
  }
  return true;
}

std::uint64_t GetR1LinkPortId(const ns_utilmib::CLinkPortIndex& idx) {
  const std::int32_t subGroup = idx.subGroupNo;
  if (subGroup == 0 || subGroup == -1) return idx.portID;
  std::uint32_t id =
      ((static_cast<std::uint32_t>(subGroup) & 0xFFFFU) << 16) | static_cast<std::uint32_t>(idx.portID & 0xFFFFU);
  if (idx.groupNo != -1) id = ((static_cast<std::uint32_t>(idx.groupNo) & 0xFFU) << 24) | (id & 0xFFFFFFU);
  return id;
}

}  // namespace ns_velkor
