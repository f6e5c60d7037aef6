#include "tn_platform/model/link_mgr_model.h"

#include <tuple>

namespace ns_utilmib {
namespace {

auto Fields(const CLinkMgrModel& m) {
  return std::tie(m.linkID, m.strText4, m.srcPortIndex, m.dstPortIndex, m.tinyValue1, m.tinyValue2, m.p2mpLabel,
                  m.linkRate, m.strText2, m.strText1, m.strText3, m.tinyValue4, m.tinyValue5, m.tinyValue3, m.buildTime,
                  m.modifyTime, m.strText7, m.midNe, m.strLinkFDN, m.strUserLabel, m.srcNeName, m.srcCpName,
                  m.srcSubCardName, m.srcPortName, m.dstNeName, m.dstCpName, m.dstSubCardName, m.dstPortName,
                  m.srcPortInfoType, m.dstPortInfoType, m.protectGroupID, m.strText5, m.strText6, m.srcPortIpAddr,
                  m.dstPortIpAddr, m.srcPortAlias, m.dstPortAlias, m.intValue2, m.intValue3, m.intValue1,
                  m.tinyValue5Mirror, m.optTinyValue, m.strRemark);
}

}  // namespace

void CLinkMgrModel::Init() { *this = CLinkMgrModel(); }

bool CLinkMgrModel::operator==(const CLinkMgrModel& other) const { return Fields(*this) == Fields(other); }

}  // namespace ns_utilmib
