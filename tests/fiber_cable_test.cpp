// Fiber cables to fiber records and back, and fiber information templates.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/test_bytes.h"
#include "tests/trace_capture.h"
#include "tn_platform/asn/asn_member.h"
#include "tn_velkor/ns_velkor.h"

namespace {

using ns_utilmib::TEFiberCable;
using qinventoryfiber::QAsnFiberInfo;
using Entries = std::vector<std::pair<std::string, std::string>>;

std::string Text(const AsnOcts& octs) { return std::string(octs.view()); }
std::string Opt(const refl::MayNullPointer<AsnOcts>& h) { return h.IsNull() ? "<absent>" : Text(*h); }
std::optional<int> Opt(const refl::MayNullPointer<AsnTinyInt>& h) {
  return h.IsNull() ? std::nullopt : std::optional<int>(h->Value());
}

Entries EntriesOf(const QAsnFiberInfo& record) {
  Entries entries;
  if (record.attrList.IsNull()) return entries;
  for (record.attrList->MoveFirst(); const auto* entry = record.attrList->Current(); record.attrList->MoveNext())
    entries.emplace_back(Text(entry->name), Text(entry->value));
  return entries;
}

void AddEntry(QAsnFiberInfo& record, const std::string& name, const std::string& value) {
  auto* entry = record.attrList.GetOrCreate().Append();
  entry->name.Set(name.c_str());
  entry->value.Set(value.data(), value.size());
}

// A cable whose every field holds a value of its own, in the declaration order
// of fiber_cable.h (an end: levels 2, 1, sub-level 2, 3, sub-level 3, 4, text).
TEFiberCable SampleCable() {
  const ns_utilmib::TEFiberEnd a{11, 10, 2, 12, -1, 13, "A-PORT"}, z{21, 20, -1, 22, 3, 23, ""};
  const std::string src = "NE=1001,SH=1,SL=3,PP=2", dst = "NE=1002,SH=1,SL=4,PP=1", memo = "memo text";
  return TEFiberCable{-7,   a,    z,   40,   9,       77,         200, 2.5,  0.25f,          65000,    6,
                      "t8", "t2", "",  "t4", "label", 1700000000, 5,   memo, "t6",           "t7",     "t5",
                      88,   1,    src, dst,  3,       "t9",       70,  2,    123456789012LL, "custom", 99};
}

auto EndFields(const ns_utilmib::TEFiberEnd& e) {
  return std::make_tuple(e.level2ID, e.level1ID, e.level2SubID, e.level3ID, e.level3SubID, e.level4ID, e.strIndexText);
}

// The fields Convert2FiberCable writes ...
auto Mapped(const TEFiberCable& c) {
  return std::tuple_cat(EndFields(c.aEnd), EndFields(c.zEnd),
                        std::make_tuple(c.fiberValue1, c.fiberValue2, c.fiberValue3, c.fiberValue5, c.fiberValue6,
                                        c.fiberValue7, c.hybridMaxCapacity, c.resetValue1, c.resetValue2, c.reserve,
                                        c.doubleValue, c.floatValue, c.memo),
                        std::make_tuple(c.fiberText2, c.fiberText3, c.fiberText4, c.fiberText5, c.fiberText6,
                                        c.fiberText7, c.fiberText8, c.fiberText9));
}

// ... and those it never touches.
auto Own(const TEFiberCable& c) {
  return std::make_tuple(c.maintenanceState, c.buildTime, c.delayTime, c.srcPortFDN, c.dstPortFDN, c.cableType,
                         c.strUserLabel, c.modifyFlag, c.strCustomInfo, c.lastModifyTime);
}

// What a round trip cannot show: edge values as texts, presence of empty and
// -1 components, what is never read back, and a second fill.
TEST(Convert2QAsnFiberInfo, EdgeValuesPresenceEntriesAndRefill) {
  const std::string withNul("ab\0cd", 5);
  TEFiberCable cable = SampleCable();
  cable.reserve = 65535;  // a flag: "1"
  cable.buildTime = -1;
  cable.delayTime = std::numeric_limits<long long>::min();
  cable.maintenanceState = -5;
  cable.doubleValue = 1e20;
  cable.fiberText5 = cable.memo = cable.srcPortFDN = withNul;
  QAsnFiberInfo record;
  ns_velkor::Convert2QAsnFiberInfo(cable, record);
  const Entries five = {{"Memo", "ab"},
                        {"Reserve", "1"},
                        {"MaintenanceState", "-5"},
                        {"BuildTime_t", "-1"},
                        {"DelayTime", "-9223372036854775808"}};
  ASSERT_EQ(EntriesOf(record), five);
  EXPECT_EQ(std::make_tuple(Text(*record.doubleValue), Text(*record.floatValue)),
            std::make_tuple("100000000000000000000.000000", "0.250000"));
  // Texts stop at the NUL; fiberText1 repeats fiberText5.
  for (const std::string& text : {Text(record.fiberText1), Text(*record.fiberText5), Text(record.aEndResID->strFDN)})
    EXPECT_EQ(text, "ab");
  EXPECT_EQ(record.fiberValue2.Value(), 65000);  // widened without sign
  // Empty texts stay present; fiberText9 and fiberValue7 are never written.
  EXPECT_EQ(std::make_tuple(Opt(record.fiberText3), Opt(record.zEndPort.strIndexText), Opt(record.fiberText9)),
            std::make_tuple("", "", "<absent>"));
  // Sub-levels of -1 stay present, unlike in the plain port-index conversion.
  EXPECT_EQ(
      std::make_tuple(Opt(record.aEndPort.level3SubID), Opt(record.zEndPort.level2SubID), Opt(record.fiberValue7)),
      std::make_tuple(std::optional<int>(-1), std::optional<int>(-1), std::optional<int>()));
  ASSERT_FALSE(record.zEndResID.IsNull());
  const qcommon::QAsnUniResID& res = *record.zEndResID;
  EXPECT_EQ(std::make_tuple(Text(res.strFDN), Text(res.strMOC), res.neID.Value(), res.poSerialNum.IsNull()),
            std::make_tuple(cable.dstPortFDN, "", 0, true));

  // Filling again appends the five entries once more and changes nothing else.
  QAsnFiberInfo once = record;
  ns_velkor::Convert2QAsnFiberInfo(cable, record);
  EXPECT_EQ(EntriesOf(record).size(), 10u);
  once.attrList.Reset();
  record.attrList.Reset();
  EXPECT_EQ(AsnEncodeValue(record), AsnEncodeValue(once));
}

TEST(Convert2FiberCable, AbsentComponentsGiveDefaults) {
  TEFiberCable cable = SampleCable();
  QAsnFiberInfo record;  // every optional component absent, no attrList
  TraceCapture trace;
  ns_velkor::Convert2FiberCable(record, cable);
  EXPECT_EQ(std::make_tuple(cable.doubleValue, cable.floatValue, cable.hybridMaxCapacity, cable.aEnd.level2SubID),
            std::make_tuple(1.0, -0.1f, -1, -1));
  EXPECT_EQ(Mapped(cable), Mapped(TEFiberCable()));  // the rest 0 and empty
  EXPECT_EQ(Own(cable), Own(SampleCable()));
  EXPECT_TRUE(TraceCapture::Lines().empty());  // the defaults need no repair
}

// Widths, signs and sources the round trip below cannot reach.
TEST(Convert2FiberCable, RecordValues) {
  QAsnFiberInfo record;
  record.fiberValue1 = -7;
  record.fiberValue3 = 300;  // unsigned 8 bits: 44
  record.fiberValue2 = 70000;
  record.fiberValue5.GetOrCreate() = 259;
  record.fiberValue6.GetOrCreate() = -1;
  record.fiberValue7.GetOrCreate() = -70000;
  record.hybridMaxCapacity.GetOrCreate() = 12;
  record.aEndPort.level3SubID.GetOrCreate() = -7;
  record.zEndPort.strIndexText.GetOrCreate().Set("Z");
  record.doubleValue.GetOrCreate().Set("2.5");
  record.floatValue.GetOrCreate().Set("");  // present but empty: 0, not the default
  record.fiberText1.Set("first");           // not read: fiberText5 comes from fiberText5
  // Neither these entries nor the identifiers are read.
  for (const char* name : {"MaintenanceState", "BuildTime_t", "DelayTime"}) AddEntry(record, name, "9");
  record.aEndResID.GetOrCreate().strFDN.Set("NE=1");
  TEFiberCable cable = SampleCable();
  ns_velkor::Convert2FiberCable(record, cable);
  EXPECT_EQ(std::make_tuple(cable.fiberValue1, cable.fiberValue3, cable.fiberValue2, cable.fiberValue5,
                            cable.fiberValue6, cable.fiberValue7, cable.hybridMaxCapacity),
            std::make_tuple(-7, std::uint8_t{44}, std::uint16_t{4464}, std::uint8_t{3}, std::uint8_t{255}, -70000, 12));
  EXPECT_EQ(std::make_tuple(cable.aEnd.level3SubID, cable.zEnd.strIndexText, cable.doubleValue, cable.floatValue,
                            cable.fiberText5),
            std::make_tuple(-7, "Z", 2.5, 0.0f, ""));
  EXPECT_EQ(Own(cable), Own(SampleCable()));
}

TEST(Convert2FiberCable, ReserveAndMemoEntries) {
  const std::tuple<Entries, std::uint16_t, std::string> cases[] = {
      {{}, 0, ""},                                               // no entries: 0 and empty
      {{{"Reserve", "7"}}, 7, ""},                               // not reduced to a flag
      {{{"Reserve", "-1"}}, 65535, ""},                          // read as int, low 16 bits kept
      {{{"Reserve", "0"}, {"Reserve", "1"}}, 1, ""},             // the last one counts
      {{{"Memo", "a"}, {"Other", "b"}, {"Memo", "c"}}, 0, "c"},  // likewise for Memo
  };
  for (const auto& [entries, reserve, memo] : cases) {
    SCOPED_TRACE(::testing::PrintToString(entries));
    QAsnFiberInfo record;
    for (const auto& [name, value] : entries) AddEntry(record, name, value);
    TEFiberCable cable = SampleCable();
    ns_velkor::Convert2FiberCable(record, cable);
    EXPECT_EQ(std::make_tuple(cable.reserve, cable.memo), std::make_tuple(reserve, memo));
  }
}

TEST(Convert2FiberCable, TracesOneLineWhenTheCableWasRepaired) {
  QAsnFiberInfo record;
  record.doubleValue.GetOrCreate().Set("-1");
  record.hybridMaxCapacity.GetOrCreate() = -2;  // two repairs, one line
  TEFiberCable cable;
  TraceCapture trace;
  ns_velkor::Convert2FiberCable(record, cable);
  EXPECT_EQ(std::make_tuple(cable.doubleValue, cable.hybridMaxCapacity), std::make_tuple(1.0, -1));
  ASSERT_EQ(TraceCapture::Lines().size(), 1u);
  const ns_utility::TraceLine& line = TraceCapture::Lines()[0];
  EXPECT_EQ(std::make_tuple(line.category, line.level, line.text),
            std::make_tuple("INFO", 1, "[Convert2FiberCable]FixInvalidFiberParam"));
}

// Out through BER and back in. What the outgoing conversion does not map (and
// the incoming one reads) was in the record before and stays.
TEST(Convert2FiberCable, RoundTripThroughBerRestoresWhatTravels) {
  TEFiberCable source = SampleCable();
  source.reserve = 0;
  source.doubleValue = 3.14159265;
  source.floatValue = -0.1f;
  QAsnFiberInfo outgoing;
  outgoing.fiberText9.GetOrCreate().Set("kept");
  outgoing.fiberValue7.GetOrCreate() = 17;
  AddEntry(outgoing, "Earlier", "");
  qcommon::QAsnUniResID& aRes = outgoing.aEndResID.GetOrCreate();
  aRes.strFDN.Set("old");
  aRes.strMOC.Set("PP");
  aRes.neID = 1001;
  aRes.poSerialNum.GetOrCreate().Set("SN");
  ns_velkor::Convert2QAsnFiberInfo(source, outgoing);
  const Entries entries = EntriesOf(outgoing);
  ASSERT_EQ(entries.size(), 6u);
  EXPECT_EQ(std::make_tuple(entries[0].first, entries[2]),
            std::make_tuple("Earlier", Entries::value_type("Reserve", "0")));
  EXPECT_EQ(std::make_tuple(Text(aRes.strFDN), Text(aRes.strMOC), aRes.neID.Value(), Text(*aRes.poSerialNum)),
            std::make_tuple(source.srcPortFDN, "PP", 1001, "SN"));

  QAsnFiberInfo incoming;
  AsnDecodeValue(incoming, AsnEncodeValue(outgoing));
  TEFiberCable target;  // its own values: overwritten or kept
  target.maintenanceState = -3;
  target.buildTime = 42;
  target.srcPortFDN = "src";
  target.strCustomInfo = "mine";
  target.resetValue1 = target.resetValue2 = 5;
  const TEFiberCable before = target;
  ns_velkor::Convert2FiberCable(incoming, target);
  TEFiberCable expected = source;
  expected.doubleValue = 3.141593;  // six decimals
  expected.fiberText9 = "kept";
  expected.fiberValue7 = 17;
  expected.resetValue1 = expected.resetValue2 = 0;
  EXPECT_EQ(Mapped(target), Mapped(expected));
  EXPECT_EQ(Own(target), Own(before));  // maintenanceState etc. are not read back
}

// tests/conversions/fix_fiber_param.golden.
TEST(TEFiberCable, FixInvalidFiberParam) {
  using Values = std::tuple<double, float, int>;  // doubleValue, floatValue, hybridMaxCapacity
  for (const std::vector<std::string>& row : test_bytes::Golden("conversions/fix_fiber_param.golden")) {
    SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2]);
    TEFiberCable cable;
    std::tie(cable.doubleValue, cable.floatValue, cable.hybridMaxCapacity) =
        Values(std::stod(row[0]), std::stof(row[1]), std::stoi(row[2]));
    EXPECT_EQ(cable.FixInvalidFiberParam(), row[3] == "true");
    EXPECT_EQ(Values(cable.doubleValue, cable.floatValue, cable.hybridMaxCapacity),
              Values(std::stod(row[4]), std::stof(row[5]), std::stoi(row[6])));
  }
}

