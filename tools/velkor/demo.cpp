#include "tools/velkor/demo.h"

#include <iomanip>
#include <list>
#include <sstream>
#include <vector>

#include "tn_velkor/ns_velkor.h"
#include "tn_platform/trace/trace_sink.h"
#include "tools/velkor/model_json.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tools/velkor/record_types.h"

namespace velkor {

namespace {

// ---- the samples, as record JSON ----------------------------------------------

// A fiber record whose doubleValue no cable may have, so the cable repairs it.
constexpr const char kFiberRecord[] = R"({
  "fiberText1": "F-0012", "fiberValue1": 12, "fiberText2": "Cable 12 north", "fiberValue2": 96, "fiberValue3": 2,
  "aEndPort": {"level1ID": 1001, "level2ID": 1, "level3ID": 3, "level4ID": 2, "strIndexText": "1001-1-3-2"},
  "zEndPort": {"level1ID": 1002, "level2ID": 1, "level3ID": 5, "level3SubID": 1, "level4ID": 7},
  "doubleValue": "-2.5", "floatValue": "0.35", "fiberText3": "G.652D", "fiberText5": "F-0012",
  "attrList": [{"name": "Memo", "value": "spliced 2023-05"}, {"name": "Reserve", "value": "1"}]
})";

// A failed operation on three objects: one succeeded, one failed with a
// tolerated code, one failed for real.
constexpr const char kErrInfoReturn[] = R"({
  "retCode": 8,
  "errInfoList": [
    {"objID": [5], "objName": "NE-5", "errCode": 0},
    {"objID": [6], "objName": "NE-6", "errCode": 7},
    {"objID": [7], "objName": "NE-7", "errCode": 8}
  ]
})";

constexpr const char kLinkList[] = R"([{
  "linkResID": {"strFDN": "LINK=88", "strMOC": "LINK", "neID": 0},
  "strText1": "uplink", "strText2": "", "strText3": "", "strText4": "10GE",
  "tinyValue1": 1, "tinyValue2": 2,
  "srcResID": {"strFDN": "NE=1001,SH=1,SL=3,PP=2", "strMOC": "PP", "neID": 1001},
  "dstResID": {"strFDN": "NE=1002,SH=1,SL=5,GRP=2,SUBGRP=3,PP=7", "strMOC": "PP", "neID": 1002},
  "tinyValue3": 0, "tinyValue4": 0, "spareValue": "",
  "attrList": [{"name": "srcNeName", "value": "Berlin-1"}, {"name": "dstNeName", "value": "Hamburg-2"},
               {"name": "BuildTime_t", "value": "1700000000"}],
  "intValue1": 0, "intValue2": 0, "intValue3": 0, "strText5": "", "strText6": "", "strText7": "", "tinyValue5": 0
}])";

// ---- presentation ---------------------------------------------------------------

// Collects the library's trace lines while it lives.
class TraceCapture {
 public:
  TraceCapture() {
    Previous() = ns_utility::SetTraceSink(&Collect);
    Lines().clear();
  }
  ~TraceCapture() { ns_utility::SetTraceSink(Previous()); }
  TraceCapture(const TraceCapture&) = delete;
  TraceCapture& operator=(const TraceCapture&) = delete;

  // Each line as "<category> [<level>] <first line of the text>".
  std::vector<std::string> Take() {
    std::vector<std::string> lines;
    lines.swap(Lines());
    return lines;
  }

 private:
  static std::vector<std::string>& Lines() {
    static std::vector<std::string> lines;
    return lines;
  }
  // The sink that was installed before (--trace), which sees every line too.
  static ns_utility::TraceSink& Previous() {
    static ns_utility::TraceSink previous = nullptr;
    return previous;
  }
  static void Collect(const ns_utility::TraceLine& line) {
    if (Previous() != nullptr) Previous()(line);
    const std::string text = line.text.substr(0, line.text.find('\n'));
    const bool more = text.size() < line.text.size();
    Lines().push_back(line.category + " [" + std::to_string(line.level) + "] " + text + (more ? " ..." : ""));
  }
};

