// Values in ASN.1 value notation: records, lists, absent members, octets as
// hex with their text in a comment only where a comment can hold it.
#include <gtest/gtest.h>

#include <string>

#include "tn_platform/asn/asn_value_notation.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

TEST(ValueNotation, RecordsListsAndOctets) {
  qcommon::QAsnUniResID id;
  id.strFDN.Set("NE=1");
  id.strMOC.Set(std::string("\x00\xFF", 2).data(), 2);
  id.neID = -7;
  EXPECT_EQ(AsnToValueNotation(id),
            "{\n  strFDN '4E453D31'H /* \"NE=1\" */,\n  strMOC '00FF'H,\n  neID -7\n}");

  qcommon::QAsnErrInfoReturn reply;
  reply.retCode = 3;
  EXPECT_EQ(AsnToValueNotation(reply), "{\n  retCode 3\n}");
  qcommon::QAsnErrInfo& info = *reply.errInfoList.GetOrCreate().Append();
  info.objID.Append()->Set(1);
  info.objName.GetOrCreate().Set("a*/b");  // no comment could hold it
  EXPECT_EQ(AsnToValueNotation(reply),
            "{\n  retCode 3,\n  errInfoList {\n    {\n      objID {\n        1\n      },\n"
            "      objName '612A2F62'H,\n      errCode 0\n    }\n  }\n}");

  EXPECT_EQ(AsnToValueNotation(qcommon::QAsnNVSList()), "{}");
  EXPECT_EQ(AsnToValueNotation(qcommon::QAsnColumn()), "{\n  strCondition ''H\n}");
}

}  // namespace
