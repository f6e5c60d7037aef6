// A whole-value decode with a budget of list elements: within it the value
// decodes as without one; one element too many is refused at that element,
// nested lists counting with the outer one.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "tests/test_bytes.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

using test_bytes::Hex;
using test_bytes::ThrownMessage;

struct BudgetCase {
  const char* what;
  std::function<AsnType*()> create;
  const char* input;
  std::size_t maxListElements;
  std::string expected;  // the error message, or "no exception"
};

template <class T>
std::function<AsnType*()> Make() {
  return [] { return new T(); };
}

TEST(AsnDecodeBudget, RefusesTheFirstListElementBeyondIt) {
  using namespace qcommon;
  const char* threePairs = "30 12 30 04 04 00 04 00 30 04 04 00 04 00 30 04 04 00 04 00";
  // One entry whose objID holds two numbers: three elements in all.
  const char* errInfoList = "30 0D 30 0B 30 06 02 01 01 02 01 02 02 01 00";
  const char* indefinite = "30 80 02 01 01 02 01 02 00 00";
  const BudgetCase cases[] = {
      {"exactly enough", Make<QAsnNVSList>(), threePairs, 3, "no exception"},
      {"one short", Make<QAsnNVSList>(), threePairs, 2,
       "QAsnNVSList[2]: more than 2 list elements, the decode's budget at offset 14"},
      {"none at all", Make<QAsnNVSList>(), threePairs, 0,
       "QAsnNVSList[0]: more than 0 list elements, the decode's budget at offset 2"},
      {"an empty list needs none", Make<QAsnNVSList>(), "30 00", 0, "no exception"},
      {"nested lists count together", Make<QAsnErrInfoList>(), errInfoList, 3, "no exception"},
      {"the inner list's element too many", Make<QAsnErrInfoList>(), errInfoList, 2,
       "QAsnErrInfoList[0].objID[1]: more than 2 list elements, the decode's budget at offset 9"},
      {"indefinite length", Make<QAsnTinyIntList>(), indefinite, 1,
       "QAsnTinyIntList[1]: more than 1 list elements, the decode's budget at offset 5"},
      {"a record without lists", Make<QAsnUniResID>(), "30 08 04 01 41 04 00 02 01 07", 0, "no exception"},
      {"a list member of a record", Make<QAsnErrInfoReturn>(), "30 0A 02 01 01 A0 05 30 03 30 00 02", 0,
       "QAsnErrInfoReturn.errInfoList[0]: more than 0 list elements, the decode's budget at offset 7"},
  };
  for (const BudgetCase& c : cases) {
    const std::unique_ptr<AsnType> value(c.create());
    AsnDecodeBudget budget;
    budget.maxListElements = c.maxListElements;
    EXPECT_EQ(ThrownMessage([&] { AsnDecodeValue(*value, Hex(c.input), budget); }), c.expected) << c.what;
  }
}

TEST(AsnDecodeBudget, UnlimitedByDefaultAndPerDecode) {
  const std::string pairs = Hex("30 0C 30 04 04 00 04 00 30 04 04 00 04 00");
  qcommon::QAsnNVSList list;
  AsnDecodeBudget one;
  one.maxListElements = 1;
  EXPECT_NE(ThrownMessage([&] { AsnDecodeValue(list, pairs, one); }), "no exception");
  // The budget was that decode's alone.
  EXPECT_EQ(ThrownMessage([&] { AsnDecodeValue(list, pairs); }), "no exception");
  EXPECT_EQ(list.Count(), 2u);
  // Several values one after another: each decode has its own budget.
  EXPECT_EQ(AsnDecodeFront(list, pairs + pairs.substr(0, 8), AsnDecodeBudget{2}), pairs.size());
}

}  // namespace
