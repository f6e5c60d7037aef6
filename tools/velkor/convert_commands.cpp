#include "tools/velkor/convert_commands.h"

#include <optional>

#include "tn_velkor/ns_velkor.h"
#include "tools/velkor/io.h"
#include "tools/velkor/model_json.h"
#include "tools/velkor/record_types.h"

namespace velkor {

namespace {

// ---- reading and writing ------------------------------------------------------

void ReadRecord(const ConvertOptions& options, AsnType& record) {
  const std::string bytes = ReadBytes(options.io.input, options.io.hex, options.io.base64);
  try {
    DecodeBytes(record, bytes);
  } catch (const ToolError& error) {
    const bool raw = !options.io.hex && !options.io.base64;
    ThrowBadInput(error.what() + (raw ? TextFormHint(std::string_view(bytes).substr(0, 4096)) : std::string()));
  }
}

Json ReadJson(const ConvertOptions& options) { return ParseJson(ReadInput(options.io.input)); }

std::string JsonOutput(const Json& json, const ConvertOptions& options) {
  return JsonText(json, options.compact ? JsonLayout::kOneLine : JsonLayout::kIndented);
}

std::string RecordOutput(const AsnType& record, const ConvertOptions& options) {
  return FormatBytes(EncodeBytes(record), options.io.hex, options.io.output);
}

// A return-code map as the map commands write it ({"result": ..., "map":
// {...}}), or the bare map.
struct MapInput {
  ReturnCodeMap map;
  std::optional<unsigned long> result;
};

MapInput ReadMapInput(const Json& json, const std::string& path) {
  MapInput input;
  if (json.is_object() && json.contains("map")) {
    JsonExpectOnly(json, {"result", "map"}, path);
    input.map = JsonToReturnCodeMap(json["map"], path + ".map");
    if (json.contains("result")) input.result = JsonInteger<unsigned long>(json["result"], path + ".result");
  } else {
    input.map = JsonToReturnCodeMap(json, path);
  }
  return input;
}

ReturnCodeMap StartingMap(const ConvertOptions& options) {
  if (options.mapFile.empty()) return {};
  return ReadMapInput(ParseJson(ReadInput(options.mapFile)), "map").map;
}

std::string MapResult(unsigned long result, const ReturnCodeMap& map, const ConvertOptions& options) {
  return JsonOutput(Json{{"result", IntegerToJson(result)}, {"map", ReturnCodeMapToJson(map)}}, options);
}

// Record bytes in, model JSON out: the shape of most conversions.
template <class Record, class Model, void (*Convert)(const Record&, Model&)>
std::string RecordToModel(const ConvertOptions& options) {
  Record record;
  ReadRecord(options, record);
  Model model;
  Convert(record, model);
  return JsonOutput(ModelToJson(model), options);
}

// Model JSON in, record bytes out; `kPath` names the model in JSON errors.
template <class Model, class Record, void (*Convert)(const Model&, Record&), const char* kPath>
std::string ModelToRecord(const ConvertOptions& options) {
  Model model;
  JsonToModel(ReadJson(options), model, kPath);
  Record record;
  Convert(model, record);
  return RecordOutput(record, options);
}

constexpr char kCablePath[] = "cable";
constexpr char kPortIndexPath[] = "port index";

// ---- fiber cables --------------------------------------------------------------

std::string TemplateToMask(const ConvertOptions& options) {
  qinventoryfiber::QAsnFiberInfoTemplate record;
  ReadRecord(options, record);
  std::uint64_t templateType = 0;
  ns_velkor::Convert2FiberInfoTemplateType(record, templateType);
  return JsonOutput(Json{{"templateType", IntegerToJson(templateType)}}, options);
}

std::string MaskToTemplate(const ConvertOptions& options) {
  qinventoryfiber::QAsnFiberInfoTemplate record;
  ns_velkor::Convert2QAsnFiberInfoTemplate(options.unsignedNumber, record);
  return RecordOutput(record, options);
}

// ---- links ---------------------------------------------------------------------

std::string ResIdToLinkPort(const ConvertOptions& options) {
  qcommon::QAsnUniResID record;
  ReadRecord(options, record);
  ns_utilmib::CLinkPortIndex index;
  const bool filled = ns_velkor::Convert2LinkPortIndexByQAsnUniRes(record, index, options.moc, options.acceptNode);
  return JsonOutput(Json{{"filled", filled},
                         {"index", ModelToJson(index)},
                         {"r1LinkPortId", IntegerToJson(ns_velkor::GetR1LinkPortId(index))}},
                    options);
}

// ---- return codes --------------------------------------------------------------

std::string ErrInfoListToMap(const ConvertOptions& options) {
  qcommon::QAsnErrInfoList list;
  ReadRecord(options, list);
  ReturnCodeMap map = StartingMap(options);
  const unsigned long result = ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoList(list, map);
  return MapResult(result, map, options);
}

std::string ErrInfoReturnToMap(const ConvertOptions& options) {
  qcommon::QAsnErrInfoReturn record;
  ReadRecord(options, record);
  ReturnCodeMap map = StartingMap(options);
  const unsigned long result = options.fillAll ? ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn2(record, map)
                                               : ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn(record, map);
  return MapResult(result, map, options);
}

std::string IgnoreCodes(const ConvertOptions& options) {
  MapInput input = ReadMapInput(ReadJson(options), "map");
  if (options.code) input.result = options.code;
  if (!input.result) ThrowBadUsage("--code is required when the input has no \"result\"");
  unsigned long ignore[3] = {0, 0, 0};  // 0 is success, which the filter drops anyway
  for (std::size_t i = 0; i < options.ignore.size(); ++i) ignore[i] = options.ignore[i];
  const unsigned long result =
      ns_velkor::IgnoreMapRetCodeErrorCode(*input.result, input.map, ignore[0], ignore[1], ignore[2]);
  return MapResult(result, input.map, options);
}

std::string SingleReturn(const ConvertOptions& options) {
  AsnSingleReturn record;
  ns_velkor::Convert2AsnSingleReturn(options.unsignedNumber, &record);
  return RecordOutput(record, options);
}

// ---- name/value maps and alarm identifiers ------------------------------------

std::string NvsToMap(const ConvertOptions& options) {
  qcommon::QAsnNVSList list;
  ReadRecord(options, list);
  std::map<std::string, std::string> map;
  ns_velkor::Convert2MapKeyValue(list, map);
  return JsonOutput(NameValueMapToJson(map), options);
}

std::string AlarmCompose(const ConvertOptions& options) {
  return ns_velkor::GetCombineStrByMapKeyValueAsNewAlarmID(JsonToAlarmKeyMap(ReadJson(options), "alarm key map")) +
         "\n";
}

std::string FaultReportToAlarmId(const ConvertOptions& options) {
  AsnOtherToSvrFaultRptStrc record;
  ReadRecord(options, record);
  return ns_velkor::GetCombineStrByAsnOtherFaultRptAtrcAsNewAlarmID(&record) + "\n";
}

std::string AlarmSplit(const ConvertOptions& options) {
  std::map<std::string, int> map;
  ns_velkor::GetMapKeyValueByNewAlarmID(options.text, map);
  return JsonOutput(AlarmKeyMapToJson(map), options);
}

// ---- ports ---------------------------------------------------------------------

std::string PortStatesToMap(const ConvertOptions& options) {
  qinventoryport::QAsnPortUseStateList list;
  ReadRecord(options, list);
  std::map<ns_utilmib::TNCPPortIndex, unsigned short> map;
  ns_velkor::Convert2MapCpPortIndex2State(list, map, options.mask);
  return JsonOutput(PortStateMapToJson(map), options);
}

std::string VirtualPort(const ConvertOptions& options) {
  const int portNo = options.signedNumber;
  return JsonOutput(Json{{"portNo", portNo}, {"virtual", ns_velkor::isVirtualPort(portNo)}}, options);
}

}  // namespace

const std::vector<ConvertCommand>& ConvertCommands() {
  static const std::vector<ConvertCommand> commands = {
      {"fiber-to-cable", "Fiber record (QAsnFiberInfo) to fiber cable JSON", "velkor convert fiber-to-cable fiber.ber",
       kTakesFile | kWritesJson, "", "",
       &RecordToModel<qinventoryfiber::QAsnFiberInfo, ns_utilmib::TEFiberCable, &ns_velkor::Convert2FiberCable>},
      {"cable-to-fiber", "Fiber cable JSON to fiber record (QAsnFiberInfo)",
       "velkor convert cable-to-fiber cable.json -o fiber.ber", kTakesJsonFile | kTakesBytesOut, "", "",
       &ModelToRecord<ns_utilmib::TEFiberCable, qinventoryfiber::QAsnFiberInfo, &ns_velkor::Convert2QAsnFiberInfo,
                      kCablePath>},
      {"template-to-mask", "Fiber information template record to its bit mask",
       "velkor convert template-to-mask template.ber", kTakesFile | kWritesJson, "", "", &TemplateToMask},
      {"mask-to-template", "Template bit mask to fiber information template record",
       "velkor convert mask-to-template 0x804 --hex", kTakesUnsigned | kTakesBytesOut, "MASK",
       "Bit mask of columns (bit 0: column1 ... bit 11: column12), decimal or 0x hex", &MaskToTemplate},
      {"links-to-models", "Link record list (QAsnLinkInfoList) to link model JSON",
       "velkor convert links-to-models links.ber", kTakesFile | kWritesJson, "", "",
       &RecordToModel<qinventorylinkexterior::QAsnLinkInfoList, std::list<ns_utilmib::CLinkMgrModel>,
                      &ns_velkor::Convert2LinkMgrModelList>},
      {"link-to-model", "One link record (QAsnLinkInfo) to link model JSON", "velkor convert link-to-model link.ber",
       kTakesFile | kWritesJson, "", "",
       &RecordToModel<qinventorylinkexterior::QAsnLinkInfo, ns_utilmib::CLinkMgrModel,
                      &ns_velkor::Convert2LinkMgrModel>},
      {"resid-to-link-port", "Resource identifier (QAsnUniResID) to link port index and R1 link port id",
       "velkor convert resid-to-link-port resid.ber --moc NE --accept-node", kTakesFile | kWritesJson | kTakesLinkEnd,
       "", "", &ResIdToLinkPort},
      {"errinfo-list-to-map", "Error-information list (QAsnErrInfoList) to return-code map",
       "velkor convert errinfo-list-to-map errors.ber", kTakesFile | kWritesJson | kTakesMap, "", "",
       &ErrInfoListToMap},
      {"errinfo-return-to-map", "Error-information return (QAsnErrInfoReturn) to return-code map",
       "velkor convert errinfo-return-to-map return.ber --map objects.json --fill-all",
       kTakesFile | kWritesJson | kTakesMap | kTakesFillAll, "", "", &ErrInfoReturnToMap},
      {"ignore-codes", "Drop tolerated codes from a return-code map and decide the overall code",
       "velkor convert ignore-codes map.json --code 8 --ignore 7", kTakesJsonFile | kWritesJson | kTakesCodes, "", "",
       &IgnoreCodes},
      {"single-return", "Return code to single-return record (AsnSingleReturn)", "velkor convert single-return 5 --hex",
       kTakesUnsigned | kTakesBytesOut, "CODE", "Return code, decimal or 0x hex", &SingleReturn},
      {"nvs-to-map", "Name/value list (QAsnNVSList) to name/value map", "velkor convert nvs-to-map attrs.ber",
       kTakesFile | kWritesJson, "", "", &NvsToMap},
      {"alarm-compose", "Alarm key map JSON to alarm identifier",
       "echo '{\"sFaultID\": 12, \"lAlarmGroupID\": 34}' | velkor convert alarm-compose", kTakesJsonFile, "", "",
       &AlarmCompose},
      {"fault-report-to-alarm-id", "Fault report record (AsnOtherToSvrFaultRptStrc) to alarm identifier",
       "velkor convert fault-report-to-alarm-id report.ber", kTakesFile, "", "", &FaultReportToAlarmId},
      {"alarm-split", "Alarm identifier to alarm key map", "velkor convert alarm-split 12-34", kTakesText | kWritesJson,
       "ID", "Alarm identifier \"<faultID>-<alarmGroupID>\" (put -- before one that starts with -)", &AlarmSplit},
      {"port-index-to-model", "Port index record (QAsnPortIndex) to port index model",
       "velkor convert port-index-to-model port.ber", kTakesFile | kWritesJson, "", "",
       &RecordToModel<qcommon::QAsnPortIndex, ns_utilmib::TNCPPortIndex, &ns_velkor::Convert2CPPortIndex>},
      {"model-to-port-index", "Port index model JSON to port index record (QAsnPortIndex)",
       "velkor convert model-to-port-index port.json --hex", kTakesJsonFile | kTakesBytesOut, "", "",
       &ModelToRecord<ns_utilmib::TNCPPortIndex, qcommon::QAsnPortIndex, &ns_velkor::Convert2QAsnPortIndex,
                      kPortIndexPath>},
      {"port-states-to-map", "Port use-state list (QAsnPortUseStateList) to port-state map",
       "velkor convert port-states-to-map states.ber --mask 0x0A", kTakesFile | kWritesJson | kTakesMask, "", "",
       &PortStatesToMap},
      {"virtual-port", "Whether a port number is a virtual port", "velkor convert virtual-port 0x109C41",
       kTakesSigned | kWritesJson, "PORTNO", "Port number (class in the high 16 bits), decimal or 0x hex",
       &VirtualPort},
  };
  return commands;
}

}  // namespace velkor
