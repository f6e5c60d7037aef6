// The server's model objects and the conversions' maps as JSON. Each model is
// an object whose keys are the C++ field names, in declaration order, as the
// model's own DescribeFields lists them (nothing here names a field); texts
// are strings (or {"hex": "..."} when not UTF-8 text), numbers numbers (64-bit
// integers as decimal strings), an enum its enumerator's name.
//
// Reading a model: a field left out keeps the value a new model has; a key
// that is no field of the model, a value of the wrong kind or out of the
// field's range is an error naming the field's path ("cable.aEnd.level2SubID").
//
// Shapes:
//   TNCPPortIndex     {"level1ID": 1, "level2ID": 2, "level3ID": 3, "level4ID": 4,
//                      "level3SubID": -1, "level2SubID": -1, "strIndexText": "p1"}
//   TEFiberCable      {"fiberValue1": 0, "aEnd": TEFiberEnd, "zEnd": TEFiberEnd, ...}
//   TEFiberEnd        {"level2ID", "level1ID", "level2SubID", "level3ID",
//                      "level3SubID", "level4ID", "strIndexText"}
//   CLinkMgrModel     {"linkID": 0, "strText4": "", "srcPortIndex": CLinkPortIndex, ...}
//   CLinkPortIndex    {"nodeID", "oneID", "shelfNo", "slotNo", "groupNo", "portID",
//                      "subGroupNo", "portKind": "kPhysical", "strPortFDN", "strPortMOC"}
//   return-code map   {"5": {"strObjName": "a", "ulRetCode": 2}, ...}   (key order)
//   name/value map    {"Memo": "x", "Reserve": "1"}
//   alarm key map     {"lAlarmGroupID": 34, "sFaultID": 12}
//   port-state map    [{"portIndex": TNCPPortIndex, "useState": 3}, ...]  (index order)
#pragma once

#include <list>
#include <map>
#include <string>

#include "tn_velkor/ns_velkor.h"
#include "tools/velkor/json.h"

namespace velkor {

Json ModelToJson(const ns_utilmib::TNCPPortIndex& index);
Json ModelToJson(const ns_utilmib::TEFiberEnd& end);
Json ModelToJson(const ns_utilmib::TEFiberCable& cable);
Json ModelToJson(const ns_utilmib::CLinkPortIndex& index);
Json ModelToJson(const ns_utilmib::CLinkMgrModel& model);
Json ModelToJson(const std::list<ns_utilmib::CLinkMgrModel>& models);

// Fill `model` from `json`; `path` names it in errors. Fields not given keep
// their values.
void JsonToModel(const Json& json, ns_utilmib::TNCPPortIndex& index, const std::string& path);
void JsonToModel(const Json& json, ns_utilmib::TEFiberCable& cable, const std::string& path);

using ReturnCodeMap = std::map<unsigned long, ns_velkor::TERetInfo>;
Json ReturnCodeMapToJson(const ReturnCodeMap& map);
// Keys must be decimal unsigned numbers.
ReturnCodeMap JsonToReturnCodeMap(const Json& json, const std::string& path);

Json NameValueMapToJson(const std::map<std::string, std::string>& map);

Json AlarmKeyMapToJson(const std::map<std::string, int>& map);
std::map<std::string, int> JsonToAlarmKeyMap(const Json& json, const std::string& path);

Json PortStateMapToJson(const std::map<ns_utilmib::TNCPPortIndex, unsigned short>& map);

}  // namespace velkor
