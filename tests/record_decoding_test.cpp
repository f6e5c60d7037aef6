// The record decoder's fast path against the generic decoder: for records of
// primitive members and lists of them, every valid encoding and thousands of broken variants
// of it must come out the same (the same value, or the same error), whether
// decoded into a fresh record or into one whose optional members are set.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "test_bytes.h"
#include "tests/qprobe/qprobe.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/qreturn/qreturn.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

// A record decoded by the generic decoder alone (the member plan), as a
// whole value: the yardstick for the fast path.
template <class Record>
class GenericDecode : public AsnType {
 public:
  explicit GenericDecode(Record& record) : m_record(record) {}
  AsnType* Clone() const override { return nullptr; }
  void BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum format) override {
    m_record.AsnSequence::BDec(buf, bytesDecoded, format);
  }
  unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum format) override { return m_record.BEnc(buf, format); }
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override {
    m_record.Print(os, level, lineBreak);
  }
  const char* typeName() const override { return m_record.typeName(); }

 private:
  Record& m_record;
};

// What decoding `octets` into `record` gives: the value re-encoded, or the error.
template <class Record>
std::string Outcome(Record& record, AsnType& decoder, const std::string& octets) {
  const std::string error = ThrownMessage([&] { AsnDecodeValue(decoder, octets); });
  return error == "no exception" ? ToHex(AsnEncodeValue(record)) : error;
}

// `octets` with every prefix, every octet deleted, and every octet replaced by
// values that change a tag, a length form or an integer's sign.
std::vector<std::string> Variants(const std::string& octets) {
  static const unsigned char kReplacements[] = {0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x1F, 0x24, 0x30,
                                                0x7F, 0x80, 0x81, 0x82, 0x83, 0x9F, 0xA0, 0xFF};
  std::vector<std::string> variants{octets};
  for (std::size_t i = 0; i < octets.size(); ++i) {
    variants.push_back(octets.substr(0, i));
    variants.push_back(octets.substr(0, i) + octets.substr(i + 1));
    for (const unsigned char octet : kReplacements) {
      std::string changed = octets;
      changed[i] = static_cast<char>(octet);
      variants.push_back(changed);
    }
  }
  return variants;
}

// Decodes every variant of `valid` with both decoders, into fresh records
// and into records that `fill` set beforehand, and expects the same outcome.
template <class Record, class Fill>
void ExpectSameAsGeneric(const std::string& valid, Fill&& fill) {
  for (const std::string& octets : Variants(valid)) {
    for (const bool used : {false, true}) {
      SCOPED_TRACE(ToHex(octets) + (used ? " into a used record" : ""));
      Record fast, generic;
      if (used) {
        fill(fast);
        fill(generic);
      }
      GenericDecode<Record> genericDecoder(generic);
      EXPECT_EQ(Outcome(fast, fast, octets), Outcome(generic, genericDecoder, octets));
    }
  }
}

void FillUniResId(qcommon::QAsnUniResID& id) {
  id.strFDN.Set("old");
  id.neID = 99;
  id.poSerialNum.GetOrCreate().Set("old serial");
}

void FillPortIndex(qcommon::QAsnPortIndex& index) {
  index.level2SubID.GetOrCreate() = 5;
  index.level3SubID.GetOrCreate() = 6;
  index.strIndexText.GetOrCreate().Set("old");
}

TEST(RecordDecoding, FastPathDecidesAsTheGenericDecoderDoes) {
  const char* const uniResIds[] = {
      "30 0C 04 01 41 04 01 42 02 01 05 80 01 43",     // every member
      "30 09 04 01 41 04 00 02 02 00 80",              // no serial, an empty MOC, 128
      "30 0E 04 00 04 00 02 04 80 00 00 00 80 02 53 4E",  // INT_MIN
      "30 81 09 04 01 41 04 01 42 02 01 FF",           // a long-form record length
      "30 0B 04 00 04 00 02 05 00 80 00 00 00",        // refused: five octets in 32 bits
      "30 08 04 00 04 00 02 02 00 7F",                 // refused: not minimal
  };
  for (const char* hex : uniResIds) ExpectSameAsGeneric<qcommon::QAsnUniResID>(Hex(hex), FillUniResId);

  const char* const portIndexes[] = {
      "30 12 02 01 01 02 01 02 80 01 03 02 01 04 81 01 05 02 01 06",  // both sub-levels
      "30 0F 02 01 01 02 01 02 02 01 04 02 01 06 82 01 78",           // only the text
      "30 0C 02 01 01 02 01 02 02 01 04 02 01 06",                     // no optional member
  };
  for (const char* hex : portIndexes) ExpectSameAsGeneric<qcommon::QAsnPortIndex>(Hex(hex), FillPortIndex);

  const char* const singleReturns[] = {
      "30 06 01 01 FF 80 01 05",                          // TRUE, a code
      "30 03 01 01 00",                                   // FALSE, no code
      "30 07 01 02 00 FF 80 01 05",                       // refused: a BOOLEAN of two octets
      "30 0E 01 01 00 80 09 00 80 00 00 00 00 00 00 00",  // refused: nine octets in 64 bits
  };
  for (const char* hex : singleReturns) {
    ExpectSameAsGeneric<AsnSingleReturn>(Hex(hex), [](AsnSingleReturn& r) { r.retCode.GetOrCreate() = 3; });
  }

  // A list member: checked whole before anything is stored.
  const char* const errInfos[] = {
      "30 0B 30 03 02 01 05 80 01 41 02 01 07",                 // objID {5}, objName, errCode
      "30 0E 30 03 02 01 05 80 01 41 02 01 07 81 01 44",        // and strOperDesc
      "30 05 30 00 02 01 07",                                   // an empty objID
      "30 0B 30 06 02 01 01 02 01 02 02 01 07",                 // objID {1, 2}
      "30 0C 30 04 02 02 00 05 80 01 41 02 01 07",              // refused: an element not minimal
  };
  for (const char* hex : errInfos) {
    ExpectSameAsGeneric<qcommon::QAsnErrInfo>(Hex(hex), [](qcommon::QAsnErrInfo& info) {
      info.objID.Append()->Set(9);
      info.objName.GetOrCreate().Set("old");
      info.strOperDesc.GetOrCreate().Set("old");
    });
  }

  // An octet string and a 64-bit integer.
  qprobe::QProbePart part;
  part.name.Set("p");
  part.weight = -(1LL << 40);
  ExpectSameAsGeneric<qprobe::QProbePart>(AsnEncodeValue(part), [](qprobe::QProbePart& p) { p.weight = 1; });
}

}  // namespace
