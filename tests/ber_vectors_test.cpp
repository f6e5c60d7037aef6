// The BER codec against vectors, for primitives, records and lists alike:
// encodings it accepts (each re-encoded to its DER form, decoded into a used
// value too, lists read by the stream as well, no strict prefix accepted),
// the exact refusal of malformed ones (lists refused by the stream in the same
// words), integers at every content length, the decode budget and printing.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <climits>
#include <iomanip>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "test_bytes.h"
#include "tests/qprobe/qprobe.h"
#include "tn_platform/asn/asn_ber_list_reader.h"
#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_json_list_reader.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/asn_catalogue.h"
#include "trickle_source.h"

namespace {

using test_bytes::DecodeExact;
using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

// The catalogue's entry of a type, the test module's types included; null for a primitive.
const AsnCatalogueEntry* Entry(const std::string& type) {
  static void* const qprobe = dlopen(TN_QPROBE_LIBRARY, RTLD_NOW);
  return qprobe != nullptr ? AsnCatalogue::Find(type) : nullptr;
}

std::unique_ptr<AsnType> Create(const std::string& type) {
  if (type == "AsnOcts") return std::make_unique<AsnOcts>("previous");
  if (type == "AsnInt") return std::make_unique<AsnInt>(12345);
  if (type == "AsnTinyInt") return std::make_unique<AsnTinyInt>(12345);
  if (type == "AsnBool") return std::make_unique<AsnBool>();
  if (const AsnCatalogueEntry* entry = Entry(type)) return std::unique_ptr<AsnType>(entry->create());
  throw std::runtime_error("no type " + type);
}

// `levels` constructed OCTET STRINGs, each inside the other, around the
// segment "x", inside `outer` (a record of the string, or nothing).
std::string Nested(int levels, const std::string& outer = "") {
  std::string hex = outer;
  for (int i = 0; i < levels; ++i) hex += " 24 80";
  hex += " 04 01 78";
  for (int i = 0; i < levels; ++i) hex += " 00 00";
  return outer.empty() ? hex : hex + " 00 00";
}

TEST(BerVectors, AcceptsAndReencodes) {
  const std::string uniResId = "30 0C 04 01 41 04 01 42 02 01 05 80 01 43";  // "A", "B", 5, "C"
  // flag, big -129, [0] { strCondition "c" }, [1] { 300 }, [40] "n"
  const std::string fullProbe = "30 16 01 01 FF 02 02 FF 7F A0 03 04 01 63 A1 04 02 02 01 2C 9F 28 01 6E";
  // Rows of a type follow each other: a row is also decoded into the value of
  // the row before, which it must replace. der "": the input is DER.
  const struct {
    const char* type;
    std::string input;
    std::string der;
  } rows[] = {
      {"AsnOcts", "04 00", ""},
      {"AsnOcts", "04 03 61 00 62", ""},  // zero octets are kept
      {"AsnOcts", "04 81 03 61 62 63", "04 03 61 62 63"},
      {"AsnOcts", "24 08 04 02 61 62 04 02 63 64", "04 04 61 62 63 64"},  // constructed: the segments joined
      {"AsnOcts", "24 80 04 01 61 04 01 62 00 00", "04 02 61 62"},
      {"AsnOcts", "24 00", "04 00"},
      {"AsnOcts", "24 0A 24 04 04 02 61 62 04 02 63 64", "04 04 61 62 63 64"},  // nested segments
      {"AsnOcts", "24 0B 24 80 04 02 61 62 00 00 04 01 63", "04 03 61 62 63"},  // indefinite inside definite
      {"AsnOcts", "24 04 04 00 24 00", "04 00"},
      {"AsnOcts", Nested(AsnDecodeLimits::kMaxDepth), "04 01 78"},
      {"AsnBool", "01 01 FF", ""},
      {"AsnBool", "01 01 00", ""},
      {"AsnBool", "01 01 01", "01 01 FF"},
      {"QAsnTinyIntList", "30 0E 02 01 FF 02 03 01 00 00 02 04 80 00 00 00", ""},
      {"QAsnTinyIntList", "30 00", ""},
      {"QAsnTinyIntList", "30 03 02 01 05", ""},
      {"QAsnTinyIntList", "30 80 00 00", "30 00"},
      {"QAsnTinyIntList", "30 80 02 01 05 02 02 00 80 00 00", "30 07 02 01 05 02 02 00 80"},
      {"QAsnTinyIntList", "30 82 00 03 02 01 05", "30 03 02 01 05"},  // non-minimal long-form length
      {"QAsnUniResID", uniResId, ""},
      {"QAsnUniResID", "30 08 04 01 58 04 00 02 01 09", ""},  // the serial of the row before is gone
      {"QAsnUniResID", "30 80 04 01 41 04 01 42 02 01 05 80 01 43 00 00", uniResId},
      {"QAsnUniResID", "30 0E 04 01 41 24 03 04 01 42 02 01 05 80 01 43", uniResId},  // constructed strMOC
      {"QAsnUniResID", "30 80 24 80 04 00 04 01 41 00 00 04 01 42 02 01 05 80 01 43 00 00", uniResId},
      {"QAsnUniResID", "30 80 04 01 41 24 80 04 01 42 00 00 02 01 05 00 00", "30 09 04 01 41 04 01 42 02 01 05"},
      {"QAsnUniResID", "30 0E 04 01 41 04 01 42 02 01 05 A0 03 04 01 43", uniResId},        // constructed [0]
      {"QAsnUniResID", "30 10 04 01 41 04 01 42 02 01 05 A0 80 04 01 43 00 00", uniResId},  // indefinite [0]
      {"QAsnUniResID", "30 89 00 00 00 00 00 00 00 00 0C 04 01 41 04 01 42 02 01 05 80 01 43", uniResId},
      {"QAsnUniResID", "30 0F 04 81 01 41 04 82 00 01 42 02 01 05 80 01 43", uniResId},  // long forms not minimal
      {"QAsnColumn", "30 89 00 00 00 00 00 00 00 00 03 04 01 41", "30 03 04 01 41"},
      {"QAsnColumn", Nested(AsnDecodeLimits::kMaxDepth - 1, "30 80"), "30 03 04 01 78"},
      {"QAsnErrInfo", "30 80 30 80 02 01 07 02 01 08 00 00 02 01 03 00 00", "30 0B 30 06 02 01 07 02 01 08 02 01 03"},
      {"QAsnErrInfoList", "30 80 30 80 30 80 02 01 07 00 00 80 01 41 02 01 02 00 00 30 05 30 00 02 01 02 00 00",
       "30 14 30 0B 30 03 02 01 07 80 01 41 02 01 02 30 05 30 00 02 01 02"},
      {"CodecProbe", fullProbe, ""},
      {"CodecProbe", "30 0B 01 01 00 02 01 01 A1 03 02 01 05", ""},
      {"CodecProbe", "30 06 01 01 00 02 01 00", ""},
  };
  std::unique_ptr<AsnType> used;
  std::string usedType;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.input.size() < 100 ? row.input : row.der);
    const std::string octets = Hex(row.input);
    const std::string der = row.der.empty() ? octets : Hex(row.der);
    if (usedType != row.type) used = Create(usedType = row.type);
    const std::unique_ptr<AsnType> fresh = Create(row.type);
    for (AsnType* value : {fresh.get(), used.get()}) {
      ASSERT_EQ(ThrownMessage([&] { DecodeExact(*value, octets); }), "no exception");
      EXPECT_EQ(ToHex(AsnEncodeValue(*value)), ToHex(der));
    }
    test_bytes::ExpectEveryPrefixRefused([&] { return Create(row.type); }, octets);
    const AsnCatalogueEntry* entry = Entry(row.type);
    if (entry == nullptr || entry->createElement == nullptr) continue;
    // The stream, given the input two octets at a time, reads the same elements.
    AsnBerListReader reader(Trickle(octets, 2), entry->createElement, entry->name);
    std::string content;
    while (AsnType* element = reader.Next()) content += AsnEncodeValue(*element);
    EXPECT_EQ(ToHex(AsnEncodedListHeader(content.size()) + content), ToHex(der));
  }
}

