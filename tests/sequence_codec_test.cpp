// The generic SEQUENCE codec: exact bytes of every member kind, the refusal of
// malformed input with a message naming record and member, truncated input,
// the indefinite and constructed forms, and decoding into a used record.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "tests/qprobe/qprobe.h"
#include "tn_velkor/qcommon/qcommon.h"
#include "tn_platform/asn/asn_value_io.h"
#include "test_bytes.h"

namespace {

using qcommon::QAsnColumn;
using qcommon::QAsnErrInfo;
using qcommon::QAsnErrInfoList;
using qcommon::QAsnErrInfoReturn;
using qcommon::QAsnTinyIntList;
using qcommon::QAsnUniResID;
using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

using qprobe::CodecProbe;  // the member kinds the common records lack

// strFDN "A", strMOC "B", neID 5, poSerialNum "C".
const char kUniResId[] = "30 0C 04 01 41 04 01 42 02 01 05 80 01 43";
// flag, big -129, [0] { strCondition "c" }, [1] { 300 }, [40] "n".
const char kFullProbe[] = "30 16 01 01 FF 02 02 FF 7F A0 03 04 01 63 A1 04 02 02 01 2C 9F 28 01 6E";

// Decodes `octets` into a fresh T; the error message or "no exception".
template <class T>
std::string DecodeAs(const std::string& octets) {
  return ThrownMessage([&] {
    T value;
    AsnDecodeValue(value, octets);
  });
}

TEST(SequenceCodec, EncodesEveryMemberKind) {
  CodecProbe minimal;
  EXPECT_EQ(ToHex(AsnEncodeValue(minimal)), "30 06 01 01 00 02 01 00");
  CodecProbe probe;
  AsnDecodeValue(probe, Hex(kFullProbe));
  EXPECT_EQ(probe.big.Value(), -129);
  EXPECT_EQ(probe.codes->First()->Value(), 300);
  EXPECT_EQ(ToHex(AsnEncodeValue(probe)), kFullProbe);
  std::ostringstream os;
  probe.Print(os, 0, false);
  EXPECT_EQ(os.str(),
            "CodecProbe {\n  flag TRUE\n  big -129\n  column QAsnColumn {\n    strCondition \"c\"\n  }\n"
            "  codes {\n    - 300\n  }\n  note \"n\"\n}");
}

// strCondition as `levels` constructed OCTET STRINGs, each inside the other,
// around one primitive segment "x"; the record is one more level.
std::string NestedColumn(int levels) {
  std::string hex = "30 80";
  for (int i = 0; i < levels; ++i) hex += " 24 80";
  hex += " 04 01 78";
  for (int i = 0; i <= levels; ++i) hex += " 00 00";
  return Hex(hex);
}

TEST(SequenceCodec, RefusesMalformedInputNamingRecordAndMember) {
  struct Case {
    char type;  // u QAsnUniResID, e QAsnErrInfo, c QAsnColumn, p CodecProbe, l QAsnTinyIntList,
                // n QAsnErrInfoList, r QAsnErrInfoReturn
    std::string octets;
    const char* error;  // the whole message
  };
  const Case cases[] = {
      // A list's element at fault by its index, at the offset the structure
      // dump shows for the item (or where it shows the bytes break).
      {'l', Hex("30 04 02 01 05 02"), "QAsnTinyIntList[1]: element runs past the end of its list (content length 4) at offset 5"},
      {'l', Hex("30 03 02 01"), "QAsnTinyIntList[0]: input ends 1 octet short of the value at offset 4"},
      {'l', Hex("30 05 00 00 02 01 05"),
       "QAsnTinyIntList[0]: wrong tag [UNIVERSAL 0] primitive (end-of-contents), expected [UNIVERSAL 2] primitive "
       "(INTEGER) at offset 2"},
      {'c', Hex("30 05 04 01 41 04 02"), "QAsnColumn: member strCondition out of order or repeated at offset 5"},
      // a list in a record in a list in a record: the second objID of the second element
      {'r', Hex("30 1D 02 01 00 A0 18 30 08 30 03 02 01 07 02 01 01 30 0C 30 07 02 01 08 02 02 00 05 02 01 02"),
       "QAsnErrInfoReturn.errInfoList[1].objID[1]: INTEGER content is not minimal at offset 24"},
      {'n', Hex("30 0A 30 08 30 03 02 01 07 02 01"),
       "QAsnErrInfoList[0].errCode: input ends 1 octet short of the value at offset 11"},
      {'n', Hex("30 0C 30 08 30 03 02 01 07 02 01 01"), "QAsnErrInfoList: input ends 2 octets short of the value at offset 12"},
      {'l', Hex("30 81 05 02 03 05"), "QAsnTinyIntList[0]: input ends 2 octets short of the value at offset 6"},
      {'l', Hex("31 00"),
       "QAsnTinyIntList: wrong tag [UNIVERSAL 17] constructed (SET), expected [UNIVERSAL 16] constructed (SEQUENCE) "
       "at offset 0"},
      {'l', "", "QAsnTinyIntList: input ends before the tag at offset 0"},
      {'l', Hex("30"), "QAsnTinyIntList: input ends in the length at offset 1"},
      {'l', Hex("30 80 02 01 05"), "QAsnTinyIntList: input ends before the end-of-contents octets at offset 5"},
      {'l', Hex("30 80 02 01 05 00"), "QAsnTinyIntList: input ends in the end-of-contents octets at offset 6"},
      {'u', Hex("30 09 04 01 41 02 01 05 02 01 05"),
       "QAsnUniResID.strMOC: wrong tag [UNIVERSAL 2] primitive (INTEGER), expected [UNIVERSAL 4] primitive (OCTET STRING) at offset 5"},
      {'u', Hex("30 06 04 01 41 04 01 42"), "QAsnUniResID: mandatory member neID missing at offset 0"},
      {'c', Hex("30 00"), "QAsnColumn: mandatory member strCondition missing at offset 0"},
      {'e', Hex("30 08 30 00 02 01 07 80 01 41"), "QAsnErrInfo: member objName out of order or repeated at offset 7"},
      {'u', Hex("30 0E 04 01 41 04 01 42 02 01 05 80 01 43 80 00"),
       "QAsnUniResID: member poSerialNum out of order or repeated at offset 14"},
      {'u', Hex("30 0B 04 01 41 04 01 42 02 01 05 85 00"), "QAsnUniResID: unknown member with tag [5] primitive at offset 11"},
      {'p', Hex("30 08 01 01 00 02 01 00 80 00"), "CodecProbe.column: wrong tag [0] primitive, expected [0] constructed at offset 8"},
      {'c', Hex("30 05 04 00 02 01 00"), "QAsnColumn: content left over after the last member (tag [UNIVERSAL 2] primitive (INTEGER)) at offset 4"},
      {'c', Hex("30 02 04 00 00"), "QAsnColumn: 1 octet left over after the value at offset 4"},
      {'u', Hex("30 06 04 01 41 04 04 42 42 42 42"), "QAsnUniResID.strMOC: length 4 runs past the end of the record (1 octet left in it) at offset 5"},
      {'p', Hex("30 0C 01 01 00 02 01 00 A0 02 04 01 41 00"),
       "CodecProbe.column.strCondition: length 1 runs past the end of the record (0 octets left in it) at offset 10"},
      {'u', Hex("30 06 04 01 41 04 05 42"), "QAsnUniResID.strMOC: length 5 runs past the end of the record (1 octet left in it) at offset 5"},
      {'u', Hex("30 10 04 01 41"), "QAsnUniResID: input ends 13 octets short of the value at offset 5"},
      {'p', Hex("30 0B 01 01 00 02 01 00 A0 03 04 02 41"),
       "CodecProbe.column.strCondition: length 2 runs past the end of the record (1 octet left in it) at offset 10"},
      {'e', Hex("30 08 30 02 02 01 07 02 01 07"), "QAsnErrInfo.objID[0]: element runs past the end of its list (content length 2) at offset 4"},
      {'l', Hex("30 02 02 01 05"), "QAsnTinyIntList[0]: element runs past the end of its list (content length 2) at offset 2"},
      // A value the input holds whole blames its item that runs past its end,
      // also when the input ends inside that item.
      {'c', Hex("30 05 24 80 04 01 61"), "QAsnColumn.strCondition: runs past the end of the record at offset 2"},
      {'n', Hex("30 0A 30 88 7F FF FF FF FF FF FF FD"),
       "QAsnErrInfoList[0]: element runs past the end of its list (content length 10) at offset 2"},
      {'n', Hex("30 04 30 02 30 05 02 01 07 02 01 01"),
       "QAsnErrInfoList[0].objID: length 5 runs past the end of the record (0 octets left in it) at offset 4"},
      {'l', Hex("30 03 02 05 01"), "QAsnTinyIntList[0]: element runs past the end of its list (content length 3) at offset 2"},
      {'l', Hex("30 06 02 05 01"), "QAsnTinyIntList[0]: element runs past the end of its list (content length 6) at offset 2"},
      {'u', Hex("30 FF 00"), "QAsnUniResID: length octet 0xFF is reserved at offset 0"},
      {'u', Hex("30 03 04 FF 00"), "QAsnUniResID.strFDN: length octet 0xFF is reserved at offset 2"},
      {'u', Hex("30 89 01 00 00 00 00 00 00 00 00 02"), "QAsnUniResID: length does not fit in 64 bits at offset 0"},
      {'u', Hex("30 08 04 00 04 00 1F 02 01 00"), "QAsnUniResID: high tag number form used for tag number 2 (below 31) at offset 6"},
      {'u', Hex("30 0A 04 00 04 00 02 01 00 9F 00 00"), "QAsnUniResID: high tag number form used for tag number 0 (below 31) at offset 9"},
      {'u', Hex("30 80 04 80 41 00 00 00 00"), "QAsnUniResID.strFDN: indefinite length on a primitive OCTET STRING at offset 2"},
      {'u', Hex("30 80 04 00 04 00 02 80 05 00 00 00 00"),
       "QAsnUniResID.neID: indefinite length on an INTEGER at offset 6"},
      {'u', Hex("30 80 04 01 41 04 01 42 02 01 05"), "QAsnUniResID: input ends before the end-of-contents octets at offset 11"},
      {'u', Hex("30 80 04 01 41 04 01 42 02 01 05 00 01"), "QAsnUniResID: end-of-contents octets are not 00 00 at offset 11"},
      {'u', Hex("30 04 9F 80 01 00"), "QAsnUniResID: high tag number form with a leading 0x80 octet at offset 2"},
      {'u', Hex("3F 80 01 00"), "QAsnUniResID: high tag number form with a leading 0x80 octet at offset 0"},
      {'u', Hex("30 06 9F 81 81 81 01 00"), "QAsnUniResID: tag number does not fit in 32 bits at offset 2"},
      {'u', Hex("31 00"), "QAsnUniResID: wrong tag [UNIVERSAL 17] constructed (SET), expected [UNIVERSAL 16] constructed (SEQUENCE) at offset 0"},
      {'u', "", "QAsnUniResID: input ends before the tag at offset 0"},
      {'u', Hex("30 06 04 00 04 00 02 00"), "QAsnUniResID.neID: INTEGER without content octets at offset 6"},
      {'u', Hex("30 08 04 00 04 00 02 02 00 05"), "QAsnUniResID.neID: INTEGER content is not minimal at offset 6"},
      {'u', Hex("30 0B 04 00 04 00 02 05 01 00 00 00 00"),
       "QAsnUniResID.neID: INTEGER of 5 octets does not fit (at most 4) at offset 6"},
      {'p', Hex("30 0E 01 01 00 02 09 01 00 00 00 00 00 00 00 00"),
       "CodecProbe.big: INTEGER of 9 octets does not fit (at most 8) at offset 5"},
      {'p', Hex("30 07 01 02 00 00 02 01 00"), "CodecProbe.flag: BOOLEAN content is not one octet at offset 2"},
      {'p', Hex("30 08 01 01 00 22 03 02 01 00"), "CodecProbe.big: wrong tag [UNIVERSAL 2] constructed (INTEGER), expected [UNIVERSAL 2] primitive (INTEGER) at offset 5"},
      {'e', Hex("30 08 30 03 04 01 41 02 01 07"), "QAsnErrInfo.objID[0]: wrong tag [UNIVERSAL 4] primitive (OCTET STRING), expected [UNIVERSAL 2] primitive (INTEGER) at offset 4"},
      {'c', NestedColumn(32), "QAsnColumn.strCondition: constructed values nested deeper than 32 levels at offset 64"},
      {'c', NestedColumn(10000), "QAsnColumn.strCondition: constructed values nested deeper than 32 levels at offset 64"},  // without exhausting the stack
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.octets.size() < 40 ? ToHex(c.octets) : c.error);
    const std::string message = c.type == 'u'   ? DecodeAs<QAsnUniResID>(c.octets)
                                : c.type == 'e' ? DecodeAs<QAsnErrInfo>(c.octets)
                                : c.type == 'c' ? DecodeAs<QAsnColumn>(c.octets)
                                : c.type == 'l' ? DecodeAs<QAsnTinyIntList>(c.octets)
                                : c.type == 'n' ? DecodeAs<QAsnErrInfoList>(c.octets)
                                : c.type == 'r' ? DecodeAs<QAsnErrInfoReturn>(c.octets)
                                                : DecodeAs<CodecProbe>(c.octets);
    EXPECT_EQ(message, c.error);
  }
  EXPECT_EQ(DecodeAs<QAsnColumn>(NestedColumn(31)), "no exception");
}

