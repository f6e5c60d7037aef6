// ns_utilmib::TNCPPortIndex: the server's address of a port.
//
// Four levels, two sub-levels (level 3's first, then level 2's) and a text
// that travels with the index. A new index, and one after Init(), has levels
// 0, sub-levels -1 (none) and an empty text. Indexes order lexicographically
// over the fields in declaration order, so they can key an ordered map.
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>
#include <string>

namespace ns_utilmib {

struct TNCPPortIndex {
  std::uint64_t level1ID = 0;
  std::uint64_t level2ID = 0;
  std::uint64_t level3ID = 0;
  std::uint64_t level4ID = 0;
  std::int32_t level3SubID = -1;  // -1: no sub-level
  std::int32_t level2SubID = -1;  // -1: no sub-level
  std::string strIndexText;

  // The fields in declaration order, for code that walks a model's fields
  // (comparisons, JSON): calls visit(name, member pointer) for each.
  template <class Visitor>
  static void DescribeFields(Visitor&& visit) {
    visit("level1ID", &TNCPPortIndex::level1ID);
    visit("level2ID", &TNCPPortIndex::level2ID);
    visit("level3ID", &TNCPPortIndex::level3ID);
    visit("level4ID", &TNCPPortIndex::level4ID);
    visit("level3SubID", &TNCPPortIndex::level3SubID);
    visit("level2SubID", &TNCPPortIndex::level2SubID);
    visit("strIndexText", &TNCPPortIndex::strIndexText);
  }

  // Puts the index back to the state of a new one.
  void Init();

  // Lexicographic over level1ID, level2ID, level3ID, level4ID, level3SubID,
  // level2SubID, strIndexText.
  bool operator<(const TNCPPortIndex& other) const;
  bool operator==(const TNCPPortIndex& other) const;
  bool operator!=(const TNCPPortIndex& other) const { return !(*this == other); }
};

}  // namespace ns_utilmib
#pragma GCC visibility pop
