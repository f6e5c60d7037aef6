// AsnRecord<Record>: the parts every record class has in common, written once.
// A record derives from AsnRecord<itself> and provides, beside its members:
//   static constexpr char kClassName[]   its registered class name;
//   template <class Lines> static void DescribeMembers(Lines&)
//                                         its members, one line each, in
//                                         declaration order (asn_member_lines.h);
//                                         run with the lines that register the
//                                         class, make its member plan, and
//                                         encode it (asn_record_encoding.h);
//   its special members, which apply the generic Constructor (DEFAULT
//   members take their defaults), CopyConstructor, Destructor and Assign
//   once its own members exist;
// and, when they apply:
//   static constexpr AsnStructure kStructure = AsnStructure::kSet;   a SET
//   static constexpr bool kDeep = true;   a type that holds itself (through a
//                                         list, an optional member or an
//                                         alternative) or nests deeply: its
//                                         encoder is called, not inlined
//   static constexpr AsnTagging kTagging = ...;   tags written on its type
//                                                 ("[APPLICATION 3] IMPLICIT")
// A CHOICE derives from AsnRecord<itself, AsnChoice> (asn_choice.h): its
// member lines are its alternatives, each optional.
// The record compiler writes all of it from the module text.
#pragma once
#pragma GCC visibility push(default)

#include <algorithm>

#include "tn_platform/asn/asn_choice.h"
#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/refl/object_functions.h"
#include "tn_velkor/asn/asn_extensions.h"
#include "tn_velkor/asn/asn_member_lines.h"
#include "tn_velkor/asn/asn_record_decoding.h"
#include "tn_velkor/asn/asn_record_encoding.h"

template <class Record, class Base = AsnSequence>
class AsnRecord : public Base {
 public:
  AsnType* Clone() const override { return new Record(static_cast<const Record&>(*this)); }

  // The reflection hook: binds `reference` to this record as an instance of
  // its class, registering the class on first use.
  bool BindReflection(refl::CRefrence& reference) const override {
    return refl::helper::ChangeTypeTo_ClassType(reference, GetClassInfor(), static_cast<const Record*>(this));
  }

  const AsnRecordPlan& Plan() const override { return MemberPlan(); }

