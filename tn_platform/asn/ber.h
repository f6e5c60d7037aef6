// BER tag and length coding (X.690 8.1.2 and 8.1.3): the one place where
// identifier and length octets are written and read.
//
// Tags travel packed in 32 bits: the first identifier octet in bits 24..31,
// the subsequent octets of the high-tag-number form in bits 16..23, 8..15 and
// 0..7. A tag that needs more than three subsequent octets does not fit.
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>
#include <string>

#include "tn_platform/asn/asn_buf.h"

using AsnTag = unsigned int;

// The length value that stands for the indefinite form.
constexpr unsigned long kIndefiniteLength = ~0UL;
// The largest definite length the decoder reads; a larger one is refused
// where it is read.
constexpr unsigned long kMaxContentLength = ~0UL >> 1;

enum class AsnTagClass : unsigned char { kUniversal = 0x00, kApplication = 0x40, kContext = 0x80, kPrivate = 0xC0 };

// Subsequent identifier octets that fit below the first one in a packed tag.
constexpr unsigned kAsnMaxSubsequentTagOctets = 3;

// The packed tag of a class, form and number; 0 for a number that needs more
// than kAsnMaxSubsequentTagOctets subsequent octets.
constexpr AsnTag MakeTag(AsnTagClass tagClass, bool constructed, unsigned number) {
  const unsigned first = static_cast<unsigned>(tagClass) | (constructed ? 0x20u : 0u);
  if (number < 31) return (first | number) << 24;
  // High-tag-number form: base-128 digits, most significant first, bit 8 set
  // on all but the last.
  unsigned digits = 1;
  for (unsigned rest = number >> 7; rest != 0; rest >>= 7) ++digits;
  if (digits > kAsnMaxSubsequentTagOctets) return 0;
  AsnTag tag = (first | 0x1Fu) << 24;
  for (unsigned i = 0; i < digits; ++i) {
    const unsigned digit = (number >> (7 * (digits - 1 - i))) & 0x7Fu;
    tag |= (digit | (i + 1 < digits ? 0x80u : 0u)) << (8 * (2 - i));
  }
  return tag;
}

constexpr AsnTag kTagBoolean = 0x01000000u;
constexpr AsnTag kTagInteger = 0x02000000u;
constexpr AsnTag kTagOctetString = 0x04000000u;
constexpr AsnTag kTagOctetStringConstructed = 0x24000000u;
constexpr AsnTag kTagSequence = 0x30000000u;
// Stands for the tag of an open value (AsnAny), which takes any tag:
// [UNIVERSAL 0] constructed, which no valid encoding carries.
constexpr AsnTag kAsnOpenTag = 0x20000000u;

constexpr unsigned char TagFirstOctet(AsnTag tag) { return static_cast<unsigned char>(tag >> 24); }
constexpr bool TagIsConstructed(AsnTag tag) { return (TagFirstOctet(tag) & 0x20) != 0; }
inline AsnTagClass TagClassOf(AsnTag tag) { return static_cast<AsnTagClass>(TagFirstOctet(tag) & 0xC0); }
// The tag number (for the low-tag form, the five low bits of the first octet).
unsigned TagNumber(AsnTag tag);
// The same tag in the other form (primitive <-> constructed).
inline AsnTag TagWithForm(AsnTag tag, bool constructed) {
  return constructed ? (tag | 0x20000000u) : (tag & ~0x20000000u);
}
// The tag a record member travels with: an optional member, registered with
// context number `number`, as [number] IMPLICIT in the form of its type; a
// mandatory one as its type's own `universal` tag.
[[gnu::always_inline]] constexpr AsnTag AsnMemberTag(AsnTag universal, bool optional, short number) {
  if (!optional) return universal;
  const unsigned form = TagIsConstructed(universal) ? 0x20u : 0u;
  // The one-octet form inline: a line's number is a constant where it is used.
  if (number >= 0 && number < 31) return (0x80u | form | static_cast<unsigned>(number)) << 24;
  return MakeTag(AsnTagClass::kContext, form != 0, static_cast<unsigned>(number));
}
// "[UNIVERSAL 16] constructed", "[2] primitive", ...
std::string TagToString(AsnTag tag);
// The name of a universal tag number ("INTEGER", "SEQUENCE"), or null.
const char* UniversalTagName(unsigned number);
// TagToString with the universal type's name, for messages:
// "[UNIVERSAL 2] primitive (INTEGER)", "[UNIVERSAL 0] primitive (end-of-contents)".
std::string TagDescription(AsnTag tag);

