#include "tn_platform/model/link_port_index.h"

#include "tn_platform/model/described_fields.h"
#include "tn_platform/uid/str_uid_parser.h"

namespace ns_utilmib {
namespace {

// The VALUE of `key` as a 32-bit field, `fallback` when there is none: the
// parser leaves the number alone when the key is missing or not a number.
std::int32_t ReadField(const FrameUtil::StrUIDParser& parser, const char* key, std::int32_t fallback) {
  std::uint64_t value = 0;
  if (!parser.GetValue(value, key, 0)) return fallback;
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

}  // namespace

bool CLinkPortIndex::FillFrom(const FrameUtil::StrUIDParser& parser, const char* portKey, LinkPortKind kind) {
  nodeID = 0;
  const bool hasNode = parser.GetValue(nodeID, "NE", 0) || parser.GetValue(nodeID, "ONE", 0);
  portID = 0;
  const bool hasPort = parser.GetValue(portID, portKey, 0);
  shelfNo = ReadField(parser, "SH", -1);
  slotNo = ReadField(parser, "SL", -1);
  groupNo = ReadField(parser, "GRP", -1);
  subGroupNo = ReadField(parser, "SUBGRP", 0);
  portKind = kind;
  strPortMOC = parser.GetMOC();
  return hasNode && hasPort;
}

bool CLinkPortIndex::FromPPUni(const FrameUtil::StrUIDParser& parser) {
  return FillFrom(parser, "PP", LinkPortKind::kPhysical);
}

bool CLinkPortIndex::FromLMPUni(const FrameUtil::StrUIDParser& parser) {
  return FillFrom(parser, "LP", LinkPortKind::kLogical);
}

bool CLinkPortIndex::FromSerialPUni(const FrameUtil::StrUIDParser& parser) {
  return FillFrom(parser, "SERIAL", LinkPortKind::kSerial);
}

bool CLinkPortIndex::FromSubIfUni(const FrameUtil::StrUIDParser& parser) {
  return FillFrom(parser, "SUBIF", LinkPortKind::kSubInterface);
}

bool CLinkPortIndex::operator==(const CLinkPortIndex& other) const { return FieldsEqual(*this, other); }

}  // namespace ns_utilmib
