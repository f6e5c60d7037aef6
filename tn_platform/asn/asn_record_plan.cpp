#include "tn_platform/asn/asn_record_plan.h"

AsnRecordPlan::AsnRecordPlan(const refl::CClassInfor& infor) : className(infor.Name().c_str()) {
  members.reserve(infor.Attributes().size());
  for (const refl::CAttribInfor& attribute : infor.Attributes()) {
    const AsnMemberKind kind = AsnMemberKindOf(attribute.type);
    const bool optional = attribute.type.IsMayNull();
    const AsnTag tag = AsnMemberTag(kind, optional, attribute.number);
    const AsnTag otherForm = kind == AsnMemberKind::kOcts ? TagWithForm(tag, true) : tag;
    Add(AsnMemberStep{kind, optional, tag, otherForm, attribute.position, attribute.type.Creator(),
                      attribute.type.Destroyer(), attribute.name.c_str()});
  }
}
