// AsnRecordPlan: what the record codec needs of a record class, worked out
// once from its registered description: for every member its kind, the tag it
// travels with, where it sits in the object, whether it is optional and how
// an optional one is made and destroyed. Encoding and decoding then run down
// this plan instead of asking the reflection description for every member of
// every record they handle.
#pragma once
#pragma GCC visibility push(default)

#include <string>
#include <vector>

#include "tn_platform/asn/asn_member.h"
#include "tn_platform/asn/ber.h"
#include "tn_platform/refl/class_infor.h"

struct AsnMemberStep {
  AsnMemberKind kind;
  bool optional;
  AsnTag tag;          // the tag the member is encoded with
  AsnTag otherForm;    // also accepted on input (an OCTET STRING's constructed form), else == tag
  unsigned short offset;
  refl::CreateFunction create;    // optional members: makes the value
  refl::DestroyFunction destroy;  // optional members: destroys it
  const std::string* name;

  bool Matches(AsnTag candidate) const { return candidate == tag || candidate == otherForm; }
};

struct AsnRecordPlan {
  explicit AsnRecordPlan(const refl::CClassInfor& infor);

  const std::string* className;
  std::vector<AsnMemberStep> members;
};
#pragma GCC visibility pop
