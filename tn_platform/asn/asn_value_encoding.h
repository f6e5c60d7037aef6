// The encoder's two passes over one value of the runtime's value classes:
// AsnContentLength measures its content (the sizing pass, which notes the
// lengths of constructed values in AsnEncodeSizes) and AsnWriteValue writes
// its complete encoding under a given tag front to back (the writing pass,
// which takes those lengths in the same order). Records and lists run these
// for their members and elements. A record's or list's own passes are
// virtual; on a value whose class is final (every record and list class the
// record compiler writes) they are direct calls.
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_choice.h"
#include "tn_platform/asn/asn_encode_sizes.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_tagging.h"
#include "tn_platform/asn/ber.h"

// Copies `size` octets to `out`; returns the end. Short runs (most texts of
// a record) take two overlapping word stores instead of a call.
[[gnu::always_inline]] inline unsigned char* AsnCopyOctets(unsigned char* out, const unsigned char* data, std::size_t size) {
  if (size >= 8 && size <= 16) {
    std::uint64_t head, tail;
    std::memcpy(&head, data, 8);
    std::memcpy(&tail, data + size - 8, 8);
    std::memcpy(out, &head, 8);
    std::memcpy(out + size - 8, &tail, 8);
  } else if (size >= 4 && size < 8) {
    std::uint32_t head, tail;
    std::memcpy(&head, data, 4);
    std::memcpy(&tail, data + size - 4, 4);
    std::memcpy(out, &head, 4);
    std::memcpy(out + size - 4, &tail, 4);
  } else if (size != 0 && size < 4) {
    out[0] = data[0];
    out[size / 2] = data[size / 2];
    out[size - 1] = data[size - 1];
  } else if (size != 0) {
    std::memcpy(out, data, size);
  }
  return out + size;
}

// Whether `Value` is a record or list class with tags written on its type
// (static constexpr AsnTagging kTagging), a record class that is a SET
// (static constexpr AsnStructure kStructure), a list class that is a SET OF
// (static constexpr AsnTag kListTag).
template <class Value, class = void>
struct AsnHasTagging : std::false_type {};
template <class Value>
struct AsnHasTagging<Value, std::void_t<decltype(Value::kTagging)>> : std::true_type {};
template <class Value, class = void>
struct AsnHasDeep : std::false_type {};
template <class Value>
struct AsnHasDeep<Value, std::void_t<decltype(Value::kDeep)>> : std::true_type {};
template <class Value, class = void>
struct AsnHasStructure : std::false_type {};
template <class Value>
struct AsnHasStructure<Value, std::void_t<decltype(Value::kStructure)>> : std::true_type {};

// The tag a value of class `Value` carries without tags of its type.
template <class Value>
constexpr AsnTag AsnBareTagOf() {
  if constexpr (std::is_base_of_v<AsnOcts, Value>) return kTagOctetString;
  if constexpr (std::is_base_of_v<AsnTinyInt, Value> || std::is_base_of_v<AsnInt, Value>) return kTagInteger;
  if constexpr (std::is_base_of_v<AsnBool, Value>) return kTagBoolean;
  if constexpr (std::is_base_of_v<AsnPrimitive, Value>) return Value::kUniversalTag;
  if constexpr (std::is_base_of_v<AsnChoice, Value>) return kAsnChoiceTag;
  if constexpr (std::is_base_of_v<AsnListBase, Value>) return Value::kListTag;
  if constexpr (AsnHasStructure<Value>::value) {
    if constexpr (Value::kStructure == AsnStructure::kSet) return kTagSet;
  }
  return kTagSequence;
}

// The tags a value of class `Value` carries on its own (as a list element,
// a member without tags, a whole value), outermost first.
template <class Value>
constexpr AsnTagChain AsnOwnTagsOf() {
  if constexpr (AsnHasTagging<Value>::value) {
    return AsnApplyTags(Value::kTagging, AsnTagChainOf(AsnBareTagOf<Value>()));
  } else {
    return AsnTagChainOf(AsnBareTagOf<Value>());
  }
}

// The outermost of them.
template <class Value>
constexpr AsnTag AsnUniversalTagOf() {
  return AsnOwnTagsOf<Value>().Outer();
}

// Whether a value of class `Value` travels under one tag of its own, as
// every value of the common records does (not a CHOICE, nor a type with
// EXPLICIT tags).
template <class Value>
constexpr bool AsnHasOneOwnTag() {
  return !AsnOwnTagsOf<Value>().Wrapped() && AsnUniversalTagOf<Value>() != kAsnChoiceTag;
}

// Sizing pass: the content length of `value`. A record or list takes its
// slot in `sizes` before its members do.
template <class Value>
[[gnu::always_inline]] inline unsigned long AsnContentLength(const Value& value, AsnEncodeSizes& sizes) {
  if constexpr (std::is_same_v<Value, AsnOcts>) {
    return value.Len();
  } else if constexpr (std::is_same_v<Value, AsnTinyInt> || std::is_same_v<Value, AsnInt>) {
    return AsnIntegerOctets(value.Value());
  } else if constexpr (std::is_same_v<Value, AsnBool>) {
    return 1;
  } else if constexpr (std::is_base_of_v<AsnPrimitive, Value>) {
    return value.ContentLength();
  } else {
    static_assert(std::is_base_of_v<AsnListBase, Value> || std::is_base_of_v<AsnSequence, Value>,
                  "a value class the encoder does not handle");
    const std::size_t slot = sizes.TakeSlot();
    const unsigned long length = value.MeasureContent(sizes);
    sizes.Set(slot, length);
    return length;
  }
}

