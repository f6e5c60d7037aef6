// AsnRecord<Record>: the parts every record class has in common, written once.
// A record derives from AsnRecord<itself> and provides, beside its members:
//   static constexpr char kClassName[]   its registered class name;
//   template <class Lines> static void DescribeMembers(Lines&)
//                                         its members, one line each, in
//                                         declaration order (asn_member_lines.h);
//                                         run with the lines that register the
//                                         class, make its member plan, and
//                                         encode it (asn_record_encoding.h);
//   its special members, which apply AsnSequence's generic Constructor,
//   CopyConstructor, Destructor and Assign once its own members exist.
// The record compiler writes all of it from the module text.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/refl/object_functions.h"
#include "tn_velkor/asn/asn_member_lines.h"
#include "tn_velkor/asn/asn_record_decoding.h"
#include "tn_velkor/asn/asn_record_encoding.h"

template <class Record>
class AsnRecord : public AsnSequence {
 public:
  AsnType* Clone() const override { return new Record(static_cast<const Record&>(*this)); }

  // The reflection hook: binds `reference` to this record as an instance of
  // its class, registering the class on first use.
  bool BindReflection(refl::CRefrence& reference) const override {
    return refl::helper::ChangeTypeTo_ClassType(reference, GetClassInfor(), static_cast<const Record*>(this));
  }

  const AsnRecordPlan& Plan() const override { return MemberPlan(); }

  // The encoder's passes, compiled from the member lines; inlined where the
  // record's class is known (a list of it, a member of its type).
  [[gnu::always_inline]] unsigned long MeasureContent(AsnEncodeSizes& sizes) const override {
    AsnMeasureLines<Record> lines(static_cast<const Record&>(*this), sizes);
    Record::DescribeMembers(lines);
    return lines.Length();
  }
  [[gnu::always_inline]] unsigned char* WriteContent(unsigned char* out, AsnEncodeSizes& sizes) const override {
    AsnWriteLines<Record> lines(static_cast<const Record&>(*this), out, sizes);
    Record::DescribeMembers(lines);
    return lines.End();
  }
  // Tag, length and members, in front of what `buf` holds; the record's
  // class is known here, so both passes are direct calls.
  unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) override {
    return AsnEncodeValueInto(buf, kTagSequence, static_cast<const Record&>(*this));
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
  // Whether the decoder's fast path applies to the class, and whether its
  // members include lists.
  static inline const bool kFlat = FlatLines().Flat();
  static inline const bool kHasLists = FlatLines().HasLists();
  bool DecodeFast(AsnBuf& buf, std::size_t headerLength, unsigned long length, unsigned long& bytesDecoded) {
    return AsnDecodeContentFast(static_cast<Record&>(*this), buf, headerLength, length, kHasLists, bytesDecoded,
                                [](auto& lines) { Record::DescribeMembers(lines); });
  }

  // Kept out of MemberPlan, which the codec calls for every record: its fast
  // path is then a test and a return.
  __attribute__((noinline)) static AsnRecordPlan MakePlan() {
    AsnRecordPlan made(Record::kClassName);
    AsnMemberLines<Record> lines(made);
    Record::DescribeMembers(lines);
    return made;
  }
};
#pragma GCC visibility pop
