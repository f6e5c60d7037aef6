// The streaming list reader refuses what the whole-value decode refuses, with
// the same message (path, what, offset), and reads lists of any length in a
// window bounded by the largest element.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/test_bytes.h"
#include "tn_platform/asn/asn_ber_list_reader.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_qmodules/asn_catalogue.h"

namespace {

// The message of reading every element of `octets` with the stream.
std::string StreamRefusal(const AsnCatalogueEntry& entry, const std::string& octets) {
  return test_bytes::ThrownMessage([&] {
    AsnVisitEncodedList(octets, entry.createElement, entry.name, [](AsnType&, unsigned long) {});
  });
}

std::string WholeRefusal(const AsnCatalogueEntry& entry, const std::string& octets) {
  const std::unique_ptr<AsnType> list(entry.create());
  return test_bytes::ThrownMessage([&] { AsnDecodeValue(*list, octets); });
}

TEST(AsnBerListReader, RefusesAsTheWholeValueDecodeDoes) {
  const struct {
    const char* type;
    const char* hex;
  } cases[] = {
      {"QAsnTinyIntList", ""},                             // nothing
      {"QAsnTinyIntList", "31 00"},                        // wrong outer tag
      {"QAsnTinyIntList", "30"},                           // ends in the length
      {"QAsnTinyIntList", "30 84 00 00"},                  // ends in a long length
      {"QAsnTinyIntList", "30 04 02 01 05"},               // ends short of the length
      {"QAsnTinyIntList", "30 03 02 02 05 00"},            // element runs past the list
      {"QAsnTinyIntList", "30 06 02 01 05 02 01"},         // last element cut
      {"QAsnTinyIntList", "30 04 02 02 00 05"},            // INTEGER not minimal
      {"QAsnTinyIntList", "30 03 04 01 05"},               // element of the wrong type
      {"QAsnTinyIntList", "30 03 02 01 05 FF"},            // one octet left over
      {"QAsnTinyIntList", "30 03 02 01 05 FF FF FF"},      // three left over
      {"QAsnTinyIntList", "30 80 02 01 05"},               // no end-of-contents
      {"QAsnTinyIntList", "30 80 02 01 05 00"},            // ends in the end-of-contents
      {"QAsnTinyIntList", "30 80 02 01 05 00 01"},         // end-of-contents not 00 00
      {"QAsnTinyIntList", "30 80 02 01 05 00 00 07"},      // left over after indefinite
      {"QAsnNVSList", "30 05 30 03 04 01 61"},             // element without its mandatory member
      {"QAsnNVSList", "30 09 30 07 04 01 61 04 00 04 00"}, // element longer than its content
      {"QAsnNVSList", "30 08 30 80 04 01 61 04 00"},       // indefinite element cut
      {"QAsnNVSList", "30 07 30 05 04 01 61 04 05"},       // inner length past the element
      {"QAsnErrInfoList", "30 08 30 06 30 04 02 02 00 01"},  // nested list's INTEGER not minimal
      {"QAsnNVSList", "30 69 30 00 06 73 7D EF"},          // an empty element in a list that runs past the input
  };
  for (const auto& row : cases) {
    const AsnCatalogueEntry* entry = AsnCatalogue::Find(row.type);
    ASSERT_NE(entry, nullptr);
    const std::string octets = test_bytes::Hex(row.hex);
    const std::string whole = WholeRefusal(*entry, octets);
    EXPECT_NE(whole, "no exception") << row.hex;
    EXPECT_EQ(StreamRefusal(*entry, octets), whole) << row.hex;
  }
  // The element is at fault, not the list around it (a record that never read
  // a member once blamed the list's header).
  const AsnCatalogueEntry* nvs = AsnCatalogue::Find("QAsnNVSList");
  EXPECT_EQ(WholeRefusal(*nvs, test_bytes::Hex("30 69 30 00 06 73 7D EF")),
            "QAsnNVSList[0]: mandatory member name missing at offset 2");
}

TEST(AsnBerListReader, ReadsIndefiniteAndLongLists) {
  const AsnCatalogueEntry* entry = AsnCatalogue::Find("QAsnTinyIntList");
  ASSERT_NE(entry, nullptr);
  std::string content;
  for (int i = 0; i < 100000; ++i) content += test_bytes::Hex("02 01") + static_cast<char>(i % 100);
  const std::string indefinite = test_bytes::Hex("30 80") + content + std::string(2, '\0');
  unsigned long count = 0;
  long long sum = 0;
  AsnVisitEncodedList(indefinite, entry->createElement, entry->name, [&](AsnType& element, unsigned long index) {
    EXPECT_EQ(index, count++);
    sum += static_cast<AsnTinyInt&>(element).Value();
  });
  EXPECT_EQ(count, 100000u);
  EXPECT_EQ(sum, 1000LL * 4950);
}

}  // namespace
