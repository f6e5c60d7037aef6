// The generic SEQUENCE codec: exact bytes of every member kind, the refusal of
// malformed input with a message naming record and member, truncated input,
// the indefinite and constructed forms, and decoding into a used record.
#include <gtest/gtest.h>

#include <string>

#include "asn/qasn_column.h"
#include "asn/qasn_uni_res_id.h"
#include "asn/qcommon_lists.h"
#include "platform/asn/asn_sequence.h"
#include "platform/asn/asn_value_io.h"
#include "platform/qmodules/module_type_descriptions.h"
#include "test_bytes.h"

namespace {

using qcommon::QAsnColumn;
using qcommon::QAsnErrInfo;
using qcommon::QAsnErrInfoList;
using qcommon::QAsnTinyIntList;
using qcommon::QAsnUniResID;
using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

// A record with the member kinds the common records lack: a BOOLEAN, a 64-bit
// INTEGER, an optional record, an optional list and an optional member whose
// number needs the high-tag-number form.
class CodecProbe : public AsnSequence {
 public:
  AsnBool flag;
  AsnInt big;
  refl::MayNullPointer<QAsnColumn> column;      // [0]
  refl::MayNullPointer<QAsnTinyIntList> codes;  // [1]
  refl::MayNullPointer<AsnOcts> note;           // [40]

  CodecProbe() { Constructor(*this); }
  CodecProbe(const CodecProbe& other) : AsnSequence() { CopyConstructor(*this, other); }
  ~CodecProbe() override { Destructor(*this); }
  CodecProbe& operator=(const CodecProbe& other) {
    Assign(*this, other);
    return *this;
  }
  AsnType* Clone() const override { return new CodecProbe(*this); }
  bool BindReflection(refl::CRefrence& reference) const override {
    return refl::helper::ChangeTypeTo_ClassType(reference, GetClassInfor(), this);
  }
  static const refl::CClassInfor& GetClassInfor() {
    return *refl::CClassInfor::GetClassInforImpl<CodecProbe>("CodecProbe", &refl::CreateObject<CodecProbe>,
                                                             &refl::DestroyObject<CodecProbe>, &RegisterAttributes);
  }

 private:
  static void RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
    const CodecProbe probe;
    infor.AddAttribInfor(access, MemberPosition(probe, &CodecProbe::flag), "flag", -1).CaptureTypeInfor<AsnBool>();
    infor.AddAttribInfor(access, MemberPosition(probe, &CodecProbe::big), "big", -1).CaptureTypeInfor<AsnInt>();
    qmodules::DescribeRecordMember<QAsnColumn>(
        infor.AddAttribInfor(access, MemberPosition(probe, &CodecProbe::column), "column", 0), true);
    qmodules::DescribeListMember<QAsnTinyIntList>(
        infor.AddAttribInfor(access, MemberPosition(probe, &CodecProbe::codes), "codes", 1), "qcommon::QAsnTinyIntList",
        true);
    infor.AddAttribInfor(access, MemberPosition(probe, &CodecProbe::note), "note", 40)
        .CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>();
  }
};

// strFDN "A", strMOC "B", neID 5, poSerialNum "C".
const char kUniResId[] = "30 0C 04 01 41 04 01 42 02 01 05 80 01 43";

CodecProbe FullProbe() {
  CodecProbe probe;
  probe.flag = true;
  probe.big = -129;
  probe.column.GetOrCreate().strCondition.Set("c");
  probe.codes.GetOrCreate().Append()->Set(300);
  probe.note.GetOrCreate().Set("n");
  return probe;
}
// flag, big, [0] { strCondition }, [1] { 300 }, [40] "n".
const char kFullProbe[] = "30 16 01 01 FF 02 02 FF 7F A0 03 04 01 63 A1 04 02 02 01 2C 9F 28 01 6E";

TEST(SequenceCodec, EncodesEveryMemberKind) {
  CodecProbe probe = FullProbe();
  EXPECT_EQ(ToHex(AsnEncodeValue(probe)), kFullProbe);

  CodecProbe minimal;
  EXPECT_EQ(ToHex(AsnEncodeValue(minimal)), "30 06 01 01 00 02 01 00");

  CodecProbe back;
  AsnDecodeValue(back, Hex(kFullProbe));
  EXPECT_TRUE(back.flag.Value());
  EXPECT_EQ(back.big.Value(), -129);
  ASSERT_FALSE(back.column.IsNull());
  EXPECT_EQ(back.column->strCondition.view(), "c");
  ASSERT_FALSE(back.codes.IsNull());
  EXPECT_EQ(back.codes->First()->Value(), 300);
  EXPECT_EQ(back.note->view(), "n");
  EXPECT_EQ(ToHex(AsnEncodeValue(back)), kFullProbe);
}

