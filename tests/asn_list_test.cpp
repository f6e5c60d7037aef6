// The list container: SEQUENCE OF framing both ways, the exact wrong-tag
// error, printing, copying and the cursor rules.
#include "asn/asn_list.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <vector>

#include "asn/qasn_tiny_int_list.h"
#include "asn/qcommon_lists.h"
#include "platform/asn/asn_value_io.h"
#include "platform/refl/may_null_pointer.h"
#include "test_bytes.h"

namespace {

using qcommon::QAsnTinyIntList;
using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

// A list that keeps the template's own type name.
class PlainTinyIntList : public AsnSeqOf<AsnTinyInt> {
 public:
  AsnType* Clone() const override { return new PlainTinyIntList(*this); }
};

QAsnTinyIntList ListOf(const std::vector<int>& values) {
  QAsnTinyIntList list;
  for (const int value : values) list.Append()->Set(value);
  return list;
}

std::vector<int> ValuesOf(const AsnList<AsnTinyInt>& list) {
  std::vector<int> values;
  for (list.MoveFirst(); const AsnTinyInt* element = list.Current(); list.MoveNext()) values.push_back(*element);
  return values;
}

// Encodes through BEnc itself, to see its result as well as the octets.
std::string Encode(AsnType& value, unsigned long& written) {
  AsnBuf buf;
  written = value.BEnc(buf, NIClass_BER);
  EXPECT_EQ(written, buf.EncodedLength());
  return ToHex(buf.EncodedBytes());
}

// Decodes through BDec itself, from a heap block of exactly the input's size.
unsigned long Decode(AsnType& value, const std::string& octets, unsigned long bytesDecoded = 0) {
  const std::unique_ptr<unsigned char[]> block(new unsigned char[octets.size()]);
  std::copy(octets.begin(), octets.end(), block.get());
  AsnBuf buf(block.get(), octets.size());
  value.BDec(buf, bytesDecoded, NIClass_BER);
  return bytesDecoded;
}

// ---- encoding ----------------------------------------------------------------------

struct EncodeCase {
  const char* what;
  std::vector<int> values;
  const char* octets;
};

const EncodeCase kEncodeCases[] = {
    {"empty list", {}, "30 00"},
    {"one element", {5}, "30 03 02 01 05"},
    {"elements in list order, each with its own length", {5, 128}, "30 07 02 01 05 02 02 00 80"},
    {"negative and wide elements", {-1, 65536, INT32_MIN}, "30 0E 02 01 FF 02 03 01 00 00 02 04 80 00 00 00"},
};

TEST(AsnSeqOf, EncodesDefiniteFraming) {
  for (const EncodeCase& c : kEncodeCases) {
    SCOPED_TRACE(c.what);
    QAsnTinyIntList list = ListOf(c.values);
    unsigned long written = 0;
    EXPECT_EQ(Encode(list, written), c.octets);
    EXPECT_EQ(written, Hex(c.octets).size());
  }
}

// 41 three-octet elements and one of four make 127 content octets: the
// length stays one octet. One octet more switches to the long form 81 80.
TEST(AsnSeqOf, SwitchesToTheLongFormAt128ContentOctets) {
  for (const unsigned long content : {127UL, 128UL}) {
    SCOPED_TRACE(content);
    std::vector<int> values(41, 1);                  // 02 01 01
    values.push_back(content == 127 ? 128 : 65536);  // 02 02 00 80 / 02 03 01 00 00
    QAsnTinyIntList list = ListOf(values);
    AsnBuf buf;
    const unsigned long written = list.BEnc(buf, NIClass_BER);
    const std::string octets = buf.EncodedBytes();
    const std::string header = content == 127 ? "30 7F" : "30 81 80";
    EXPECT_EQ(ToHex(octets.substr(0, Hex(header).size())), header);
    EXPECT_EQ(written, content + Hex(header).size());
    EXPECT_EQ(octets.size(), written);

    QAsnTinyIntList back;
    AsnDecodeValue(back, octets);
    EXPECT_EQ(ValuesOf(back), values);
  }
}

TEST(AsnSeqOf, EncodesRecordElementsCompletely) {
  qcommon::QAsnNVSList list;
  qcommon::QAsnNameAndValueString* pair = list.Append();
  pair->name.Set("a");
  pair->value.Set("");
  unsigned long written = 0;
  EXPECT_EQ(Encode(list, written), "30 07 30 05 04 01 61 04 00");
  EXPECT_EQ(written, 9u);
}

// ---- decoding ----------------------------------------------------------------------

struct DecodeCase {
  const char* what;
  const char* input;
  std::vector<int> values;
};

const DecodeCase kDecodeCases[] = {
    {"empty definite", "30 00", {}},
    {"empty indefinite", "30 80 00 00", {}},
    {"definite", "30 07 02 01 05 02 02 00 80", {5, 128}},
    {"indefinite: same elements", "30 80 02 01 05 02 02 00 80 00 00", {5, 128}},
    {"long-form length", "30 81 03 02 01 05", {5}},
    {"non-minimal long-form length", "30 82 00 03 02 01 05", {5}},
    // The list stops once the content length is reached or passed; an element
    // running over the length is not the list's to report.
    {"element overrunning the length", "30 02 02 01 05", {5}},
};

TEST(AsnSeqOf, DecodesDefiniteAndIndefiniteFraming) {
  for (const DecodeCase& c : kDecodeCases) {
    SCOPED_TRACE(c.what);
    QAsnTinyIntList list = ListOf({7, 8, 9});  // decoding replaces what was there
    const std::string octets = Hex(c.input);
    EXPECT_EQ(Decode(list, octets, 100), 100 + octets.size());
    EXPECT_EQ(ValuesOf(list), c.values);
    EXPECT_EQ(list.Count(), c.values.size());
  }
}

TEST(AsnSeqOf, WrongTagThrowsTheSequenceOfErrorAndKeepsTheList) {
  const struct {
    const char* what;
    const char* input;
    unsigned long advanced;  // octets of the tag, counted before the throw
  } cases[] = {
      {"SET OF", "31 03 02 01 05", 1},         {"OCTET STRING", "04 00", 1},
      {"primitive 0x10", "10 00", 1},          {"empty input yields tag 0", "", 1},
      {"high tag number form", "3F 20 00", 2},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    QAsnTinyIntList list = ListOf({7, 8});
    list.MoveFirst();
    list.MoveNext();
    unsigned long bytesDecoded = 10;
    std::unique_ptr<CSM_Exception> error;
    try {
      Decode(list, Hex(c.input), 0);
    } catch (CSM_Exception* raw) {
      error.reset(raw);
    }
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->ErrorCode(), -54);
    EXPECT_EQ(error->Location(), 250);
    EXPECT_EQ(error->Context(), "");
    EXPECT_EQ(error->File(), "tn_velkor_unity");
    EXPECT_EQ(error->Message(), "AsnList::BDec: ERROR tag on SEQUENCE OF is wrong.");
    EXPECT_EQ(error->Buffer(), nullptr);
    EXPECT_EQ(ValuesOf(list), (std::vector<int>{7, 8}));

    // The running count has been advanced by the octets read.
    const std::string octets = Hex(c.input);
    AsnBuf buf(reinterpret_cast<const unsigned char*>(octets.data()), octets.size());
    EXPECT_NE(ThrownMessage([&] { list.BDec(buf, bytesDecoded, NIClass_BER); }), "no exception");
    EXPECT_EQ(bytesDecoded, 10 + c.advanced);
  }
}