// ---- encoding (in front of what the buffer holds) --------------------------
// Writes the identifier octets of a high-tag-number `tag`; returns how many.
unsigned long BEncHighTag(AsnBuf& buf, AsnTag tag);
// Writes the identifier octets of `tag`; returns how many. Tags numbered
// below 31 (every universal tag, most context tags) take one octet, inline.
inline unsigned long BEncTag(AsnBuf& buf, AsnTag tag) {
  if ((TagFirstOctet(tag) & 0x1F) != 0x1F) {
    buf.PutByteRvs(TagFirstOctet(tag));
    return 1;
  }
  return BEncHighTag(buf, tag);
}
// Writes a definite length in the long form, with the fewest length octets
// (at least one, also for 0); returns how many octets, the initial one included.
unsigned long BEncDefLenImpl(AsnBuf& buf, unsigned long length);
// Writes a definite length in the shortest form; returns how many octets.
inline unsigned long BEncDefLen(AsnBuf& buf, unsigned long length) {
  if (length < 128) {
    buf.PutByteRvs(static_cast<unsigned char>(length));
    return 1;
  }
  return BEncDefLenImpl(buf, length);
}

// ---- encoding front to back (into room measured beforehand) ----------------
// How many identifier octets a high-tag-number `tag` takes.
unsigned AsnHighTagOctets(AsnTag tag);
// How many identifier octets `tag` takes.
[[gnu::always_inline]] inline unsigned AsnIdentifierOctets(AsnTag tag) {
  return (TagFirstOctet(tag) & 0x1F) != 0x1F ? 1 : AsnHighTagOctets(tag);
}
// How many octets the shortest definite form of `length` takes.
[[gnu::always_inline]] inline unsigned AsnLengthOctets(unsigned long length) {
  if (length < 128) return 1;
  return 1 + (64 - static_cast<unsigned>(__builtin_clzl(length)) + 7) / 8;
}
// Writes the identifier octets of `tag` at `out`; returns the end.
inline unsigned char* AsnWriteTag(unsigned char* out, AsnTag tag) {
  const unsigned count = AsnIdentifierOctets(tag);
  for (unsigned i = 0; i < count; ++i) out[i] = static_cast<unsigned char>(tag >> (24 - 8 * i));
  return out + count;
}
// Writes the shortest definite form of `length` at `out`; returns the end.
inline unsigned char* AsnWriteLength(unsigned char* out, unsigned long length) {
  if (length < 128) {
    *out = static_cast<unsigned char>(length);
    return out + 1;
  }
  const unsigned count = AsnLengthOctets(length) - 1;
  *out++ = static_cast<unsigned char>(0x80 | count);
  for (unsigned i = count; i-- > 0;) *out++ = static_cast<unsigned char>(length >> (8 * i));
  return out;
}
// Writes tag and length; the common one-octet tag with a short-form length
// is two plain stores. The encoder's helpers are always inlined: each is a
// few instructions on the hottest path.
[[gnu::always_inline]] inline unsigned char* AsnWriteHeader(unsigned char* out, AsnTag tag, unsigned long length) {
  if (length < 128 && (TagFirstOctet(tag) & 0x1F) != 0x1F) {
    out[0] = TagFirstOctet(tag);
    out[1] = static_cast<unsigned char>(length);
    return out + 2;
  }
  return AsnWriteLength(AsnWriteTag(out, tag), length);
}
// Octets a complete encoding with `tag` and `length` content octets takes.
[[gnu::always_inline]] inline unsigned long AsnEncodedSize(AsnTag tag, unsigned long length) {
  return AsnIdentifierOctets(tag) + AsnLengthOctets(length) + length;
}

// ---- INTEGER content ----------------------------------------------------------
// Minimal two's complement, most significant octet first.

