#include "platform/asn/asn_member.h"

AsnMemberKind AsnMemberKindOf(const refl::CGnlTypeInfor& type) {
  if (type.KindCode() == refl::kKindClass) return AsnMemberKind::kRecord;
  switch (type.CustomId()) {
    case kAsnOctsClassId:
      return AsnMemberKind::kOcts;
    case kAsnTinyIntClassId:
      return AsnMemberKind::kTinyInt;
    case kAsnIntClassId:
      return AsnMemberKind::kInt;
    case kAsnBoolClassId:
      return AsnMemberKind::kBool;
    case kAsnSeqOfClassId:
      return AsnMemberKind::kList;
    default:
      return AsnMemberKind::kUnsupported;
  }
}

std::vector<AsnMember> AsnMembersOf(const AsnSequence& record) {
  refl::CRefrence reference;
  record.BindReflection(reference);
  std::vector<AsnMember> members;
  for (const auto& attribute : reference.ClassInfor()->Attributes())
    members.emplace_back(attribute, reference.Object());
  return members;
}
