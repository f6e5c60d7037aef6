#include "tn_platform/asn/asn_member.h"

std::vector<AsnMember> AsnMembersOf(const AsnSequence& record) {
  const AsnRecordPlan& plan = record.Plan();
  // The plan's offsets are from the start of the record's own class, which is
  // also where its AsnSequence part starts (single, non-virtual inheritance).
  void* object = const_cast<AsnSequence*>(&record);
  std::vector<AsnMember> members;
  members.reserve(plan.members.size());
  for (const AsnMemberStep& step : plan.members) members.emplace_back(step, object);
  return members;
}