// How many content octets `value` takes: its significant bits, sign bit
// included, rounded up to octets.
[[gnu::always_inline]] inline unsigned AsnIntegerOctets(std::int64_t value) {
  return (71u - static_cast<unsigned>(__builtin_clrsbll(value))) / 8u;
}
// Writes the `octets` low octets of `value` at `out`; returns the end.
[[gnu::always_inline]] inline unsigned char* AsnWriteInteger(unsigned char* out, std::int64_t value,
                                                             unsigned octets) {
  for (unsigned i = octets; i-- > 0;) *out++ = static_cast<unsigned char>(static_cast<std::uint64_t>(value) >> (8 * i));
  return out;
}
// What is wrong with INTEGER content of `length` octets for a value class
// holding at most `maxOctets`; kNone when it is acceptable.
enum class AsnIntegerFault : unsigned char { kNone, kEmpty, kNotMinimal, kTooLong };
[[gnu::always_inline]] inline AsnIntegerFault AsnCheckInteger(const unsigned char* content, std::size_t length,
                                                              std::size_t maxOctets) {
  if (length == 0) return AsnIntegerFault::kEmpty;
  if (length > 1 && ((content[0] == 0x00 && (content[1] & 0x80) == 0) ||
                     (content[0] == 0xFF && (content[1] & 0x80) != 0))) {
    return AsnIntegerFault::kNotMinimal;
  }
  return length > maxOctets ? AsnIntegerFault::kTooLong : AsnIntegerFault::kNone;
}
// The value of 1 to 8 content octets.
[[gnu::always_inline]] inline std::int64_t AsnReadInteger(const unsigned char* content, std::size_t length) {
  std::uint64_t bits = (content[0] & 0x80) != 0 ? ~std::uint64_t{0} : 0;
  for (std::size_t i = 0; i < length; ++i) bits = (bits << 8) | content[i];
  return static_cast<std::int64_t>(bits);
}

// ---- decoding ---------------------------------------------------------------
// Malformed tag and length octets throw an AsnDecodeError placed at the item
// they start; an input that ends inside them sets the read-error flag. Where
// an item runs past the value holding it, or the input ends, the buffer's
// one rule places the error (AsnBuf::ThrowRunsPast, ThrowInputEnds).

// Completes a tag whose first octet (just read, in `tag` shifted left by 24)
// has its five low bits all set. Throws on a leading 0x80 subsequent octet, a
// number below 31 (which takes the one-octet form) or a tag number that does
// not fit.
void BDecTag_Impl(AsnBuf& buf, unsigned long& bytesDecoded, unsigned int& tag);
// Reads the rest of a length whose first octet `first` (just read) has bit 7
// set, of the item starting at `itemStart`: 0x80 yields kIndefiniteLength;
// 0xFF, a value that needs more than AsnDecodeLimits::kMaxLengthOctets octets
// (leading zero octets aside) and one above kMaxContentLength throw.
// The length is not checked against the input.
unsigned long BDecLen_Impl(AsnBuf& buf, unsigned long& bytesDecoded, unsigned char first, std::size_t itemStart);
// Throws: the input ends before the definite `length` of the item whose tag
// was read last, its content starting here.
[[noreturn]] void BDecLenPastInput(const AsnBuf& buf, unsigned long length);
// Reads a whole tag, noting where its item starts; 0 with the read-error
// flag set when the input is exhausted. A one-octet tag is read inline.
inline AsnTag BDecTag(AsnBuf& buf, unsigned long& bytesDecoded) {
  buf.NoteItemStart();
  const unsigned char first = buf.GetByte();
  ++bytesDecoded;
  if (buf.ReadError()) return 0;
  AsnTag tag = static_cast<AsnTag>(first) << 24;
  if ((first & 0x1F) == 0x1F) BDecTag_Impl(buf, bytesDecoded, tag);
  return tag;
}
// Reads a whole length (short, long or indefinite form) of the item starting
// at `itemStart`, without checking it against the input (a structure dump
// shows what a cut input holds). The short form is read inline.
inline unsigned long BDecLenOctets(AsnBuf& buf, unsigned long& bytesDecoded, std::size_t itemStart) {
  const unsigned char first = buf.GetByte();
  ++bytesDecoded;
  if (buf.ReadError()) return 0;
  if ((first & 0x80) == 0) return first;
  return BDecLen_Impl(buf, bytesDecoded, first, itemStart);
}
// Reads a whole length; a definite length beyond the octets left in the
// input throws as well (malformed length octets are placed at their first
// octet).
inline unsigned long BDecLen(AsnBuf& buf, unsigned long& bytesDecoded) {
  const std::size_t start = buf.Offset();
  const unsigned long length = BDecLenOctets(buf, bytesDecoded, start);
  if (!buf.ReadError() && length != kIndefiniteLength && length > buf.Remaining()) BDecLenPastInput(buf, length);
  return length;
}

// ---- the header of one value ------------------------------------------------
// The identifier and length octets of a value, and how reading them ended.
struct AsnHeader {
  enum Status : unsigned char {
    kComplete,       // tag accepted, length read
    kEndsBeforeTag,  // no octet left for the tag (read-error flag set, tag 0)
    kWrongTag,       // the tag was not accepted; the length is not read
    kEndsInLength,   // the input ends inside the length (read-error flag set)
  };
  AsnTag tag = 0;
  unsigned long length = 0;  // kIndefiniteLength for the indefinite form
  std::size_t start = 0;     // offset of the first identifier octet
  Status status = kComplete;
};

