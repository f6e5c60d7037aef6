#include "tn_platform/asn/asn_record_plan.h"

bool AsnStepTakes(const AsnMemberStep& step, AsnTag tag) {
  if (step.Matches(tag) || step.TakesAnyTag()) return true;
  return step.IsUntaggedChoice() && step.plan().ChoiceTakes(tag);
}

std::size_t AsnRecordPlan::MemberTaking(AsnTag tag) const {
  std::size_t index = 0;
  while (index < members.size() && !AsnStepTakes(members[index], tag)) ++index;
  return index;
}

AsnTag AsnRecordPlan::LeastTag() const {
  AsnTag least = 0;
  for (std::size_t index = 0; index < members.size(); ++index) {
    const AsnMemberStep& step = members[index];
    const AsnTag tag = step.IsUntaggedChoice() ? step.plan().LeastTag() : step.tag;
    if (index == 0 || AsnTagOrderLess(tag, least)) least = tag;
  }
  return least;
}