template <class T>
void ExpectDecodedButNoPrefix(const char* hex) {
  ASSERT_EQ(DecodeAs<T>(Hex(hex)), "no exception") << hex;
  test_bytes::ExpectEveryPrefixRefused([] { return std::make_unique<T>(); }, Hex(hex));
}

TEST(SequenceCodec, EveryPrefixOfAValidEncodingFails) {
  ExpectDecodedButNoPrefix<QAsnUniResID>(kUniResId);
  ExpectDecodedButNoPrefix<QAsnUniResID>("30 80 04 01 41 24 80 04 01 42 00 00 02 01 05 00 00");
  ExpectDecodedButNoPrefix<CodecProbe>(kFullProbe);
  ExpectDecodedButNoPrefix<QAsnErrInfoList>(
      "30 80 30 80 30 80 02 01 07 00 00 80 01 41 02 01 02 00 00 30 05 30 00 02 01 02 00 00");
}

TEST(SequenceCodec, DecodesIndefiniteLengthsAndConstructedOctetStrings) {
  const char* const cases[] = {
      "30 80 04 01 41 04 01 42 02 01 05 80 01 43 00 00",                    // indefinite record
      "30 0E 04 01 41 24 03 04 01 42 02 01 05 80 01 43",                    // constructed strMOC
      "30 80 24 80 04 00 04 01 41 00 00 04 01 42 02 01 05 80 01 43 00 00",  // two indefinite segments
      "30 0E 04 01 41 04 01 42 02 01 05 A0 03 04 01 43",                    // constructed [0]
      "30 10 04 01 41 04 01 42 02 01 05 A0 80 04 01 43 00 00",              // indefinite [0], definite record
      "30 89 00 00 00 00 00 00 00 00 0C 04 01 41 04 01 42 02 01 05 80 01 43",  // leading zero length octets
      "30 0F 04 81 01 41 04 82 00 01 42 02 01 05 80 01 43",                 // long-form lengths not minimal
  };
  for (const char* hex : cases) {
    QAsnUniResID value;
    ASSERT_EQ(ThrownMessage([&] { AsnDecodeValue(value, Hex(hex)); }), "no exception") << hex;
    EXPECT_EQ(ToHex(AsnEncodeValue(value)), kUniResId) << hex;
  }
  QAsnColumn column;  // nine length octets, eight of them leading zeros; DER out
  AsnDecodeValue(column, Hex("30 89 00 00 00 00 00 00 00 00 03 04 01 41"));
  EXPECT_EQ(ToHex(AsnEncodeValue(column)), "30 03 04 01 41");
  QAsnErrInfo info;
  AsnDecodeValue(info, Hex("30 80 30 80 02 01 07 02 01 08 00 00 02 01 03 00 00"));
  EXPECT_EQ(ToHex(AsnEncodeValue(info)), "30 0B 30 06 02 01 07 02 01 08 02 01 03");
}

TEST(SequenceCodec, DecodingIntoAUsedRecordReplacesItsContent) {
  QAsnUniResID id;
  AsnDecodeValue(id, Hex(kUniResId));
  AsnDecodeValue(id, Hex("30 08 04 01 58 04 00 02 01 09"));
  EXPECT_EQ(ToHex(AsnEncodeValue(id)), "30 08 04 01 58 04 00 02 01 09");
  EXPECT_TRUE(id.poSerialNum.IsNull());

  CodecProbe probe;
  AsnDecodeValue(probe, Hex(kFullProbe));
  AsnDecodeValue(probe, Hex("30 0B 01 01 00 02 01 01 A1 03 02 01 05"));
  EXPECT_EQ(ToHex(AsnEncodeValue(probe)), "30 0B 01 01 00 02 01 01 A1 03 02 01 05");
}

}  // namespace