// Sizing pass: the complete encoding of `value` under `tag` (a value under
// a headerless tag, an open value or a CHOICE, is its content alone).
template <class Value>
[[gnu::always_inline]] inline unsigned long AsnValueSize(AsnTag tag, const Value& value, AsnEncodeSizes& sizes) {
  if constexpr (std::is_base_of_v<AsnPrimitive, Value>) {
    return value.EncodedSize(tag);
  } else {
    const unsigned long length = AsnContentLength(value, sizes);
    return AsnTagIsHeaderless(tag) ? length : AsnEncodedSize(tag, length);
  }
}

// Writing pass: tag, length and content of `value` at `out`; returns the end.
template <class Value>
[[gnu::always_inline]] inline unsigned char* AsnWriteValue(unsigned char* out, AsnTag tag, const Value& value, AsnEncodeSizes& sizes) {
  if constexpr (std::is_same_v<Value, AsnOcts>) {
    const std::string_view octets = value.view();
    out = AsnWriteHeader(out, tag, octets.size());
    return AsnCopyOctets(out, reinterpret_cast<const unsigned char*>(octets.data()), octets.size());
  } else if constexpr (std::is_same_v<Value, AsnTinyInt> || std::is_same_v<Value, AsnInt>) {
    const unsigned octets = AsnIntegerOctets(value.Value());
    return AsnWriteInteger(AsnWriteHeader(out, tag, octets), value.Value(), octets);
  } else if constexpr (std::is_same_v<Value, AsnBool>) {
    out = AsnWriteHeader(out, tag, 1);
    *out = value.Value() ? 0xFF : 0x00;
    return out + 1;
  } else if constexpr (std::is_base_of_v<AsnPrimitive, Value>) {
    return value.WriteEncoded(out, tag);
  } else {
    const unsigned long length = sizes.Next();
    return value.WriteContent(AsnTagIsHeaderless(tag) ? out : AsnWriteHeader(out, tag, length), sizes);
  }
}

// The complete encoding of a value whose content and explicit tags inside
// `chain.tags[level]` take `inner` octets: the size from that tag out.
[[gnu::always_inline]] inline unsigned long AsnWrappedSize(const AsnTagChain& chain, unsigned long inner) {
  for (unsigned level = chain.count - 1; level-- > 0;) inner = AsnEncodedSize(chain.tags[level], inner);
  return inner;
}

// Writes the headers of the explicit tags of `chain` around a value whose
// complete encoding under its own tag takes `inner` octets; returns the end.
inline unsigned char* AsnWriteExplicitTags(unsigned char* out, const AsnTagChain& chain, unsigned long inner) {
  unsigned long lengths[kAsnMaxTags + 1];
  for (unsigned level = chain.count - 1; level-- > 0;) {
    lengths[level] = inner;
    inner = AsnEncodedSize(chain.tags[level], inner);
  }
  for (unsigned level = 0; level + 1 < chain.count; ++level) out = AsnWriteHeader(out, chain.tags[level], lengths[level]);
  return out;
}

// Both passes under every tag of `chain`: a value with explicit tags notes
// the size of what they hold in a slot of its own, before its content's.
template <class Value>
[[gnu::always_inline]] inline unsigned long AsnChainSize(const AsnTagChain& chain, const Value& value,
                                                         AsnEncodeSizes& sizes) {
  if (!chain.Wrapped()) return AsnValueSize(chain.Outer(), value, sizes);
  const std::size_t slot = sizes.TakeSlot();
  const unsigned long inner = AsnValueSize(chain.Inner(), value, sizes);
  sizes.Set(slot, inner);
  return AsnWrappedSize(chain, inner);
}
template <class Value>
[[gnu::always_inline]] inline unsigned char* AsnWriteChain(unsigned char* out, const AsnTagChain& chain,
                                                           const Value& value, AsnEncodeSizes& sizes) {
  if (!chain.Wrapped()) return AsnWriteValue(out, chain.Outer(), value, sizes);
  out = AsnWriteExplicitTags(out, chain, sizes.Next());
  return AsnWriteValue(out, chain.Inner(), value, sizes);
}

// Both passes for a whole record or list under `tag`, in front of what
// `buf` holds; returns the octets written. Its own length is known between
// the passes, so it takes no slot.
template <class Value>
[[gnu::always_inline]] inline unsigned long AsnEncodeValueInto(AsnBuf& buf, AsnTag tag, const Value& value) {
  AsnEncodeSizes& sizes = buf.EncodeSizes();
  sizes.Clear();
  const unsigned long length = value.MeasureContent(sizes);
  const unsigned long size = AsnEncodedSize(tag, length);
  sizes.StartReading();
  value.WriteContent(AsnWriteHeader(buf.ReserveFront(size), tag, length), sizes);
  return size;
}

// Both passes for a whole value under `chain`, in front of what `buf` holds.
template <class Value>
inline unsigned long AsnEncodeChainInto(AsnBuf& buf, const AsnTagChain& chain, const Value& value) {
  if (!chain.Wrapped() && !AsnTagIsHeaderless(chain.Outer())) return AsnEncodeValueInto(buf, chain.Outer(), value);
  AsnEncodeSizes& sizes = buf.EncodeSizes();
  sizes.Clear();
  const unsigned long size = AsnChainSize(chain, value, sizes);
  sizes.StartReading();
  AsnWriteChain(buf.ReserveFront(size), chain, value, sizes);
  return size;
}

// Both passes for the content alone of a record or list (its members or
// elements, without its own tag and length).
template <class Value>
inline unsigned long AsnEncodeContentInto(AsnBuf& buf, const Value& value) {
  AsnEncodeSizes& sizes = buf.EncodeSizes();
  sizes.Clear();
  const unsigned long length = value.MeasureContent(sizes);
  sizes.StartReading();
  value.WriteContent(buf.ReserveFront(length), sizes);
  return length;
}
#pragma GCC visibility pop
