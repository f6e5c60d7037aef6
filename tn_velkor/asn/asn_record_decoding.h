// The record decoder's fast path, compiled from the member lines like the
// encoder (asn_record_encoding.h), for a record whose members are all
// primitive (octet strings, integers, booleans, optional or not): it reads
// the common form of such a record straight from the input, each member
// checked by one bounds test on its header. It takes only input the generic
// decoder (AsnSequence, by the member plan) takes the same way: members in
// order, one-octet tags, short-form lengths, primitive octet strings,
// well-formed integers and booleans, the content used up exactly. On
// anything else it reports that it did not decode, having moved nothing in
// the input, and the caller runs the generic decoder on the same octets,
// which decodes the record afresh or throws the error it always throws.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_buf.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/refl/may_null_pointer.h"
#include "tn_velkor/asn/asn_member_lines.h"
#include "tn_velkor/asn/asn_record_encoding.h"

// Whether a record's members suit the fast path: every one primitive, with a
// one-octet tag.
template <class Record>
class AsnFlatMemberLines {
 public:
  template <class Member>
  void Add(const char*, Member Record::*, short number = -1) {
    using Value = typename AsnMemberTraits<Member>::Value;
    constexpr AsnMemberKind kind = AsnMemberKindFor<Value>();
    if (kind == AsnMemberKind::kList || kind == AsnMemberKind::kRecord) m_flat = false;
    if ((TagFirstOctet(AsnMemberTagOf<Member>(number)) & 0x1F) == 0x1F) m_flat = false;
  }
  bool Flat() const { return m_flat; }

 private:
  bool m_flat = true;
};

// Reads the members of one record from [pos, end); Done() tells whether it
// took them all, in order, and exactly up to `end`.
template <class Record>
class AsnFastDecodeLines {
 public:
  AsnFastDecodeLines(Record& record, const unsigned char* pos, const unsigned char* end)
      : m_record(record), m_pos(pos), m_end(end) {}

  template <class Member>
  void Add(const char*, Member Record::*member, short number = -1) {
    using Traits = AsnMemberTraits<Member>;
    using Value = typename Traits::Value;
    constexpr AsnMemberKind kind = AsnMemberKindFor<Value>();
    if constexpr (kind == AsnMemberKind::kList || kind == AsnMemberKind::kRecord) {
      m_ok = false;  // a list or record: never in a record the fast path takes
    } else {
      if (!m_ok) return;
      const unsigned char tag = TagFirstOctet(AsnMemberTagOf<Member>(number));
      std::size_t length = 0;
      if (m_end - m_pos < 2 || m_pos[0] != tag || (length = m_pos[1]) >= 0x80 ||
          length > static_cast<std::size_t>(m_end - m_pos - 2)) {
        // Not this member's short form: an absent optional member, or a case
        // for the generic decoder (which the members after it, or the end
        // test, then find).
        if constexpr (Traits::kOptional) {
          (m_record.*member).Reset();
        } else {
          m_ok = false;
        }
        return;
      }
      const unsigned char* content = m_pos + 2;
      if constexpr (std::is_same_v<Value, AsnTinyInt> || std::is_same_v<Value, AsnInt>) {
        constexpr std::size_t kMaxOctets = std::is_same_v<Value, AsnTinyInt> ? 4 : 8;
        // Refused by the generic decoder: no content, too long, not minimal.
        if (length == 0 || length > kMaxOctets ||
            (length > 1 && ((content[0] == 0x00 && (content[1] & 0x80) == 0) ||
                            (content[0] == 0xFF && (content[1] & 0x80) != 0)))) {
          m_ok = false;
          return;
        }
      } else if constexpr (std::is_same_v<Value, AsnBool>) {
        if (length != 1) {
          m_ok = false;
          return;
        }
      }
      Value& value = ValueOf(m_record.*member);
      if constexpr (std::is_same_v<Value, AsnOcts>) {
        value.Set(content, length);
      } else if constexpr (std::is_same_v<Value, AsnBool>) {
        value.Set(content[0] != 0);
      } else {
        std::uint64_t bits = (content[0] & 0x80) ? ~std::uint64_t{0} : 0;
        for (std::size_t i = 0; i < length; ++i) bits = (bits << 8) | content[i];
        value.Set(static_cast<decltype(value.Value())>(static_cast<std::int64_t>(bits)));
      }
      m_pos = content + length;
    }
  }

  bool Done() const { return m_ok && m_pos == m_end; }

 private:
  template <class Value>
  static Value& ValueOf(Value& member) {
    return member;
  }
  template <class Value>
  static Value& ValueOf(refl::MayNullPointer<Value>& holder) {
    return holder.GetOrCreate();
  }

  Record& m_record;
  const unsigned char* m_pos;
  const unsigned char* m_end;
  bool m_ok = true;
};

// The fast path's view of a record's content: `length` octets at the front
// of `buf` (a definite length that the input holds), for the members of
// `record`, whose member lines `describe(lines)` runs. True when it decoded
// them and consumed `headerLength` + `length` octets; false when the generic
// decoder is to, nothing consumed.
template <class Record, class Describe>
bool AsnDecodeContentFast(Record& record, AsnBuf& buf, std::size_t headerLength, unsigned long length,
                          unsigned long& bytesDecoded, Describe&& describe) {
  if (length > buf.Remaining() - headerLength || !buf.MayEnterConstructed()) return false;
  const unsigned char* content = buf.GetSeg(0) + headerLength;
  AsnFastDecodeLines<Record> lines(record, content, content + length);
  describe(lines);
  if (!lines.Done()) return false;
  buf.GetSeg(headerLength + length);
  bytesDecoded += headerLength + length;
  return true;
}

// The length of the header at the front of `buf` when it is a universal
// SEQUENCE tag with a short or a one- or two-octet long-form length (read
// into `length`); 0 otherwise.
inline std::size_t AsnFastSequenceHeader(const AsnBuf& buf, unsigned long& length) {
  const std::size_t available = buf.Remaining();
  if (available < 2) return 0;
  const unsigned char* header = const_cast<AsnBuf&>(buf).GetSeg(0);
  if (header[0] != 0x30) return 0;
  if (header[1] < 0x80) {
    length = header[1];
    return 2;
  }
  if (header[1] == 0x81 && available >= 3) {
    length = header[2];
    return 3;
  }
  if (header[1] == 0x82 && available >= 4) {
    length = (static_cast<unsigned long>(header[2]) << 8) | header[3];
    return 4;
  }
  return 0;
}
#pragma GCC visibility pop