struct MalformedCase {
  const char* comment;
  const char* type;  // "uni", "err", "column", "probe"
  const char* hex;
  const char* error;  // a substring of the exception's message
};

const MalformedCase kMalformed[] = {
    {"INTEGER where strMOC's OCTET STRING belongs", "uni", "30 09 04 01 41 02 01 05 02 01 05",
     "QAsnUniResID.strMOC: wrong tag [UNIVERSAL 2] primitive for a mandatory member"},
    {"record ends before neID", "uni", "30 06 04 01 41 04 01 42", "QAsnUniResID.neID: mandatory member missing"},
    {"empty record", "column", "30 00", "QAsnColumn.strCondition: mandatory member missing"},
    {"objName after errCode", "err", "30 08 30 00 02 01 07 80 01 41",
     "QAsnErrInfo.objName: member out of order or repeated"},
    {"poSerialNum twice", "uni", "30 0E 04 01 41 04 01 42 02 01 05 80 01 43 80 00",
     "QAsnUniResID.poSerialNum: member out of order or repeated"},
    {"unknown [5]", "uni", "30 0B 04 01 41 04 01 42 02 01 05 85 00",
     "QAsnUniResID: unknown member with tag [5] primitive"},
    {"an INTEGER after the last member", "column", "30 05 04 00 02 01 00",
     "QAsnColumn: content left over after the last member"},
    {"strMOC's length runs past the record", "uni", "30 06 04 01 41 04 04 42 42 42 42",
     "QAsnUniResID.strMOC: length runs past the enclosing record"},
    {"strMOC's length runs past the input", "uni", "30 06 04 01 41 04 05 42",
     "QAsnUniResID.strMOC: length 5 runs past the input"},
    {"record length runs past the input", "uni", "30 10 04 01 41", "QAsnUniResID: length 16 runs past the input"},
    {"record length octet 0xFF", "uni", "30 FF 00", "QAsnUniResID: length octet 0xFF is reserved"},
    {"member length octet 0xFF", "uni", "30 03 04 FF 00", "QAsnUniResID.strFDN: length octet 0xFF is reserved"},
    {"nine length octets", "uni", "30 89 00 00 00 00 00 00 00 00 02",
     "QAsnUniResID: length with 9 length octets (at most 8)"},
    {"indefinite primitive OCTET STRING", "uni", "30 80 04 80 41 00 00 00 00",
     "QAsnUniResID.strFDN: indefinite length on a primitive OCTET STRING"},
    {"indefinite INTEGER", "uni", "30 80 04 00 04 00 02 80 05 00 00 00 00",
     "QAsnUniResID.neID: AsnTinyInt: indefinite length on an INTEGER"},
    {"no end-of-contents", "uni", "30 80 04 01 41 04 01 42 02 01 05", "QAsnUniResID: missing end-of-contents"},
    {"broken end-of-contents", "uni", "30 80 04 01 41 04 01 42 02 01 05 00 01",
     "QAsnUniResID: end-of-contents octets expected"},
    {"member tag with a leading 0x80 octet", "uni", "30 04 9F 80 01 00",
     "QAsnUniResID: high tag number form with a leading 0x80 octet"},
    {"member tag number too large", "uni", "30 06 9F 81 81 81 01 00", "QAsnUniResID: tag number does not fit"},
    {"record tag with a leading 0x80 octet", "uni", "3F 80 01 00",
     "QAsnUniResID: high tag number form with a leading 0x80 octet"},
    {"record tagged SET", "uni", "31 00", "QAsnUniResID: wrong tag [UNIVERSAL 17] constructed, expected SEQUENCE"},
    {"empty input", "uni", "", "QAsnUniResID: input ends before the tag"},
    {"INTEGER without content", "uni", "30 06 04 00 04 00 02 00",
     "QAsnUniResID.neID: AsnTinyInt: INTEGER without content octets"},
    {"INTEGER with a redundant 00", "uni", "30 08 04 00 04 00 02 02 00 05",
     "QAsnUniResID.neID: AsnTinyInt: INTEGER content is not minimal"},
    {"INTEGER with a redundant FF", "uni", "30 08 04 00 04 00 02 02 FF 80",
     "QAsnUniResID.neID: AsnTinyInt: INTEGER content is not minimal"},
    {"INTEGER of five octets in a 32-bit member", "uni", "30 0B 04 00 04 00 02 05 01 00 00 00 00",
     "QAsnUniResID.neID: AsnTinyInt: INTEGER of 5 octets does not fit"},
    {"INTEGER of nine octets in a 64-bit member", "probe", "30 0E 01 01 00 02 09 01 00 00 00 00 00 00 00 00",
     "CodecProbe.big: AsnInt: INTEGER of 9 octets does not fit"},
    {"BOOLEAN of two octets", "probe", "30 07 01 02 00 00 02 01 00", "CodecProbe.flag: AsnBool: BOOLEAN content"},
    {"BOOLEAN without content", "probe", "30 05 01 00 02 01 00", "CodecProbe.flag: AsnBool: BOOLEAN content"},
    {"constructed INTEGER", "probe", "30 08 01 01 00 22 03 02 01 00",
     "CodecProbe.big: wrong tag [UNIVERSAL 2] constructed"},
    {"primitive [0] where a record belongs", "probe", "30 08 01 01 00 02 01 00 80 00",
     "CodecProbe: unknown member with tag [0] primitive"},
    {"list member of the wrong element", "err", "30 08 30 03 04 01 41 02 01 07",
     "QAsnErrInfo.objID: AsnTinyInt: wrong tag"},
    {"error inside a nested record names the path", "probe", "30 0B 01 01 00 02 01 00 A0 03 04 02 41",
     "CodecProbe.column: QAsnColumn.strCondition: length 2 runs past the input"},
    {"nested record member running past its length", "probe", "30 0C 01 01 00 02 01 00 A0 02 04 01 41 00",
     "CodecProbe.column: QAsnColumn.strCondition: length runs past the enclosing record"},
    {"list elements overrun the list's length", "err", "30 08 30 02 02 01 07 02 01 07",
     "QAsnErrInfo.objID: content does not match its length"},
};

