#include <gtest/gtest.h>
#include "asn/qcommon_lists.h"
#include "platform/asn/asn_value_io.h"
TEST(Smoke, EncodesErrInfo) {
  qcommon::QAsnErrInfoList list;
  auto* e = list.Append();
  e->objID.Append()->Set(5);
  e->errCode = 3;
  e->objName.GetOrCreate().Set("ab");
  const std::string bytes = AsnEncodeValue(list);
  qcommon::QAsnErrInfoList back;
  AsnDecodeValue(back, bytes);
  ASSERT_EQ(back.Count(), 1u);
  EXPECT_EQ(back.First()->errCode.Value(), 3);
  std::ostringstream os; back.Print(os, 0, true);
  std::cout << os.str() << "\n";
}
