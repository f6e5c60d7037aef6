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
// which decodes the record afresh or throws the error it always throws. A
// record with list members is checked whole first and only then stored; its
// lists decode their elements themselves, as they do under the generic
// decoder.
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

// The content of one primitive value of class `Value` that the generic
// decoder takes as it is: an integer the INTEGER rules accept for the class
// (ber.h), a boolean of one octet, any octet string.
template <class Value>
[[gnu::always_inline]] inline bool AsnFastContentAcceptable(const unsigned char* content, std::size_t length) {
  if constexpr (std::is_same_v<Value, AsnTinyInt> || std::is_same_v<Value, AsnInt>) {
    return AsnCheckInteger(content, length, std::is_same_v<Value, AsnTinyInt> ? 4 : 8) == AsnIntegerFault::kNone;
  } else if constexpr (std::is_same_v<Value, AsnBool>) {
    return length == 1;
  } else {
    return true;
  }
}

// The content length of the short-form value with one-octet tag `tag` at
// [pos, end), or -1 when that is not what stands there.
[[gnu::always_inline]] inline long AsnFastShortValue(const unsigned char* pos, const unsigned char* end,
                                                     unsigned char tag) {
  if (end - pos < 2 || pos[0] != tag || pos[1] >= 0x80 || pos[1] > end - pos - 2) return -1;
  return pos[1];
}

// Whether a record's members suit the fast path (every one an octet string,
// an integer or a boolean, or a list of those, with a one-octet tag; a value
// with its own codec goes to the generic decoder), and whether it has lists.
template <class Record>
class AsnFlatMemberLines {
 public:
  template <class Member>
  void Add(const char*, Member Record::*, short number = -1) {
    using Value = typename AsnMemberTraits<Member>::Value;
    constexpr AsnMemberKind kind = AsnMemberKindFor<Value>();
    if constexpr (kind == AsnMemberKind::kRecord || kind == AsnMemberKind::kPrimitive ||
                  kind == AsnMemberKind::kChoice || !AsnHasOneOwnTag<Value>()) {
      m_flat = false;
    } else if constexpr (kind == AsnMemberKind::kList) {
      constexpr AsnMemberKind elementKind = AsnMemberKindFor<typename Value::Element>();
      if (elementKind == AsnMemberKind::kList || elementKind == AsnMemberKind::kRecord ||
          elementKind == AsnMemberKind::kPrimitive || elementKind == AsnMemberKind::kChoice) {
        m_flat = false;
      }
      m_lists = true;
    }
    if ((TagFirstOctet(AsnMemberTagOf<Member>(number)) & 0x1F) == 0x1F) m_flat = false;
  }
  // Members with tags of their own or a DEFAULT, and unknown members, are
  // the generic decoder's.
  template <class Member>
  void Add(const char*, Member Record::*, short, const AsnTagging&, AsnDefaultMaker<Member> = nullptr) {
    m_flat = false;
  }
  // A record with constrained members, too (the generic decoder checks them).
  template <class Member>
  void Constrain(const char*, Member Record::*, const AsnBounds&) {
    m_flat = false;
  }
  template <class List>
  void Extensions(List Record::*) {
    m_flat = false;
  }
  bool Flat() const { return m_flat; }
  bool HasLists() const { return m_lists; }

 private:
  bool m_flat = true;
  bool m_lists = false;
};

// How AsnFastDecodeLines goes over the members.
enum class AsnFastPass : unsigned char {
  kCheckAndStore,  // one pass that stores as it checks (no list members)
  kCheck,          // checks only, storing nothing
  kStore,          // stores input a kCheck pass accepted
};

// Reads the members of one record from [pos, end); Done() tells whether it
// took them all, in order, and exactly up to `end`. In a kStore pass a list
// member is decoded by the list itself from `buf`, whose read position is
// brought along (BufPos()).
template <class Record, AsnFastPass kPass>
class AsnFastDecodeLines {
 public:
  AsnFastDecodeLines(Record& record, const unsigned char* pos, const unsigned char* end, AsnBuf* buf = nullptr,
                     const unsigned char* bufPos = nullptr)
      : m_record(record), m_pos(pos), m_end(end), m_buf(buf), m_bufPos(bufPos) {}

  template <class Member>
  [[gnu::always_inline]] void Add(const char* name, Member Record::*member, short number = -1) {
    using Traits = AsnMemberTraits<Member>;
    using Value = typename Traits::Value;
    constexpr AsnMemberKind kind = AsnMemberKindFor<Value>();
    if constexpr (kind == AsnMemberKind::kRecord || kind == AsnMemberKind::kPrimitive ||
                  kind == AsnMemberKind::kChoice || !AsnHasOneOwnTag<Value>()) {
      m_ok = false;  // never in a record the fast path takes
    } else {
      if (!m_ok) return;
      const AsnTag tag = AsnMemberTagOf<Member>(number);
      const long shortLength = AsnFastShortValue(m_pos, m_end, TagFirstOctet(tag));
      if (shortLength < 0) {
        // Not this member's short form: an absent optional member, or a case
        // for the generic decoder (which the members after it, or the end
        // test, then find).
        if constexpr (Traits::kOptional) {
          if constexpr (kPass != AsnFastPass::kCheck) (m_record.*member).Reset();
        } else {
          m_ok = false;
        }
        return;
      }
      const auto length = static_cast<std::size_t>(shortLength);
      const unsigned char* content = m_pos + 2;
      m_pos = content + length;
      if constexpr (kind == AsnMemberKind::kList) {
        if constexpr (kPass == AsnFastPass::kStore) {
          StoreList(name, ValueOf(m_record.*member), tag, content, length);
        } else {
          m_ok = CheckElements<typename Value::Element>(content, m_pos);
        }
      } else {
        if constexpr (kPass != AsnFastPass::kStore) {
          if (!AsnFastContentAcceptable<Value>(content, length)) {
            m_ok = false;
            return;
          }
        }
        if constexpr (kPass != AsnFastPass::kCheck) Store(ValueOf(m_record.*member), content, length);
      }
    }
  }

