// Fiber cables to fiber records and back; fiber information templates.
#include <array>
#include <map>
#include <string>

#include "tn_velkor/ns_velkor.h"
#include "tn_velkor/convert/record_values.h"
#include "tn_velkor/convert/value_text.h"
#include "tn_velkor/frame/trace.h"

namespace ns_velkor {
namespace fiber_detail {

using NameValueMap = std::map<std::string, std::string>;

// The entries the cable's attributes travel in.
constexpr const char kMemoKey[] = "Memo";
constexpr const char kReserveKey[] = "Reserve";
constexpr const char kMaintenanceStateKey[] = "MaintenanceState";
constexpr const char kBuildTimeKey[] = "BuildTime_t";
constexpr const char kDelayTimeKey[] = "DelayTime";

// Texts read when the floating-point components are absent.
constexpr const char kDefaultDoubleText[] = "1.0";
constexpr const char kDefaultFloatText[] = "-0.1";

// Optional components are always made present on the way out, reusing a held
// object so that a record can be filled again without reallocating.
void SetOptionalInt(refl::MayNullPointer<AsnTinyInt>& holder, int value) { holder.GetOrCreate() = value; }

void SetOptionalText(refl::MayNullPointer<AsnOcts>& holder, const std::string& text) {
  holder.GetOrCreate().Set(text.c_str());  // c_str(): the text up to its first NUL
}

std::string MapText(const NameValueMap& entries, const char* key) {
  const auto found = entries.find(key);
  return found == entries.end() ? std::string() : found->second;
}

void AppendEntry(qcommon::QAsnNVSList& list, const char* name, const std::string& value) {
  qcommon::QAsnNameAndValueString* entry = list.Append();
  entry->name.Set(name);
  entry->value.Set(value.c_str());
}

// Unlike the plain port-index conversion, a sub-level of -1 stays a present
// component holding -1: the fiber record always carries both sub-levels.
void FillPortIndex(const ns_utilmib::TEFiberEnd& end, qcommon::QAsnPortIndex& index) {
  index.level1ID = LowLevel(end.level1ID);
  index.level2ID = LowLevel(end.level2ID);
  SetOptionalInt(index.level2SubID, end.level2SubID);
  index.level3ID = LowLevel(end.level3ID);
  SetOptionalInt(index.level3SubID, end.level3SubID);
  index.level4ID = LowLevel(end.level4ID);
  SetOptionalText(index.strIndexText, end.strIndexText);
}

// Component n of a template record stands for bit n-1 of the mask.
using ColumnHolder = refl::MayNullPointer<qcommon::QAsnColumn>;
using Template = qinventoryfiber::QAsnFiberInfoTemplate;
constexpr std::array<ColumnHolder Template::*, 12> kTemplateColumns = {
    &Template::column1, &Template::column2,  &Template::column3,  &Template::column4,
    &Template::column5, &Template::column6,  &Template::column7,  &Template::column8,
    &Template::column9, &Template::column10, &Template::column11, &Template::column12};

}  // namespace fiber_detail

void Convert2QAsnFiberInfo(const ns_utilmib::TEFiberCable& cable, qinventoryfiber::QAsnFiberInfo& record) {
  using namespace fiber_detail;
  // The cable has one text for the record's first component and fiberText5.
  record.fiberText1.Set(cable.fiberText5.c_str());
  record.fiberValue1 = cable.fiberValue1;
  FillPortIndex(cable.aEnd, record.aEndPort);
  FillPortIndex(cable.zEnd, record.zEndPort);
  SetOptionalInt(record.hybridMaxCapacity, cable.hybridMaxCapacity);
  record.fiberValue3 = cable.fiberValue3;
  SetOptionalText(record.doubleValue, Convert2Str<double>(cable.doubleValue));
  SetOptionalText(record.floatValue, Convert2Str<float>(cable.floatValue));
  record.fiberValue2 = cable.fiberValue2;
  SetOptionalInt(record.fiberValue6, cable.fiberValue6);
  SetOptionalText(record.fiberText8, cable.fiberText8);
  record.fiberText2.Set(cable.fiberText2.c_str());
  SetOptionalText(record.fiberText3, cable.fiberText3);
  SetOptionalText(record.fiberText4, cable.fiberText4);
  qcommon::QAsnNVSList& entries = record.attrList.GetOrCreate();
  SetOptionalInt(record.fiberValue5, cable.fiberValue5);
  // Entries are appended after whatever the list holds; keys already there
  // are not looked for, so filling a record twice gives each key twice.
  AppendEntry(entries, kMemoKey, cable.memo);
  AppendEntry(entries, kReserveKey, cable.reserve != 0 ? "1" : "0");
  AppendEntry(entries, kMaintenanceStateKey, Convert2Str<int>(cable.maintenanceState));
  SetOptionalText(record.fiberText6, cable.fiberText6);
  SetOptionalText(record.fiberText7, cable.fiberText7);
  SetOptionalText(record.fiberText5, cable.fiberText5);
  AppendEntry(entries, kBuildTimeKey, Convert2Str<long>(cable.buildTime));  // plain seconds, no date text
  AppendEntry(entries, kDelayTimeKey, Convert2Str<long long>(cable.delayTime));
  qcommon::QAsnUniResID& aEndResID = record.aEndResID.GetOrCreate();
  qcommon::QAsnUniResID& zEndResID = record.zEndResID.GetOrCreate();
  aEndResID.strFDN.Set(cable.srcPortFDN.c_str());
  zEndResID.strFDN.Set(cable.dstPortFDN.c_str());
}

void Convert2FiberCable(const qinventoryfiber::QAsnFiberInfo& record, ns_utilmib::TEFiberCable& cable) {
  using namespace fiber_detail;
  // The last occurrence of a repeated name counts.
  NameValueMap entries;
  if (!record.attrList.IsNull()) Convert2MapKeyValue(*record.attrList, entries);

  cable.fiberValue1 = record.fiberValue1.Value();
  ReadPortIndex(record.aEndPort, cable.aEnd);
  ReadPortIndex(record.zEndPort, cable.zEnd);
  cable.hybridMaxCapacity = OptionalInt(record.hybridMaxCapacity, -1);
  cable.resetValue1 = 0;
  cable.fiberValue3 = static_cast<std::uint8_t>(record.fiberValue3.Value());
  cable.doubleValue = Convert2Num<double>(record.doubleValue.IsNull() ? std::string(kDefaultDoubleText)
                                                                      : OctsText(*record.doubleValue));
  cable.floatValue =
      Convert2Num<float>(record.floatValue.IsNull() ? std::string(kDefaultFloatText) : OctsText(*record.floatValue));
  cable.fiberValue2 = static_cast<std::uint16_t>(record.fiberValue2.Value());
  cable.fiberValue6 = static_cast<std::uint8_t>(OptionalInt(record.fiberValue6, 0));
  cable.fiberText8 = OptionalText(record.fiberText8);
  cable.fiberText2 = OctsText(record.fiberText2);
  cable.fiberText3 = OptionalText(record.fiberText3);
  cable.fiberText4 = OptionalText(record.fiberText4);
  cable.fiberValue5 = static_cast<std::uint8_t>(OptionalInt(record.fiberValue5, 0));
  cable.memo = MapText(entries, kMemoKey);
  cable.fiberText6 = OptionalText(record.fiberText6);
  cable.fiberText7 = OptionalText(record.fiberText7);
  cable.fiberText5 = OptionalText(record.fiberText5);
  cable.resetValue2 = 0;
  // Not reduced to a flag: any number comes back as its low 16 bits.
  cable.reserve = static_cast<std::uint16_t>(Convert2Num<int>(MapText(entries, kReserveKey)));
  cable.fiberText9 = OptionalText(record.fiberText9);
  cable.fiberValue7 = OptionalInt(record.fiberValue7, 0);

  if (cable.FixInvalidFiberParam()) {
    TN_VELKOR_TRACE("INFO").PrintfTrace(1, "[Convert2FiberCable]FixInvalidFiberParam");
  }
}

void Convert2QAsnFiberInfoTemplate(const std::uint64_t& templateType, qinventoryfiber::QAsnFiberInfoTemplate& record) {
  for (std::size_t bit = 0; bit < fiber_detail::kTemplateColumns.size(); ++bit) {
    // A selected column that is already present keeps its content.
    if ((templateType >> bit) & 1U) (record.*fiber_detail::kTemplateColumns[bit]).GetOrCreate();
  }
}

void Convert2FiberInfoTemplateType(const qinventoryfiber::QAsnFiberInfoTemplate& record, std::uint64_t& templateType) {
  templateType = 0;
  for (std::size_t bit = 0; bit < fiber_detail::kTemplateColumns.size(); ++bit) {
    if (!(record.*fiber_detail::kTemplateColumns[bit]).IsNull()) templateType |= std::uint64_t{1} << bit;
  }
}

}  // namespace ns_velkor