struct BadInputCase {
  const char* what;
  const char* input;
  const char* error;
  std::vector<int> left;  // what the list holds afterwards
};

const BadInputCase kBadInputCases[] = {
    {"indefinite without end-of-contents", "30 80 02 01 05", "missing end-of-contents octets at offset 5", {5}},
    {"indefinite with one end-of-contents octet",
     "30 80 02 01 05 00",
     "missing end-of-contents octets at offset 6",
     {5}},
    {"definite length past the input", "30 04 02 01 05", "AsnTinyInt: input ends before the tag at offset 5", {5, 0}},
    {"long length past the input",
     "30 81 05 02 01 05",
     "length 5 runs past the input (3 octets left) at offset 3",
     {7}},
    // The failing element was appended before it was decoded.
    {"element without content",
     "30 05 02 01 05 02 00",
     "AsnTinyInt: INTEGER without content octets at offset 7",
     {5, 0}},
    {"element of another type", "30 03 04 01 61", "AsnTinyInt: wrong tag [UNIVERSAL 4] primitive at offset 3", {0}},
};

TEST(AsnSeqOf, BadInputThrowsAndKeepsTheElementsDecodedSoFar) {
  for (const BadInputCase& c : kBadInputCases) {
    SCOPED_TRACE(c.what);
    QAsnTinyIntList list = ListOf({7});
    unsigned long bytesDecoded = 0;
    const std::string octets = Hex(c.input);
    const std::unique_ptr<unsigned char[]> block(new unsigned char[octets.size()]);
    std::copy(octets.begin(), octets.end(), block.get());
    AsnBuf buf(block.get(), octets.size());
    EXPECT_EQ(ThrownMessage([&] { list.BDec(buf, bytesDecoded, NIClass_BER); }), c.error);
    EXPECT_EQ(ValuesOf(list), c.left);
    // Tag and length were counted; the content was not.
    EXPECT_LE(bytesDecoded, 3u);
  }
}

