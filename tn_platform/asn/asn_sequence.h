// AsnSequence: the generic SEQUENCE codec of the runtime. A record derives
// from it and describes its members once, in its member lines: they register
// the record's class with the reflection library (see the reflection hook) and
// make the class's member plan (AsnRecordPlan). Decoding, printing, the type
// name and the generic parts of construction, copying and assignment run on
// that plan; encoding runs on the same member lines, compiled into each
// record class (MeasureContent, WriteContent).
//
// Wire form: a universal SEQUENCE (0x30), members in registration order. A
// mandatory member carries its own universal tag (OCTET STRING 0x04, INTEGER
// 0x02, BOOLEAN 0x01, record or list 0x30). An optional member registered
// with number n carries [n] IMPLICIT: primitive (0x80 + n) for octet strings,
// integers and booleans, constructed (0xA0 + n) for records and lists; an
// absent one is left out. Output lengths are definite and minimal.
//
// Decoding accepts definite and indefinite lengths and both forms of OCTET
// STRING, and refuses with a CSM_Exception* naming record and member: a wrong
// or missing tag of a mandatory member, members out of order, repeated or
// unknown, content left over, lengths running past the enclosing value or the
// input, malformed integers and booleans, and nesting deeper than
// AsnDecodeLimits::kMaxDepth.
//
// Member types the codec handles (the reflection identifier in brackets):
// AsnOcts (4), AsnTinyInt (40), AsnInt (42), AsnBool (43), SEQUENCE OF lists
// (41, see AsnListBase), records (registered classes) and values with their
// own codec (44, AsnPrimitive), each plain or in a refl::MayNullPointer.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_type.h"
#include "tn_platform/asn/ber.h"
#include "tn_platform/refl/class_infor.h"

// Reflection identifiers of the runtime's value classes.
enum AsnValueClassId : unsigned {
  kAsnOctsClassId = 4,
  kAsnTinyIntClassId = 40,
  kAsnSeqOfClassId = 41,
  kAsnIntClassId = 42,
  kAsnBoolClassId = 43,
  kAsnPrimitiveClassId = 44,  // every AsnPrimitive class (asn_primitive.h)
};

#include "tn_platform/asn/asn_record_plan.h"

class AsnSequence : public AsnType {
 public:
  // Slot 7, the reflection hook: binds `reference` to this object as an
  // instance of the record's registered class (registering it on first use).
  virtual bool BindReflection(refl::CRefrence& reference) const = 0;
  // Slot 8: the members, in front of `buf`; returns the octets written.
  virtual unsigned long BEncContent(AsnBuf& buf, NIClass_EncodingFormatEnum);
  // Slot 9: the members from content of `length` octets (or indefinite) after `tag`.
  virtual void BDecContent(AsnBuf& buf, unsigned int, unsigned long length, unsigned long& bytesDecoded,
                           NIClass_EncodingFormatEnum) {
    DecodeMembers(Plan(), buf, length, bytesDecoded);
  }
  // Slot 10: the record class's member plan, made once per class.
  virtual const AsnRecordPlan& Plan() const = 0;
  // Slots 11 and 12, the encoder's two passes over the members
  // (asn_value_encoding.h): the content length, noting the lengths of
  // constructed members in `sizes`; and the content written at `out`, front
  // to back, taking those lengths in the same order (returns the end). Each
  // record class compiles them from its member lines (AsnRecord).
  virtual unsigned long MeasureContent(AsnEncodeSizes& sizes) const = 0;
  virtual unsigned char* WriteContent(unsigned char* out, AsnEncodeSizes& sizes) const = 0;

  // Slot 3: header and members. Inline, like slot 9, so that a
  // caller that knows the record's class (a list of it) reaches the plan
  // without a virtual call.
  void BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) override {
    DecodeRecord(Plan(), buf, bytesDecoded);
  }
  // Slot 4: tag, length and members, in front of what `buf` holds: measured
  // first, then written front to back.
  unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) override;
  // Writes "<Type> {", one line per present member ("name value") at level + 1,
  // then "}" at `level`. Octet strings are quoted (hex when not printable),
  // integers decimal, lists one "- element" line each.
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  // The registered class name.
  const char* typeName() const override { return Plan().className; }

  // The record's class description.
  const refl::CClassInfor& ClassInfor() const;

  // Generic parts of the record's special members.
  static void Constructor(AsnSequence& record);
  static void CopyConstructor(AsnSequence& record, const AsnSequence& source);
  static void Destructor(AsnSequence& record);
  // Copies every member of `source` (optional ones included, absent ones made
  // absent); `record` and `source` must be of the same class.
  static void Assign(AsnSequence& record, const AsnSequence& source);

 protected:
  // The decoder, by `plan` (this record's), the record being this object: the
  // members, and the whole value (header and members).
  void DecodeMembers(const AsnRecordPlan& plan, AsnBuf& buf, unsigned long length, unsigned long& bytesDecoded);
  void DecodeRecord(const AsnRecordPlan& plan, AsnBuf& buf, unsigned long& bytesDecoded);

  AsnSequence() = default;
  AsnSequence(const AsnSequence&) = default;
  AsnSequence& operator=(const AsnSequence&) = default;
};

// Offset of a member within a record, for the attribute registration:
// measured on `probe`, an object of the record's class.
template <class Record, class Member>
unsigned short MemberPosition(const Record& probe, const Member Record::*member) {
  return static_cast<unsigned short>(reinterpret_cast<const char*>(&(probe.*member)) -
                                     reinterpret_cast<const char*>(&probe));
}
#pragma GCC visibility pop
