// Fiber cables to fiber records and back.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "convert/ns_velkor.h"
#include "platform/asn/asn_value_io.h"
#include "platform/trace/trace_sink.h"
#include "tests/trace_capture.h"

namespace {

using ns_utilmib::TEFiberCable;
using qinventoryfiber::QAsnFiberInfo;
using Entries = std::vector<std::pair<std::string, std::string>>;

std::string Text(const AsnOcts& octs) { return std::string(octs.view()); }

Entries EntriesOf(const QAsnFiberInfo& record) {
  Entries entries;
  if (record.attrList.IsNull()) return entries;
  for (record.attrList->MoveFirst(); const auto* entry = record.attrList->Current(); record.attrList->MoveNext())
    entries.emplace_back(Text(entry->name), Text(entry->value));
  return entries;
}

// A cable whose every field holds a value of its own.
TEFiberCable SampleCable() {
  TEFiberCable cable;
  cable.fiberValue1 = -7;
  cable.aEnd = {11, 10, 2, 12, -1, 13, "A-PORT"};
  cable.zEnd = {21, 20, -1, 22, 3, 23, ""};
  cable.hybridMaxCapacity = 40;
  cable.cableType = 9;
  cable.resetValue1 = 77;
  cable.fiberValue3 = 200;
  cable.doubleValue = 2.5;
  cable.floatValue = 0.25f;
  cable.fiberValue2 = 65000;
  cable.fiberValue6 = 6;
  cable.fiberText8 = "t8";
  cable.fiberText2 = "t2";
  cable.fiberText3 = "";
  cable.fiberText4 = "t4";
  cable.strUserLabel = "label";
  cable.buildTime = 1700000000;
  cable.fiberValue5 = 5;
  cable.memo = "memo text";
  cable.fiberText6 = "t6";
  cable.fiberText7 = "t7";
  cable.fiberText5 = "t5";
  cable.resetValue2 = 88;
  cable.reserve = 1;
  cable.srcPortFDN = "NE=1001,SH=1,SL=3,PP=2";
  cable.dstPortFDN = "NE=1002,SH=1,SL=4,PP=1";
  cable.modifyFlag = 3;
  cable.fiberText9 = "t9";
  cable.fiberValue7 = 70;
  cable.maintenanceState = 2;
  cable.delayTime = 123456789012LL;
  cable.strCustomInfo = "custom";
  cable.lastModifyTime = 99;
  return cable;
}

auto EndFields(const ns_utilmib::TEFiberEnd& end) {
  return std::make_tuple(end.level2ID, end.level1ID, end.level2SubID, end.level3ID, end.level3SubID, end.level4ID,
                         end.strIndexText);
}

// ---- cable to record ---------------------------------------------------------

TEST(Convert2QAsnFiberInfo, FreshRecordGetsEveryComponentButText9AndValue7) {
  const TEFiberCable cable = SampleCable();
  QAsnFiberInfo record;
  ns_velkor::Convert2QAsnFiberInfo(cable, record);

  EXPECT_EQ(Text(record.fiberText1), "t5");
  EXPECT_EQ(record.fiberValue1.Value(), -7);
  EXPECT_EQ(Text(record.fiberText2), "t2");
  EXPECT_EQ(record.fiberValue2.Value(), 65000);  // widened without sign
  EXPECT_EQ(record.fiberValue3.Value(), 200);
  EXPECT_EQ(*record.hybridMaxCapacity, 40);
  EXPECT_EQ(*record.fiberValue5, 5);
  EXPECT_EQ(Text(*record.doubleValue), "2.500000");
  EXPECT_EQ(Text(*record.floatValue), "0.250000");
  ASSERT_FALSE(record.fiberText3.IsNull());
  EXPECT_EQ(record.fiberText3->Len(), 0u);
  EXPECT_EQ(Text(*record.fiberText4), "t4");
  EXPECT_EQ(Text(*record.fiberText5), "t5");
  EXPECT_EQ(Text(*record.fiberText6), "t6");
  EXPECT_EQ(Text(*record.fiberText7), "t7");
  EXPECT_EQ(*record.fiberValue6, 6);
  EXPECT_EQ(Text(*record.fiberText8), "t8");
  EXPECT_TRUE(record.fiberText9.IsNull());
  EXPECT_TRUE(record.fiberValue7.IsNull());

  const Entries expected = {{"Memo", "memo text"},
                            {"Reserve", "1"},
                            {"MaintenanceState", "2"},
                            {"BuildTime_t", "1700000000"},
                            {"DelayTime", "123456789012"}};
  EXPECT_EQ(EntriesOf(record), expected);

  const std::pair<const refl::MayNullPointer<qcommon::QAsnUniResID>*, std::string> resIDs[] = {
      {&record.aEndResID, cable.srcPortFDN}, {&record.zEndResID, cable.dstPortFDN}};
  for (const auto& [holder, fdn] : resIDs) {
    ASSERT_FALSE(holder->IsNull());
    EXPECT_EQ(Text((*holder)->strFDN), fdn);
    EXPECT_EQ((*holder)->strMOC.Len(), 0u);
    EXPECT_EQ((*holder)->neID.Value(), 0);
    EXPECT_TRUE((*holder)->poSerialNum.IsNull());
  }
}

TEST(Convert2QAsnFiberInfo, EndsKeepSubLevelsOfMinusOneAndEmptyTextsPresent) {
  QAsnFiberInfo record;
  ns_velkor::Convert2QAsnFiberInfo(SampleCable(), record);
  const qcommon::QAsnPortIndex& a = record.aEndPort;
  EXPECT_EQ(a.level1ID.Value(), 10);
  EXPECT_EQ(a.level2ID.Value(), 11);
  EXPECT_EQ(*a.level2SubID, 2);
  EXPECT_EQ(a.level3ID.Value(), 12);
  ASSERT_FALSE(a.level3SubID.IsNull());
  EXPECT_EQ(*a.level3SubID, -1);
  EXPECT_EQ(a.level4ID.Value(), 13);
  EXPECT_EQ(Text(*a.strIndexText), "A-PORT");
  const qcommon::QAsnPortIndex& z = record.zEndPort;
  ASSERT_FALSE(z.level2SubID.IsNull());
  EXPECT_EQ(*z.level2SubID, -1);
  EXPECT_EQ(*z.level3SubID, 3);
  ASSERT_FALSE(z.strIndexText.IsNull());
  EXPECT_EQ(z.strIndexText->Len(), 0u);
}

TEST(Convert2QAsnFiberInfo, FillingTwiceRepeatsEveryEntryAndKeepsComponents) {
  const TEFiberCable cable = SampleCable();
  QAsnFiberInfo record;
  ns_velkor::Convert2QAsnFiberInfo(cable, record);
  QAsnFiberInfo once = record;
  ns_velkor::Convert2QAsnFiberInfo(cable, record);

  const Entries first = EntriesOf(once);
  Entries expected = first;
  expected.insert(expected.end(), first.begin(), first.end());
  EXPECT_EQ(EntriesOf(record), expected);
  ASSERT_EQ(expected.size(), 10u);

  once.attrList.Reset();
  record.attrList.Reset();
  EXPECT_EQ(AsnEncodeValue(record), AsnEncodeValue(once));
}

TEST(Convert2QAsnFiberInfo, KeepsWhatItDoesNotMap) {
  QAsnFiberInfo record;
  record.fiberText9.GetOrCreate().Set("kept");
  record.fiberValue7.GetOrCreate() = 17;
  record.attrList.GetOrCreate().Append()->name.Set("Earlier");
  qcommon::QAsnUniResID& aRes = record.aEndResID.GetOrCreate();
  aRes.strFDN.Set("old");
  aRes.strMOC.Set("PP");
  aRes.neID = 1001;
  aRes.poSerialNum.GetOrCreate().Set("SN");

  ns_velkor::Convert2QAsnFiberInfo(SampleCable(), record);
  EXPECT_EQ(Text(*record.fiberText9), "kept");
  EXPECT_EQ(*record.fiberValue7, 17);
  const Entries entries = EntriesOf(record);
  ASSERT_EQ(entries.size(), 6u);
  EXPECT_EQ(entries[0].first, "Earlier");
  EXPECT_EQ(entries[1].first, "Memo");
  EXPECT_EQ(Text(record.aEndResID->strFDN), "NE=1001,SH=1,SL=3,PP=2");
  EXPECT_EQ(Text(record.aEndResID->strMOC), "PP");
  EXPECT_EQ(record.aEndResID->neID.Value(), 1001);
  EXPECT_EQ(Text(*record.aEndResID->poSerialNum), "SN");
}

TEST(Convert2QAsnFiberInfo, NumberAndFlagTexts) {
  struct Case {
    const char* what;
    std::function<void(TEFiberCable&)> set;
    std::function<std::string(const QAsnFiberInfo&)> get;
    std::string expected;
  };
  const auto entry = [](const char* key) {
    return [key](const QAsnFiberInfo& record) {
      for (const auto& [name, value] : EntriesOf(record))
        if (name == key) return value;
      return std::string("<missing>");
    };
  };
  const auto doubleText = [](const QAsnFiberInfo& record) { return Text(*record.doubleValue); };
  const auto floatText = [](const QAsnFiberInfo& record) { return Text(*record.floatValue); };
  const Case cases[] = {
      {"reserve 0", [](TEFiberCable& c) { c.reserve = 0; }, entry("Reserve"), "0"},
      {"reserve 1", [](TEFiberCable& c) { c.reserve = 1; }, entry("Reserve"), "1"},
      {"reserve 2", [](TEFiberCable& c) { c.reserve = 2; }, entry("Reserve"), "1"},
      {"reserve 65535", [](TEFiberCable& c) { c.reserve = 65535; }, entry("Reserve"), "1"},
      {"buildTime -1", [](TEFiberCable& c) { c.buildTime = -1; }, entry("BuildTime_t"), "-1"},
      {"delayTime 0", [](TEFiberCable& c) { c.delayTime = 0; }, entry("DelayTime"), "0"},
      {"delayTime min", [](TEFiberCable& c) { c.delayTime = std::numeric_limits<long long>::min(); },
       entry("DelayTime"), "-9223372036854775808"},
      {"maintenanceState -5", [](TEFiberCable& c) { c.maintenanceState = -5; }, entry("MaintenanceState"), "-5"},
      {"memo empty", [](TEFiberCable& c) { c.memo.clear(); }, entry("Memo"), ""},
      {"double 1.0", [](TEFiberCable& c) { c.doubleValue = 1.0; }, doubleText, "1.000000"},
      {"double 1e20", [](TEFiberCable& c) { c.doubleValue = 1e20; }, doubleText, "100000000000000000000.000000"},
      {"double 2.5e-7", [](TEFiberCable& c) { c.doubleValue = 2.5e-7; }, doubleText, "0.000000"},
      {"float -0.1", [](TEFiberCable& c) { c.floatValue = -0.1f; }, floatText, "-0.100000"},
      {"float nan", [](TEFiberCable& c) { c.floatValue = std::nanf(""); }, floatText, "nan"},
  };
  for (const Case& test : cases) {
    TEFiberCable cable = SampleCable();
    test.set(cable);
    QAsnFiberInfo record;
    ns_velkor::Convert2QAsnFiberInfo(cable, record);
    EXPECT_EQ(test.get(record), test.expected) << test.what;
  }
}

TEST(Convert2QAsnFiberInfo, TextsStopAtNulAndLevelsKeepLow32Bits) {
  const std::string withNul("ab\0cd", 5);
  TEFiberCable cable = SampleCable();
  cable.fiberText5 = withNul;
  cable.fiberText3 = withNul;
  cable.fiberText2 = withNul;
  cable.memo = withNul;
  cable.srcPortFDN = withNul;
  cable.aEnd.strIndexText = withNul;
  cable.aEnd.level1ID = 0xFFFFFFFFull;     // comes out as -1
  cable.aEnd.level4ID = (1ull << 32) + 5;  // comes out as 5
  QAsnFiberInfo record;
  ns_velkor::Convert2QAsnFiberInfo(cable, record);
  EXPECT_EQ(Text(record.fiberText1), "ab");
  EXPECT_EQ(Text(*record.fiberText5), "ab");
  EXPECT_EQ(Text(*record.fiberText3), "ab");
  EXPECT_EQ(Text(record.fiberText2), "ab");
  EXPECT_EQ(EntriesOf(record).front(), Entries::value_type("Memo", "ab"));
  EXPECT_EQ(Text(record.aEndResID->strFDN), "ab");
  EXPECT_EQ(Text(*record.aEndPort.strIndexText), "ab");
  EXPECT_EQ(record.aEndPort.level1ID.Value(), -1);
  EXPECT_EQ(record.aEndPort.level4ID.Value(), 5);
}

// ---- record to cable ---------------------------------------------------------

void AddEntry(QAsnFiberInfo& record, const char* name, const std::string& value) {
  auto* entry = record.attrList.GetOrCreate().Append();
  entry->name.Set(name);
  entry->value.Set(value.data(), value.size());
}

TEST(Convert2FiberCable, AbsentComponentsGiveDefaults) {
  TEFiberCable cable = SampleCable();
  const TEFiberCable before = cable;
  QAsnFiberInfo record;  // every optional component absent, no attrList
  TraceCapture trace;
  ns_velkor::Convert2FiberCable(record, cable);

  for (const ns_utilmib::TEFiberEnd* end : {&cable.aEnd, &cable.zEnd}) {
    EXPECT_EQ(end->level1ID, 0u);
    EXPECT_EQ(end->level2ID, 0u);
    EXPECT_EQ(end->level2SubID, -1);
    EXPECT_EQ(end->level3SubID, -1);
    EXPECT_EQ(end->strIndexText, "");
  }
  EXPECT_EQ(cable.hybridMaxCapacity, -1);
  EXPECT_EQ(cable.fiberValue5, 0);
  EXPECT_EQ(cable.fiberValue6, 0);
  EXPECT_EQ(cable.fiberValue7, 0);
  EXPECT_EQ(cable.doubleValue, 1.0);
  EXPECT_EQ(cable.floatValue, -0.1f);
  for (const std::string* text :
       {&cable.fiberText2, &cable.fiberText3, &cable.fiberText4, &cable.fiberText5, &cable.fiberText6,
        &cable.fiberText7, &cable.fiberText8, &cable.fiberText9, &cable.memo})
    EXPECT_EQ(*text, "");
  EXPECT_EQ(cable.reserve, 0);
  EXPECT_EQ(cable.resetValue1, 0);
  EXPECT_EQ(cable.resetValue2, 0);
  // Never read, so kept.
  EXPECT_EQ(cable.maintenanceState, before.maintenanceState);
  EXPECT_EQ(cable.buildTime, before.buildTime);
  EXPECT_EQ(cable.delayTime, before.delayTime);
  EXPECT_EQ(cable.srcPortFDN, before.srcPortFDN);
  EXPECT_EQ(cable.dstPortFDN, before.dstPortFDN);
  EXPECT_EQ(cable.cableType, before.cableType);
  EXPECT_EQ(cable.strUserLabel, before.strUserLabel);
  EXPECT_EQ(cable.modifyFlag, before.modifyFlag);
  EXPECT_EQ(cable.strCustomInfo, before.strCustomInfo);
  EXPECT_EQ(cable.lastModifyTime, before.lastModifyTime);
  // The defaults need no repair.
  EXPECT_TRUE(TraceCapture::Lines().empty());
}

TEST(Convert2FiberCable, FloatingTexts) {
  struct Case {
    const char* doubleText;  // null: absent
    const char* floatText;
    double expectedDouble;
    float expectedFloat;
  };
  const Case cases[] = {
      {"2.5", "1.5", 2.5, 1.5f},        {"", "", 0.0, 0.0f},
      {"abc", "x1", 0.0, 0.0f},         {nullptr, nullptr, 1.0, -0.1f},
      {" 3.25kg", "-0.1", 3.25, -0.1f}, {"1e400", "1e39", 0.0, 0.0f},
  };
  for (const Case& test : cases) {
    QAsnFiberInfo record;
    if (test.doubleText) record.doubleValue.GetOrCreate().Set(test.doubleText);
    if (test.floatText) record.floatValue.GetOrCreate().Set(test.floatText);
    TEFiberCable cable;
    ns_velkor::Convert2FiberCable(record, cable);
    EXPECT_EQ(cable.doubleValue, test.expectedDouble) << (test.doubleText ? test.doubleText : "absent");
    EXPECT_EQ(cable.floatValue, test.expectedFloat) << (test.floatText ? test.floatText : "absent");
  }
}

TEST(Convert2FiberCable, ReserveAndMemoEntries) {
  struct Case {
    Entries entries;
    std::uint16_t reserve;
    std::string memo;
  };
  const Case cases[] = {
      {{}, 0, ""},
      {{{"Reserve", "1"}}, 1, ""},
      {{{"Reserve", "0"}}, 0, ""},
      {{{"Reserve", "7"}}, 7, ""},
      {{{"Reserve", "-1"}}, 65535, ""},
      {{{"Reserve", "65537"}}, 1, ""},
      {{{"Reserve", "yes"}}, 0, ""},
      {{{"Reserve", "99999999999"}}, 0, ""},
      {{{"Reserve", "0"}, {"Reserve", "1"}}, 1, ""},
      {{{"Memo", "a"}, {"Other", "b"}, {"Memo", "c"}}, 0, "c"},
      {{{"Memo", std::string("x\0y", 3)}}, 0, "x"},
  };
  for (const Case& test : cases) {
    QAsnFiberInfo record;
    for (const auto& [name, value] : test.entries) AddEntry(record, name.c_str(), value);
    TEFiberCable cable = SampleCable();
    ns_velkor::Convert2FiberCable(record, cable);
    EXPECT_EQ(cable.reserve, test.reserve) << ::testing::PrintToString(test.entries);
    EXPECT_EQ(cable.memo, test.memo) << ::testing::PrintToString(test.entries);
  }
}

TEST(Convert2FiberCable, EntriesItDoesNotReadLeaveFieldsAlone) {
  QAsnFiberInfo record;
  AddEntry(record, "MaintenanceState", "9");
  AddEntry(record, "BuildTime_t", "5");
  AddEntry(record, "DelayTime", "6");
  record.aEndResID.GetOrCreate().strFDN.Set("NE=1");
  record.zEndResID.GetOrCreate().strFDN.Set("NE=2");
  record.fiberText1.Set("first");
  TEFiberCable cable = SampleCable();
  ns_velkor::Convert2FiberCable(record, cable);
  const TEFiberCable sample = SampleCable();
  EXPECT_EQ(cable.maintenanceState, sample.maintenanceState);
  EXPECT_EQ(cable.buildTime, sample.buildTime);
  EXPECT_EQ(cable.delayTime, sample.delayTime);
  EXPECT_EQ(cable.srcPortFDN, sample.srcPortFDN);
  EXPECT_EQ(cable.dstPortFDN, sample.dstPortFDN);
  EXPECT_EQ(cable.fiberText5, "");  // fiberText1 is not read
}

TEST(Convert2FiberCable, IntegersKeepLowBitsAndWidenWithSign) {
  QAsnFiberInfo record;
  record.fiberValue1 = -7;
  record.fiberValue3 = 300;
  record.fiberValue2 = 70000;
  record.fiberValue5.GetOrCreate() = 259;
  record.fiberValue6.GetOrCreate() = -1;
  record.fiberValue7.GetOrCreate() = -70000;
  record.hybridMaxCapacity.GetOrCreate() = 12;
  record.aEndPort.level1ID = -1;
  record.aEndPort.level2ID = std::numeric_limits<int>::min();
  record.aEndPort.level2SubID.GetOrCreate() = -1;
  record.aEndPort.level3SubID.GetOrCreate() = -7;
  record.aEndPort.level4ID = 4;
  record.zEndPort.level3ID = 2147483647;
  record.zEndPort.strIndexText.GetOrCreate().Set("Z");
  TEFiberCable cable;
  ns_velkor::Convert2FiberCable(record, cable);
  EXPECT_EQ(cable.fiberValue1, -7);
  EXPECT_EQ(cable.fiberValue3, 44);
  EXPECT_EQ(cable.fiberValue2, 4464);
  EXPECT_EQ(cable.fiberValue5, 3);
  EXPECT_EQ(cable.fiberValue6, 255);
  EXPECT_EQ(cable.fiberValue7, -70000);
  EXPECT_EQ(cable.hybridMaxCapacity, 12);
  EXPECT_EQ(cable.aEnd.level1ID, std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(cable.aEnd.level2ID, 0xFFFFFFFF80000000ull);
  EXPECT_EQ(cable.aEnd.level2SubID, -1);
  EXPECT_EQ(cable.aEnd.level3SubID, -7);
  EXPECT_EQ(cable.aEnd.level4ID, 4u);
  EXPECT_EQ(cable.zEnd.level3ID, 2147483647u);
  EXPECT_EQ(cable.zEnd.strIndexText, "Z");
}

TEST(Convert2FiberCable, TracesOnlyWhenTheCableWasRepaired) {
  struct Case {
    const char* what;
    std::function<void(QAsnFiberInfo&)> set;
    std::size_t lines;
    double doubleValue;
    int hybridMaxCapacity;
  };
  const Case cases[] = {
      {"valid", [](QAsnFiberInfo&) {}, 0, 1.0, -1},
      {"negative double", [](QAsnFiberInfo& r) { r.doubleValue.GetOrCreate().Set("-2.5"); }, 1, 1.0, -1},
      {"capacity -7", [](QAsnFiberInfo& r) { r.hybridMaxCapacity.GetOrCreate() = -7; }, 1, 1.0, -1},
      {"both",
       [](QAsnFiberInfo& r) {
         r.doubleValue.GetOrCreate().Set("-1");
         r.hybridMaxCapacity.GetOrCreate() = -2;
       },
       1, 1.0, -1},
  };
  for (const Case& test : cases) {
    QAsnFiberInfo record;
    test.set(record);
    TEFiberCable cable;
    TraceCapture trace;
    ns_velkor::Convert2FiberCable(record, cable);
    EXPECT_EQ(cable.doubleValue, test.doubleValue) << test.what;
    EXPECT_EQ(cable.hybridMaxCapacity, test.hybridMaxCapacity) << test.what;
    ASSERT_EQ(TraceCapture::Lines().size(), test.lines) << test.what;
    for (const ns_utility::TraceLine& line : TraceCapture::Lines()) {
      EXPECT_EQ(line.module, "tn_velkor");
      EXPECT_EQ(line.category, "INFO");
      EXPECT_EQ(line.level, 1);
      EXPECT_EQ(line.text, "[Convert2FiberCable]FixInvalidFiberParam");
      EXPECT_EQ(line.file, "tn_velkor_unity");
    }
  }
}

TEST(Convert2FiberCable, RoundTripThroughBerRestoresWhatTravels) {
  TEFiberCable source = SampleCable();
  source.reserve = 5;
  source.doubleValue = 3.14159265;
  source.floatValue = -0.1f;
  QAsnFiberInfo outgoing;
  ns_velkor::Convert2QAsnFiberInfo(source, outgoing);
  QAsnFiberInfo incoming;
  AsnDecodeValue(incoming, AsnEncodeValue(outgoing));

  TEFiberCable target;
  target.maintenanceState = -3;
  target.buildTime = 42;
  target.delayTime = 43;
  target.srcPortFDN = "src";
  target.dstPortFDN = "dst";
  target.cableType = 4;
  target.strCustomInfo = "mine";
  target.resetValue1 = 1;
  target.resetValue2 = 2;
  ns_velkor::Convert2FiberCable(incoming, target);

  // Restored (reserve reduced to a flag, floating values to six decimals).
  EXPECT_EQ(target.fiberValue1, source.fiberValue1);
  EXPECT_EQ(target.fiberValue2, source.fiberValue2);
  EXPECT_EQ(target.fiberValue3, source.fiberValue3);
  EXPECT_EQ(target.fiberValue5, source.fiberValue5);
  EXPECT_EQ(target.fiberValue6, source.fiberValue6);
  EXPECT_EQ(target.hybridMaxCapacity, source.hybridMaxCapacity);
  EXPECT_EQ(EndFields(target.aEnd), EndFields(source.aEnd));
  EXPECT_EQ(EndFields(target.zEnd), EndFields(source.zEnd));
  for (std::string TEFiberCable::*text :
       {&TEFiberCable::fiberText2, &TEFiberCable::fiberText3, &TEFiberCable::fiberText4, &TEFiberCable::fiberText5,
        &TEFiberCable::fiberText6, &TEFiberCable::fiberText7, &TEFiberCable::fiberText8, &TEFiberCable::memo})
    EXPECT_EQ(target.*text, source.*text);
  EXPECT_EQ(target.reserve, 1);
  EXPECT_EQ(target.doubleValue, 3.141593);
  EXPECT_EQ(target.floatValue, -0.1f);
  // Not carried by the outgoing record: fiberText9 and fiberValue7 come back empty.
  EXPECT_EQ(target.fiberText9, "");
  EXPECT_EQ(target.fiberValue7, 0);
  // Not read on the way back: the target's own values stay.
  EXPECT_EQ(target.maintenanceState, -3);
  EXPECT_EQ(target.buildTime, 42);
  EXPECT_EQ(target.delayTime, 43);
  EXPECT_EQ(target.srcPortFDN, "src");
  EXPECT_EQ(target.dstPortFDN, "dst");
  EXPECT_EQ(target.cableType, 4);
  EXPECT_EQ(target.strCustomInfo, "mine");
  EXPECT_EQ(target.resetValue1, 0);
  EXPECT_EQ(target.resetValue2, 0);
}

TEST(Convert2FiberCable, CarriesText9AndValue7WhenTheRecordDoes) {
  QAsnFiberInfo outgoing;
  outgoing.fiberText9.GetOrCreate().Set("nine");
  outgoing.fiberValue7.GetOrCreate() = 7;
  ns_velkor::Convert2QAsnFiberInfo(SampleCable(), outgoing);
  QAsnFiberInfo incoming;
  AsnDecodeValue(incoming, AsnEncodeValue(outgoing));
  TEFiberCable cable;
  ns_velkor::Convert2FiberCable(incoming, cable);
  EXPECT_EQ(cable.fiberText9, "nine");
  EXPECT_EQ(cable.fiberValue7, 7);
}

// ---- the model's repair step -------------------------------------------------

TEST(TEFiberCable, FixInvalidFiberParam) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  struct Case {
    double doubleValue;
    float floatValue;
    int hybridMaxCapacity;
    bool changed;
    double fixedDouble;
    float fixedFloat;
    int fixedCapacity;
  };
  const Case cases[] = {
      {1.0, -0.1f, -1, false, 1.0, -0.1f, -1},
      {0.0, 5.0f, 0, false, 0.0, 5.0f, 0},
      {-0.0, -7.0f, 100, false, -0.0, -7.0f, 100},
      {-0.5, 0.0f, -1, true, 1.0, 0.0f, -1},
      {std::nan(""), 0.0f, -1, true, 1.0, 0.0f, -1},
      {kInf, 0.0f, -1, true, 1.0, 0.0f, -1},
      {2.0, std::numeric_limits<float>::infinity(), -1, true, 2.0, -0.1f, -1},
      {2.0, std::nanf(""), -1, true, 2.0, -0.1f, -1},
      {2.0, 0.0f, -2, true, 2.0, 0.0f, -1},
      {-kInf, std::nanf(""), std::numeric_limits<int>::min(), true, 1.0, -0.1f, -1},
  };
  for (const Case& test : cases) {
    TEFiberCable cable;
    cable.doubleValue = test.doubleValue;
    cable.floatValue = test.floatValue;
    cable.hybridMaxCapacity = test.hybridMaxCapacity;
    const std::string what =
        ::testing::PrintToString(std::make_tuple(test.doubleValue, test.floatValue, test.hybridMaxCapacity));
    EXPECT_EQ(cable.FixInvalidFiberParam(), test.changed) << what;
    EXPECT_EQ(cable.doubleValue, test.fixedDouble) << what;
    EXPECT_EQ(cable.floatValue, test.fixedFloat) << what;
    EXPECT_EQ(cable.hybridMaxCapacity, test.fixedCapacity) << what;
  }
}

}  // namespace
