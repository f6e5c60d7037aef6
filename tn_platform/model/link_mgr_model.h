// ns_utilmib::CLinkMgrModel: an external link between two network elements,
// as the link manager keeps it.
//
// A new model, and one after Init(), has numbers 0, texts empty, both ends
// as a new CLinkPortIndex and protectGroupID -1 (none). The link converters
// fill the fields that come from a link record; linkID, linkRate, modifyTime,
// strUserLabel, protectGroupID and strRemark belong to the link manager and
// no record fills them.
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>
#include <string>

#include "tn_platform/model/link_port_index.h"

namespace ns_utilmib {

class CLinkMgrModel {
 public:
  std::uint64_t linkID = 0;  // the link manager's own key
  std::string strText4;
  CLinkPortIndex srcPortIndex;
  CLinkPortIndex dstPortIndex;
  std::uint16_t tinyValue1 = 0;
  std::uint16_t tinyValue2 = 0;
  std::uint16_t p2mpLabel = 0;
  std::int32_t linkRate = 0;  // rate class the link manager derives
  std::string strText2;
  std::string strText1;
  std::string strText3;
  std::uint16_t tinyValue4 = 0;
  std::int32_t tinyValue5 = 0;
  std::int32_t tinyValue3 = 0;
  std::int64_t buildTime = 0;   // seconds since 1970-01-01 UTC
  std::int64_t modifyTime = 0;  // seconds since 1970-01-01 UTC, set by the link manager
  std::string strText7;
  std::int32_t midNe = 0;
  std::string strLinkFDN;
  std::string strUserLabel;
  std::string srcNeName;
  std::string srcCpName;
  std::string srcSubCardName;
  std::string srcPortName;
  std::string dstNeName;
  std::string dstCpName;
  std::string dstSubCardName;
  std::string dstPortName;
  std::int32_t srcPortInfoType = 0;
  std::int32_t dstPortInfoType = 0;
  std::int32_t protectGroupID = -1;  // -1: not protected
  std::string strText5;
  std::string strText6;
  std::string srcPortIpAddr;
  std::string dstPortIpAddr;
  std::string srcPortAlias;
  std::string dstPortAlias;
  double intValue2 = 0.0;
  double intValue3 = 0.0;
  std::int32_t intValue1 = 0;
  std::int32_t tinyValue5Mirror = 0;
  std::int32_t optTinyValue = 0;
  std::string strRemark;

  // The fields in declaration order, for code that walks a model's fields
  // (comparisons, JSON): calls visit(name, member pointer) for each.
  template <class Visitor>
  static void DescribeFields(Visitor&& visit) {
    visit("linkID", &CLinkMgrModel::linkID);
    visit("strText4", &CLinkMgrModel::strText4);
    visit("srcPortIndex", &CLinkMgrModel::srcPortIndex);
    visit("dstPortIndex", &CLinkMgrModel::dstPortIndex);
    visit("tinyValue1", &CLinkMgrModel::tinyValue1);
    visit("tinyValue2", &CLinkMgrModel::tinyValue2);
    visit("p2mpLabel", &CLinkMgrModel::p2mpLabel);
    visit("linkRate", &CLinkMgrModel::linkRate);
    visit("strText2", &CLinkMgrModel::strText2);
    visit("strText1", &CLinkMgrModel::strText1);
    visit("strText3", &CLinkMgrModel::strText3);
    visit("tinyValue4", &CLinkMgrModel::tinyValue4);
    visit("tinyValue5", &CLinkMgrModel::tinyValue5);
    visit("tinyValue3", &CLinkMgrModel::tinyValue3);
    visit("buildTime", &CLinkMgrModel::buildTime);
    visit("modifyTime", &CLinkMgrModel::modifyTime);
    visit("strText7", &CLinkMgrModel::strText7);
    visit("midNe", &CLinkMgrModel::midNe);
    visit("strLinkFDN", &CLinkMgrModel::strLinkFDN);
    visit("strUserLabel", &CLinkMgrModel::strUserLabel);
    visit("srcNeName", &CLinkMgrModel::srcNeName);
    visit("srcCpName", &CLinkMgrModel::srcCpName);
    visit("srcSubCardName", &CLinkMgrModel::srcSubCardName);
    visit("srcPortName", &CLinkMgrModel::srcPortName);
    visit("dstNeName", &CLinkMgrModel::dstNeName);
    visit("dstCpName", &CLinkMgrModel::dstCpName);
    visit("dstSubCardName", &CLinkMgrModel::dstSubCardName);
    visit("dstPortName", &CLinkMgrModel::dstPortName);
    visit("srcPortInfoType", &CLinkMgrModel::srcPortInfoType);
    visit("dstPortInfoType", &CLinkMgrModel::dstPortInfoType);
    visit("protectGroupID", &CLinkMgrModel::protectGroupID);
    visit("strText5", &CLinkMgrModel::strText5);
    visit("strText6", &CLinkMgrModel::strText6);
    visit("srcPortIpAddr", &CLinkMgrModel::srcPortIpAddr);
    visit("dstPortIpAddr", &CLinkMgrModel::dstPortIpAddr);
    visit("srcPortAlias", &CLinkMgrModel::srcPortAlias);
    visit("dstPortAlias", &CLinkMgrModel::dstPortAlias);
    visit("intValue2", &CLinkMgrModel::intValue2);
    visit("intValue3", &CLinkMgrModel::intValue3);
    visit("intValue1", &CLinkMgrModel::intValue1);
    visit("tinyValue5Mirror", &CLinkMgrModel::tinyValue5Mirror);
    visit("optTinyValue", &CLinkMgrModel::optTinyValue);
    visit("strRemark", &CLinkMgrModel::strRemark);
  }

  CLinkMgrModel() = default;
  CLinkMgrModel(const CLinkMgrModel&) = default;
  CLinkMgrModel& operator=(const CLinkMgrModel&) = default;
  ~CLinkMgrModel() = default;

  // Resets every field to the value of a new model.
  void Init();

  // Field by field (doubles compared exactly).
  bool operator==(const CLinkMgrModel& other) const;
  bool operator!=(const CLinkMgrModel& other) const { return !(*this == other); }
};

}  // namespace ns_utilmib
#pragma GCC visibility pop