// The message's leading name is the type decoded. A list's input is refused
// by the stream in the same words.
TEST(BerVectors, RefusesWithTheExactMessage) {
  const char* const kListWrongTag =
      "QAsnTinyIntList: wrong tag [UNIVERSAL 17] constructed (SET), expected [UNIVERSAL 16] constructed (SEQUENCE) "
      "at offset 0";
  const struct {
    std::string input;
    const char* message;
  } rows[] = {
      {"04 80 61 00 00", "AsnOcts: indefinite length on a primitive OCTET STRING at offset 0"},
      {"24 80 04 80 61 00 00 00 00", "AsnOcts: indefinite length on a primitive OCTET STRING at offset 2"},
      {"24 03 02 01 05", "AsnOcts: OCTET STRING segment with tag [UNIVERSAL 2] primitive (INTEGER) at offset 2"},
      {"24 03 04 02 61 62", "AsnOcts: OCTET STRING segment runs past its enclosing value at offset 2"},
      {"24 80 04 01 61", "AsnOcts: input ends before the end-of-contents octets at offset 5"},
      {"02 01 00",
       "AsnOcts: wrong tag [UNIVERSAL 2] primitive (INTEGER), expected [UNIVERSAL 4] primitive (OCTET STRING) at "
       "offset 0"},
      {"", "AsnOcts: input ends before the tag at offset 0"},
      {"04 05 61", "AsnOcts: input ends 4 octets short of the value at offset 3"},
      {"04 01 61 00", "AsnOcts: 1 octet left over after the value at offset 3"},
      {Nested(AsnDecodeLimits::kMaxDepth + 1), "AsnOcts: constructed values nested deeper than 32 levels at offset 64"},
      {"02 00", "AsnInt: INTEGER without content octets at offset 0"},
      {"02 02 00 7F", "AsnInt: INTEGER content is not minimal at offset 0"},
      {"02 02 FF 80", "AsnInt: INTEGER content is not minimal at offset 0"},
      {"02 02 00 00", "AsnInt: INTEGER content is not minimal at offset 0"},
      {"02 80 01 00 00", "AsnInt: indefinite length on an INTEGER at offset 0"},
      {"0A 01 01",
       "AsnInt: wrong tag [UNIVERSAL 10] primitive (ENUMERATED), expected [UNIVERSAL 2] primitive (INTEGER) at "
       "offset 0"},
      {"", "AsnInt: input ends before the tag at offset 0"},
      {"02", "AsnInt: input ends in the length at offset 1"},
      {"02 02 01", "AsnInt: input ends 1 octet short of the value at offset 3"},
      {"02 09 00 80 00 00 00 00 00 00 00", "AsnInt: INTEGER of 9 octets does not fit (at most 8) at offset 0"},
      {"02 02 FF 80", "AsnTinyInt: INTEGER content is not minimal at offset 0"},
      {"01 00", "AsnBool: BOOLEAN content is not one octet at offset 0"},
      {"01 02 00 00", "AsnBool: BOOLEAN content is not one octet at offset 0"},
      {"01 80 FF 00 00", "AsnBool: BOOLEAN content is not one octet at offset 0"},
      {"02 01 00",
       "AsnBool: wrong tag [UNIVERSAL 2] primitive (INTEGER), expected [UNIVERSAL 1] primitive (BOOLEAN) at offset 0"},
      // A list's element at fault by its index, at the offset the structure
      // dump shows for the item (or where it shows the bytes break).
      {"30 04 02 01 05 02", "QAsnTinyIntList[1]: element runs past the end of its list (content length 4) at offset 5"},
      {"30 03 02 01", "QAsnTinyIntList[0]: input ends 1 octet short of the value at offset 4"},
      {"30 05 00 00 02 01 05",
       "QAsnTinyIntList[0]: wrong tag [UNIVERSAL 0] primitive (end-of-contents), expected [UNIVERSAL 2] primitive "
       "(INTEGER) at offset 2"},
      {"30 81 05 02 03 05", "QAsnTinyIntList[0]: input ends 2 octets short of the value at offset 6"},
      {"31 00", kListWrongTag},
      {"", "QAsnTinyIntList: input ends before the tag at offset 0"},
      {"30", "QAsnTinyIntList: input ends in the length at offset 1"},
      {"30 84 00 00", "QAsnTinyIntList: input ends in the length at offset 4"},
      {"30 04 02 01 05", "QAsnTinyIntList: input ends 1 octet short of the value at offset 5"},
      {"30 03 02 02 05 00", "QAsnTinyIntList[0]: element runs past the end of its list (content length 3) at offset 2"},
      {"30 06 02 01 05 02 01", "QAsnTinyIntList[1]: input ends 1 octet short of the value at offset 7"},
      {"30 04 02 02 00 05", "QAsnTinyIntList[0]: INTEGER content is not minimal at offset 2"},
      {"30 03 04 01 05",
       "QAsnTinyIntList[0]: wrong tag [UNIVERSAL 4] primitive (OCTET STRING), expected [UNIVERSAL 2] primitive "
       "(INTEGER) at offset 2"},
      {"30 03 02 01 05 FF", "QAsnTinyIntList: 1 octet left over after the value at offset 5"},
      {"30 03 02 01 05 FF FF FF", "QAsnTinyIntList: 3 octets left over after the value at offset 5"},
      {"30 80 02 01 05", "QAsnTinyIntList: input ends before the end-of-contents octets at offset 5"},
      {"30 80 02 01 05 00", "QAsnTinyIntList: input ends in the end-of-contents octets at offset 6"},
      {"30 80 02 01 05 00 01", "QAsnTinyIntList: end-of-contents octets are not 00 00 at offset 5"},
      {"30 80 02 01 05 00 00 07", "QAsnTinyIntList: 1 octet left over after the value at offset 7"},
      {"30 02 02 01 05", "QAsnTinyIntList[0]: element runs past the end of its list (content length 2) at offset 2"},
      {"30 03 02 05 01", "QAsnTinyIntList[0]: element runs past the end of its list (content length 3) at offset 2"},
      {"30 06 02 05 01", "QAsnTinyIntList[0]: element runs past the end of its list (content length 6) at offset 2"},
      {"30 05 30 03 04 01 61", "QAsnNVSList[0]: mandatory member value missing at offset 2"},
      {"30 09 30 07 04 01 61 04 00 04 00", "QAsnNVSList[0]: member name out of order or repeated at offset 9"},
      {"30 08 30 80 04 01 61 04 00", "QAsnNVSList[0]: input ends before the end-of-contents octets at offset 9"},
      {"30 07 30 05 04 01 61 04 05",
       "QAsnNVSList[0].value: length 5 runs past the end of the record (0 octets left in it) at offset 7"},
      // An empty element in a list that runs past the input: the element is at
      // fault, not the list (a record that never read a member once blamed the list).
      {"30 69 30 00 06 73 7D EF", "QAsnNVSList[0]: mandatory member name missing at offset 2"},
      {"30 08 30 06 30 04 02 02 00 01", "QAsnErrInfoList[0].objID[0]: INTEGER content is not minimal at offset 6"},
      // a list in a record in a list in a record: the second objID of the second element
      {"30 1D 02 01 00 A0 18 30 08 30 03 02 01 07 02 01 01 30 0C 30 07 02 01 08 02 02 00 05 02 01 02",
       "QAsnErrInfoReturn.errInfoList[1].objID[1]: INTEGER content is not minimal at offset 24"},
      {"30 0A 30 08 30 03 02 01 07 02 01", "QAsnErrInfoList[0].errCode: input ends 1 octet short of the value at offset 11"},
      {"30 0C 30 08 30 03 02 01 07 02 01 01", "QAsnErrInfoList: input ends 2 octets short of the value at offset 12"},
      // A value the input holds whole blames its item that runs past its end,
      // also when the input ends inside that item.
      {"30 05 24 80 04 01 61", "QAsnColumn.strCondition: runs past the end of the record at offset 2"},
      {"30 0A 30 88 7F FF FF FF FF FF FF FD",
       "QAsnErrInfoList[0]: element runs past the end of its list (content length 10) at offset 2"},
      {"30 04 30 02 30 05 02 01 07 02 01 01",
       "QAsnErrInfoList[0].objID: length 5 runs past the end of the record (0 octets left in it) at offset 4"},
      {"30 08 30 02 02 01 07 02 01 07",
       "QAsnErrInfo.objID[0]: element runs past the end of its list (content length 2) at offset 4"},
      {"30 08 30 03 04 01 41 02 01 07",
       "QAsnErrInfo.objID[0]: wrong tag [UNIVERSAL 4] primitive (OCTET STRING), expected [UNIVERSAL 2] primitive "
       "(INTEGER) at offset 4"},
      {"30 08 30 00 02 01 07 80 01 41", "QAsnErrInfo: member objName out of order or repeated at offset 7"},
      {"30 05 04 01 41 04 02", "QAsnColumn: member strCondition out of order or repeated at offset 5"},
      {"30 00", "QAsnColumn: mandatory member strCondition missing at offset 0"},
      {"30 05 04 00 02 01 00",
       "QAsnColumn: content left over after the last member (tag [UNIVERSAL 2] primitive (INTEGER)) at offset 4"},
      {"30 02 04 00 00", "QAsnColumn: 1 octet left over after the value at offset 4"},
      {Nested(AsnDecodeLimits::kMaxDepth, "30 80"),
       "QAsnColumn.strCondition: constructed values nested deeper than 32 levels at offset 64"},
      {Nested(10000, "30 80"),  // without exhausting the stack
       "QAsnColumn.strCondition: constructed values nested deeper than 32 levels at offset 64"},
      {"30 09 04 01 41 02 01 05 02 01 05",
       "QAsnUniResID.strMOC: wrong tag [UNIVERSAL 2] primitive (INTEGER), expected [UNIVERSAL 4] primitive (OCTET "
       "STRING) at offset 5"},
      {"30 06 04 01 41 04 01 42", "QAsnUniResID: mandatory member neID missing at offset 0"},
      {"30 0E 04 01 41 04 01 42 02 01 05 80 01 43 80 00",
       "QAsnUniResID: member poSerialNum out of order or repeated at offset 14"},
      {"30 0B 04 01 41 04 01 42 02 01 05 85 00", "QAsnUniResID: unknown member with tag [5] primitive at offset 11"},
      {"30 06 04 01 41 04 04 42 42 42 42",
       "QAsnUniResID.strMOC: length 4 runs past the end of the record (1 octet left in it) at offset 5"},
      {"30 06 04 01 41 04 05 42",
       "QAsnUniResID.strMOC: length 5 runs past the end of the record (1 octet left in it) at offset 5"},
      {"30 10 04 01 41", "QAsnUniResID: input ends 13 octets short of the value at offset 5"},
      {"30 FF 00", "QAsnUniResID: length octet 0xFF is reserved at offset 0"},
      {"30 03 04 FF 00", "QAsnUniResID.strFDN: length octet 0xFF is reserved at offset 2"},
      {"30 89 01 00 00 00 00 00 00 00 00 02", "QAsnUniResID: length does not fit in 64 bits at offset 0"},
      {"30 08 04 00 04 00 1F 02 01 00",
       "QAsnUniResID: high tag number form used for tag number 2 (below 31) at offset 6"},
      {"30 0A 04 00 04 00 02 01 00 9F 00 00",
       "QAsnUniResID: high tag number form used for tag number 0 (below 31) at offset 9"},
      {"30 80 04 80 41 00 00 00 00",
       "QAsnUniResID.strFDN: indefinite length on a primitive OCTET STRING at offset 2"},
      {"30 80 04 00 04 00 02 80 05 00 00 00 00", "QAsnUniResID.neID: indefinite length on an INTEGER at offset 6"},
      {"30 80 04 01 41 04 01 42 02 01 05",
       "QAsnUniResID: input ends before the end-of-contents octets at offset 11"},
      {"30 80 04 01 41 04 01 42 02 01 05 00 01", "QAsnUniResID: end-of-contents octets are not 00 00 at offset 11"},
      {"30 04 9F 80 01 00", "QAsnUniResID: high tag number form with a leading 0x80 octet at offset 2"},
      {"3F 80 01 00", "QAsnUniResID: high tag number form with a leading 0x80 octet at offset 0"},
      {"30 06 9F 81 81 81 01 00", "QAsnUniResID: tag number does not fit in 32 bits at offset 2"},
      {"31 00",
       "QAsnUniResID: wrong tag [UNIVERSAL 17] constructed (SET), expected [UNIVERSAL 16] constructed (SEQUENCE) at "
       "offset 0"},
      {"", "QAsnUniResID: input ends before the tag at offset 0"},
      {"30 06 04 00 04 00 02 00", "QAsnUniResID.neID: INTEGER without content octets at offset 6"},
      {"30 08 04 00 04 00 02 02 00 05", "QAsnUniResID.neID: INTEGER content is not minimal at offset 6"},
      {"30 0B 04 00 04 00 02 05 01 00 00 00 00",
       "QAsnUniResID.neID: INTEGER of 5 octets does not fit (at most 4) at offset 6"},
      {"30 08 01 01 00 02 01 00 80 00",
       "CodecProbe.column: wrong tag [0] primitive, expected [0] constructed at offset 8"},
      {"30 0C 01 01 00 02 01 00 A0 02 04 01 41 00",
       "CodecProbe.column.strCondition: length 1 runs past the end of the record (0 octets left in it) at offset 10"},
      {"30 0B 01 01 00 02 01 00 A0 03 04 02 41",
       "CodecProbe.column.strCondition: length 2 runs past the end of the record (1 octet left in it) at offset 10"},
      {"30 0E 01 01 00 02 09 01 00 00 00 00 00 00 00 00",
       "CodecProbe.big: INTEGER of 9 octets does not fit (at most 8) at offset 5"},
      {"30 07 01 02 00 00 02 01 00", "CodecProbe.flag: BOOLEAN content is not one octet at offset 2"},
      {"30 08 01 01 00 22 03 02 01 00",
       "CodecProbe.big: wrong tag [UNIVERSAL 2] constructed (INTEGER), expected [UNIVERSAL 2] primitive (INTEGER) at "
       "offset 5"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.input.size() < 100 ? row.input : row.message);
    const std::string type(row.message, std::string_view(row.message).find_first_of(".[:"));
    const std::string octets = Hex(row.input);
    EXPECT_EQ(ThrownMessage([&] { DecodeExact(*Create(type), octets); }), row.message);
    const AsnCatalogueEntry* entry = Entry(type);
    if (entry == nullptr || entry->createElement == nullptr) continue;
    EXPECT_EQ(ThrownMessage([&] {
                AsnVisitEncodedList(octets, entry->createElement, entry->name, [](AsnType&, unsigned long) {});
              }),
              row.message)
        << "the stream";
  }
}