TEST(AsnSeqOf, EveryStrictPrefixIsRefused) {
  for (const char* input : {"30 07 02 01 05 02 02 00 80", "30 80 02 01 05 02 02 00 80 00 00", "30 81 03 02 01 05"}) {
    const std::string octets = Hex(input);
    for (std::size_t size = 0; size < octets.size(); ++size) {
      SCOPED_TRACE(ToHex(octets.substr(0, size)));
      const std::string prefix = octets.substr(0, size);
      const std::unique_ptr<char[]> block(new char[size]);
      std::copy(prefix.begin(), prefix.end(), block.get());
      QAsnTinyIntList list;
      EXPECT_NE(ThrownMessage([&] { AsnDecodeValue(list, std::string_view(block.get(), size)); }), "no exception");
    }
  }
}

TEST(AsnSeqOf, RoundTripsThroughTheWholeValueHelpers) {
  QAsnTinyIntList list = ListOf({0, -1, 127, -128, 1000000, INT32_MAX});
  QAsnTinyIntList back;
  AsnDecodeValue(back, AsnEncodeValue(list));
  EXPECT_EQ(ValuesOf(back), ValuesOf(list));
  EXPECT_EQ(AsnEncodeValue(back), AsnEncodeValue(list));
}

// ---- printing ----------------------------------------------------------------------

TEST(AsnList, Prints) {
  const struct {
    std::vector<int> values;
    unsigned long level;
    bool lineBreak;
    std::string printed;
  } cases[] = {
      {{}, 1, true, ""},
      {{}, 0, false, ""},
      {{5, -3}, 1, true, "\n  - 5\n  - -3"},
      {{5, -3}, 0, true, "\n- 5\n- -3"},
      {{5, -3}, 1, false, "- 5- -3"},
      {{9}, 39, true, "\n" + std::string(78, ' ') + "- 9"},
      {{9}, 1000, true, "\n" + std::string(78, ' ') + "- 9"},  // deeper levels keep the deepest entry
  };
  for (const auto& c : cases) {
    std::ostringstream os;
    ListOf(c.values).Print(os, c.level, c.lineBreak);
    EXPECT_EQ(os.str(), c.printed);
  }
}

TEST(AsnList, IndentTable) {
  EXPECT_STREQ(IndentText(0), "");
  EXPECT_STREQ(IndentText(1), "  ");
  EXPECT_EQ(std::string(IndentText(20)), std::string(40, ' '));
  EXPECT_EQ(std::string(IndentText(39)), std::string(78, ' '));
}

