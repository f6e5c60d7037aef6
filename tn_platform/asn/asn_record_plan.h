// AsnRecordPlan: what the record codec needs of a record class, made once: for
// every member its kind, the tag it travels with, where it sits in the object,
// whether it is optional and how an optional one is made and destroyed.
// Encoding and decoding run down this plan instead of asking the reflection
// description for every member of every record they handle. A record class
// makes its plan from its member lines (AsnMemberLines); a plan can also be
// worked out from any registered description.
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
  const char* name;

  bool Matches(AsnTag candidate) const { return candidate == tag || candidate == otherForm; }
};

struct AsnRecordPlan {
  // An empty plan, for Add().
  explicit AsnRecordPlan(const char* name) : className(name) {}
  // The plan of a registered class.
  explicit AsnRecordPlan(const refl::CClassInfor& infor);

  void Add(const AsnMemberStep& step) {
    members.push_back(step);
    hasOptional = hasOptional || step.optional;
  }

  const char* className;
  std::vector<AsnMemberStep> members;
  bool hasOptional = false;
};
#pragma GCC visibility pop