// Minimal two's complement, cross-checked with pyasn1's encoder: alone and as
// a record's member (the record encoder writes it on its own path). AsnTinyInt
// refuses what takes more than 32 bits.
TEST(BerVectors, IntegersAtEveryContentLength) {
  const std::pair<long long, const char*> cases[] = {
      {0, "00"},
      {-1, "FF"},
      {127, "7F"},
      {128, "00 80"},
      {-128, "80"},
      {-129, "FF 7F"},
      {32767, "7F FF"},
      {32768, "00 80 00"},
      {-32769, "FF 7F FF"},
      {INT_MAX, "7F FF FF FF"},
      {INT_MIN, "80 00 00 00"},
      {2147483648LL, "00 80 00 00 00"},
      {-2147483649LL, "FF 7F FF FF FF"},
      {LLONG_MAX, "7F FF FF FF FF FF FF FF"},
      {LLONG_MIN, "80 00 00 00 00 00 00 00"},
  };
  for (const auto& [number, content] : cases) {
    SCOPED_TRACE(number);
    const std::string tlv = '\x02' + std::string(1, static_cast<char>(Hex(content).size())) + Hex(content);
    EXPECT_EQ(ToHex(AsnEncodeValue(AsnInt(number))), ToHex(tlv));
    qprobe::CodecProbe probe;  // flag FALSE, big
    probe.big = number;
    EXPECT_EQ(ToHex(AsnEncodeValue(probe)), ToHex('\x30' + std::string(1, static_cast<char>(tlv.size() + 3)) +
                                                  Hex("01 01 00") + tlv));
    for (const char* type : {"AsnInt", "AsnTinyInt"}) {
      const std::unique_ptr<AsnType> back = Create(type);
      const bool fits = std::string(type) == "AsnInt" || (number >= INT_MIN && number <= INT_MAX);
      EXPECT_EQ(ThrownMessage([&] { DecodeExact(*back, tlv); }),
                fits ? "no exception"
                     : "AsnTinyInt: INTEGER of " + std::to_string(tlv.size() - 2) +
                           " octets does not fit (at most 4) at offset 0");
      if (fits) {
        EXPECT_EQ(AsnEncodeValue(*back), tlv);
      }
    }
    test_bytes::ExpectEveryPrefixRefused([] { return Create("AsnInt"); }, tlv);
  }
}