TEST(AsnList, TypeNames) {
  PlainTinyIntList plain;
  EXPECT_STREQ(plain.typeName(), "AsnList<T>");
  EXPECT_STREQ(static_cast<const AsnList<AsnTinyInt>&>(plain).typeName(), "AsnList<T>");
  QAsnTinyIntList tiny;
  qcommon::QAsnNVSList pairs;
  qcommon::QAsnErrInfoList errors;
  const AsnType* lists[] = {&tiny, &pairs, &errors};
  EXPECT_STREQ(lists[0]->typeName(), "QAsnTinyIntList");
  EXPECT_STREQ(lists[1]->typeName(), "QAsnNVSList");
  EXPECT_STREQ(lists[2]->typeName(), "QAsnErrInfoList");
}

// ---- building, copying, walking ------------------------------------------------------

TEST(AsnList, StartsEmpty) {
  QAsnTinyIntList list;
  EXPECT_EQ(list.Count(), 0u);
  EXPECT_EQ(list.First(), nullptr);
  EXPECT_EQ(list.Current(), nullptr);
  list.MoveFirst();
  list.MoveNext();
  EXPECT_EQ(list.Current(), nullptr);
}

TEST(AsnList, AppendMovesTheCursorToTheNewDefaultElement) {
  QAsnTinyIntList list;
  AsnTinyInt* first = list.Append();
  EXPECT_EQ(first->Value(), 0);
  EXPECT_EQ(list.Current(), first);
  EXPECT_EQ(list.First(), first);
  first->Set(4);
  AsnTinyInt* second = list.Append();
  EXPECT_EQ(list.Current(), second);
  EXPECT_EQ(list.First(), first);
  EXPECT_EQ(list.Count(), 2u);
  list.MoveNext();
  EXPECT_EQ(list.Current(), nullptr);
  list.MoveNext();  // stays past the end
  EXPECT_EQ(list.Current(), nullptr);
}

TEST(AsnList, AppendCopyLeavesTheCursor) {
  QAsnTinyIntList list = ListOf({1, 2});
  list.MoveFirst();
  AsnTinyInt source(42);
  list.AppendCopy(source);
  EXPECT_EQ(list.Current(), list.First());
  EXPECT_EQ(ValuesOf(list), (std::vector<int>{1, 2, 42}));

  list.MoveFirst();
  list.MoveNext();
  list.MoveNext();
  list.MoveNext();                 // past the end
  list.AppendCopy(*list.First());  // a copy of an element of the same list
  EXPECT_EQ(list.Current(), nullptr);
  EXPECT_EQ(ValuesOf(list), (std::vector<int>{1, 2, 42, 1}));
  list.MoveFirst();
  for (int i = 0; i < 3; ++i) list.MoveNext();
  EXPECT_NE(list.Current(), list.First());
}

TEST(AsnList, AppendCopyOfARecordIsDeep) {
  qcommon::QAsnErrInfo source;
  source.objID.Append()->Set(3);
  source.objName.GetOrCreate().Set("x");
  source.errCode = 9;
  qcommon::QAsnErrInfoList list;
  list.AppendCopy(source);
  source.objID.First()->Set(4);
  source.objName->Set("y");
  const qcommon::QAsnErrInfo* copy = list.First();
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->objID.First()->Value(), 3);
  EXPECT_EQ(copy->objName->view(), "x");
  EXPECT_EQ(copy->errCode.Value(), 9);
  EXPECT_TRUE(copy->strOperDesc.IsNull());
}

TEST(AsnList, AssignmentCopiesDeeplyAndMovesTheSourceCursorToTheEnd) {
  QAsnTinyIntList source = ListOf({1, 2, 3});
  source.MoveFirst();
  QAsnTinyIntList target = ListOf({9});
  target = source;
  EXPECT_EQ(ValuesOf(target), (std::vector<int>{1, 2, 3}));

  target = ListOf({});
  source.MoveFirst();
  target = source;
  EXPECT_EQ(source.Current(), nullptr);
  EXPECT_EQ(target.Current(), nullptr);
  EXPECT_NE(target.First(), source.First());
  source.First()->Set(100);
  EXPECT_EQ(target.First()->Value(), 1);

  QAsnTinyIntList copied(source);
  EXPECT_EQ(ValuesOf(copied), (std::vector<int>{100, 2, 3}));
}

