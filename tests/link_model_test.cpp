// Link records into link models: attributes, record components, link ends,
// lists, and a list encoded by an independent ASN.1 encoder.
#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>
#include <list>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/test_bytes.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_velkor/ns_velkor.h"

namespace {

using ns_utilmib::CLinkMgrModel;
using ns_utilmib::CLinkPortIndex;
using qinventorylinkexterior::QAsnLinkInfo;
using Attributes = std::vector<std::pair<std::string, std::string>>;

void SetResID(qcommon::QAsnUniResID& res, const char* fdn, const char* moc, int neID) {
  res.strFDN.Set(fdn);
  res.strMOC.Set(moc);
  res.neID = neID;
}

void SetAttributes(QAsnLinkInfo& record, const Attributes& attributes) {
  qcommon::QAsnNVSList& list = record.attrList.GetOrCreate();
  for (const auto& [name, value] : attributes) {
    qcommon::QAsnNameAndValueString* element = list.Append();
    element->name.Set(name.c_str());
    element->value.Set(value.c_str());
  }
}

// The model fields the attributes fill, by key.
constexpr std::pair<const char*, std::string CLinkMgrModel::*> kTextKeys[] = {
    {"srcNeName", &CLinkMgrModel::srcNeName},           {"dstNeName", &CLinkMgrModel::dstNeName},
    {"srcPortName", &CLinkMgrModel::srcPortName},       {"dstPortName", &CLinkMgrModel::dstPortName},
    {"srcCpName", &CLinkMgrModel::srcCpName},           {"dstCpName", &CLinkMgrModel::dstCpName},
    {"srcSubCardName", &CLinkMgrModel::srcSubCardName}, {"dstSubCardName", &CLinkMgrModel::dstSubCardName},
    {"srcPortIpAddr", &CLinkMgrModel::srcPortIpAddr},   {"dstPortIpAddr", &CLinkMgrModel::dstPortIpAddr},
    {"srcPortAlias", &CLinkMgrModel::srcPortAlias},     {"dstPortAlias", &CLinkMgrModel::dstPortAlias},
};

long long NumberField(const CLinkMgrModel& m, const std::string& key) {
  return key == "BuildTime_t" ? m.buildTime : key == "P2MPLable" ? m.p2mpLabel : m.dstPortInfoType;
}

// A model whose every field the attributes could fill already holds a value.
CLinkMgrModel PrefilledModel() {
  CLinkMgrModel model;
  for (const auto& [key, field] : kTextKeys) model.*field = "before";
  model.srcPortInfoType = 11;
  model.dstPortInfoType = 12;
  model.p2mpLabel = 13;
  model.midNe = 14;
  model.buildTime = 15;
  return model;
}

// Without an attribute list, or with keys that only nearly match, the build
// time is the current time and every attribute field keeps its value.
TEST(Convert2LinkMgrModel, WithoutMatchingAttributesTakesCurrentTimeAndKeepsFields) {
  Attributes nearMisses;  // one letter's case changed, or one letter dropped
  for (const auto& [key, field] : kTextKeys) {
    std::string upper = key;
    upper[0] = static_cast<char>(upper[0] - 'a' + 'A');
    nearMisses.emplace_back(upper, "wrong");
    nearMisses.emplace_back(std::string(key).substr(1), "wrong");
  }
  for (const char* key : {"buildTime_t", "P2MPLabel", "p2mpLable", "midNe", "a_oneid", "z_OneID", "SrcPortInfoType"})
    nearMisses.emplace_back(key, "1");
  for (const bool withList : {false, true}) {
    SCOPED_TRACE(withList ? "near misses" : "no attrList");
    QAsnLinkInfo record;
    SetResID(record.srcResID, "NE=1,PP=2", "PP", 0);
    if (withList) SetAttributes(record, nearMisses);
    CLinkMgrModel model = PrefilledModel();
    const std::int64_t before = std::time(nullptr);
    ns_velkor::Convert2LinkMgrModel(record, model);
    const std::int64_t after = std::time(nullptr);
    EXPECT_GE(model.buildTime, before);
    EXPECT_LE(model.buildTime, after);
    for (const auto& [key, field] : kTextKeys) EXPECT_EQ(model.*field, "before") << key;
    EXPECT_EQ(std::make_tuple(model.srcPortInfoType, model.dstPortInfoType, model.p2mpLabel, model.midNe,
                              model.srcPortIndex.oneID, model.dstPortIndex.oneID),
              std::make_tuple(11, 12, std::uint16_t{13}, 14, std::uint64_t{0}, std::uint64_t{0}));
  }
}

// Each number next to every text attribute, read by its exact key.
TEST(Convert2LinkMgrModel, Attributes) {
  const std::tuple<const char*, const char*, long long> cases[] = {
      {"BuildTime_t", "abc", 0},              // 0, not the current time
      {"P2MPLable", "70000", 0},              // unsigned short: beyond it gives 0
      {"dstPortInfoType", "99999999999", 0},  // int: beyond it gives 0
  };
  for (const auto& [key, value, expected] : cases) {
    SCOPED_TRACE(std::string(key) + "=" + value);
    Attributes attributes{{key, value}};
    for (const auto& [name, field] : kTextKeys) attributes.emplace_back(name, std::string("v-") + name);
    QAsnLinkInfo record;
    SetAttributes(record, attributes);
    CLinkMgrModel model = PrefilledModel();
    ns_velkor::Convert2LinkMgrModel(record, model);
    EXPECT_EQ(NumberField(model, key), expected);
    for (const auto& [name, field] : kTextKeys) EXPECT_EQ(model.*field, std::string("v-") + name);
  }
}

// Edge values the independent list below does not hold.
TEST(Convert2LinkMgrModel, RecordComponents) {
  QAsnLinkInfo record;
  record.tinyValue4 = 0x10004;  // unsigned 16-bit fields keep the low 16 bits
  record.tinyValue5 = -70000;
  record.intValue1 = (1LL << 32) + 5;
  record.intValue3 = 0x80000000LL;  // read as a signed 32-bit value
  record.strText2.Set("tw\0o", 4);
  CLinkMgrModel model;
  model.optTinyValue = 4;
  ns_velkor::Convert2LinkMgrModel(record, model);
  EXPECT_EQ(std::make_tuple(model.tinyValue4, model.tinyValue5, model.tinyValue5Mirror, model.intValue1,
                            model.intValue3, model.strText2, model.optTinyValue),  // absent optTinyValue gives 0
            std::make_tuple(4, -70000, -70000, 5, -2147483648.0, "tw", 0));
}

TEST(Convert2LinkMgrModel, LinkEnds) {
  // what, strFDN, strMOC, neID -> nodeID, strPortMOC, portID of both ends
  const std::tuple<const char*, const char*, const char*, int, std::uint64_t, const char*, std::uint64_t> cases[] = {
      {"node end", "NE=1001", "NE", 7, 1001, "NE", 0},
      {"ONE end reads ONE", "NE=3,ONE=44", "ONE", 7, 44, "ONE", 0},
      {"other class as FR", "NE=9,FR=1", "FRX", 7, 9, "FR", 0},
      {"port end with R1 id", "NE=5,GRP=2,SUBGRP=3,PP=0x", "PP", 7, 5, "PP", 0x2030000},
      {"neID fallback", "XX=1", "NE", 1004, 1004, "XX", 0},
      {"neID fallback, no text", "", "PP", 0xFFFFFF, 0xFFFFFF, "", 0},
      {"neID too large", "XX=1", "NE", 0x1000000, 0, "XX", 0},
      {"negative neID", "XX=1", "NE", -1, 0, "XX", 0},
      {"SDH end keeps fallbacks", "NE=1,SDH=1", "PP", 6, 6, "SDH", 0},
      {"unparsable text", "ne=1", "NE", 8, 8, "", 0},
  };
  for (const auto& [what, fdn, moc, neID, nodeID, portMOC, portID] : cases) {
    SCOPED_TRACE(what);
    QAsnLinkInfo record;
    SetResID(record.srcResID, fdn, moc, neID);
    SetResID(record.dstResID, fdn, moc, neID);
    SetAttributes(record, {{"a_oneID", "31"}, {"z_oneID", "-1"}});
    CLinkMgrModel model;
    ns_velkor::Convert2LinkMgrModel(record, model);
    for (const CLinkPortIndex* end : {&model.srcPortIndex, &model.dstPortIndex}) {
      EXPECT_EQ(std::make_tuple(end->nodeID, end->strPortMOC, end->portID), std::make_tuple(nodeID, portMOC, portID));
    }
    EXPECT_EQ(model.srcPortIndex.oneID, 31u);
    EXPECT_EQ(model.dstPortIndex.oneID, UINT64_MAX);
  }
}

// ---- a list from an independent encoder ---------------------------------------

// Every field in declaration order, link ends nested.
auto EndFields(const CLinkPortIndex& i) {
  return std::make_tuple(i.nodeID, i.oneID, i.shelfNo, i.slotNo, i.groupNo, i.portID, i.subGroupNo,
                         static_cast<int>(i.portKind), i.strPortFDN, i.strPortMOC);
}
std::string Describe(const CLinkMgrModel& m) {
  return ::testing::PrintToString(std::tuple_cat(
      std::make_tuple(m.linkID, m.strText4, EndFields(m.srcPortIndex), EndFields(m.dstPortIndex), m.tinyValue1,
                      m.tinyValue2, m.p2mpLabel, m.linkRate, m.strText2, m.strText1, m.strText3, m.tinyValue4,
                      m.tinyValue5, m.tinyValue3, m.buildTime, m.modifyTime, m.strText7, m.midNe, m.strLinkFDN),
      std::make_tuple(m.strUserLabel, m.srcNeName, m.srcCpName, m.srcSubCardName, m.srcPortName, m.dstNeName,
                      m.dstCpName, m.dstSubCardName, m.dstPortName, m.srcPortInfoType, m.dstPortInfoType,
                      m.protectGroupID, m.strText5, m.strText6, m.srcPortIpAddr, m.dstPortIpAddr, m.srcPortAlias,
                      m.dstPortAlias, m.intValue2, m.intValue3, m.intValue1, m.tinyValue5Mirror, m.optTinyValue,
                      m.strRemark)));
}

// A QAsnLinkInfoList of two links encoded once by pyasn1 0.6.3 (BER): the
// pyasn1 type of QAsnLinkInfoList was built from the module texts by the
// Registry of tools/interop/asn_module.py, filled with the values below and
// written out with pyasn1.codec.ber.encoder.encode:
//   1: linkResID "LINK=7"; strText1..7 "t1".."t7"; tinyValue1..5 0x12345, -2,
//      -7, 4, 12; src "NE=1001,SH=1,SL=3,PP=2" (MOC PP, neID 1001); dst
//      "NE=1002,GRP=2,SUBGRP=3,LP=5" (MOC LP, neID 1002); spareValue 00 FF;
//      attrList BuildTime_t=1500000000, srcNeName=NE-A, dstNeName=NE-B,
//      P2MPLable=-1, a_oneID=42, MidNe=9, srcPortInfoType=3; intValue1..3 -1,
//      -3, 100000; optTinyValue 9.
//   2: linkResID "LINK=8"; strText2 "b", strText7 "g", the others empty;
//      tinyValue1..5 1..5; src "NE=1003" (MOC NE, neID 5); dst "" (MOC FR,
//      neID 1004); spareValue empty; attrList BuildTime_t=7; intValues 0; no
//      optTinyValue.
constexpr const char* kPyasn1LinkList =
    "3082019630820121301104064c494e4b3d3704044c494e4b0201000402743104027432040274330402743402030123450201fe30200416"
    "4e453d313030312c53483d312c534c3d332c50503d3204025050020203e93025041b4e453d313030322c4752503d322c5355424752503d"
    "332c4c503d3504024c50020203ea0201f9020104040200ffa081833019040b4275696c6454696d655f74040a3135303030303030303030"
    "1104097372634e654e616d6504044e452d41301104096473744e654e616d6504044e452d42300f040950324d504c61626c6504022d3130"
    "0d0407615f6f6e65494404023432300a04054d69644e650401393014040f737263506f7274496e666f547970650401330201ff0201fd02"
    "030186a004027435040274360402743702010c810109306f301104064c494e4b3d3804044c494e4b0201000400040162040004000201010"
    "20102301004074e453d3130303304024e45020105300a040004024652020203ec0201030201040400a0123010040b4275696c6454696d65"
    "5f7404013702010002010002010004000400040167020105";

// Describe() of the two models the list must give (33751045 is 0x2030005).
constexpr const char* kExpectedModels[] = {
    R"((0, "t4", (1001, 42, 1, 3, -1, 2, 0, 1, "NE=1001,SH=1,SL=3,PP=2", "PP"), )"
    R"((1002, 0, -1, -1, 2, 33751045, 3, 2, "NE=1002,GRP=2,SUBGRP=3,LP=5", "LP"), )"
    R"(9029, 65534, 65535, 0, "t2", "t1", "t3", 4, 12, -7, 1500000000, 0, "t7", 9, "LINK=7", "", "NE-A", "", "", "", )"
    R"("NE-B", "", "", "", 3, 0, -1, "t5", "t6", "", "", "", "", -3, 100000, -1, 12, 9, ""))",
    R"((0, "", (1003, 0, -1, -1, -1, 0, -1, 0, "NE=1003", "NE"), (1004, 0, -1, -1, -1, 0, -1, 0, "", ""), )"
    R"(1, 2, 0, 0, "b", "", "", 4, 5, 3, 7, 0, "g", 0, "LINK=8", "", "", "", "", "", "", "", "", "", 0, 0, -1, )"
    R"("", "", "", "", "", "", 0, 0, 0, 5, 0, ""))",
};

// The list appends to the models already there, each from an Init() model, and
// leaves the list's cursor at its end.
TEST(Convert2LinkMgrModelList, DecodesIndependentEncoding) {
  qinventorylinkexterior::QAsnLinkInfoList list;
  AsnDecodeValue(list, test_bytes::Hex(kPyasn1LinkList));
  ASSERT_EQ(list.Count(), 2u);
  ASSERT_NE(list.First()->spareValue.data(), nullptr);
  EXPECT_EQ(test_bytes::ToHex(list.First()->spareValue.view()), "00 FF");
  std::list<CLinkMgrModel> models(1);
  models.front().strLinkFDN = "old";
  ns_velkor::Convert2LinkMgrModelList(list, models);
  EXPECT_EQ(list.Current(), nullptr);
  ASSERT_EQ(models.size(), 3u);
  auto model = models.begin();
  EXPECT_EQ((model++)->strLinkFDN, "old");
  for (const char* expected : kExpectedModels) EXPECT_EQ(Describe(*model++), expected);
  // Our encoder gives the same octets back.
  EXPECT_EQ(test_bytes::ToHex(AsnEncodeValue(list)), test_bytes::ToHex(test_bytes::Hex(kPyasn1LinkList)));
}

}  // namespace
