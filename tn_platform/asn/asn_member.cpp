#include "tn_platform/asn/asn_member.h"

std::vector<AsnMember> AsnMembersOf(const AsnSequence& record) {
  refl::CRefrence reference;
  record.BindReflection(reference);
  std::vector<AsnMember> members;
  for (const auto& attribute : reference.ClassInfor()->Attributes())
    members.emplace_back(attribute, reference.Object());
  return members;
}