// One element too many is refused at that element, nested lists counting with
// the outer one; each decode has a budget of its own.
TEST(BerVectors, RefusesTheFirstListElementBeyondTheBudget) {
  const char* threePairs = "30 12 30 04 04 00 04 00 30 04 04 00 04 00 30 04 04 00 04 00";
  const char* errInfoList = "30 0D 30 0B 30 06 02 01 01 02 01 02 02 01 00";  // one entry, objID of two
  const struct {
    const char* type;
    const char* input;
    std::size_t maxListElements;
    const char* expected;
  } cases[] = {
      {"QAsnNVSList", threePairs, 3, "no exception"},
      {"QAsnNVSList", threePairs, 2, "QAsnNVSList[2]: more than 2 list elements, the decode's budget at offset 14"},
      {"QAsnNVSList", threePairs, 0, "QAsnNVSList[0]: more than 0 list elements, the decode's budget at offset 2"},
      {"QAsnNVSList", "30 00", 0, "no exception"},
      {"QAsnErrInfoList", errInfoList, 3, "no exception"},
      {"QAsnErrInfoList", errInfoList, 2,
       "QAsnErrInfoList[0].objID[1]: more than 2 list elements, the decode's budget at offset 9"},
      {"QAsnTinyIntList", "30 80 02 01 01 02 01 02 00 00", 1,
       "QAsnTinyIntList[1]: more than 1 list elements, the decode's budget at offset 5"},
      {"QAsnUniResID", "30 08 04 01 41 04 00 02 01 07", 0, "no exception"},
      {"QAsnErrInfoReturn", "30 0A 02 01 01 A0 05 30 03 30 00 02", 0,
       "QAsnErrInfoReturn.errInfoList[0]: more than 0 list elements, the decode's budget at offset 7"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.input);
    const std::unique_ptr<AsnType> value = Create(c.type);
    EXPECT_EQ(ThrownMessage([&] { AsnDecodeValue(*value, Hex(c.input), AsnDecodeBudget{c.maxListElements}); }),
              c.expected);
  }
  const std::string pairs = Hex(threePairs);
  const std::unique_ptr<AsnType> list = Create("QAsnNVSList");
  EXPECT_NE(ThrownMessage([&] { AsnDecodeValue(*list, pairs, AsnDecodeBudget{2}); }), "no exception");
  EXPECT_EQ(ThrownMessage([&] { AsnDecodeValue(*list, pairs); }), "no exception");
  EXPECT_EQ(AsnDecodeFront(*list, pairs + pairs.substr(0, 8), AsnDecodeBudget{3}), pairs.size());
}

