// AsnMemberLines<Record>: a record's members, one line each, in declaration
// order (the record compiler writes them from the module text):
//
//   lines.Add("label", &Record::label);          // mandatory
//   lines.Add("note", &Record::note, 0);         // optional, [0] IMPLICIT
//
// The number is -1 for a mandatory member (the default) and 0, 1, ... for the
// optional ones (refl::MayNullPointer<T>) in order; it is an optional member's
// context tag. A member with tags of its own, or a DEFAULT, gives them after
// the number (the number then only counts the optional members):
//
//   lines.Add("version", &Record::version, -1,
//             AsnTagging::Explicit(AsnTagClass::kContext, 0), &Record::DefaultVersion);
//   lines.Add("id", &Record::id, 1, AsnTagging::Implicit(AsnTagClass::kApplication, 2));
//   lines.Add("plain", &Record::plain, -1, AsnTagging(), &Record::DefaultPlain);
//
// where DefaultVersion(AsnTinyInt&) gives a value the default. A DEFAULT
// member is a plain member (it always has a value). An extensible record (or
// CHOICE) keeps unknown members in an AsnExtensions member, named by a line
// where they go (after the extension additions it knows):
//
//   lines.Extensions(&Record::unknown);
//
// A member whose value or size is constrained has a line after its own that
// gives the bounds (asn_bounds.h), checked both ways (asn_constraint_check.h):
//
//   lines.Constrain("port", &Record::port, AsnBounds::Values(0, 65535));
//
// AsnRecord runs the lines to register the class with the reflection library
// (an attribute with name, offset, number and type description per member),
// to make the codec's member plan, and as the encoder, the decoder's fast
// path and the constructor's defaults, so none of them can disagree. What a
// member's type stands for follows from its C++ type.
#pragma once
#pragma GCC visibility push(default)

#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_choice.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_tagging.h"
#include "tn_platform/asn/asn_value_encoding.h"
#include "tn_platform/asn/asn_value_io.h"
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
  if constexpr (std::is_base_of_v<AsnChoice, Value>) return AsnMemberKind::kChoice;
  return AsnMemberKind::kRecord;
}

// A function that gives a member's value its DEFAULT.
template <class Member>
using AsnDefaultMaker = void (*)(typename AsnMemberTraits<Member>::Value&);

// The tags a line with only a number writes on its member: [number]
// IMPLICIT on an optional one.
constexpr AsnTagging AsnNumberedTagging(bool optional, short number) {
  return optional && number >= 0 ? AsnTagging::Implicit(AsnTagClass::kContext, static_cast<unsigned>(number))
                                 : AsnTagging();
}

// Every tag a member of type `Member` travels with, `tags` written on it.
template <class Member>
constexpr AsnTagChain AsnMemberTagsOf(const AsnTagging& tags) {
  return AsnApplyTags(tags, AsnOwnTagsOf<typename AsnMemberTraits<Member>::Value>());
}

// Whether `value` equals the DEFAULT `makeDefault` gives: the same content
// for the value classes the codec knows, else the same encoding.
template <class Value>
bool AsnEqualsDefault(const Value& value, void (*makeDefault)(Value&)) {
  Value fallback;
  makeDefault(fallback);
  if constexpr (std::is_same_v<Value, AsnOcts>) {
    return value.view() == fallback.view();
  } else if constexpr (std::is_same_v<Value, AsnTinyInt> || std::is_same_v<Value, AsnInt> ||
                       std::is_same_v<Value, AsnBool>) {
    return value.Value() == fallback.Value();
  } else {
    return AsnEncodeValue(value) == AsnEncodeValue(fallback);
  }
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
  if constexpr (AsnMemberKindFor<Value>() == AsnMemberKind::kRecord ||
                AsnMemberKindFor<Value>() == AsnMemberKind::kChoice) {
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
    AddLine(name, member, number, AsnNumberedTagging(AsnMemberTraits<Member>::kOptional, number), nullptr);
  }
  template <class Member>
  void Add(const char* name, Member Record::*member, short number, const AsnTagging& tags,
           AsnDefaultMaker<Member> makeDefault = nullptr) {
    AddLine(name, member, number, tags, makeDefault);
  }
  // The bounds of the member the line before added.
  template <class Member>
  void Constrain(const char* name, Member Record::*member, const AsnBounds& bounds) {
    if (m_plan == nullptr) return;
    if (m_plan->members.empty() || m_plan->members.back().offset != MemberPosition(m_probe, member)) {
      throw std::logic_error(std::string(name) + ": a constraint line comes right after its member's line");
    }
    m_plan->members.back().bounds = bounds;
  }
  // Unknown members are kept in `member` and go here among the members.
  template <class List>
  void Extensions(List Record::*member) {
    if (m_plan == nullptr) return;
    m_plan->extensible = true;
    m_plan->extension = AsnExtensionPlace{m_plan->members.size(), MemberPosition(m_probe, member)};
  }

 private:
  template <class Member>
  void AddLine(const char* name, Member Record::*member, short number, const AsnTagging& tags,
               AsnDefaultMaker<Member> makeDefault) {
    using Traits = AsnMemberTraits<Member>;
    using Value = typename Traits::Value;
    constexpr AsnMemberKind kind = AsnMemberKindFor<Value>();
    const unsigned short position = MemberPosition(m_probe, member);
    if (m_infor != nullptr) Describe<Member>(m_infor->AddAttribInfor(m_access, position, name, number));
    if (m_plan == nullptr) return;
    const AsnTagChain chain = AsnMemberTagsOf<Member>(tags);
    const bool eitherForm = kind == AsnMemberKind::kOcts || ConstructedAllowed<Value>();
    const AsnTag tag = chain.Outer();
    const AsnTag otherForm = eitherForm && !chain.Wrapped() ? TagWithForm(tag, true) : tag;
    AsnMemberStep step{};
    step.name = name;
    step.typeName = AsnTypeNameOf<Value>();
    step.kind = kind;
    step.optional = Traits::kOptional;
    step.number = number;
    step.tag = tag;
    step.otherForm = otherForm;
    step.offset = position;
    step.create = &refl::CreateObject<Value>;
    step.destroy = &refl::DestroyObject<Value>;
    step.tags = chain;
    step.eitherForm = eitherForm;
    if constexpr (kind == AsnMemberKind::kRecord || kind == AsnMemberKind::kChoice) step.plan = &Value::MemberPlan;
    if (makeDefault != nullptr) {
      // A DEFAULT member always has a value: it is no refl::MayNullPointer.
      if constexpr (Traits::kOptional) throw std::logic_error(std::string(name) + ": an optional member has no DEFAULT");
      const auto made = std::make_shared<Value>();
      makeDefault(*made);
      step.defaultEncoding = AsnEncodeValue(*made);
      step.defaultValue = made;
    }
    m_plan->Add(step);
  }

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
    } else if constexpr (AsnMemberKindFor<Value>() == AsnMemberKind::kRecord ||
                         AsnMemberKindFor<Value>() == AsnMemberKind::kChoice) {
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
