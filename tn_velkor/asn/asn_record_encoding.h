// The encoder's two passes over a record's members, compiled from its member
// lines: AsnRecord<Record> runs Record::DescribeMembers with these lines
// instead of AsnMemberLines, so each line becomes the sizing or writing of
// that one member, its type, tag and place known at compile time (no plan
// lookup, no dispatch on the member's kind).
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_constraint_check.h"
#include "tn_platform/asn/asn_encode_sizes.h"
#include "tn_platform/asn/asn_value_encoding.h"
#include "tn_platform/refl/may_null_pointer.h"
#include "tn_velkor/asn/asn_member_lines.h"

// The value of a member: the member itself, or what its holder holds (null
// when an optional member is absent).
template <class Value>
const Value* AsnPresentValue(const Value& member) {
  return &member;
}
template <class Value>
const Value* AsnPresentValue(const refl::MayNullPointer<Value>& holder) {
  return holder.Get();
}

// Which members a pass over the lines takes: all of them in declaration
// order, or, for a SET written in the canonical order of its tags, one at a
// time (the lines run once per member; AsnRecord).
class AsnLineSelection {
 public:
  static constexpr std::size_t kUnknownMembers = ~std::size_t{0};
  explicit AsnLineSelection(std::size_t only) : m_only(only) {}
  // The next member line: whether its member is the one taken.
  bool TakeMember() { return m_next++ == m_only; }
  bool TakeUnknownMembers() const { return m_only == kUnknownMembers; }

 private:
  std::size_t m_only;
  std::size_t m_next = 0;
};
// Every member, in declaration order.
struct AsnAllLines {
  static constexpr bool TakeMember() { return true; }
  static constexpr bool TakeUnknownMembers() { return true; }
};

// Whether the value of a line with a DEFAULT is absent on the wire.
template <class Value>
[[gnu::always_inline]] inline bool AsnLeftOut(const Value& value, void (*makeDefault)(Value&)) {
  return makeDefault != nullptr && AsnEqualsDefault(value, makeDefault);
}

// Sizing pass: adds up the complete encodings of the present members.
template <class Record, class Selection = AsnAllLines>
class AsnMeasureLines {
 public:
  AsnMeasureLines(const Record& record, AsnEncodeSizes& sizes, Selection selection = Selection())
      : m_record(record), m_sizes(sizes), m_selection(selection) {}

  template <class Member>
  [[gnu::always_inline]] void Add(const char*, Member Record::*member, short number = -1) {
    using Value = typename AsnMemberTraits<Member>::Value;
    if (!m_selection.TakeMember()) return;
    if (const auto* value = AsnPresentValue(m_record.*member)) {
      if constexpr (AsnHasOneOwnTag<Value>()) {
        m_length += AsnValueSize(AsnMemberTagOf<Member>(number), *value, m_sizes);
      } else {
        const AsnTagging tags = AsnNumberedTagging(AsnMemberTraits<Member>::kOptional, number);
        m_length += AsnChainSize(AsnMemberTagsOf<Member>(tags), *value, m_sizes);
      }
    }
  }
  template <class Member>
  [[gnu::always_inline]] void Add(const char*, Member Record::*member, short, const AsnTagging& tags,
                                  AsnDefaultMaker<Member> makeDefault = nullptr) {
    if (!m_selection.TakeMember()) return;
    const auto* value = AsnPresentValue(m_record.*member);
    if (value != nullptr && !AsnLeftOut(*value, makeDefault)) {
      m_length += AsnChainSize(AsnMemberTagsOf<Member>(tags), *value, m_sizes);
    }
  }
  // The sizing pass, which every encoding runs first, refuses a value
  // outside its bounds.
  template <class Member>
  void Constrain(const char* name, Member Record::*member, const AsnBounds& bounds) {
    using Value = typename AsnMemberTraits<Member>::Value;
    if (const auto* value = AsnPresentValue(m_record.*member)) {
      const std::string violation = AsnBoundsViolation(bounds, AsnMemberKindFor<Value>(), *value);
      if (!violation.empty()) AsnThrowEncodeViolation(Record::kClassName, name, violation);
    }
  }
  template <class List>
  void Extensions(List Record::*member) {
    if (m_selection.TakeUnknownMembers()) m_length += (m_record.*member).MeasureContent(m_sizes);
  }
  unsigned long Length() const { return m_length; }

 private:
  const Record& m_record;
  AsnEncodeSizes& m_sizes;
  Selection m_selection;
  unsigned long m_length = 0;
};

// Writing pass: writes the present members in order, front to back.
template <class Record, class Selection = AsnAllLines>
class AsnWriteLines {
 public:
  AsnWriteLines(const Record& record, unsigned char* out, AsnEncodeSizes& sizes, Selection selection = Selection())
      : m_record(record), m_out(out), m_sizes(sizes), m_selection(selection) {}

  template <class Member>
  [[gnu::always_inline]] void Add(const char*, Member Record::*member, short number = -1) {
    using Value = typename AsnMemberTraits<Member>::Value;
    if (!m_selection.TakeMember()) return;
    if (const auto* value = AsnPresentValue(m_record.*member)) {
      if constexpr (AsnHasOneOwnTag<Value>()) {
        m_out = AsnWriteValue(m_out, AsnMemberTagOf<Member>(number), *value, m_sizes);
      } else {
        const AsnTagging tags = AsnNumberedTagging(AsnMemberTraits<Member>::kOptional, number);
        m_out = AsnWriteChain(m_out, AsnMemberTagsOf<Member>(tags), *value, m_sizes);
      }
    }
  }
  template <class Member>
  [[gnu::always_inline]] void Add(const char*, Member Record::*member, short, const AsnTagging& tags,
                                  AsnDefaultMaker<Member> makeDefault = nullptr) {
    if (!m_selection.TakeMember()) return;
    const auto* value = AsnPresentValue(m_record.*member);
    if (value != nullptr && !AsnLeftOut(*value, makeDefault)) {
      m_out = AsnWriteChain(m_out, AsnMemberTagsOf<Member>(tags), *value, m_sizes);
    }
  }
  template <class Member>
  void Constrain(const char*, Member Record::*, const AsnBounds&) {}
  template <class List>
  void Extensions(List Record::*member) {
    if (m_selection.TakeUnknownMembers()) m_out = (m_record.*member).WriteContent(m_out, m_sizes);
  }
  unsigned char* End() const { return m_out; }

 private:
  const Record& m_record;
  unsigned char* m_out;
  AsnEncodeSizes& m_sizes;
  Selection m_selection;
};

// A new record's DEFAULT members take their defaults (its constructor).
template <class Record>
class AsnDefaultLines {
 public:
  explicit AsnDefaultLines(Record& record) : m_record(record) {}

  template <class Member>
  [[gnu::always_inline]] void Add(const char*, Member Record::*, short = -1) {}
  template <class Member>
  [[gnu::always_inline]] void Add(const char*, Member Record::*member, short, const AsnTagging&,
                                  AsnDefaultMaker<Member> makeDefault = nullptr) {
    if constexpr (!AsnMemberTraits<Member>::kOptional) {
      if (makeDefault != nullptr) makeDefault(m_record.*member);
    }
  }
  template <class Member>
  void Constrain(const char*, Member Record::*, const AsnBounds&) {}
  template <class List>
  void Extensions(List Record::*) {}

 private:
  Record& m_record;
};
#pragma GCC visibility pop
