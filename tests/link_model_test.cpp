// Link records into link models: attributes, record components, link ends,
// lists, and a list encoded by an independent ASN.1 encoder.
#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>
#include <list>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "convert/ns_velkor.h"
#include "platform/asn/asn_value_io.h"
#include "tests/test_bytes.h"

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

// A model whose every field the attributes could fill already holds a value.
CLinkMgrModel PrefilledModel() {
  CLinkMgrModel model;
  for (std::string* field : {&model.srcNeName, &model.dstNeName, &model.srcPortName, &model.dstPortName,
                             &model.srcCpName, &model.dstCpName, &model.srcSubCardName, &model.dstSubCardName,
                             &model.srcPortIpAddr, &model.dstPortIpAddr, &model.srcPortAlias, &model.dstPortAlias}) {
    *field = "before";
  }
  model.srcPortInfoType = 11;
  model.dstPortInfoType = 12;
  model.p2mpLabel = 13;
  model.midNe = 14;
  model.buildTime = 15;
  return model;
}

TEST(Convert2LinkMgrModel, WithoutAttributesTakesCurrentTimeAndKeepsFields) {
  QAsnLinkInfo record;
  SetResID(record.srcResID, "NE=1,PP=2", "PP", 0);
  CLinkMgrModel model = PrefilledModel();
  const std::int64_t before = std::time(nullptr);
  ns_velkor::Convert2LinkMgrModel(record, model);
  const std::int64_t after = std::time(nullptr);
  EXPECT_GE(model.buildTime, before);
  EXPECT_LE(model.buildTime, after);
  CLinkMgrModel expected = PrefilledModel();
  for (const std::string& field : {model.srcNeName, model.dstPortAlias, model.srcSubCardName})
    EXPECT_EQ(field, "before");
  EXPECT_EQ(model.srcPortInfoType, expected.srcPortInfoType);
  EXPECT_EQ(model.dstPortInfoType, expected.dstPortInfoType);
  EXPECT_EQ(model.p2mpLabel, expected.p2mpLabel);
  EXPECT_EQ(model.midNe, expected.midNe);
  EXPECT_EQ(model.srcPortIndex.oneID, 0u);
  EXPECT_EQ(model.dstPortIndex.oneID, 0u);
}

TEST(Convert2LinkMgrModel, NumericAttributes) {
  struct Case {
    const char* key;
    const char* value;
    std::int64_t CLinkMgrModel::*wide;  // or one of the narrower fields below
    std::int32_t CLinkMgrModel::*narrow;
    std::uint16_t CLinkMgrModel::*label;
    long long expected;
  };
  const Case cases[] = {
      {"BuildTime_t", "1500000000", &CLinkMgrModel::buildTime, nullptr, nullptr, 1500000000},
      {"BuildTime_t", "abc", &CLinkMgrModel::buildTime, nullptr, nullptr, 0},  // 0, not the current time
      {"BuildTime_t", " 42s", &CLinkMgrModel::buildTime, nullptr, nullptr, 42},
      {"P2MPLable", "70000", nullptr, nullptr, &CLinkMgrModel::p2mpLabel, 0},
      {"P2MPLable", "-1", nullptr, nullptr, &CLinkMgrModel::p2mpLabel, 65535},
      {"P2MPLable", "300", nullptr, nullptr, &CLinkMgrModel::p2mpLabel, 300},
      {"srcPortInfoType", "-4", nullptr, &CLinkMgrModel::srcPortInfoType, nullptr, -4},
      {"dstPortInfoType", "99999999999", nullptr, &CLinkMgrModel::dstPortInfoType, nullptr, 0},
      {"MidNe", "3.9", nullptr, &CLinkMgrModel::midNe, nullptr, 3},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.key) + "=" + c.value);
    QAsnLinkInfo record;
    SetAttributes(record, {{c.key, c.value}});
    CLinkMgrModel model = PrefilledModel();
    ns_velkor::Convert2LinkMgrModel(record, model);
    const long long got = c.wide ? model.*c.wide : c.narrow ? model.*c.narrow : model.*c.label;
    EXPECT_EQ(got, c.expected);
  }
}