// OCTET STRING prints as quoted text when it is UTF-8 text without control
// characters, else as hex; printing leaves the stream's fill alone.
TEST(BerVectors, Prints) {
  const std::pair<std::string, const char*> octs[] = {
      {"", "\"\""},
      {"say \"hi\"", "\"say \"\"hi\"\"\""},
      {std::string("a\0b", 3), "'610062'H"},
      {"\xFF\x0A", "'FF0A'H"},
      {"gr\xC3\xBC\xC3\x9F", "\"gr\xC3\xBC\xC3\x9F\""},
      {"\xC3\x28", "'C328'H"},  // a broken sequence
      {"\xC0\xAF", "'C0AF'H"},  // not the shortest form
      {"\xC2\x85", "'C285'H"},  // a C1 control
  };
  for (const auto& [content, printed] : octs) {
    std::ostringstream os;
    os << std::setfill('*');
    AsnOcts(content.data(), content.size()).Print(os, 0, false);
    EXPECT_EQ(os.str(), printed);
    EXPECT_EQ(os.fill(), '*');
  }
  std::ostringstream os;
  AsnTinyInt(-7).Print(os, 3, true);
  AsnInt(LLONG_MIN).Print(os, 0, false);
  AsnBool(true).Print(os, 0, false);
  AsnBool(false).Print(os, 0, false);
  qprobe::CodecProbe probe;
  AsnDecodeValue(probe, Hex("30 16 01 01 FF 02 02 FF 7F A0 03 04 01 63 A1 04 02 02 01 2C 9F 28 01 6E"));
  probe.Print(os, 0, false);
  EXPECT_EQ(os.str(),
            "-7-9223372036854775808TRUEFALSECodecProbe {\n  flag TRUE\n  big -129\n  column QAsnColumn {\n"
            "    strCondition \"c\"\n  }\n  codes {\n    - 300\n  }\n  note \"n\"\n}");
}

}  // namespace
