// AsnMemberLines<Record>: a record's members, one line each, in declaration
// order (the record compiler writes them from the module text):
//
//   lines.Add("label", &Record::label);          // mandatory
//   lines.Add("note", &Record::note, 0);         // optional, [0] IMPLICIT
//
// The number is -1 for a mandatory member (the default) and 0, 1, ... for the
// optional ones (refl::MayNullPointer<T>) in order; it is an optional member's
// context tag. AsnRecord runs the lines twice: once to register the class
// with the reflection library (an attribute with name, offset, number and type
// description per line) and once to make the codec's member plan, so the two
// cannot disagree. What a member's type stands for follows from its C++ type.
#pragma once
#pragma GCC visibility push(default)

#include <type_traits>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_value_encoding.h"
#include "tn_platform/refl/class_infor.h"
#include "tn_platform/refl/may_null_pointer.h"
#include "tn_platform/refl/object_functions.h"
#include "tn_velkor/asn/value_type_descriptions.h"

// The value type of a member and whether the member is optional.
template <class Member>
struct AsnMemberTraits {
  using Value = Member;
  static constexpr bool kOptional = false;
};
template <class Held>
struct AsnMemberTraits<refl::MayNullPointer<Held>> {
  using Value = Held;
  static constexpr bool kOptional = true;
};

// The codec's kind of a value type. A list names itself (kTypeName, and
// kQualifiedName for its description); a record is an AsnRecord (kClassName);
// a value with its own codec is an AsnPrimitive (kTypeName, kUniversalTag).
template <class Value>
constexpr AsnMemberKind AsnMemberKindFor() {
  static_assert(std::is_same_v<Value, AsnOcts> || std::is_same_v<Value, AsnTinyInt> ||
                    std::is_same_v<Value, AsnInt> || std::is_same_v<Value, AsnBool> ||
                    std::is_base_of_v<AsnListBase, Value> || std::is_base_of_v<AsnSequence, Value> ||
                    std::is_base_of_v<AsnPrimitive, Value>,
                "a member type the record codec does not handle");
  if constexpr (std::is_same_v<Value, AsnOcts>) return AsnMemberKind::kOcts;
  if constexpr (std::is_same_v<Value, AsnTinyInt>) return AsnMemberKind::kTinyInt;
  if constexpr (std::is_same_v<Value, AsnInt>) return AsnMemberKind::kInt;
  if constexpr (std::is_same_v<Value, AsnBool>) return AsnMemberKind::kBool;
  if constexpr (std::is_base_of_v<AsnListBase, Value>) return AsnMemberKind::kList;
  if constexpr (std::is_base_of_v<AsnPrimitive, Value>) return AsnMemberKind::kPrimitive;
  return AsnMemberKind::kRecord;
}

// The tag a member of type `Member` registered with `number` travels with;
// inline, so that a line's constant number gives a constant tag.
template <class Member>
constexpr AsnTag AsnMemberTagOf(short number) {
  return AsnMemberTag(AsnUniversalTagOf<typename AsnMemberTraits<Member>::Value>(), AsnMemberTraits<Member>::kOptional,
                      number);
}

template <class Value>
constexpr const char* AsnTypeNameOf() {
  if constexpr (AsnMemberKindFor<Value>() == AsnMemberKind::kRecord) {
    return Value::kClassName;
  } else {
    return Value::kTypeName;
  }
}

template <class Record>
class AsnMemberLines {
 public:
  // Lines that add the members to the class description being built.
  AsnMemberLines(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access)
      : m_infor(&infor), m_access(access) {}
  // Lines that add the members to a member plan.
  explicit AsnMemberLines(AsnRecordPlan& plan) : m_plan(&plan) {}

  template <class Member>
  void Add(const char* name, Member Record::*member, short number = -1) {
    using Traits = AsnMemberTraits<Member>;
    using Value = typename Traits::Value;
    constexpr AsnMemberKind kind = AsnMemberKindFor<Value>();
    const unsigned short position = MemberPosition(m_probe, member);
    if (m_infor != nullptr) Describe<Member>(m_infor->AddAttribInfor(m_access, position, name, number));
    if (m_plan != nullptr) {
      const AsnTag tag = AsnMemberTagOf<Member>(number);
      const AsnTag otherForm = kind == AsnMemberKind::kOcts || ConstructedAllowed<Value>() ? TagWithForm(tag, true) : tag;
      m_plan->Add(AsnMemberStep{name, AsnTypeNameOf<Value>(), kind, Traits::kOptional, number, tag, otherForm,
                                position, &refl::CreateObject<Value>, &refl::DestroyObject<Value>});
    }
  }

 private:
  // A string type that BER may also segment (the constructed form); an open
  // value's tag is its own, not the member's.
  template <class Value>
  static constexpr bool ConstructedAllowed() {
    if constexpr (std::is_base_of_v<AsnPrimitive, Value>) {
      return Value::kConstructedAllowed && Value::kUniversalTag != kAsnOpenTag;
    } else {
      return false;
    }
  }

  // The type description of a member: the shared description of a value
  // class (value_type_descriptions.h), a list's own custom type, or a
  // record's class; an optional member carries the may-null modifier.
  template <class Member>
  static void Describe(refl::CGnlTypeInfor& type) {
    using Traits = AsnMemberTraits<Member>;
    using Value = typename Traits::Value;
    if constexpr (AsnMemberKindFor<Value>() == AsnMemberKind::kList) {
      type.ChangeTypeTo_CustomType(Value::kQualifiedName, sizeof(Value), &refl::CreateObject<Value>,
                                   &refl::DestroyObject<Value>, kAsnSeqOfClassId);
      type.SetMayNull(Traits::kOptional);
    } else if constexpr (AsnMemberKindFor<Value>() == AsnMemberKind::kRecord) {
      type.ChangeTypeTo_ClassType(Value::GetClassInfor());
      type.SetMayNull(Traits::kOptional);
    } else if constexpr (AsnMemberKindFor<Value>() == AsnMemberKind::kPrimitive) {
      AsnDescribePrimitive<Value>(type, Traits::kOptional);
    } else {
      type.template CaptureTypeInfor<Member>();
    }
  }

  const Record m_probe;  // offsets are measured on it
  refl::CClassInfor* m_infor = nullptr;
  refl::Enum::AccessSpecifierEnum m_access = refl::Enum::Public;
  AsnRecordPlan* m_plan = nullptr;
};
#pragma GCC visibility pop