TEST(Convert2LinkMgrModel, TextAttributesByExactKey) {
  const std::pair<const char*, std::string CLinkMgrModel::*> keys[] = {
      {"srcNeName", &CLinkMgrModel::srcNeName},           {"dstNeName", &CLinkMgrModel::dstNeName},
      {"srcPortName", &CLinkMgrModel::srcPortName},       {"dstPortName", &CLinkMgrModel::dstPortName},
      {"srcCpName", &CLinkMgrModel::srcCpName},           {"dstCpName", &CLinkMgrModel::dstCpName},
      {"srcSubCardName", &CLinkMgrModel::srcSubCardName}, {"dstSubCardName", &CLinkMgrModel::dstSubCardName},
      {"srcPortIpAddr", &CLinkMgrModel::srcPortIpAddr},   {"dstPortIpAddr", &CLinkMgrModel::dstPortIpAddr},
      {"srcPortAlias", &CLinkMgrModel::srcPortAlias},     {"dstPortAlias", &CLinkMgrModel::dstPortAlias},
  };
  Attributes exact;
  Attributes nearMisses;  // one letter's case changed, or one letter dropped
  for (const auto& [key, field] : keys) {
    exact.emplace_back(key, std::string("v-") + key);
    std::string upper = key;
    upper[0] = static_cast<char>(upper[0] - 'a' + 'A');
    nearMisses.emplace_back(upper, "wrong");
    nearMisses.emplace_back(std::string(key).substr(1), "wrong");
  }
  for (const char* key : {"buildTime_t", "P2MPLabel", "p2mpLable", "midNe", "a_oneid", "z_OneID"})
    nearMisses.emplace_back(key, "1");

  QAsnLinkInfo exactRecord;
  SetAttributes(exactRecord, exact);
  CLinkMgrModel model = PrefilledModel();
  ns_velkor::Convert2LinkMgrModel(exactRecord, model);
  for (const auto& [key, field] : keys) EXPECT_EQ(model.*field, std::string("v-") + key);

  QAsnLinkInfo missRecord;
  SetAttributes(missRecord, nearMisses);
  CLinkMgrModel untouched = PrefilledModel();
  const std::int64_t before = std::time(nullptr);
  ns_velkor::Convert2LinkMgrModel(missRecord, untouched);
  for (const auto& [key, field] : keys) EXPECT_EQ(untouched.*field, "before") << key;
  EXPECT_GE(untouched.buildTime, before);  // "buildTime_t" is not "BuildTime_t"
  EXPECT_EQ(untouched.p2mpLabel, 13);
  EXPECT_EQ(untouched.midNe, 14);
  EXPECT_EQ(untouched.srcPortIndex.oneID, 0u);
  EXPECT_EQ(untouched.dstPortIndex.oneID, 0u);
}

TEST(Convert2LinkMgrModel, RecordComponents) {
  QAsnLinkInfo record;
  record.tinyValue1 = 0x12345;
  record.tinyValue2 = -2;
  record.tinyValue4 = 0x10004;
  record.tinyValue3 = -7;
  record.tinyValue5 = -70000;
  record.intValue1 = (1LL << 32) + 5;
  record.intValue2 = -3;
  record.intValue3 = 0x80000000LL;
  record.strText1.Set("one");
  record.strText2.Set("tw\0o", 4);
  record.strText7.Set("seven");
  record.linkResID.strFDN.Set("LINK=3");
  CLinkMgrModel model;
  ns_velkor::Convert2LinkMgrModel(record, model);
  EXPECT_EQ(model.tinyValue1, 0x2345);
  EXPECT_EQ(model.tinyValue2, 0xFFFE);
  EXPECT_EQ(model.tinyValue4, 4);
  EXPECT_EQ(model.tinyValue3, -7);
  EXPECT_EQ(model.tinyValue5, -70000);
  EXPECT_EQ(model.tinyValue5Mirror, -70000);
  EXPECT_EQ(model.intValue1, 5);
  EXPECT_EQ(model.intValue2, -3.0);
  EXPECT_EQ(model.intValue3, -2147483648.0);  // read as a signed 32-bit value
  EXPECT_EQ(model.strText1, "one");
  EXPECT_EQ(model.strText2, "tw");
  EXPECT_EQ(model.strText7, "seven");
  EXPECT_EQ(model.strLinkFDN, "LINK=3");
  EXPECT_EQ(model.optTinyValue, 0);

  model.optTinyValue = 4;
  ns_velkor::Convert2LinkMgrModel(record, model);
  EXPECT_EQ(model.optTinyValue, 0) << "absent overwrites";
  record.optTinyValue.GetOrCreate().Set(9);
  ns_velkor::Convert2LinkMgrModel(record, model);
  EXPECT_EQ(model.optTinyValue, 9);
}

