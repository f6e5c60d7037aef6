#include "tn_platform/asn/asn_record_plan.h"

#include <cstring>

AsnTag AsnMemberTag(AsnMemberKind kind, bool optional, short number) {
  const bool constructed = kind == AsnMemberKind::kList || kind == AsnMemberKind::kRecord;
  if (optional) return MakeTag(AsnTagClass::kContext, constructed, static_cast<unsigned>(number));
  switch (kind) {
    case AsnMemberKind::kOcts:
      return kTagOctetString;
    case AsnMemberKind::kTinyInt:
    case AsnMemberKind::kInt:
      return kTagInteger;
    case AsnMemberKind::kBool:
      return kTagBoolean;
    default:
      return kTagSequence;
  }
}

const AsnMemberStep* AsnRecordPlan::Find(const char* name) const {
  for (const AsnMemberStep& step : members) {
    if (std::strcmp(step.name, name) == 0) return &step;
  }
  return nullptr;
}