// How a definite length is checked against the octets left in the input.
enum class AsnLengthCheck {
  kAgainstInput,   // every definite length must fit (a primitive value's own BDec)
  kPrimitiveOnly,  // a constructed value's may run past the input: its content is
                   // decoded as far as the input goes, so that the error names
                   // the first item inside that breaks, or the end of the
                   // input when its items end short of its length
  kNone,           // the caller checks every definite length: against the end
                   // of the value that holds the item first, then the input
};

// Reads the header of one value: the tag, which `acceptTag(tag)` must accept
// (it may also throw an error of its own), then the length. One-octet tags
// and short-form lengths are read inline. Early ends and a refused tag are
// reported in the status; malformed tag or length octets, an item that runs
// past the definite-length value open around it and a length past the input
// (as `lengthCheck` says) throw.
template <class AcceptTag>
inline AsnHeader BDecHeader(AsnBuf& buf, unsigned long& bytesDecoded, AcceptTag&& acceptTag,
                            AsnLengthCheck lengthCheck = AsnLengthCheck::kAgainstInput) {
  AsnHeader header;
  header.start = buf.Offset();
  const std::size_t limit = buf.Limit();
  // Inside an indefinite-length value that has reached the end of the
  // definite one holding it, any item runs past.
  if (header.start >= limit) buf.ThrowRunsPast(header.start, AsnBuf::Overrun::kItem);
  header.tag = BDecTag(buf, bytesDecoded);
  if (buf.ReadError()) {
    header.status = AsnHeader::kEndsBeforeTag;
  } else if (!acceptTag(header.tag)) {
    header.status = AsnHeader::kWrongTag;
  } else {
    const unsigned char first = buf.GetByte();
    ++bytesDecoded;
    const bool mayBeCut = lengthCheck == AsnLengthCheck::kNone ||
                          (lengthCheck == AsnLengthCheck::kPrimitiveOnly && TagIsConstructed(header.tag));
    if (buf.ReadError()) {
      header.status = AsnHeader::kEndsInLength;
      return header;
    }
    header.length = (first & 0x80) == 0 ? first : BDecLen_Impl(buf, bytesDecoded, first, header.start);
    if (buf.ReadError()) {
      header.status = AsnHeader::kEndsInLength;
      return header;
    }
    const bool definite = header.length != kIndefiniteLength;
    if (limit != kAsnNoEnd) {
      const std::size_t contentStart = buf.Offset();
      if (contentStart > limit) buf.ThrowRunsPast(header.start, AsnBuf::Overrun::kHeader);
      if (definite && header.length > limit - contentStart) {
        buf.ThrowRunsPast(header.start, AsnBuf::Overrun::kLength, header.length);
      }
    }
    if (definite && header.length > buf.Remaining() && !mayBeCut) BDecLenPastInput(buf, header.length);
  }
  return header;
}

// The header of a value that carries `tag` (or `otherForm`, for a type that
// also comes in the other form).
inline AsnHeader BDecHeader(AsnBuf& buf, unsigned long& bytesDecoded, AsnTag tag, AsnTag otherForm) {
  return BDecHeader(buf, bytesDecoded, [tag, otherForm](AsnTag read) { return read == tag || read == otherForm; });
}
inline AsnHeader BDecHeader(AsnBuf& buf, unsigned long& bytesDecoded, AsnTag tag) {
  return BDecHeader(buf, bytesDecoded, tag, tag);
}

// Throws for a header that did not complete: "wrong tag <found>, expected
// <expected>" placed at its start, or "input ends before the tag", "... in the
// tag" or "... in the length" (AsnBuf::ThrowInputEnds places it). Called only
// on the failing path, so the message is built only there.
[[noreturn]] void AsnThrowHeaderError(const AsnHeader& header, AsnTag expected, const AsnBuf& buf);

// "element runs past the end of its list (content length N)".
std::string AsnListOverrunText(unsigned long length);

// Consumes the end-of-contents octets 00 00. Throws when the input ends
// before or inside them (AsnBuf::ThrowInputEnds places it), when they run
// past the definite-length value holding them, or, placed at them, when they
// are not 00 00.
void BDecEoc(AsnBuf& buf, unsigned long& bytesDecoded);
// True when the next octet starts end-of-contents (nothing is consumed).
bool AtEoc(const AsnBuf& buf);
#pragma GCC visibility pop