TEST(Convert2LinkMgrModel, LinkEnds) {
  struct Case {
    const char* what;
    const char* fdn;
    const char* moc;
    int neID;
    std::uint64_t nodeID;
    const char* portMOC;
    std::uint64_t portID;
  };
  const Case cases[] = {
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
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    QAsnLinkInfo record;
    SetResID(record.srcResID, c.fdn, c.moc, c.neID);
    SetResID(record.dstResID, c.fdn, c.moc, c.neID);
    SetAttributes(record, {{"a_oneID", "31"}, {"z_oneID", "-1"}});
    CLinkMgrModel model;
    ns_velkor::Convert2LinkMgrModel(record, model);
    for (const CLinkPortIndex* end : {&model.srcPortIndex, &model.dstPortIndex}) {
      EXPECT_EQ(end->nodeID, c.nodeID);
      EXPECT_EQ(end->strPortMOC, c.portMOC);
      EXPECT_EQ(end->portID, c.portID);
    }
    EXPECT_EQ(model.srcPortIndex.oneID, 31u);
    EXPECT_EQ(model.dstPortIndex.oneID, UINT64_MAX);
  }
}

TEST(Convert2LinkMgrModelList, AppendsInOrderFromInitModels) {
  qinventorylinkexterior::QAsnLinkInfoList list;
  for (const char* fdn : {"LINK=1", "LINK=2", "LINK=3"}) list.Append()->linkResID.strFDN.Set(fdn);
  SetAttributes(*list.First(), {{"srcNeName", "A"}, {"MidNe", "5"}, {"BuildTime_t", "1"}});
  std::list<CLinkMgrModel> models(2);
  models.front().strLinkFDN = "old-1";
  models.back().strLinkFDN = "old-2";
  ns_velkor::Convert2LinkMgrModelList(list, models);
  ASSERT_EQ(models.size(), 5u);
  std::vector<std::string> fdns;
  for (const CLinkMgrModel& model : models) fdns.push_back(model.strLinkFDN);
  EXPECT_EQ(fdns, (std::vector<std::string>{"old-1", "old-2", "LINK=1", "LINK=2", "LINK=3"}));
  const CLinkMgrModel& first = *std::next(models.begin(), 2);
  const CLinkMgrModel& second = *std::next(models.begin(), 3);
  EXPECT_EQ(first.srcNeName, "A");
  EXPECT_EQ(first.midNe, 5);
  EXPECT_EQ(second.srcNeName, "") << "reset between records";
  EXPECT_EQ(second.midNe, 0);
  EXPECT_EQ(list.Current(), nullptr) << "cursor at the end of the walk";
}

// ---- a list from an independent encoder ---------------------------------------

// Every field, for readable comparisons of whole models.
std::string Describe(const CLinkPortIndex& i) {
  std::ostringstream os;
  os << "{node " << i.nodeID << " one " << i.oneID << " sh " << i.shelfNo << " sl " << i.slotNo << " grp " << i.groupNo
     << " port " << i.portID << " subgrp " << i.subGroupNo << " kind " << static_cast<int>(i.portKind) << " fdn '"
     << i.strPortFDN << "' moc '" << i.strPortMOC << "'}";
  return os.str();
}

std::string Describe(const CLinkMgrModel& m) {
  std::ostringstream os;
  os << "linkID " << m.linkID << "\nstrText1-7 '" << m.strText1 << "' '" << m.strText2 << "' '" << m.strText3 << "' '"
     << m.strText4 << "' '" << m.strText5 << "' '" << m.strText6 << "' '" << m.strText7 << "'\nsrc "
     << Describe(m.srcPortIndex) << "\ndst " << Describe(m.dstPortIndex) << "\ntiny " << m.tinyValue1 << " "
     << m.tinyValue2 << " " << m.tinyValue3 << " " << m.tinyValue4 << " " << m.tinyValue5 << " " << m.tinyValue5Mirror
     << " opt " << m.optTinyValue << "\nint " << m.intValue1 << " " << m.intValue2 << " " << m.intValue3 << "\np2mp "
     << m.p2mpLabel << " rate " << m.linkRate << " build " << m.buildTime << " modify " << m.modifyTime << " midNe "
     << m.midNe << " infoTypes " << m.srcPortInfoType << " " << m.dstPortInfoType << " protect " << m.protectGroupID
     << "\nfdn '" << m.strLinkFDN << "' label '" << m.strUserLabel << "' remark '" << m.strRemark << "'\nsrc names '"
     << m.srcNeName << "' '" << m.srcCpName << "' '" << m.srcSubCardName << "' '" << m.srcPortName << "' '"
     << m.srcPortIpAddr << "' '" << m.srcPortAlias << "'\ndst names '" << m.dstNeName << "' '" << m.dstCpName << "' '"
     << m.dstSubCardName << "' '" << m.dstPortName << "' '" << m.dstPortIpAddr << "' '" << m.dstPortAlias << "'";
  return os.str();
}