  // The encoder's passes, compiled from the member lines; inlined where the
  // record's class is known (a list of it, a member of its type), except in a
  // deep type (kDeep), where inlining would not end or would grow the code
  // with every level. A SET's lines run
  // once per member, in the canonical order of their tags.
  [[gnu::always_inline]] unsigned long MeasureContent(AsnEncodeSizes& sizes) const override {
    if constexpr (kOutOfLine) {
      return MeasureOutOfLine(sizes);
    } else {
      return MeasureInLine(sizes);
    }
  }
  [[gnu::always_inline]] unsigned char* WriteContent(unsigned char* out, AsnEncodeSizes& sizes) const override {
    if constexpr (kOutOfLine) {
      return WriteOutOfLine(out, sizes);
    } else {
      return WriteInLine(out, sizes);
    }
  }
  [[gnu::always_inline]] unsigned long MeasureInLine(AsnEncodeSizes& sizes) const {
    const Record& record = static_cast<const Record&>(*this);
    if constexpr (kIsSet) {
      unsigned long length = 0;
      for (const std::size_t index : MemberPlan().setOrder) length += Measure(record, sizes, AsnLineSelection(index));
      return length + Measure(record, sizes, AsnLineSelection(AsnLineSelection::kUnknownMembers));
    } else {
      const unsigned long length = Measure(record, sizes, AsnAllLines());
      if constexpr (kIsChoice) {
        if (length == 0) AsnThrowNoAlternative(record);
      }
      return length;
    }
  }
  [[gnu::always_inline]] unsigned char* WriteInLine(unsigned char* out, AsnEncodeSizes& sizes) const {
    const Record& record = static_cast<const Record&>(*this);
    if constexpr (kIsSet) {
      for (const std::size_t index : MemberPlan().setOrder) out = Write(record, out, sizes, AsnLineSelection(index));
      return Write(record, out, sizes, AsnLineSelection(AsnLineSelection::kUnknownMembers));
    } else {
      return Write(record, out, sizes, AsnAllLines());
    }
  }
  // Tag, length and members, in front of what `buf` holds; the record's
  // class is known here, so both passes are direct calls.
  unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) override {
    constexpr AsnTagChain kOwnTags = AsnOwnTagsOf<Record>();
    if constexpr (!kOwnTags.Wrapped() && !AsnTagIsHeaderless(kOwnTags.Outer())) {
      return AsnEncodeValueInto(buf, kOwnTags.Outer(), static_cast<const Record&>(*this));
    } else {
      return AsnEncodeChainInto(buf, kOwnTags, static_cast<const Record&>(*this));
    }
  }

  // Decoding: a record of primitive members in its common form is read by
  // the fast path compiled from the member lines; everything else, and every
  // refusal, by the generic decoder on the member plan.
  void BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum format) override {
    unsigned long length = 0;
    const std::size_t headerLength = kFlat ? AsnFastSequenceHeader(buf, length) : 0;
    if (headerLength == 0 || !DecodeFast(buf, headerLength, length, bytesDecoded)) {
      AsnSequence::BDec(buf, bytesDecoded, format);
    }
  }
  void BDecContent(AsnBuf& buf, unsigned int tag, unsigned long length, unsigned long& bytesDecoded,
                   NIClass_EncodingFormatEnum format) override {
    if (!kFlat || !DecodeFast(buf, 0, length, bytesDecoded)) {
      AsnSequence::BDecContent(buf, tag, length, bytesDecoded, format);
    }
  }

  // The generic part of the constructor (in place of AsnSequence's): DEFAULT
  // members take their defaults.
  static void Constructor(AsnSequence& record) {
    AsnDefaultLines<Record> lines(static_cast<Record&>(record));
    Record::DescribeMembers(lines);
  }

  // The member plan, made once from the member lines on first use (the
  // initialisation of a function-local static is safe under concurrent first use).
  static const AsnRecordPlan& MemberPlan() {
    static const AsnRecordPlan plan = MakePlan();
    return plan;
  }

  // The attribute registration the reflection library calls while it builds
  // the class description: one attribute per member line.
  static void RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
    AsnMemberLines<Record> lines(infor, access);
    Record::DescribeMembers(lines);
  }

  // The class description, registered on first use under Record::kClassName.
  static const refl::CClassInfor& GetClassInfor() {
    return *refl::CClassInfor::GetClassInforImpl<Record>(Record::kClassName, &refl::CreateObject<Record>,
                                                         &refl::DestroyObject<Record>, &RegisterAttributes);
  }

 protected:
  AsnRecord() = default;
  AsnRecord(const AsnRecord&) = default;
  AsnRecord& operator=(const AsnRecord&) = default;

 private:
  static AsnFlatMemberLines<Record> FlatLines() {
    AsnFlatMemberLines<Record> lines;
    Record::DescribeMembers(lines);
    return lines;
  }
  static constexpr bool kIsChoice = std::is_base_of_v<AsnChoice, Record>;
  static constexpr AsnStructure StructureOf() {
    if constexpr (kIsChoice) {
      return AsnStructure::kChoice;
    } else if constexpr (AsnHasStructure<Record>::value) {
      return Record::kStructure;
    } else {
      return AsnStructure::kSequence;
    }
  }
  static constexpr bool kIsSet = StructureOf() == AsnStructure::kSet;
  static constexpr bool IsDeep() {
    if constexpr (AsnHasDeep<Record>::value) {
      return Record::kDeep;
    } else {
      return false;
    }
  }
  static constexpr bool kOutOfLine = IsDeep();
  __attribute__((noinline)) unsigned long MeasureOutOfLine(AsnEncodeSizes& sizes) const { return MeasureInLine(sizes); }
  __attribute__((noinline)) unsigned char* WriteOutOfLine(unsigned char* out, AsnEncodeSizes& sizes) const {
    return WriteInLine(out, sizes);
  }

  template <class Selection>
  [[gnu::always_inline]] static unsigned long Measure(const Record& record, AsnEncodeSizes& sizes, Selection selection) {
    AsnMeasureLines<Record, Selection> lines(record, sizes, selection);
    Record::DescribeMembers(lines);
    return lines.Length();
  }
  template <class Selection>
  [[gnu::always_inline]] static unsigned char* Write(const Record& record, unsigned char* out, AsnEncodeSizes& sizes,
                                                     Selection selection) {
    AsnWriteLines<Record, Selection> lines(record, out, sizes, selection);
    Record::DescribeMembers(lines);
    return lines.End();
  }

  // Whether the decoder's fast path applies to the class (a SEQUENCE under
  // its universal tag), and whether its members include lists.
  static inline const bool kFlat = StructureOf() == AsnStructure::kSequence &&
                                   AsnOwnTagsOf<Record>().Outer() == kTagSequence &&
                                   !AsnOwnTagsOf<Record>().Wrapped() && FlatLines().Flat();
  static inline const bool kHasLists = FlatLines().HasLists();
  bool DecodeFast(AsnBuf& buf, std::size_t headerLength, unsigned long length, unsigned long& bytesDecoded) {
    return AsnDecodeContentFast(static_cast<Record&>(*this), buf, headerLength, length, kHasLists, bytesDecoded,
                                [](auto& lines) { Record::DescribeMembers(lines); });
  }

  // Kept out of MemberPlan, which the codec calls for every record: its fast
  // path is then a test and a return.
  __attribute__((noinline)) static AsnRecordPlan MakePlan() {
    AsnRecordPlan made(Record::kClassName);
    made.structure = StructureOf();
    made.ownTags = AsnOwnTagsOf<Record>();
    AsnMemberLines<Record> lines(made);
    Record::DescribeMembers(lines);
    if (made.structure == AsnStructure::kSet) {
      // DER's order: by tag; an untagged CHOICE by the least of its alternatives'.
      const auto tagOf = [&made](std::size_t index) {
        const AsnMemberStep& step = made.members[index];
        return step.IsUntaggedChoice() ? step.plan().LeastTag() : step.tag;
      };
      for (std::size_t index = 0; index < made.members.size(); ++index) made.setOrder.push_back(index);
      std::stable_sort(made.setOrder.begin(), made.setOrder.end(),
                       [&](std::size_t left, std::size_t right) { return AsnTagOrderLess(tagOf(left), tagOf(right)); });
    }
    return made;
  }
};
#pragma GCC visibility pop
