// ns_utilmib::TEFiberEnd: one end of a fiber cable, held by value twice in a
// TEFiberCable. It carries the values of a port index under the same names,
// in an order of its own (level 2 before level 1, each sub-level after its
// level).
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>
#include <string>

namespace ns_utilmib {

class TEFiberEnd {
 public:
  std::uint64_t level2ID = 0;     // second level of the port address
  std::uint64_t level1ID = 0;     // first level
  std::int32_t level2SubID = -1;  // sub-level of level 2; -1: none
  std::uint64_t level3ID = 0;     // third level
  std::int32_t level3SubID = -1;  // sub-level of level 3; -1: none
  std::uint64_t level4ID = 0;     // fourth level
  std::string strIndexText;       // text of the port index

  // The fields in declaration order, for code that walks a model's fields
  // (comparisons, JSON): calls visit(name, member pointer) for each.
  template <class Visitor>
  static void DescribeFields(Visitor&& visit) {
    visit("level2ID", &TEFiberEnd::level2ID);
    visit("level1ID", &TEFiberEnd::level1ID);
    visit("level2SubID", &TEFiberEnd::level2SubID);
    visit("level3ID", &TEFiberEnd::level3ID);
    visit("level3SubID", &TEFiberEnd::level3SubID);
    visit("level4ID", &TEFiberEnd::level4ID);
    visit("strIndexText", &TEFiberEnd::strIndexText);
  }

  // Puts the end back to its initial state (levels 0, sub-levels -1, no text).
  void Init() { *this = TEFiberEnd(); }
};

}  // namespace ns_utilmib
#pragma GCC visibility pop
