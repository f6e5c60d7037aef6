// Fiber information templates: masks to template records and back.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "convert/ns_velkor.h"
#include "platform/asn/asn_value_io.h"

namespace {

using qinventoryfiber::QAsnFiberInfoTemplate;
using Column = refl::MayNullPointer<qcommon::QAsnColumn>;

// Column n+1 of a record stands for bit n.
constexpr Column QAsnFiberInfoTemplate::*kColumns[12] = {
    &QAsnFiberInfoTemplate::column1,  &QAsnFiberInfoTemplate::column2,  &QAsnFiberInfoTemplate::column3,
    &QAsnFiberInfoTemplate::column4,  &QAsnFiberInfoTemplate::column5,  &QAsnFiberInfoTemplate::column6,
    &QAsnFiberInfoTemplate::column7,  &QAsnFiberInfoTemplate::column8,  &QAsnFiberInfoTemplate::column9,
    &QAsnFiberInfoTemplate::column10, &QAsnFiberInfoTemplate::column11, &QAsnFiberInfoTemplate::column12};

// Presence of the twelve columns as a mask, read without the converter.
std::uint64_t PresentColumns(const QAsnFiberInfoTemplate& record) {
  std::uint64_t mask = 0;
  for (int n = 0; n < 12; ++n)
    if (!(record.*kColumns[n]).IsNull()) mask |= std::uint64_t{1} << n;
  return mask;
}

TEST(Convert2QAsnFiberInfoTemplate, MasksOnAnEmptyRecord) {
  struct Case {
    std::uint64_t mask;
    std::uint64_t present;
  };
  const Case cases[] = {
      {0, 0},
      {0xFFF, 0xFFF},
      {0x1, 0x1},
      {0x800, 0x800},
      {0x804, 0x804},
      {0x1000, 0},                   // bit 12: no column
      {~std::uint64_t{0} << 12, 0},  // bits 12 to 63
      {~std::uint64_t{0}, 0xFFF},
  };
  for (const Case& test : cases) {
    QAsnFiberInfoTemplate record;
    ns_velkor::Convert2QAsnFiberInfoTemplate(test.mask, record);
    EXPECT_EQ(PresentColumns(record), test.present) << std::hex << test.mask;
    for (int n = 0; n < 12; ++n) {
      if (!(record.*kColumns[n]).IsNull()) {
        EXPECT_EQ((record.*kColumns[n])->strCondition.Len(), 0u);
      }
    }
    std::uint64_t back = 0xDEAD;
    ns_velkor::Convert2FiberInfoTemplateType(record, back);
    EXPECT_EQ(back, test.present) << std::hex << test.mask;
  }
}

TEST(Convert2QAsnFiberInfoTemplate, AddsAndNeverRemoves) {
  QAsnFiberInfoTemplate record;
  record.column2.GetOrCreate();
  ns_velkor::Convert2QAsnFiberInfoTemplate(0x1, record);
  std::uint64_t mask = 0;
  ns_velkor::Convert2FiberInfoTemplateType(record, mask);
  EXPECT_EQ(mask, 0x3u);

  ns_velkor::Convert2QAsnFiberInfoTemplate(0, record);
  EXPECT_EQ(PresentColumns(record), 0x3u);
}

TEST(Convert2QAsnFiberInfoTemplate, SelectedColumnKeepsItsCondition) {
  QAsnFiberInfoTemplate record;
  record.column1.GetOrCreate().strCondition.Set("length > 10");
  ns_velkor::Convert2QAsnFiberInfoTemplate(0x1, record);
  EXPECT_EQ(record.column1->strCondition.view(), "length > 10");
}

TEST(Convert2FiberInfoTemplateType, PresenceAloneCountsAndTheMaskIsReplaced) {
  struct Case {
    std::uint64_t present;
    std::uint64_t before;
  };
  const Case cases[] = {{0, 0xFFFF}, {0x804, 0}, {0x804, 0x1000}, {0xFFF, 0}, {0x400, 0x3}};
  for (const Case& test : cases) {
    QAsnFiberInfoTemplate record;
    for (int n = 0; n < 12; ++n)
      if ((test.present >> n) & 1U) (record.*kColumns[n]).GetOrCreate().strCondition.Set("c");
    // What the converter reads must survive the wire as well.
    QAsnFiberInfoTemplate decoded;
    AsnDecodeValue(decoded, AsnEncodeValue(record));
    std::uint64_t mask = test.before;
    ns_velkor::Convert2FiberInfoTemplateType(decoded, mask);
    EXPECT_EQ(mask, test.present) << std::hex << test.present;
  }
}

}  // namespace
