// The member plan of a record class: the one model of a record's members that
// every generic operation runs on (encoding, decoding, printing, assignment,
// and programs that walk records generically). Made once per class from the
// same member lines that register the class with the reflection library, so
// the two cannot disagree.
#pragma once
#pragma GCC visibility push(default)

#include <vector>

#include "tn_platform/asn/asn_type.h"
#include "tn_platform/asn/ber.h"
#include "tn_platform/refl/may_null_pointer.h"
#include "tn_platform/refl/object_functions.h"
#include "tn_platform/refl/type_infor.h"

// What a member's value is, as the codec sees it: the kinds it handles
// itself, and kPrimitive, a value that carries its own codec (AsnPrimitive,
// asn_primitive.h: NULL, BIT STRING, REAL, the strings, the times, ...).
enum class AsnMemberKind { kOcts, kTinyInt, kInt, kBool, kList, kRecord, kPrimitive };

// The universal tag a value of `kind` carries on its own (a list element, a
// mandatory member, a whole value); a kPrimitive value says its own.
constexpr AsnTag AsnUniversalTag(AsnMemberKind kind) {
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
// The tag a member of `kind` travels with (ber.h's AsnMemberTag).
constexpr AsnTag AsnMemberTag(AsnMemberKind kind, bool optional, short number) {
  return AsnMemberTag(AsnUniversalTag(kind), optional, number);
}

// One member of a record class.
struct AsnMemberStep {
  const char* name;      // the member's identifier ("strFDN")
  const char* typeName;  // its value's type name ("AsnOcts", "QAsnUniResID", "QAsnNVSList")
  AsnMemberKind kind;
  bool optional;         // held in a refl::MayNullPointer, absent when empty
  short number;          // -1 for a mandatory member, else its context tag number
  AsnTag tag;            // the tag the member is encoded with
  AsnTag otherForm;      // also accepted on input (an OCTET STRING's constructed form), else == tag
  unsigned short offset;  // where the member sits in the record
  refl::CreateFunction create;    // makes a default value (an optional member's, when it becomes present)
  refl::DestroyFunction destroy;  // destroys a value made by `create`

  bool Matches(AsnTag candidate) const { return candidate == tag || candidate == otherForm; }
  // A mandatory open value (AsnAny): any tag is its.
  bool TakesAnyTag() const { return tag == kAsnOpenTag; }
  bool IsConstructed() const { return kind == AsnMemberKind::kList || kind == AsnMemberKind::kRecord; }

  // The member's value in the record at `record`: the member itself, or what
  // its holder holds (null when an optional member is absent).
  AsnType* ValueIn(void* record) const {
    if (optional) return static_cast<AsnType*>(HolderIn(record)->RawObject());
    return reinterpret_cast<AsnType*>(static_cast<char*>(record) + offset);
  }
  // The value, made (with its defaults) when an optional member is absent.
  AsnType* ValueOrCreateIn(void* record) const {
    if (optional && HolderIn(record)->IsNull()) HolderIn(record)->RawAdopt(create());
    return ValueIn(record);
  }
  // Makes an optional member absent, destroying what it held.
  void ResetIn(void* record) const {
    if (void* held = HolderIn(record)->RawRelease()) destroy(held);
  }

 private:
  refl::MayNullPointerBase* HolderIn(void* record) const {
    return reinterpret_cast<refl::MayNullPointerBase*>(static_cast<char*>(record) + offset);
  }
};

struct AsnRecordPlan {
  explicit AsnRecordPlan(const char* name) : className(name) {}

  void Add(const AsnMemberStep& step) {
    members.push_back(step);
    hasOptional = hasOptional || step.optional;
  }

  const char* className;  // the registered class name
  std::vector<AsnMemberStep> members;  // in declaration order
  bool hasOptional = false;
};
#pragma GCC visibility pop
