// The encoder's two passes over a record's members, compiled from its member
// lines: AsnRecord<Record> runs Record::DescribeMembers with these lines
// instead of AsnMemberLines, so each line becomes the sizing or writing of
// that one member, its type, tag and place known at compile time (no plan
// lookup, no dispatch on the member's kind).
#pragma once
#pragma GCC visibility push(default)

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

// Sizing pass: adds up the complete encodings of the present members.
template <class Record>
class AsnMeasureLines {
 public:
  AsnMeasureLines(const Record& record, AsnEncodeSizes& sizes) : m_record(record), m_sizes(sizes) {}

  template <class Member>
  [[gnu::always_inline]] void Add(const char*, Member Record::*member, short number = -1) {
    if (const auto* value = AsnPresentValue(m_record.*member)) {
      m_length += AsnValueSize(AsnMemberTagOf<Member>(number), *value, m_sizes);
    }
  }
  unsigned long Length() const { return m_length; }

 private:
  const Record& m_record;
  AsnEncodeSizes& m_sizes;
  unsigned long m_length = 0;
};

// Writing pass: writes the present members in order, front to back.
template <class Record>
class AsnWriteLines {
 public:
  AsnWriteLines(const Record& record, unsigned char* out, AsnEncodeSizes& sizes)
      : m_record(record), m_out(out), m_sizes(sizes) {}

  template <class Member>
  [[gnu::always_inline]] void Add(const char*, Member Record::*member, short number = -1) {
    if (const auto* value = AsnPresentValue(m_record.*member)) {
      m_out = AsnWriteValue(m_out, AsnMemberTagOf<Member>(number), *value, m_sizes);
    }
  }
  unsigned char* End() const { return m_out; }

 private:
  const Record& m_record;
  unsigned char* m_out;
  AsnEncodeSizes& m_sizes;
};
#pragma GCC visibility pop
