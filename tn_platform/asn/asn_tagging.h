// Tags as a module writes them, on a member or on a type assignment, and the
// chain of identifiers they give a value on the wire.
//
//   version [0] EXPLICIT INTEGER                 ->  A0 { 02 }
//   id [APPLICATION 2] IMPLICIT INTEGER          ->  42
//   Foo ::= [APPLICATION 3] IMPLICIT SEQUENCE    ->  63
//   x [1] EXPLICIT [PRIVATE 5] IMPLICIT Foo      ->  A1 { E5 }
//
// A CHOICE and an open value have no tag of their own (the alternative's or
// the value's is on the wire): a tag on them is always EXPLICIT.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/ber.h"

// Stands for the tag of a CHOICE: no identifier of its own. It matches no
// identifier a decoder reads (a first octet of 00 reads as tag 0).
constexpr AsnTag kAsnChoiceTag = 0x00000001u;

// A tag that writes no identifier and length of its own.
constexpr bool AsnTagIsHeaderless(AsnTag tag) { return tag == kAsnOpenTag || tag == kAsnChoiceTag; }

// At most this many tags written on one member and its type together.
constexpr unsigned kAsnMaxTags = 4;

// The tags written on a member or a type, outermost first:
//   [0] EXPLICIT [APPLICATION 2] IMPLICIT
//   -> AsnTagging::Explicit(AsnTagClass::kContext, 0).ThenImplicit(AsnTagClass::kApplication, 2)
class AsnTagging {
 public:
  struct Written {
    AsnTagClass tagClass;
    unsigned number;
    bool isExplicit;
  };

  constexpr AsnTagging() = default;
  static constexpr AsnTagging Implicit(AsnTagClass tagClass, unsigned number) {
    return AsnTagging().ThenImplicit(tagClass, number);
  }
  static constexpr AsnTagging Explicit(AsnTagClass tagClass, unsigned number) {
    return AsnTagging().ThenExplicit(tagClass, number);
  }
  // The same tags with one more inside them.
  constexpr AsnTagging ThenImplicit(AsnTagClass tagClass, unsigned number) const {
    return Then(Written{tagClass, number, false});
  }
  constexpr AsnTagging ThenExplicit(AsnTagClass tagClass, unsigned number) const {
    return Then(Written{tagClass, number, true});
  }

  constexpr unsigned Count() const { return m_count; }
  constexpr const Written& operator[](unsigned index) const { return m_tags[index]; }

 private:
  constexpr AsnTagging Then(Written tag) const {
    AsnTagging more = *this;
    if (m_count == kAsnMaxTags) throw "more tags than kAsnMaxTags";
    more.m_tags[more.m_count++] = tag;
    return more;
  }

  Written m_tags[kAsnMaxTags] = {};
  unsigned m_count = 0;
};

// The identifiers a value travels under, outermost first: an EXPLICIT tag
// each (constructed, around what follows), then the value's own tag (its
// universal tag, an IMPLICIT tag in its place, or a headerless one).
struct AsnTagChain {
  AsnTag tags[kAsnMaxTags + 1] = {};
  unsigned count = 0;

  constexpr AsnTag Outer() const { return tags[0]; }
  constexpr AsnTag Inner() const { return tags[count - 1]; }
  // Explicit tags around the value's own.
  constexpr bool Wrapped() const { return count > 1; }
};

// The constructed values a value under `chain` opens on the wire: one per
// EXPLICIT tag, and one for its own tag when that is constructed (a
// SEQUENCE, SET or list; a CHOICE or an open value writes none of its own).
constexpr unsigned AsnConstructedLevels(const AsnTagChain& chain) {
  unsigned levels = 0;
  for (unsigned index = 0; index < chain.count; ++index) {
    const AsnTag tag = chain.tags[index];
    if (!AsnTagIsHeaderless(tag) && TagIsConstructed(tag)) ++levels;
  }
  return levels;
}

constexpr AsnTagChain AsnTagChainOf(AsnTag tag) {
  AsnTagChain chain;
  chain.tags[0] = tag;
  chain.count = 1;
  return chain;
}

// `tags` applied to a type whose own chain is `own`, innermost tag first: an
// EXPLICIT tag goes around what is there; an IMPLICIT one takes the place of
// its outermost tag, in that tag's form, except on a headerless one (a
// CHOICE, an open value), which it goes around as EXPLICIT does.
constexpr AsnTagChain AsnApplyTags(const AsnTagging& tags, AsnTagChain own) {
  for (unsigned index = tags.Count(); index-- > 0;) {
    const AsnTagging::Written& tag = tags[index];
    if (!tag.isExplicit && !AsnTagIsHeaderless(own.tags[0])) {
      own.tags[0] = MakeTag(tag.tagClass, TagIsConstructed(own.tags[0]), tag.number);
      continue;
    }
    if (own.count == kAsnMaxTags + 1) throw "more tags than kAsnMaxTags";
    for (unsigned at = own.count; at > 0; --at) own.tags[at] = own.tags[at - 1];
    own.tags[0] = MakeTag(tag.tagClass, true, tag.number);
    ++own.count;
  }
  return own;
}

// The canonical order of tags (a SET's members in DER): UNIVERSAL, then
// APPLICATION, context-specific and PRIVATE, each by number; the form aside.
inline bool AsnTagOrderLess(AsnTag left, AsnTag right) {
  const unsigned leftClass = TagFirstOctet(left) & 0xC0;
  const unsigned rightClass = TagFirstOctet(right) & 0xC0;
  if (leftClass != rightClass) return leftClass < rightClass;
  return TagNumber(left) < TagNumber(right);
}
#pragma GCC visibility pop
