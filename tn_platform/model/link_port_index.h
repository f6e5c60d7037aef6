// ns_utilmib::CLinkPortIndex: one end of an external link, as the link
// manager keeps it.
//
// Fields, in declaration order (defaults of a new index in brackets):
//   nodeID      NE or ONE that holds the end point                    [0]
//   oneID       ONE at this link end                                  [0]
//   shelfNo     shelf of the end point, key "SH"                      [-1: none]
//   slotNo      slot of the end point, key "SL"                       [-1: none]
//   groupNo     port group; -1 means none                             [-1]
//   portID      port number                                           [0]
//   subGroupNo  sub-group; 0 and -1 both mean none                    [-1]
//   portKind    which fill operation filled the index (LinkPortKind)  [kNone]
//   strPortFDN  identifier text the index was taken from              [""]
//   strPortMOC  managed-object class of the end point                 [""]
// shelfNo, slotNo and portKind are set only by the fill operations.
//
// Fill operations: each reads an identifier already parsed by `parser`.
// nodeID from key "NE" (from "ONE" when there is no "NE"), portID from the
// key named like the operation's MOC ("PP", "LP", "SERIAL", "SUBIF"),
// groupNo from "GRP" (-1 when missing), subGroupNo from "SUBGRP" (0 when
// missing), shelfNo from "SH" and slotNo from "SL" (-1 when missing);
// strPortMOC becomes the parser's MOC and portKind the operation's kind.
// Fields of a missing key or of a VALUE that is not a decimal number get
// those fallbacks (nodeID and portID: 0). Each returns true when the
// identifier had both a node key and the port key.
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>
#include <string>

namespace FrameUtil {
class StrUIDParser;
}  // namespace FrameUtil

namespace ns_utilmib {

enum class LinkPortKind : std::int32_t { kNone = 0, kPhysical = 1, kLogical = 2, kSerial = 3, kSubInterface = 4 };

// The kinds by name, for code that reads or writes them as text: calls
// visit(name, kind) for each. Found by argument-dependent lookup, so generic
// code calls DescribeEnumerators(kind, visit) for any described enum.
template <class Visitor>
void DescribeEnumerators(LinkPortKind, Visitor&& visit) {
  visit("kNone", LinkPortKind::kNone);
  visit("kPhysical", LinkPortKind::kPhysical);
  visit("kLogical", LinkPortKind::kLogical);
  visit("kSerial", LinkPortKind::kSerial);
  visit("kSubInterface", LinkPortKind::kSubInterface);
}

class CLinkPortIndex {
 public:
  std::uint64_t nodeID = 0;
  std::uint64_t oneID = 0;
  std::int32_t shelfNo = -1;
  std::int32_t slotNo = -1;
  std::int32_t groupNo = -1;
  std::uint64_t portID = 0;
  std::int32_t subGroupNo = -1;
  LinkPortKind portKind = LinkPortKind::kNone;
  std::string strPortFDN;
  std::string strPortMOC;

  // The fields in declaration order, for code that walks a model's fields
  // (comparisons, JSON): calls visit(name, member pointer) for each.
  template <class Visitor>
  static void DescribeFields(Visitor&& visit) {
    visit("nodeID", &CLinkPortIndex::nodeID);
    visit("oneID", &CLinkPortIndex::oneID);
    visit("shelfNo", &CLinkPortIndex::shelfNo);
    visit("slotNo", &CLinkPortIndex::slotNo);
    visit("groupNo", &CLinkPortIndex::groupNo);
    visit("portID", &CLinkPortIndex::portID);
    visit("subGroupNo", &CLinkPortIndex::subGroupNo);
    visit("portKind", &CLinkPortIndex::portKind);
    visit("strPortFDN", &CLinkPortIndex::strPortFDN);
    visit("strPortMOC", &CLinkPortIndex::strPortMOC);
  }

  CLinkPortIndex() = default;
  CLinkPortIndex(const CLinkPortIndex&) = default;
  CLinkPortIndex& operator=(const CLinkPortIndex&) = default;
  ~CLinkPortIndex() = default;

  // A physical port: port key "PP".
  bool FromPPUni(const FrameUtil::StrUIDParser& parser);
  // A logical (LMP) port: port key "LP".
  bool FromLMPUni(const FrameUtil::StrUIDParser& parser);
  // A serial port: port key "SERIAL".
  bool FromSerialPUni(const FrameUtil::StrUIDParser& parser);
  // A sub-interface: port key "SUBIF".
  bool FromSubIfUni(const FrameUtil::StrUIDParser& parser);

  bool operator==(const CLinkPortIndex& other) const;
  bool operator!=(const CLinkPortIndex& other) const { return !(*this == other); }

 private:
  bool FillFrom(const FrameUtil::StrUIDParser& parser, const char* portKey, LinkPortKind kind);
};

}  // namespace ns_utilmib
#pragma GCC visibility pop