  // Never in a record the fast path takes.
  template <class Member>
  void Add(const char*, Member Record::*, short, const AsnTagging&, AsnDefaultMaker<Member> = nullptr) {
    m_ok = false;
  }
  template <class Member>
  void Constrain(const char*, Member Record::*, const AsnBounds&) {
    m_ok = false;
  }
  template <class List>
  void Extensions(List Record::*) {
    m_ok = false;
  }

  bool Done() const { return m_ok && m_pos == m_end; }
  const unsigned char* BufPos() const { return m_bufPos; }

 private:
  template <class Value>
  static Value& ValueOf(Value& member) {
    return member;
  }
  template <class Value>
  static Value& ValueOf(refl::MayNullPointer<Value>& holder) {
    return holder.GetOrCreate();
  }

  template <class Value>
  static void Store(Value& value, const unsigned char* content, std::size_t length) {
    if constexpr (std::is_same_v<Value, AsnOcts>) {
      value.Set(content, length);
    } else if constexpr (std::is_same_v<Value, AsnBool>) {
      value.Set(content[0] != 0);
    } else {
      value.Set(static_cast<decltype(value.Value())>(AsnReadInteger(content, length)));
    }
  }

  // Every element of a list's content short-form and acceptable, filling it.
  template <class Element>
  static bool CheckElements(const unsigned char* pos, const unsigned char* end) {
    while (pos != end) {
      const long length = AsnFastShortValue(pos, end, TagFirstOctet(AsnUniversalTagOf<Element>()));
      if (length < 0 || !AsnFastContentAcceptable<Element>(pos + 2, static_cast<std::size_t>(length))) return false;
      pos += 2 + length;
    }
    return true;
  }

  // The list decodes its checked content itself, as under the generic
  // decoder, from its two header octets on (so the buffer knows where it
  // starts); what it may still refuse (a limit) names the member as the
  // generic decoder does.
  template <class List>
  void StoreList(const char* name, List& list, AsnTag tag, const unsigned char* content, std::size_t length) {
    m_buf->GetSeg(static_cast<std::size_t>(content - 2 - m_bufPos));
    m_buf->NoteItemStart();
    m_buf->GetSeg(2);
    unsigned long consumed = 0;
    try {
      list.BDecContent(*m_buf, tag, length, consumed, NIClass_BER);
    } catch (AsnDecodeError* error) {
      error->AddMember(name);
      throw;
    }
    m_bufPos = content + length;
  }

  Record& m_record;
  const unsigned char* m_pos;
  const unsigned char* m_end;
  AsnBuf* m_buf;
  const unsigned char* m_bufPos;
  bool m_ok = true;
};

// The fast path's view of a record's content: `length` octets at the front
// of `buf` after `headerLength` octets of header, for the members of
// `record`, whose member lines `describe(lines)` runs. It takes its bounds
// from the buffer: the record must lie within the input and within the value
// open around it, and nest no deeper than allowed. True when it decoded the
// members and consumed the header and the content; false when the generic
// decoder is to, nothing consumed.
template <class Record, class Describe>
bool AsnDecodeContentFast(Record& record, AsnBuf& buf, std::size_t headerLength, unsigned long length,
                          bool hasLists, unsigned long& bytesDecoded, Describe&& describe) {
  // A list member is one constructed level more.
  if (headerLength + length > buf.Available() || !buf.MayEnterConstructed(hasLists ? 2 : 1)) return false;
  const unsigned char* start = buf.GetSeg(0);
  const unsigned char* content = start + headerLength;
  const unsigned char* end = content + length;
  if (!hasLists) {
    AsnFastDecodeLines<Record, AsnFastPass::kCheckAndStore> lines(record, content, end);
    describe(lines);
    if (!lines.Done()) return false;
    buf.GetSeg(headerLength + length);
  } else {
    AsnFastDecodeLines<Record, AsnFastPass::kCheck> check(record, content, end);
    describe(check);
    if (!check.Done()) return false;
    const AsnOpenValueGuard open(buf, buf.Offset(), AsnHolder::kRecord, length, headerLength + length);
    AsnFastDecodeLines<Record, AsnFastPass::kStore> store(record, content, end, &buf, start);
    describe(store);
    buf.GetSeg(static_cast<std::size_t>(end - store.BufPos()));
  }
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
