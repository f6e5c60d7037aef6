// The member plan of a record class: the one model of a record's members that
// every generic operation runs on (encoding, decoding, printing, assignment,
// and programs that walk records generically). Made once per class from the
// same member lines that register the class with the reflection library, so
// the two cannot disagree.
#pragma once
#pragma GCC visibility push(default)

#include <memory>
#include <string>
#include <vector>

#include "tn_platform/asn/asn_bounds.h"
#include "tn_platform/asn/asn_tagging.h"
#include "tn_platform/asn/asn_type.h"
#include "tn_platform/asn/ber.h"
#include "tn_platform/refl/may_null_pointer.h"
#include "tn_platform/refl/object_functions.h"
#include "tn_platform/refl/type_infor.h"

// What a member's value is, as the codec sees it: the kinds it handles
// itself, and kPrimitive, a value that carries its own codec (AsnPrimitive,
// asn_primitive.h: NULL, BIT STRING, REAL, the strings, the times, ...).
// A list is a SEQUENCE OF or SET OF, a record a SEQUENCE or SET; a CHOICE
// (asn_choice.h) is a record class whose members are its alternatives.
enum class AsnMemberKind { kOcts, kTinyInt, kInt, kBool, kList, kRecord, kPrimitive, kChoice };

// What a record class's members make on the wire.
enum class AsnStructure : unsigned char {
  kSequence,  // every member in declaration order
  kSet,       // in any order; DER writes them in the canonical order of their tags
  kChoice,    // exactly one of them, the alternative present
};

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
    case AsnMemberKind::kChoice:
      return kAsnChoiceTag;
    default:
      return kTagSequence;
  }
}
// The tag a member of `kind` travels with (ber.h's AsnMemberTag).
constexpr AsnTag AsnMemberTag(AsnMemberKind kind, bool optional, short number) {
  return AsnMemberTag(AsnUniversalTag(kind), optional, number);
}

struct AsnRecordPlan;
class AsnListBase;

// One member of a record class (or one alternative of a CHOICE).
struct AsnMemberStep {
  const char* name;      // the member's identifier ("strFDN")
  const char* typeName;  // its value's type name ("AsnOcts", "QAsnUniResID", "QAsnNVSList")
  AsnMemberKind kind;
  bool optional;         // held in a refl::MayNullPointer, absent when empty
  short number;          // -1 for a mandatory member, else its context tag number
  AsnTag tag;            // the tag the member is encoded with (the outermost of `tags`)
  AsnTag otherForm;      // also accepted on input (an OCTET STRING's constructed form), else == tag
  unsigned short offset;  // where the member sits in the record
  refl::CreateFunction create;    // makes a default value (an optional member's, when it becomes present)
  refl::DestroyFunction destroy;  // destroys a value made by `create`
  AsnTagChain tags = {};  // every tag, outermost first: EXPLICIT ones, then the value's own
  bool eitherForm = false;  // the value's own tag is also taken constructed (a string BER may segment)
  const AsnRecordPlan& (*plan)() = nullptr;  // a record's or CHOICE's member plan
  // DEFAULT: the value an absent member takes, and its encoding (which a
  // value equal to it has too).
  std::shared_ptr<const AsnType> defaultValue;
  std::string defaultEncoding;
  AsnBounds bounds;  // the member's value or size constraint, if it has one

  bool Matches(AsnTag candidate) const { return candidate == tag || candidate == otherForm; }
  // A mandatory open value (AsnAny): any tag is its.
  bool TakesAnyTag() const { return tag == kAsnOpenTag; }
  // A CHOICE without a tag of its own: its alternatives' tags select it.
  bool IsUntaggedChoice() const { return tag == kAsnChoiceTag; }
  bool HasDefault() const { return defaultValue != nullptr; }
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

// Where an extensible record keeps the members it does not know (and a
// CHOICE an alternative it does not know): each one's whole encoding, as it
// came, in a list of open values (AsnAny) at `offset` in the record.
struct AsnExtensionPlace {
  std::size_t index;      // the members before it; unknown ones are read and written there
  unsigned short offset;  // of the list (an AsnListBase of AsnAny)
};

struct AsnRecordPlan {
  explicit AsnRecordPlan(const char* name) : className(name) {}

  void Add(const AsnMemberStep& step) {
    members.push_back(step);
    hasOptional = hasOptional || step.optional;
    hasDefaults = hasDefaults || step.HasDefault();
  }

  const char* className;  // the registered class name
  std::vector<AsnMemberStep> members;  // in declaration order
  bool hasOptional = false;
  bool hasDefaults = false;
  AsnStructure structure = AsnStructure::kSequence;
  AsnTagChain ownTags = AsnTagChainOf(kTagSequence);  // the tags a value of the class carries on its own
  bool extensible = false;  // `...`: unknown members (alternatives) are kept in `extension`
  AsnExtensionPlace extension = {0, 0};
  // A SET's members in the canonical order of their tags (an untagged
  // CHOICE's the least of its alternatives'), as DER writes them.
  std::vector<std::size_t> setOrder;

  bool IsChoice() const { return structure == AsnStructure::kChoice; }
  // The extensions list in the record at `record`.
  AsnListBase* ExtensionsIn(void* record) const {
    return reinterpret_cast<AsnListBase*>(static_cast<char*>(record) + extension.offset);
  }
  // The member whose tags select it for an item with `tag` (for an untagged
  // CHOICE, one of its alternatives' does), or members.size().
  std::size_t MemberTaking(AsnTag tag) const;
  // Whether an item with `tag` is this CHOICE's (one of its alternatives').
  bool ChoiceTakes(AsnTag tag) const { return MemberTaking(tag) != members.size(); }
  // The least tag in canonical order that selects a member of this CHOICE.
  AsnTag LeastTag() const;
};

// Whether `step` takes an item with `tag`.
bool AsnStepTakes(const AsnMemberStep& step, AsnTag tag);
#pragma GCC visibility pop