// A QAsnLinkInfoList of two links encoded once by pyasn1 0.6.3 (BER): the
// pyasn1 type of QAsnLinkInfoList was built from the module texts by the
// Registry of tests/interop/asn_module.py, filled with the values below and
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

std::vector<CLinkMgrModel> ExpectedPyasn1Models() {
  CLinkMgrModel first;
  first.strText1 = "t1";
  first.strText2 = "t2";
  first.strText3 = "t3";
  first.strText4 = "t4";
  first.strText5 = "t5";
  first.strText6 = "t6";
  first.strText7 = "t7";
  first.tinyValue1 = 0x2345;
  first.tinyValue2 = 0xFFFE;
  first.tinyValue3 = -7;
  first.tinyValue4 = 4;
  first.tinyValue5 = first.tinyValue5Mirror = 12;
  first.optTinyValue = 9;
  first.intValue1 = -1;
  first.intValue2 = -3.0;
  first.intValue3 = 100000.0;
  first.buildTime = 1500000000;
  first.srcNeName = "NE-A";
  first.dstNeName = "NE-B";
  first.p2mpLabel = 65535;
  first.midNe = 9;
  first.srcPortInfoType = 3;
  first.strLinkFDN = "LINK=7";
  CLinkPortIndex& src = first.srcPortIndex;
  src.nodeID = 1001;
  src.oneID = 42;
  src.shelfNo = 1;
  src.slotNo = 3;
  src.portID = 2;
  src.subGroupNo = 0;
  src.portKind = ns_utilmib::LinkPortKind::kPhysical;
  src.strPortFDN = "NE=1001,SH=1,SL=3,PP=2";
  src.strPortMOC = "PP";
  CLinkPortIndex& dst = first.dstPortIndex;
  dst.nodeID = 1002;
  dst.groupNo = 2;
  dst.subGroupNo = 3;
  dst.portID = 0x2030005;
  dst.portKind = ns_utilmib::LinkPortKind::kLogical;
  dst.strPortFDN = "NE=1002,GRP=2,SUBGRP=3,LP=5";
  dst.strPortMOC = "LP";

  CLinkMgrModel second;
  second.strText2 = "b";
  second.strText7 = "g";
  second.tinyValue1 = 1;
  second.tinyValue2 = 2;
  second.tinyValue3 = 3;
  second.tinyValue4 = 4;
  second.tinyValue5 = second.tinyValue5Mirror = 5;
  second.buildTime = 7;
  second.strLinkFDN = "LINK=8";
  second.srcPortIndex.nodeID = 1003;
  second.srcPortIndex.strPortFDN = "NE=1003";
  second.srcPortIndex.strPortMOC = "NE";
  second.dstPortIndex.nodeID = 1004;  // from neID: the identifier is empty
  return {first, second};
}

TEST(Convert2LinkMgrModelList, DecodesIndependentEncoding) {
  qinventorylinkexterior::QAsnLinkInfoList list;
  AsnDecodeValue(list, test_bytes::Hex(kPyasn1LinkList));
  ASSERT_EQ(list.Count(), 2u);
  ASSERT_NE(list.First()->spareValue.data(), nullptr);
  EXPECT_EQ(test_bytes::ToHex(list.First()->spareValue.view()), "00 FF");
  std::list<CLinkMgrModel> models;
  ns_velkor::Convert2LinkMgrModelList(list, models);
  const std::vector<CLinkMgrModel> expected = ExpectedPyasn1Models();
  ASSERT_EQ(models.size(), expected.size());
  auto model = models.begin();
  for (const CLinkMgrModel& want : expected) {
    EXPECT_EQ(Describe(*model), Describe(want));
    EXPECT_TRUE(*model == want);
    ++model;
  }
  // Our encoder gives the same octets back.
  EXPECT_EQ(test_bytes::ToHex(AsnEncodeValue(list)), test_bytes::ToHex(test_bytes::Hex(kPyasn1LinkList)));
}

}  // namespace