// Decodes `octets` into a fresh T; the error message or "no exception".
template <class T>
std::string DecodeAs(const std::string& octets) {
  return ThrownMessage([&] {
    T value;
    AsnDecodeValue(value, octets);
  });
}

// Decodes `octets` into a fresh value of the case's type; the error message.
std::string DecodeError(const std::string& type, const std::string& octets) {
  if (type == "uni") return DecodeAs<QAsnUniResID>(octets);
  if (type == "err") return DecodeAs<QAsnErrInfo>(octets);
  if (type == "column") return DecodeAs<QAsnColumn>(octets);
  return DecodeAs<CodecProbe>(octets);
}

TEST(SequenceCodec, RefusesMalformedInputNamingRecordAndMember) {
  for (const MalformedCase& c : kMalformed) {
    const std::string message = DecodeError(c.type, Hex(c.hex));
    EXPECT_NE(message.find(c.error), std::string::npos)
        << c.comment << "\n  input:    " << c.hex << "\n  expected: " << c.error << "\n  got:      " << message;
  }
}

TEST(SequenceCodec, RefusesATopLevelListWhoseElementsOverrunItsLength) {
  QAsnTinyIntList list;
  EXPECT_NE(ThrownMessage([&] {
              AsnDecodeValue(list, Hex("30 02 02 01 05"));
            }).find("QAsnTinyIntList: content does not match its length 2"),
            std::string::npos);
}

TEST(SequenceCodec, RefusesOctetsAfterTheValue) {
  EXPECT_NE(DecodeError("column", Hex("30 02 04 00 00")).find("1 octets left over after QAsnColumn"),
            std::string::npos);
}

// strCondition as `levels` OCTET STRINGs in the constructed form, each inside
// the other, around one primitive segment "x".
std::string NestedColumn(int levels) {
  std::string hex = "30 80";
  for (int i = 0; i < levels; ++i) hex += " 24 80";
  hex += " 04 01 78";
  for (int i = 0; i < levels; ++i) hex += " 00 00";
  return Hex(hex + " 00 00");
}

TEST(SequenceCodec, RefusesNestingDeeperThan32Levels) {
  // The record itself is the first constructed level.
  QAsnColumn column;
  AsnDecodeValue(column, NestedColumn(31));
  EXPECT_EQ(column.strCondition.view(), "x");
  EXPECT_NE(DecodeError("column", NestedColumn(32))
                .find("QAsnColumn.strCondition: constructed values nested deeper than 32 levels"),
            std::string::npos);
  // Far deeper input fails the same way, without exhausting the stack.
  EXPECT_NE(DecodeError("column", NestedColumn(10000)).find("nested deeper than 32 levels"), std::string::npos);
}

