// The common records of qcommon: deep and independent copies, exact encodings
// and round trips; and the name/value list to map conversion.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "test_bytes.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_velkor/ns_velkor.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

using qcommon::QAsnErrInfo;
using qcommon::QAsnErrInfoList;
using qcommon::QAsnNameAndValueString;
using qcommon::QAsnNVSList;
using qcommon::QAsnUniResID;
using test_bytes::ToHex;

QAsnErrInfo FilledErrInfo() {
  QAsnErrInfo info;
  info.objID.Append()->Set(11);
  info.objID.Append()->Set(-12);
  info.objName.GetOrCreate().Set("port-1");
  info.errCode = 1234;
  info.strOperDesc.GetOrCreate().Set("set state");
  return info;
}

// Exact encoding of FilledErrInfo() (pyasn1 from tn_velkor/qcommon/qcommon.asn gives the same octets).
const char kFilledErrInfo[] =
    "30 1F 30 06 02 01 0B 02 01 F4 80 06 70 6F 72 74 2D 31 02 02 04 D2 81 09 73 65 74 20 73 74 61 74 65";

// The hex of `value`'s encoding, after checking that decoding it into a fresh
// value and encoding again gives the same octets.
template <class T>
std::string Encoded(T& value) {
  const std::string octets = AsnEncodeValue(value);
  T back;
  AsnDecodeValue(back, octets);
  EXPECT_EQ(ToHex(AsnEncodeValue(back)), ToHex(octets)) << value.typeName();
  return ToHex(octets);
}

TEST(CommonRecords, CopiesAreDeepAndIndependent) {
  auto source = std::make_unique<QAsnErrInfo>(FilledErrInfo());
  const std::unique_ptr<QAsnErrInfo> clone(static_cast<QAsnErrInfo*>(source->Clone()));
  QAsnErrInfo copy(*source);
  QAsnErrInfo assigned;
  assigned.strOperDesc.GetOrCreate().Set("replaced");
  assigned = *source;
  for (QAsnErrInfo* other : {clone.get(), &copy, &assigned}) {
    ASSERT_EQ(Encoded(*other), kFilledErrInfo);
    EXPECT_NE(other->objName.Get(), source->objName.Get());
    other->objID.First()->Set(99);
    other->objName->Set("changed");
    other->strOperDesc.Reset();
  }
  const AsnOcts* held = source->objName.Get();
  const QAsnErrInfo& same = *source;
  *source = same;  // self-assignment changes nothing
  EXPECT_EQ(source->objName.Get(), held);
  EXPECT_EQ(Encoded(*source), kFilledErrInfo);
  source.reset();  // the copies outlive their source
  EXPECT_EQ(clone->objName->view(), "changed");
  EXPECT_EQ(copy.objID.First()->Value(), 99);
  copy = QAsnErrInfo();  // assigning absent members makes them absent
  EXPECT_EQ(Encoded(copy), "30 05 30 00 02 01 00");
}

// Encodings the interop test's samples (every optional member present, or
// none) do not reach: some optional members present, an empty one present.
TEST(CommonRecords, MixedPresenceEncodings) {
  QAsnUniResID id;
  id.strFDN.Set("N\0t", 3);
  id.strMOC.Set("PP");
  id.neID = 1001;
  id.poSerialNum.GetOrCreate();
  EXPECT_EQ(Encoded(id), "30 0F 04 03 4E 00 74 04 02 50 50 02 02 03 E9 80 00");
  QAsnErrInfo info = FilledErrInfo();
  info.objName.Reset();  // [1] keeps its number when [0] is absent
  EXPECT_EQ(Encoded(info), "30 17 30 06 02 01 0B 02 01 F4 02 02 04 D2 81 09 73 65 74 20 73 74 61 74 65");
  QAsnErrInfoList errors;
  errors.AppendCopy(info);
  errors.Append();
  EXPECT_EQ(Encoded(errors), "30 20 " + Encoded(info) + " 30 05 30 00 02 01 00");
}

TEST(Convert2MapKeyValue, Cases) {
  using Map = std::map<std::string, std::string>;
  using Pairs = std::vector<std::pair<std::string, std::string>>;
  const std::tuple<const char*, Pairs, Map, Map> cases[] = {
      // what, list, map before, map after
      {"empty list", {}, {{"A", "x"}}, {{"A", "x"}}},
      {"later duplicates and the list win; the caller's other entries stay",
       {{"A", "1"}, {"B", "2"}, {"A", "3"}},
       {{"A", "x"}, {"C", "y"}},
       {{"A", "3"}, {"B", "2"}, {"C", "y"}}},
      {"empty name and value", {{"", ""}, {"", "v"}}, {}, {{"", "v"}}},
      {"texts end at a zero byte", {{{"K\0a", 3}, "1"}, {{"K\0b", 3}, {"2\0z", 3}}}, {}, {{"K", "2"}}},
  };
  for (const auto& [what, pairs, before, after] : cases) {
    SCOPED_TRACE(what);
    QAsnNVSList list;
    for (const auto& [name, value] : pairs) {
      QAsnNameAndValueString* element = list.Append();
      element->name.Set(name.data(), name.size());
      element->value.Set(value.data(), value.size());
    }
    for (int walk = 0; walk < 2; ++walk) {  // a second walk of the same list starts over
      Map map = before;
      ns_velkor::Convert2MapKeyValue(list, map);
      EXPECT_EQ(map, after);
    }
  }
}

}  // namespace