template <class Record>
void FromSample(const char* json, Record& record) {
  AsnReadJson(record, json, AsnJsonForm::kReadable);
}

std::string Indent(const std::string& text, int width = 4) {
  std::string out;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) out += std::string(width, ' ') + line + "\n";
  return out;
}

std::string Printed(const AsnType& value) {
  std::ostringstream os;
  PrintValue(os, value);
  return os.str();
}

// Sixteen octets a line: offset, hex, and the printable ones as text.
std::string HexDump(std::string_view bytes) {
  std::ostringstream os;
  for (std::size_t line = 0; line < bytes.size(); line += 16) {
    os << std::hex << std::setw(4) << std::setfill('0') << line << "  ";
    std::string text;
    for (std::size_t i = line; i < line + 16; ++i) {
      if (i < bytes.size()) {
        const unsigned octet = static_cast<unsigned char>(bytes[i]);
        os << std::setw(2) << octet << ' ';
        text += octet >= 0x20 && octet < 0x7F ? static_cast<char>(octet) : '.';
      } else {
        os << "   ";
      }
    }
    os << " " << text << "\n";
  }
  return os.str();
}

// One member of `json` a line; an array member shows one element a line.
std::string MemberLines(const Json& json) {
  std::string out;
  for (const auto& member : json.items()) {
    out += "\"" + member.key() + "\": ";
    if (!member.value().is_array() || member.value().empty()) {
      out += member.value().dump() + "\n";
      continue;
    }
    out += "[\n";
    for (const Json& element : member.value()) out += "  " + element.dump() + "\n";
    out += "]\n";
  }
  return out;
}

// The same for a record, from the runtime's JSON of each member.
std::string MemberLines(const AsnSequence& record) {
  std::string out;
  void* const base = const_cast<AsnSequence*>(&record);
  for (const AsnMemberStep& member : record.Plan().members) {
    const AsnType* value = member.ValueIn(base);
    if (value == nullptr) continue;
    out += "\"" + std::string(member.name) + "\": ";
    const auto* list = member.kind == AsnMemberKind::kList ? static_cast<const AsnListBase*>(value) : nullptr;
    if (list == nullptr || list->Count() == 0) {
      out += AsnToJson(*value, AsnJsonForm::kReadable) + "\n";
      continue;
    }
    out += "[\n";
    list->ForEachElement([&](const AsnType& element) { out += "  " + AsnToJson(element, AsnJsonForm::kReadable) + "\n"; });
    out += "]\n";
  }
  return out;
}

// The members of `model` whose values differ from those of `fresh`.
Json ChangedFields(const Json& model, const Json& fresh) {
  Json changed = Json::object();
  for (const auto& member : model.items()) {
    if (!fresh.contains(member.key()) || fresh[member.key()] != member.value()) changed[member.key()] = member.value();
  }
  return changed;
}

std::string Lines(const std::vector<std::string>& lines) {
  std::string out;
  for (const std::string& line : lines) out += line + "\n";
  return out;
}

}  // namespace

