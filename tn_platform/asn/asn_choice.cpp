#include "tn_platform/asn/asn_choice.h"

#include <string>

#include "tn_platform/asn/asn_any.h"
#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_list_base.h"

namespace {

// Makes every alternative absent, the unknown one included.
void ClearAlternatives(const AsnRecordPlan& plan, void* choice) {
  for (const AsnMemberStep& step : plan.members) step.ResetIn(choice);
  if (plan.extensible) plan.ExtensionsIn(choice)->ClearElements();
}

}  // namespace

std::size_t AsnChoice::Which() const {
  const AsnRecordPlan& plan = Plan();
  void* const base = const_cast<AsnChoice*>(this);
  for (std::size_t index = 0; index < plan.members.size(); ++index) {
    if (plan.members[index].ValueIn(base) != nullptr) return index;
  }
  if (plan.extensible && plan.ExtensionsIn(base)->Count() != 0) return kUnknown;
  return kNone;
}

AsnType& AsnChoice::Choose(std::size_t index) {
  const AsnRecordPlan& plan = Plan();
  const AsnMemberStep& chosen = plan.members.at(index);
  void* const base = this;
  for (const AsnMemberStep& step : plan.members) {
    if (&step != &chosen) step.ResetIn(base);
  }
  if (plan.extensible) plan.ExtensionsIn(base)->ClearElements();
  return *chosen.ValueOrCreateIn(base);
}

void AsnChoice::DecodeAlternative(AsnBuf& buf, const AsnHeader& header) {
  const AsnRecordPlan& plan = Plan();
  void* const base = this;
  ClearAlternatives(plan, base);
  const std::size_t index = header.tag == 0 ? plan.members.size() : plan.MemberTaking(header.tag);
  if (index == plan.members.size()) {
    if (!plan.extensible || header.tag == 0) {
      AsnThrowDecodeError(header.start,
                          "wrong tag " + TagDescription(header.tag) + ", expected an alternative of " + plan.className);
    }
    buf.CountListElement();  // an element of the unknown list, within the decode's budget
    static_cast<AsnAny&>(plan.ExtensionsIn(base)->AppendElement()).DecodeContent(buf, header.tag, header.length);
    return;
  }
  const AsnMemberStep& step = plan.members[index];
  try {
    unsigned long counted = 0;
    AsnDecodeMemberValue(buf, step, step.ValueOrCreateIn(base), header, counted);
  } catch (AsnDecodeError* error) {
    error->AddMember(step.name);
    throw;
  }
}

void AsnThrowNoAlternative(const AsnChoice& choice) {
  const std::string what = std::string("CHOICE ") + choice.typeName() + " has no alternative to encode";
  throw new CSM_Exception(kAsnDecodeError, 2, "", "asn_choice", what.c_str(), nullptr);
}
