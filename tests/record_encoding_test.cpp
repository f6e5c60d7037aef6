// The record encoder (a sizing pass, then one front-to-back write): exact
// bytes against a plain tag-length-value composition (test_bytes::Tlv) for lengths on both
// sides of every form boundary, nesting deep enough to take many noted
// lengths, and values put in front of what a buffer already holds. Integers
// at every content length are in ber_vectors_test.cpp.
#include <gtest/gtest.h>

#include <string>

#include "test_bytes.h"
#include "tests/qprobe/qprobe.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

using test_bytes::Hex;
using test_bytes::Tlv;
using test_bytes::ToHex;

// Text of `size` octets that differ from their neighbours.
std::string Text(std::size_t size) {
  std::string text(size, 'a');
  for (std::size_t i = 0; i < size; ++i) text[i] = static_cast<char>('a' + i % 26);
  return text;
}

TEST(RecordEncoding, OctetStringsOfEveryShortLengthAndAcrossTheLengthForms) {
  for (const std::size_t size : {0, 1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 23, 24, 25, 31, 32, 40, 127, 128, 255, 256,
                                 65535, 65536}) {
    SCOPED_TRACE(size);
    qcommon::QAsnColumn column;
    column.strCondition.Set(Text(size).data(), size);
    EXPECT_EQ(AsnEncodeValue(column), Tlv("\x30", Tlv("\x04", Text(size))));
  }
}

// Every member kind, optional ones present, a nested record and two lists,
// with lengths in the long form at every level and more constructed values
// than the encoder notes without growing.
TEST(RecordEncoding, NestedRecordsAndListsMatchThePlainComposition) {
  qprobe::QProbeRecord record;
  record.flag = true;
  record.count = -5;
  record.total = 1LL << 40;
  record.label.Set(Text(300).data(), 300);
  record.owner.strFDN.Set(Text(130).data(), 130);
  record.owner.strMOC.Set("NE");
  record.owner.neID = 1001;
  record.note.GetOrCreate().Set("n");
  record.limit.GetOrCreate() = 70000;
  std::string attributes, parts;
  for (int i = 0; i < 40; ++i) {
    qcommon::QAsnNameAndValueString* entry = record.attributes.GetOrCreate().Append();
    entry->name.Set(Text(i).data(), i);
    entry->value.Set(Text(5 * i).data(), 5 * i);
    attributes += Tlv("\x30", Tlv("\x04", Text(i)) + Tlv("\x04", Text(5 * i)));
  }
  for (int i = 0; i < 3; ++i) {
    qprobe::QProbePart* part = record.parts.GetOrCreate().Append();
    part->name.Set(Text(i + 1).data(), i + 1);
    part->weight = -i;
    parts += Tlv("\x30", Tlv("\x04", Text(i + 1)) + Tlv("\x02", std::string(1, static_cast<char>(-i))));
  }
  const std::string owner = Tlv("\x30", Tlv("\x04", Text(130)) + Tlv("\x04", "NE") + Tlv("\x02", Hex("03 E9")));
  const std::string expected =
      Tlv("\x30", Tlv("\x01", Hex("FF")) + Tlv("\x02", Hex("FB")) + Tlv("\x02", Hex("01 00 00 00 00 00")) +
                    Tlv("\x04", Text(300)) + owner + Tlv("\x80", "n") + Tlv("\x81", Hex("01 11 70")) +
                    Tlv("\xA2", attributes) + Tlv("\xA3", parts));
  EXPECT_EQ(ToHex(AsnEncodeValue(record)), ToHex(expected));

  qprobe::QProbeRecord back;
  AsnDecodeValue(back, expected);
  EXPECT_EQ(AsnEncodeValue(back), expected);
}

TEST(RecordEncoding, PutsEachValueInFrontOfWhatTheBufferHolds) {
  qcommon::QAsnUniResID id;
  id.strFDN.Set("NE=1");
  id.strMOC.Set("NE");
  id.neID = 7;
  qcommon::QAsnNVSList list;
  std::string elements;
  for (int i = 0; i < 20; ++i) {
    list.Append()->name.Set(Text(i).data(), i);
    elements += Tlv("\x30", Tlv("\x04", Text(i)) + Tlv("\x04", ""));
  }
  qcommon::QAsnColumn column;
  column.strCondition.Set("c");

  const std::string idBytes = AsnEncodeValue(id);
  const std::string listBytes = AsnEncodeValue(list);
  EXPECT_EQ(listBytes, Tlv("\x30", elements));
  AsnBuf buf(4);  // grows on the way, keeping what is written
  unsigned long written = id.BEnc(buf, NIClass_BER);
  written += list.BEnc(buf, NIClass_BER);
  written += column.BEncContent(buf, NIClass_BER);  // members only
  written += list.BEncContent(buf, NIClass_BER);    // elements only
  const std::string expected = elements + Tlv("\x04", "c") + listBytes + idBytes;
  EXPECT_EQ(ToHex(buf.EncodedBytes()), ToHex(expected));
  EXPECT_EQ(written, expected.size());

  buf.ClearEncoded();  // a kept buffer serves the next value
  EXPECT_EQ(AsnEncodeInto(id, buf), idBytes);
}

}  // namespace
