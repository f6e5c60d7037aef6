// The record decoder's fast path against the generic decoder: for records of
// primitive members and lists of them, every valid encoding and thousands of broken variants
// of it must come out the same (the same value, or the same error), whether
// decoded into a fresh record or into one whose optional members are set.
#include <gtest/gtest.h>

#include <functional>
#include <map>
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

// The records of tests/ber/fast_path.golden, each decoded first into a record
// whose members hold other values.
TEST(RecordDecoding, FastPathDecidesAsTheGenericDecoderDoes) {
  const std::map<std::string, std::function<void(const std::string&)>> checks = {
      {"QAsnUniResID", [](const std::string& valid) {
         ExpectSameAsGeneric<qcommon::QAsnUniResID>(valid, [](qcommon::QAsnUniResID& id) {
           id.strFDN.Set("old");
           id.neID = 99;
           id.poSerialNum.GetOrCreate().Set("old serial");
         });
       }},
      {"QAsnPortIndex", [](const std::string& valid) {
         ExpectSameAsGeneric<qcommon::QAsnPortIndex>(valid, [](qcommon::QAsnPortIndex& index) {
           index.level2SubID.GetOrCreate() = 5;
           index.level3SubID.GetOrCreate() = 6;
           index.strIndexText.GetOrCreate().Set("old");
         });
       }},
      {"AsnSingleReturn", [](const std::string& valid) {
         ExpectSameAsGeneric<AsnSingleReturn>(valid, [](AsnSingleReturn& r) { r.retCode.GetOrCreate() = 3; });
       }},
      {"QAsnErrInfo", [](const std::string& valid) {
         ExpectSameAsGeneric<qcommon::QAsnErrInfo>(valid, [](qcommon::QAsnErrInfo& info) {
           info.objID.Append()->Set(9);
           info.objName.GetOrCreate().Set("old");
           info.strOperDesc.GetOrCreate().Set("old");
         });
       }},
      {"QProbePart", [](const std::string& valid) {
         ExpectSameAsGeneric<qprobe::QProbePart>(valid, [](qprobe::QProbePart& p) { p.weight = 1; });
       }},
  };
  for (const std::vector<std::string>& row : test_bytes::Golden("ber/fast_path.golden")) checks.at(row[0])(Hex(row[1]));
}

}  // namespace