// ---- templates ----------------------------------------------------------------

using qinventoryfiber::QAsnFiberInfoTemplate;

// Presence of the columns as a mask, read without the converter: member n of
// the record stands for bit n.
std::uint64_t PresentColumns(const QAsnFiberInfoTemplate& record) {
  std::uint64_t mask = 0, bit = 1;
  for (const AsnMember& column : AsnMembersOf(record)) {
    if (column.Value() != nullptr) mask |= bit;
    bit <<= 1;
  }
  return mask;
}

// Each mask onto an empty record and back (through BER, onto a stale mask).
// Bits 12 to 63 stand for no column.
TEST(FiberInfoTemplate, MasksOnAnEmptyRecordAndBack) {
  const std::uint64_t cases[][2] = {{0, 0}, {0xFFF, 0xFFF}, {0x804, 0x804}, {0x1000, 0}, {~std::uint64_t{0}, 0xFFF}};
  for (const auto& [mask, present] : cases) {
    SCOPED_TRACE(mask);
    QAsnFiberInfoTemplate record;
    ns_velkor::Convert2QAsnFiberInfoTemplate(mask, record);
    EXPECT_EQ(PresentColumns(record), present);
    QAsnFiberInfoTemplate decoded;
    AsnDecodeValue(decoded, AsnEncodeValue(record));
    std::uint64_t back = 0xF000 | ~present;  // replaced, not combined
    ns_velkor::Convert2FiberInfoTemplateType(decoded, back);
    EXPECT_EQ(back, present);
  }
}

// 0x1 onto a record already holding column2 gives 0x3; nothing is removed and
// a selected column that is present keeps its condition.
TEST(FiberInfoTemplate, AddsAndNeverRemoves) {
  QAsnFiberInfoTemplate record;
  record.column2.GetOrCreate().strCondition.Set("length > 10");
  ns_velkor::Convert2QAsnFiberInfoTemplate(0x1, record);
  std::uint64_t mask = 0;
  ns_velkor::Convert2FiberInfoTemplateType(record, mask);
  EXPECT_EQ(mask, 0x3u);
  ns_velkor::Convert2QAsnFiberInfoTemplate(0x2, record);
  ns_velkor::Convert2QAsnFiberInfoTemplate(0, record);
  EXPECT_EQ(PresentColumns(record), 0x3u);
  EXPECT_EQ(record.column1->strCondition.Len(), 0u);
  EXPECT_EQ(record.column2->strCondition.view(), "length > 10");
}

}  // namespace
