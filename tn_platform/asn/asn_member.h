// AsnMember: one registered member of a record, bound to one record object.
// The generic codec works through it, and so can any program that walks
// records generically (printing, JSON, test data).
#pragma once
#pragma GCC visibility push(default)

#include <string>
#include <vector>

#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/ber.h"
#include "tn_platform/refl/may_null_pointer.h"

enum class AsnMemberKind { kOcts, kTinyInt, kInt, kBool, kList, kRecord, kUnsupported };

// What a member's type description stands for. Inline: the record codec
// asks for every member it encodes or decodes.
inline AsnMemberKind AsnMemberKindOf(const refl::CGnlTypeInfor& type) {
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

// The tag a member of `kind` travels with: [number] IMPLICIT of the context
// class when optional, else the universal tag of its type.
inline AsnTag AsnMemberTag(AsnMemberKind kind, bool optional, short number) {
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

// One registered attribute bound to one record object.
class AsnMember {
 public:
  AsnMember(const refl::CAttribInfor& attribute, void* record)
      : m_attribute(attribute),
        m_kind(AsnMemberKindOf(attribute.type)),
        m_address(static_cast<char*>(record) + attribute.position) {}

  const refl::CAttribInfor& Attribute() const { return m_attribute; }
  const std::string& Name() const { return m_attribute.name; }
  AsnMemberKind Kind() const { return m_kind; }
  bool IsOptional() const { return m_attribute.type.IsMayNull(); }
  bool IsConstructed() const { return m_kind == AsnMemberKind::kList || m_kind == AsnMemberKind::kRecord; }

  // The member's value: the member itself, or the object its holder holds
  // (null when an optional member is absent).
  AsnType* Value() const {
    if (IsOptional()) return static_cast<AsnType*>(Holder()->RawObject());
    return reinterpret_cast<AsnType*>(m_address);
  }
  // The value of an optional member, created (with its defaults) when absent.
  AsnType* ValueOrCreate() const {
    if (IsOptional() && Holder()->IsNull()) Holder()->RawAdopt(m_attribute.type.Creator()());
    return Value();
  }
  // Makes an optional member absent, destroying what it held.
  void Reset() const {
    if (void* object = Holder()->RawRelease()) m_attribute.type.Destroyer()(object);
  }

  // The tag this member is encoded with.
  AsnTag Tag() const { return AsnMemberTag(m_kind, IsOptional(), m_attribute.number); }
  // OCTET STRING members also come in the constructed form.
  bool Matches(AsnTag tag) const {
    const AsnTag own = Tag();
    return tag == own || (m_kind == AsnMemberKind::kOcts && tag == TagWithForm(own, true));
  }

 private:
  refl::MayNullPointerBase* Holder() const { return reinterpret_cast<refl::MayNullPointerBase*>(m_address); }

  const refl::CAttribInfor& m_attribute;
  AsnMemberKind m_kind;
  char* m_address;
};

// The members of `record`, in registration order.
std::vector<AsnMember> AsnMembersOf(const AsnSequence& record);
#pragma GCC visibility pop
