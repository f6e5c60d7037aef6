// Fiber information templates: masks to template records and back.
#include <gtest/gtest.h>

#include <cstdint>

#include "tn_platform/asn/asn_member.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_velkor/ns_velkor.h"

namespace {

using qinventoryfiber::QAsnFiberInfoTemplate;

// Presence of the columns as a mask, read without the converter: the record's
// members in order, member n standing for bit n.
std::uint64_t PresentColumns(const QAsnFiberInfoTemplate& record) {
  std::uint64_t mask = 0;
  int n = 0;
  for (const AsnMember& column : AsnMembersOf(record)) {
    if (column.Value() != nullptr) mask |= std::uint64_t{1} << n;
    ++n;
  }
  return mask;
}

// Each mask onto an empty record and back (through BER, onto a stale mask).
TEST(Convert2QAsnFiberInfoTemplate, MasksOnAnEmptyRecordAndBack) {
  const std::uint64_t cases[][2] = {
      {0, 0},
      {0xFFF, 0xFFF},
      {0x1, 0x1},
      {0x800, 0x800},
      {0x804, 0x804},
      {0x1000, 0},                 // bit 12: no column
      {~std::uint64_t{0}, 0xFFF},  // bits 12 to 63 ignored
  };
  for (const auto& [mask, present] : cases) {
    SCOPED_TRACE(mask);
    QAsnFiberInfoTemplate record;
    ns_velkor::Convert2QAsnFiberInfoTemplate(mask, record);
    EXPECT_EQ(PresentColumns(record), present);
    QAsnFiberInfoTemplate decoded;
    AsnDecodeValue(decoded, AsnEncodeValue(record));
    std::uint64_t back = 0xF000 | ~present;  // replaced, not combined
    ns_velkor::Convert2FiberInfoTemplateType(decoded, back);
    EXPECT_EQ(back, present);
  }
}

// 0x1 onto a record already holding column2 gives 0x3; nothing is removed and
// a selected column that is present keeps its condition.
TEST(Convert2QAsnFiberInfoTemplate, AddsAndNeverRemoves) {
  QAsnFiberInfoTemplate record;
  record.column2.GetOrCreate().strCondition.Set("length > 10");
  ns_velkor::Convert2QAsnFiberInfoTemplate(0x1, record);
  std::uint64_t mask = 0;
  ns_velkor::Convert2FiberInfoTemplateType(record, mask);
  EXPECT_EQ(mask, 0x3u);
  ns_velkor::Convert2QAsnFiberInfoTemplate(0x2, record);
  ns_velkor::Convert2QAsnFiberInfoTemplate(0, record);
  EXPECT_EQ(PresentColumns(record), 0x3u);
  EXPECT_EQ(record.column1->strCondition.Len(), 0u);
  EXPECT_EQ(record.column2->strCondition.view(), "length > 10");
}

}  // namespace
