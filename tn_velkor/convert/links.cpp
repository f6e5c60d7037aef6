// External link records into link models.
#include <cstdint>
#include <ctime>

#include "tn_velkor/ns_velkor.h"
#include "tn_velkor/convert/record_values.h"
#include "tn_velkor/convert/value_text.h"
#include "tn_platform/model/ne_id.h"
#include "tn_platform/uid/str_uid_parser.h"

namespace ns_velkor {
namespace links_detail {

using AttributeMap = std::map<std::string, std::string>;

// Attributes copied unchanged into the model field of the same name.
struct TextAttribute {
  const char* key;
  std::string ns_utilmib::CLinkMgrModel::*field;
};

constexpr TextAttribute kTextAttributes[] = {
    {"srcNeName", &ns_utilmib::CLinkMgrModel::srcNeName},
    {"dstNeName", &ns_utilmib::CLinkMgrModel::dstNeName},
    {"srcPortName", &ns_utilmib::CLinkMgrModel::srcPortName},
    {"dstPortName", &ns_utilmib::CLinkMgrModel::dstPortName},
    {"srcCpName", &ns_utilmib::CLinkMgrModel::srcCpName},
    {"dstCpName", &ns_utilmib::CLinkMgrModel::dstCpName},
    {"srcSubCardName", &ns_utilmib::CLinkMgrModel::srcSubCardName},
    {"dstSubCardName", &ns_utilmib::CLinkMgrModel::dstSubCardName},
    {"srcPortIpAddr", &ns_utilmib::CLinkMgrModel::srcPortIpAddr},
    {"dstPortIpAddr", &ns_utilmib::CLinkMgrModel::dstPortIpAddr},
    {"srcPortAlias", &ns_utilmib::CLinkMgrModel::srcPortAlias},
    {"dstPortAlias", &ns_utilmib::CLinkMgrModel::dstPortAlias},
};

// A missing key leaves the field as it was; a present one is read as T.
template <class T, class Field>
void ReadNumber(const AttributeMap& attributes, const char* key, Field& field) {
  const auto found = attributes.find(key);
  if (found != attributes.end()) field = static_cast<Field>(Convert2Num<T>(found->second));
}

// Records carry integers as signed 32-bit values: the model keeps the low 16
// (or 32) bits.
std::uint16_t Low16(long long value) { return static_cast<std::uint16_t>(value); }
std::int32_t Low32(long long value) { return static_cast<std::int32_t>(value); }

// One link end: the identifier's port index, whatever part of it could be
// read, completed from the resource identifier and the attributes.
ns_utilmib::CLinkPortIndex ConvertLinkEnd(const qcommon::QAsnUniResID& res, const AttributeMap& attributes,
                                          const char* oneIdKey) {
  ns_utilmib::CLinkPortIndex index;
  const std::string resourceClass = OctsText(res.strMOC);
  const char* nodeClass = resourceClass == "ONE" ? "ONE" : resourceClass == "NE" ? "NE" : "FR";
  // A refused identifier still leaves a usable end: the fields below fill it.
  Convert2LinkPortIndexByQAsnUniRes(res, index, nodeClass, true);
  index.strPortMOC = FrameUtil::StrUIDParser::GetMOC(index.strPortFDN);
  if (index.nodeID == 0) {
    const long neID = res.neID.Value();
    if (ns_utilmib::IsNeID(static_cast<unsigned long>(neID))) index.nodeID = static_cast<std::uint64_t>(neID);
  }
  ReadNumber<unsigned long>(attributes, oneIdKey, index.oneID);
  return index;
}

void SetLinkEnd(ns_utilmib::CLinkPortIndex& end, const ns_utilmib::CLinkPortIndex& index) {
  end = index;
  end.portID = GetR1LinkPortId(end);
}

}  // namespace links_detail

void Convert2LinkMgrModel(const qinventorylinkexterior::QAsnLinkInfo& record, ns_utilmib::CLinkMgrModel& model) {
  using namespace links_detail;
  AttributeMap attributes;
  if (!record.attrList.IsNull()) Convert2MapKeyValue(*record.attrList, attributes);

  const auto buildTime = attributes.find("BuildTime_t");
  model.buildTime = buildTime != attributes.end() ? Convert2Num<long>(buildTime->second)
                                                  : static_cast<std::int64_t>(std::time(nullptr));
  for (const TextAttribute& text : kTextAttributes) {
    const auto found = attributes.find(text.key);
    if (found != attributes.end()) model.*text.field = found->second;
  }
  model.strText4 = OctsText(record.strText4);

  SetLinkEnd(model.srcPortIndex, ConvertLinkEnd(record.srcResID, attributes, "a_oneID"));
  SetLinkEnd(model.dstPortIndex, ConvertLinkEnd(record.dstResID, attributes, "z_oneID"));

  ReadNumber<int>(attributes, "srcPortInfoType", model.srcPortInfoType);
  ReadNumber<int>(attributes, "dstPortInfoType", model.dstPortInfoType);
  ReadNumber<unsigned short>(attributes, "P2MPLable", model.p2mpLabel);
  ReadNumber<int>(attributes, "MidNe", model.midNe);

  model.tinyValue1 = Low16(record.tinyValue1.Value());
  model.tinyValue2 = Low16(record.tinyValue2.Value());
  model.strText2 = OctsText(record.strText2);
  model.strText1 = OctsText(record.strText1);
  model.strText3 = OctsText(record.strText3);
  model.tinyValue4 = Low16(record.tinyValue4.Value());
  model.tinyValue5 = record.tinyValue5.Value();
  model.tinyValue3 = record.tinyValue3.Value();
  model.strText7 = OctsText(record.strText7);
  model.strLinkFDN = OctsText(record.linkResID.strFDN);
  model.strText5 = OctsText(record.strText5);
  model.strText6 = OctsText(record.strText6);
  model.intValue2 = Low32(record.intValue2.Value());
  model.intValue3 = Low32(record.intValue3.Value());
  model.intValue1 = Low32(record.intValue1.Value());
  model.tinyValue5Mirror = record.tinyValue5.Value();
  model.optTinyValue = OptionalInt(record.optTinyValue, 0);
}

void Convert2LinkMgrModelList(const qinventorylinkexterior::QAsnLinkInfoList& list,
                              std::list<ns_utilmib::CLinkMgrModel>& models) {
  ns_utilmib::CLinkMgrModel model;
  for (list.MoveFirst(); const qinventorylinkexterior::QAsnLinkInfo* record = list.Current(); list.MoveNext()) {
    // Reset first, so that a key one record lacks never carries over from the one before.
    model.Init();
    Convert2LinkMgrModel(*record, model);
    models.push_back(model);
  }
}

}  // namespace ns_velkor