TEST(SequenceCodec, EveryPrefixOfAValidEncodingFails) {
  CodecProbe probe = FullProbe();
  QAsnErrInfoList list;
  QAsnErrInfo* info = list.Append();
  info->objID.Append()->Set(7);
  info->objName.GetOrCreate().Set("obj");
  info->errCode = -1;
  info->strOperDesc.GetOrCreate().Set("desc");
  list.Append()->errCode = 2;

  struct Case {
    std::string octets;
    std::string (*decode)(const std::string&);
  };
  const Case cases[] = {
      {Hex(kUniResId), &DecodeAs<QAsnUniResID>},
      {Hex("30 80 04 01 41 24 80 04 01 42 00 00 02 01 05 00 00"), &DecodeAs<QAsnUniResID>},
      {AsnEncodeValue(probe), &DecodeAs<CodecProbe>},
      {AsnEncodeValue(list), &DecodeAs<QAsnErrInfoList>},
  };
  for (const Case& c : cases) {
    ASSERT_EQ(c.decode(c.octets), "no exception") << ToHex(c.octets);
    for (std::size_t size = 0; size < c.octets.size(); ++size) {
      EXPECT_NE(c.decode(c.octets.substr(0, size)), "no exception") << ToHex(c.octets.substr(0, size));
    }
  }
}

TEST(SequenceCodec, DecodesIndefiniteLengthsAndConstructedOctetStrings) {
  struct Case {
    const char* comment;
    const char* hex;
  };
  const Case cases[] = {
      {"indefinite record", "30 80 04 01 41 04 01 42 02 01 05 80 01 43 00 00"},
      {"constructed strMOC, definite", "30 0E 04 01 41 24 03 04 01 42 02 01 05 80 01 43"},
      {"constructed strFDN in two segments, indefinite",
       "30 80 24 80 04 00 04 01 41 00 00 04 01 42 02 01 05 80 01 43 00 00"},
      {"constructed [0] poSerialNum", "30 0E 04 01 41 04 01 42 02 01 05 A0 03 04 01 43"},
      {"indefinite [0] inside a definite record", "30 10 04 01 41 04 01 42 02 01 05 A0 80 04 01 43 00 00"},
  };
  for (const Case& c : cases) {
    QAsnUniResID value;
    const std::string message = ThrownMessage([&] { AsnDecodeValue(value, Hex(c.hex)); });
    ASSERT_EQ(message, "no exception") << c.comment;
    EXPECT_EQ(ToHex(AsnEncodeValue(value)), kUniResId) << c.comment;
  }

  QAsnErrInfo info;
  AsnDecodeValue(info, Hex("30 80 30 80 02 01 07 02 01 08 00 00 02 01 03 00 00"));
  EXPECT_EQ(ToHex(AsnEncodeValue(info)), "30 0B 30 06 02 01 07 02 01 08 02 01 03");
}

TEST(SequenceCodec, DecodingIntoAUsedRecordReplacesItsContent) {
  QAsnUniResID id;
  AsnDecodeValue(id, Hex(kUniResId));
  ASSERT_FALSE(id.poSerialNum.IsNull());
  AsnDecodeValue(id, Hex("30 08 04 01 58 04 00 02 01 09"));
  EXPECT_EQ(id.strFDN.view(), "X");
  EXPECT_EQ(id.strMOC.Len(), 0u);
  EXPECT_EQ(id.neID.Value(), 9);
  EXPECT_TRUE(id.poSerialNum.IsNull());

  CodecProbe probe = FullProbe();
  AsnDecodeValue(probe, Hex("30 0B 01 01 00 02 01 01 A1 03 02 01 05"));
  EXPECT_TRUE(probe.column.IsNull());
  EXPECT_TRUE(probe.note.IsNull());
  ASSERT_FALSE(probe.codes.IsNull());
  EXPECT_EQ(probe.codes->Count(), 1u);
  EXPECT_EQ(probe.codes->First()->Value(), 5);
}

TEST(SequenceCodec, PrintsPresentMembersInOrder) {
  CodecProbe probe = FullProbe();
  std::ostringstream os;
  probe.Print(os, 0, false);
  EXPECT_EQ(os.str(),
            "CodecProbe {\n  flag TRUE\n  big -129\n  column QAsnColumn {\n    strCondition \"c\"\n  }\n"
            "  codes {\n    - 300\n  }\n  note \"n\"\n}");
}

}  // namespace
