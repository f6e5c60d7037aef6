// Records compiled from module texts: the test module tests/qprobe/qprobe.asn,
// of which nothing is written by hand, encodes, decodes and is catalogued like
// the project's own modules.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/qprobe/qprobe.h"
#include "tests/test_bytes.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/asn_catalogue.h"

namespace {

using test_bytes::Hex;
using test_bytes::ToHex;

// Every member form: a BOOLEAN, 32- and 64-bit INTEGERs, an OCTET STRING, an
// imported record, optional members absent and present, an optional list of
// records of this module.
TEST(RecordCompiler, TestModuleEncodesAndDecodes) {
  qprobe::QProbeRecord empty;
  qprobe::QProbeRecord full;
  full.flag.Set(true);
  full.count.Set(-2);
  full.total.Set(std::int64_t{1} << 40);
  full.label.Set("L");
  full.owner.strFDN.Set("NE=1");
  full.owner.strMOC.Set("NE");
  full.owner.neID.Set(1);
  full.limit.GetOrCreate().Set(300);
  qprobe::QProbePart* part = full.parts.GetOrCreate().Append();
  part->name.Set("a");
  part->weight.Set(-1);

  // The bytes an independent toolkit writes for the same text and values.
  const struct {
    qprobe::QProbeRecord* value;
    const char* der;
  } rows[] = {
      {&empty, "30140101000201000201000400300704000400020100"},
      {&full,
       "302e0101ff0201fe020601000000000004014c300d04044e453d3104024e450201018102012ca30830060401610201ff"},
  };
  for (const auto& row : rows) {
    const std::string bytes = AsnEncodeValue(*row.value);
    EXPECT_EQ(ToHex(bytes), ToHex(Hex(row.der)));
    qprobe::QProbeRecord back;
    AsnDecodeValue(back, bytes);
    EXPECT_EQ(AsnEncodeValue(back), bytes);
  }
}

// A module library adds its types to the catalogue when it is loaded; the
// records themselves need nothing of it (their code is in the header), so
// a program that only catalogues a module loads it, as `velkor --module` does.
TEST(RecordCompiler, TestModuleIsCataloguedWhenLoaded) {
  ASSERT_NE(dlopen(TN_QPROBE_LIBRARY, RTLD_NOW), nullptr) << dlerror();
  const AsnCatalogueEntry* record = AsnCatalogue::Find("QProbeRecord");
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(record->module, "qprobe");
  EXPECT_EQ(record->createElement, nullptr);
  const std::unique_ptr<AsnType> made(record->create());
  EXPECT_STREQ(made->typeName(), "QProbeRecord");

  const struct {
    const char* list;
    const char* element;
  } lists[] = {{"QProbePartList", "QProbePart"},
               {"QProbeLabels", "AsnOcts"},
               {"QKindOids", "AsnOid"},
               {"QKindShades", "QKindShades_element"}};
  for (const auto& row : lists) {
    const AsnCatalogueEntry* entry = AsnCatalogue::Find(row.list);
    ASSERT_NE(entry, nullptr) << row.list;
    EXPECT_EQ(entry->elementName, row.element);
    ASSERT_NE(entry->createElement, nullptr);
    const std::unique_ptr<AsnType> element(entry->createElement());
    EXPECT_STREQ(element->typeName(), row.element);
  }
}

}  // namespace
