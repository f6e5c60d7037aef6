// The list container: its own BDec on good and bad input (the running count,
// what is kept, the exact wrong-tag error), printing, copying and the cursor rules.
#include "tn_velkor/asn/asn_list.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tn_velkor/qcommon/qcommon.h"
#include "tn_platform/refl/may_null_pointer.h"
#include "test_bytes.h"

namespace {

using qcommon::QAsnTinyIntList;
using test_bytes::Hex;
using Values = std::vector<int>;

QAsnTinyIntList ListOf(const Values& values) {
  QAsnTinyIntList list;
  for (const int value : values) list.Append()->Set(value);
  return list;
}

Values ValuesOf(const AsnList<AsnTinyInt>& list) {
  Values values;
  for (list.MoveFirst(); const AsnTinyInt* element = list.Current(); list.MoveNext()) values.push_back(*element);
  return values;
}

// The numbers of a golden cell ("-": none).
Values ValuesIn(const std::string& cell) {
  Values values;
  std::istringstream numbers(cell);
  for (int number; numbers >> number;) values.push_back(number);
  return values;
}

// BDec itself, from a heap block of exactly the input's size (a read past the
// end is an AddressSanitizer error); `bytesDecoded` is advanced even on a throw.
void Decode(AsnType& value, const std::string& octets, unsigned long& bytesDecoded) {
  const std::unique_ptr<unsigned char[]> block(new unsigned char[octets.size()]);
  std::copy(octets.begin(), octets.end(), block.get());
  AsnBuf buf(block.get(), octets.size());
  value.BDec(buf, bytesDecoded, NIClass_BER);
}

// BDec itself (the bytes against every decoder are in ber_vectors_test.cpp),
// over tests/ber/list_bdec.golden: the running count gains the whole value,
// or on a failure its tag and length octets, never the content. A wrong tag
// leaves the list alone and throws the list's own exception; otherwise the
// elements decoded before the failure stay, a failing element was appended
// first, and the error (an AsnDecodeError) names the element by its index.
TEST(AsnSeqOf, DecodesAndOnBadInputKeepsTheElementsDecodedSoFar) {
  for (const std::vector<std::string>& row : test_bytes::Golden("ber/list_bdec.golden")) {
    SCOPED_TRACE(row[0]);
    QAsnTinyIntList list = ListOf({7});
    unsigned long bytesDecoded = 10;
    std::unique_ptr<CSM_Exception> error;
    try {
      Decode(list, row[0] == "-" ? "" : Hex(row[0]), bytesDecoded);
    } catch (CSM_Exception* raw) {
      error.reset(raw);
    }
    const bool wrongTag = row[1] == "WRONG TAG";
    EXPECT_EQ(error != nullptr ? error->Message() : "-",
              wrongTag ? "AsnList::BDec: ERROR tag on SEQUENCE OF is wrong." : row[1]);
    EXPECT_EQ(ValuesOf(list), ValuesIn(row[2]));
    EXPECT_EQ(bytesDecoded, 10 + std::stoul(row[3]));
    if (wrongTag && error != nullptr) {
      EXPECT_EQ(error->ErrorCode(), -54);
      EXPECT_EQ(error->Location(), 250);
      EXPECT_EQ(error->Context(), "");
      EXPECT_EQ(error->File(), "tn_velkor_unity");
      EXPECT_EQ(error->Buffer(), nullptr);
    }
  }
  // Input that ends in the length reads as length 0: the list is emptied and
  // the buffer's read-error flag is left for the caller.
  QAsnTinyIntList list = ListOf({7});
  const unsigned char tagOnly[] = {0x30};
  AsnBuf buf(tagOnly, sizeof tagOnly);
  unsigned long bytesDecoded = 0;
  list.BDec(buf, bytesDecoded, NIClass_BER);
  EXPECT_EQ(std::make_tuple(ValuesOf(list), bytesDecoded, buf.ReadError()), std::make_tuple(Values{}, 2ul, true));
}

// tests/ber/printed_lists.golden.
TEST(AsnList, Prints) {
  for (const std::vector<std::string>& row : test_bytes::Golden("ber/printed_lists.golden")) {
    std::ostringstream os;
    ListOf(ValuesIn(row[0])).Print(os, std::stoul(row[1]), row[2] == "yes");
    EXPECT_EQ(os.str(), row[3] == "-" ? "" : test_bytes::Unescaped(row[3])) << row[0] << " " << row[1];
  }
}

TEST(AsnList, CursorRules) {
  QAsnTinyIntList list;
  AsnTinyInt* first = list.Append();  // a default element; the cursor moves to it
  EXPECT_EQ(list.Current(), first);
  AsnTinyInt* second = list.Append();
  EXPECT_EQ(list.Current(), second);
  EXPECT_EQ(list.First(), first);
  list.MoveNext();
  list.MoveNext();  // stays past the end
  EXPECT_EQ(list.Current(), nullptr);

  list.MoveFirst();
  list.AppendCopy(AsnTinyInt(42));  // AppendCopy leaves the cursor
  EXPECT_EQ(list.Current(), first);
  list.AppendCopy(*list.First());  // a copy of an element of the same list
  EXPECT_EQ(ValuesOf(list), (Values{0, 0, 42, 0}));
  EXPECT_EQ(list.Count(), 4u);
}

TEST(AsnList, CopiesAreDeepAndAssignmentLeavesTheSourceCursorNull) {
  QAsnTinyIntList source = ListOf({1, 2, 3});
  QAsnTinyIntList target = ListOf({9});
  source.MoveFirst();
  target = source;
  EXPECT_EQ(source.Current(), nullptr);
  EXPECT_EQ(target.Current(), nullptr);
  const QAsnTinyIntList copied(source);
  const std::unique_ptr<AsnType> clone(source.Clone());
  source.First()->Set(100);
  EXPECT_EQ(ValuesOf(target), (Values{1, 2, 3}));
  EXPECT_EQ(ValuesOf(copied), (Values{1, 2, 3}));
  auto* cloned = dynamic_cast<QAsnTinyIntList*>(clone.get());
  ASSERT_NE(cloned, nullptr);
  EXPECT_EQ(ValuesOf(*cloned), (Values{1, 2, 3}));
}

// Nodes come from blocks of growing size (the first node of a small-element
// list from the list itself): elements keep their addresses and order as the
// list grows past the largest block, for integers and records alike.
TEST(AsnList, ElementsKeepTheirAddressesAcrossNodeBlocks) {
  QAsnTinyIntList ints;
  qcommon::QAsnNVSList records;
  std::vector<const void*> addresses;
  for (int i = 0; i < 300; ++i) {
    ints.Append()->Set(i);
    records.Append()->name.Set(std::to_string(i).c_str());
    addresses.push_back(ints.Current());
    addresses.push_back(records.Current());
  }
  const qcommon::QAsnNVSList copied(records);
  std::size_t i = 0;
  ints.MoveFirst();
  copied.MoveFirst();
  for (records.MoveFirst(); records.Current() != nullptr; records.MoveNext(), ints.MoveNext(), copied.MoveNext()) {
    EXPECT_EQ(ints.Current(), addresses[2 * i]);
    EXPECT_EQ(records.Current(), addresses[2 * i + 1]);
    EXPECT_EQ(ints.Current()->Value(), static_cast<int>(i));
    EXPECT_EQ(copied.Current()->name.view(), std::to_string(i));
    ++i;
  }
  EXPECT_EQ(i, 300u);
}

TEST(AsnList, SelfAssignmentChangesNothing) {
  QAsnTinyIntList list = ListOf({1, 2});
  list.MoveFirst();
  AsnTinyInt* first = list.First();
  QAsnTinyIntList& alias = list;
  list = alias;
  list.AssignList(alias);
  EXPECT_EQ(list.First(), first);
  EXPECT_EQ(list.Current(), first);  // not even the cursor moves
  EXPECT_EQ(ValuesOf(list), (Values{1, 2}));
}

// The holder of optional members; copying is covered with the common records.
TEST(MayNullPointer, OwnsAtMostOneObject) {
  refl::MayNullPointer<AsnTinyInt> number;
  AsnTinyInt& created = number.GetOrCreate();
  EXPECT_EQ(&number.GetOrCreate(), &created);  // the held object, not a new one
  number.Reset();
  number.Reset();  // harmless on an empty holder
  EXPECT_TRUE(number.IsNull());
  auto* object = new AsnTinyInt(3);
  number.Adopt(object);
  number.Adopt(object);  // already held: not destroyed
  EXPECT_EQ(number.Get(), object);
}

}  // namespace