TEST(AsnList, SelfAssignmentChangesNothing) {
  QAsnTinyIntList list = ListOf({1, 2});
  list.MoveFirst();
  AsnTinyInt* first = list.First();
  QAsnTinyIntList& alias = list;
  list = alias;
  EXPECT_EQ(list.First(), first);
  EXPECT_EQ(list.Current(), first);  // not even the cursor moves
  EXPECT_EQ(list.Count(), 2u);
  list.AssignList(alias);
  EXPECT_EQ(list.Current(), first);
}

TEST(AsnList, CloneIsADeepCopyOfTheSameClass) {
  QAsnTinyIntList list = ListOf({5, 6});
  const std::unique_ptr<AsnType> clone(list.Clone());
  auto* copy = dynamic_cast<QAsnTinyIntList*>(clone.get());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(ValuesOf(*copy), (std::vector<int>{5, 6}));
  EXPECT_NE(copy->First(), list.First());
  list.First()->Set(0);
  EXPECT_EQ(copy->First()->Value(), 5);

  qcommon::QAsnNVSList pairs;
  pairs.Append()->name.Set("n");
  const std::unique_ptr<AsnType> pairsClone(pairs.Clone());
  auto* pairsCopy = dynamic_cast<qcommon::QAsnNVSList*>(pairsClone.get());
  ASSERT_NE(pairsCopy, nullptr);
  EXPECT_EQ(pairsCopy->First()->name.view(), "n");
  EXPECT_NE(pairsCopy->First(), pairs.First());
}

TEST(AsnList, ClearEmptiesTheList) {
  QAsnTinyIntList list = ListOf({1, 2, 3});
  list.MoveFirst();
  list.Clear();
  EXPECT_EQ(list.Count(), 0u);
  EXPECT_EQ(list.First(), nullptr);
  EXPECT_EQ(list.Current(), nullptr);
  unsigned long written = 0;
  EXPECT_EQ(Encode(list, written), "30 00");
  EXPECT_EQ(written, 2u);
}

// ---- optional members ------------------------------------------------------------------

TEST(MayNullPointer, GetOrCreateMakesAMemberPresent) {
  refl::MayNullPointer<AsnTinyInt> number;
  EXPECT_TRUE(number.IsNull());
  AsnTinyInt& created = number.GetOrCreate();
  EXPECT_EQ(created.Value(), 0);
  EXPECT_FALSE(number.IsNull());
  created.Set(7);
  EXPECT_EQ(&number.GetOrCreate(), &created);  // the held object, not a new one
  EXPECT_EQ(number->Value(), 7);
  number.Reset();
  EXPECT_TRUE(number.IsNull());
  number.Reset();  // harmless on an empty holder
  EXPECT_TRUE(number.IsNull());

  refl::MayNullPointer<AsnOcts> text;
  EXPECT_EQ(text.GetOrCreate().Len(), 0u);
  EXPECT_FALSE(text.IsNull());
}

TEST(MayNullPointer, AdoptAndCopy) {
  refl::MayNullPointer<AsnTinyInt> holder;
  auto* object = new AsnTinyInt(3);
  holder.Adopt(object);
  holder.Adopt(object);  // already held: nothing changes
  EXPECT_EQ(holder.Get(), object);

  refl::MayNullPointer<AsnTinyInt> copy(holder);
  EXPECT_NE(copy.Get(), object);
  EXPECT_EQ(copy->Value(), 3);
  refl::MayNullPointer<AsnTinyInt> empty;
  copy = empty;
  EXPECT_TRUE(copy.IsNull());
}

}  // namespace
