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

// tests/conversions/link_ends.golden; the oneIDs come from the attributes.
TEST(Convert2LinkMgrModel, LinkEnds) {
  const auto text = [](const std::string& cell) { return cell == "-" ? std::string() : cell; };
  for (const std::vector<std::string>& row : test_bytes::Golden("conversions/link_ends.golden")) {
    SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2]);
    QAsnLinkInfo record;
    SetResID(record.srcResID, text(row[0]).c_str(), row[1].c_str(), std::stoi(row[2]));
    SetResID(record.dstResID, text(row[0]).c_str(), row[1].c_str(), std::stoi(row[2]));
    SetAttributes(record, {{"a_oneID", "31"}, {"z_oneID", "-1"}});
    CLinkMgrModel model;
    ns_velkor::Convert2LinkMgrModel(record, model);
    for (const CLinkPortIndex* end : {&model.srcPortIndex, &model.dstPortIndex}) {
      EXPECT_EQ(std::make_tuple(end->nodeID, end->strPortMOC, end->portID),
                std::make_tuple(std::stoull(row[3]), text(row[4]), std::stoull(row[5], nullptr, 16)));
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

// The list of tests/interop/pyasn1_link_list.golden, encoded by pyasn1. The
// list appends to the models already there, each from an Init() model, and
// leaves the list's cursor at its end.
TEST(Convert2LinkMgrModelList, DecodesIndependentEncoding) {
  const std::vector<std::vector<std::string>> rows = test_bytes::Golden("interop/pyasn1_link_list.golden");
  ASSERT_EQ(rows.size(), 3u);
  const std::string octets = test_bytes::Hex(rows[0][0]);
  qinventorylinkexterior::QAsnLinkInfoList list;
  AsnDecodeValue(list, octets);
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
  EXPECT_EQ(Describe(*model++), rows[1][0]);
  EXPECT_EQ(Describe(*model++), rows[2][0]);
  // Our encoder gives the same octets back.
  EXPECT_EQ(test_bytes::ToHex(AsnEncodeValue(list)), test_bytes::ToHex(octets));
}

}  // namespace
