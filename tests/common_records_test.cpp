// The common records of qcommon: defaults, deep and independent copies, exact
// encodings and round trips; and the name/value list to map conversion.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "asn/qasn_column.h"
#include "asn/qasn_uni_res_id.h"
#include "asn/qcommon_lists.h"
#include "convert/ns_velkor.h"
#include "platform/asn/asn_value_io.h"
#include "test_bytes.h"

namespace {

using qcommon::QAsnColumn;
using qcommon::QAsnErrInfo;
using qcommon::QAsnErrInfoList;
using qcommon::QAsnNameAndValueString;
using qcommon::QAsnNVSList;
using qcommon::QAsnTinyIntList;
using qcommon::QAsnUniResID;
using test_bytes::Hex;
using test_bytes::ToHex;

TEST(CommonRecords, DefaultsAreEmpty) {
  const QAsnNameAndValueString nvs;
  EXPECT_EQ(nvs.name.Len(), 0u);
  EXPECT_EQ(nvs.value.Len(), 0u);

  const QAsnUniResID id;
  EXPECT_EQ(id.strFDN.Len(), 0u);
  EXPECT_EQ(id.strMOC.Len(), 0u);
  EXPECT_EQ(id.neID.Value(), 0);
  EXPECT_TRUE(id.poSerialNum.IsNull());

  const QAsnErrInfo info;
  EXPECT_EQ(info.objID.Count(), 0u);
  EXPECT_TRUE(info.objName.IsNull());
  EXPECT_EQ(info.errCode.Value(), 0);
  EXPECT_TRUE(info.strOperDesc.IsNull());

  const QAsnColumn column;
  EXPECT_EQ(column.strCondition.Len(), 0u);
}

QAsnErrInfo FilledErrInfo() {
  QAsnErrInfo info;
  info.objID.Append()->Set(11);
  info.objID.Append()->Set(-12);
  info.objName.GetOrCreate().Set("port-1");
  info.errCode = 1234;
  info.strOperDesc.GetOrCreate().Set("set state");
  return info;
}

// Exact encoding of FilledErrInfo() (pyasn1 from asn/qcommon.asn gives the same octets).
const char kFilledErrInfo[] =
    "30 1F 30 06 02 01 0B 02 01 F4 80 06 70 6F 72 74 2D 31 02 02 04 D2 81 09 73 65 74 20 73 74 61 74 65";

TEST(CommonRecords, CloneIsDeepAndIndependent) {
  const QAsnErrInfo source = FilledErrInfo();
  const std::unique_ptr<QAsnErrInfo> clone(static_cast<QAsnErrInfo*>(source.Clone()));
  QAsnErrInfo copy(source);
  QAsnErrInfo assigned;
  assigned.strOperDesc.GetOrCreate().Set("replaced");
  assigned = source;
  for (QAsnErrInfo* other : {clone.get(), &copy, &assigned}) {
    ASSERT_EQ(ToHex(AsnEncodeValue(*other)), kFilledErrInfo);
    EXPECT_NE(other->objName.Get(), source.objName.Get());
    EXPECT_NE(other->objID.First(), source.objID.First());
    other->objID.First()->Set(99);
    other->objName->Set("changed");
    other->strOperDesc.Reset();
  }
  copy = QAsnErrInfo();  // assigning absent members makes them absent
  EXPECT_TRUE(copy.objName.IsNull());
  EXPECT_EQ(copy.objID.Count(), 0u);
  // Destroying the copies (at scope end) and changing them left the source intact.
  QAsnErrInfo& mutableSource = const_cast<QAsnErrInfo&>(source);
  EXPECT_EQ(ToHex(AsnEncodeValue(mutableSource)), kFilledErrInfo);
}

TEST(CommonRecords, CopiesOutliveTheirSource) {
  std::unique_ptr<QAsnUniResID> source(new QAsnUniResID);
  source->strFDN.Set("NE=1");
  source->poSerialNum.GetOrCreate().Set("SN");
  const QAsnUniResID copy(*source);
  source.reset();
  EXPECT_EQ(copy.strFDN.view(), "NE=1");
  ASSERT_FALSE(copy.poSerialNum.IsNull());
  EXPECT_EQ(copy.poSerialNum->view(), "SN");
}

TEST(CommonRecords, SelfAssignmentLeavesTheRecordUnchanged) {
  QAsnErrInfo info = FilledErrInfo();
  const AsnOcts* held = info.objName.Get();
  QAsnErrInfo& same = info;
  info = same;
  EXPECT_EQ(info.objName.Get(), held);
  EXPECT_EQ(ToHex(AsnEncodeValue(info)), kFilledErrInfo);
}

TEST(CommonRecords, ExactEncodings) {
  QAsnUniResID id;
  EXPECT_EQ(ToHex(AsnEncodeValue(id)), "30 07 04 00 04 00 02 01 00");
  id.strFDN.Set("NE=1001");
  id.strMOC.Set("PP");
  id.neID = 1001;
  EXPECT_EQ(ToHex(AsnEncodeValue(id)), "30 11 04 07 4E 45 3D 31 30 30 31 04 02 50 50 02 02 03 E9");
  id.poSerialNum.GetOrCreate();
  EXPECT_EQ(ToHex(AsnEncodeValue(id)), "30 13 04 07 4E 45 3D 31 30 30 31 04 02 50 50 02 02 03 E9 80 00");
  id.poSerialNum->Set("7");
  EXPECT_EQ(ToHex(AsnEncodeValue(id)), "30 14 04 07 4E 45 3D 31 30 30 31 04 02 50 50 02 02 03 E9 80 01 37");

  QAsnErrInfo info;
  EXPECT_EQ(ToHex(AsnEncodeValue(info)), "30 05 30 00 02 01 00");
  info = FilledErrInfo();
  EXPECT_EQ(ToHex(AsnEncodeValue(info)), kFilledErrInfo);
  info.objName.Reset();
  EXPECT_EQ(ToHex(AsnEncodeValue(info)), "30 17 30 06 02 01 0B 02 01 F4 02 02 04 D2 81 09 73 65 74 20 73 74 61 74 65");

  QAsnNameAndValueString nvs;
  nvs.name.Set("A");
  nvs.value.Set("1");
  EXPECT_EQ(ToHex(AsnEncodeValue(nvs)), "30 06 04 01 41 04 01 31");

  QAsnColumn column;
  EXPECT_EQ(ToHex(AsnEncodeValue(column)), "30 02 04 00");
}

// Encode, decode into a fresh value, encode again: the same octets.
template <class T>
void ExpectRoundTrip(T& value) {
  const std::string octets = AsnEncodeValue(value);
  T back;
  AsnDecodeValue(back, octets);
  EXPECT_EQ(ToHex(AsnEncodeValue(back)), ToHex(octets)) << value.typeName();
}

TEST(CommonRecords, RoundTrips) {
  QAsnErrInfoList errors;
  errors.AppendCopy(FilledErrInfo());
  errors.Append();
  ExpectRoundTrip(errors);

  QAsnNVSList attributes;
  for (const char* name : {"Memo", "", "MaintenanceState"}) {
    QAsnNameAndValueString* element = attributes.Append();
    element->name.Set(name);
    element->value.Set(std::string(200, 'v').c_str());  // long-form lengths
  }
  ExpectRoundTrip(attributes);

  QAsnUniResID id;
  id.strFDN.Set(std::string("NE=1\0tail", 9).data(), 9);  // octets, zero byte included
  id.neID = -2147483647 - 1;
  id.poSerialNum.GetOrCreate();
  ExpectRoundTrip(id);

  QAsnTinyIntList numbers;
  for (int value : {0, 127, 128, -128, -129, 2147483647}) numbers.Append()->Set(value);
  ExpectRoundTrip(numbers);

  QAsnColumn column;
  column.strCondition.Set("a = 'b'");
  ExpectRoundTrip(column);
}

// ---- Convert2MapKeyValue ------------------------------------------------------

QAsnNVSList NvsList(std::initializer_list<std::pair<std::string, std::string>> pairs) {
  QAsnNVSList list;
  for (const auto& pair : pairs) {
    QAsnNameAndValueString* element = list.Append();
    element->name.Set(pair.first.data(), pair.first.size());
    element->value.Set(pair.second.data(), pair.second.size());
  }
  return list;
}

TEST(Convert2MapKeyValue, Cases) {
  using Map = std::map<std::string, std::string>;
  struct Case {
    const char* comment;
    QAsnNVSList list;
    Map before;
    Map after;
  };
  const Case cases[] = {
      {"empty list", NvsList({}), {{"A", "x"}}, {{"A", "x"}}},
      {"a later duplicate wins", NvsList({{"A", "1"}, {"B", "2"}, {"A", "3"}}), {}, {{"A", "3"}, {"B", "2"}}},
      {"the caller's entries are kept or overwritten",
       NvsList({{"A", "1"}}),
       {{"A", "x"}, {"C", "y"}},
       {{"A", "1"}, {"C", "y"}}},
      {"empty name and value", NvsList({{"", ""}, {"", "v"}}), {}, {{"", "v"}}},
      {"names differing after a zero byte are one key",
       NvsList({{std::string("K\0a", 3), "1"}, {std::string("K\0b", 3), std::string("2\0z", 3)}}),
       {},
       {{"K", "2"}}},
  };
  for (const Case& c : cases) {
    Map map = c.before;
    ns_velkor::Convert2MapKeyValue(c.list, map);
    EXPECT_EQ(map, c.after) << c.comment;
  }
}

TEST(Convert2MapKeyValue, WalkEndsAtTheEndOfTheList) {
  const QAsnNVSList list = NvsList({{"A", "1"}, {"B", "2"}});
  std::map<std::string, std::string> map;
  ns_velkor::Convert2MapKeyValue(list, map);
  EXPECT_EQ(list.Current(), nullptr);
  ns_velkor::Convert2MapKeyValue(list, map);  // a second walk starts over
  EXPECT_EQ(map.size(), 2u);
}

}  // namespace