std::string RunDemo() {
  std::ostringstream os;
  TraceCapture trace;
  os << "velkor demo: a service module's typical request, step by step, on built-in samples.\n";

  // A fiber record arrives, is decoded, becomes a cable, is repaired, goes back.
  qinventoryfiber::QAsnFiberInfo arrived;
  FromSample(kFiberRecord, arrived);
  const std::string wire = EncodeBytes(arrived);
  os << "\n1. A fiber record arrives on the Q-interface (value notation):\n"
     << Indent(Printed(arrived)) << "   as " << wire.size() << " octets of BER:\n"
     << Indent(HexDump(wire));

  qinventoryfiber::QAsnFiberInfo record;
  DecodeBytes(record, wire);
  os << "\n2. Decoded from those octets: a QAsnFiberInfo again, "
     << (EncodeBytes(record) == wire ? "equal to the one sent.\n" : "DIFFERENT from the one sent.\n");

  ns_utilmib::TEFiberCable cable;
  ns_velkor::Convert2FiberCable(record, cable);
  os << "\n3. Converted to a fiber cable (Convert2FiberCable); the fields a new cable does not have:\n"
     << Indent(MemberLines(ChangedFields(ModelToJson(cable), ModelToJson(ns_utilmib::TEFiberCable()))));

  os << "\n4. Repaired: the record's doubleValue \"-2.5\" is no valid cable value, so the cable repaired\n"
     << "   itself (doubleValue is now " << cable.doubleValue << ") and the library traced the notice:\n"
     << Indent(Lines(trace.Take()));

  qinventoryfiber::QAsnFiberInfo answer;
  ns_velkor::Convert2QAsnFiberInfo(cable, answer);
  const std::string answerWire = EncodeBytes(answer);
  os << "\n5. Converted back (Convert2QAsnFiberInfo) and re-encoded, " << answerWire.size() << " octets:\n"
     << Indent(HexDump(answerWire))
     << "   (the cable's memo, reserve flag, maintenance state, build and delay time travel in attrList;\n"
     << "   see them with: velkor decode QAsnFiberInfo)\n";

  // The operation's outcome becomes a return-code map, and tolerated codes go.
  qcommon::QAsnErrInfoReturn outcome;
  FromSample(kErrInfoReturn, outcome);
  std::map<unsigned long, ns_velkor::TERetInfo> codes;
  const unsigned long overall = ns_velkor::Convert2MapIDKey2RetCodeByQAsnErrInfoReturn(outcome, codes);
  os << "\n6. An error-information return arrives (QAsnErrInfoReturn, as JSON):\n"
     << Indent(MemberLines(outcome))
     << "   as a return-code map (Convert2MapIDKey2RetCodeByQAsnErrInfoReturn), result " << overall << ":\n"
     << Indent(ReturnCodeMapToJson(codes).dump()) << "   traced:\n"
     << Indent(Lines(trace.Take()));
  const unsigned long filtered = ns_velkor::IgnoreMapRetCodeErrorCode(overall, codes, 7, 0, 0);
  os << "   filtered, code 7 tolerated (IgnoreMapRetCodeErrorCode): result " << filtered << ", map\n"
     << Indent(ReturnCodeMapToJson(codes).dump()) << "   traced:\n"
     << Indent(Lines(trace.Take()));

  // A link list becomes link models.
  qinventorylinkexterior::QAsnLinkInfoList links;
  FromSample(kLinkList, links);
  std::list<ns_utilmib::CLinkMgrModel> models;
  ns_velkor::Convert2LinkMgrModelList(links, models);
  os << "\n7. A list of " << links.Count()
     << " link record arrives and becomes link models (Convert2LinkMgrModelList);\n"
     << "   the fields a new model does not have:\n";
  for (const ns_utilmib::CLinkMgrModel& model : models)
    os << Indent(MemberLines(ChangedFields(ModelToJson(model), ModelToJson(ns_utilmib::CLinkMgrModel()))));

  // Alarm identifiers.
  const std::map<std::string, int> keys = {{"sFaultID", 12}, {"lAlarmGroupID", -7}};
  const std::string alarmId = ns_velkor::GetCombineStrByMapKeyValueAsNewAlarmID(keys);
  std::map<std::string, int> split;
  ns_velkor::GetMapKeyValueByNewAlarmID(alarmId, split);
  os << "\n8. An alarm identifier composed from " << AlarmKeyMapToJson(keys).dump() << ": \"" << alarmId
     << "\"\n   and split again: " << AlarmKeyMapToJson(split).dump() << "\n";

  os << "\nEvery step is a command of its own: velkor convert --help lists them;\n"
     << "velkor decode, encode and dump work on the records of every type that velkor types lists.\n";
  return os.str();
}

}  // namespace velkor
