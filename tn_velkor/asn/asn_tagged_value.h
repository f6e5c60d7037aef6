// AsnTaggedValue<Self, Base>: a value class of a type assignment with tags
// written on it, over a simple value class `Base` (a string, a number, any
// AsnPrimitive):
//
//   DelRequest ::= [APPLICATION 10] OCTET STRING
//   class DelRequest final : public AsnTaggedValue<DelRequest, AsnOcts> {
//     static constexpr AsnTagging kTagging = AsnTagging::Implicit(AsnTagClass::kApplication, 10); ...
//
// Decoded or encoded as a whole value it travels under its own tags. A
// member of such a type over OCTET STRING, BOOLEAN or a 32- or 64-bit INTEGER
// is held in `Base` itself, the tags written on its member line (the record
// codec handles those classes by their exact class); over any other kind, in
// this class, whose kTagging the member's tags start from.
#pragma once
#pragma GCC visibility push(default)

#include <type_traits>

#include "tn_platform/asn/asn_explicit_tags.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_value_encoding.h"

template <class Self, class Base>
class AsnTaggedValue : public Base {
 public:
  using Base::Base;

  void BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) override {
    AsnDecodeUnderTags(buf, AsnOwnTagsOf<Self>(), std::is_same_v<Base, AsnOcts> || PrimitiveConstructedAllowed(),
                       bytesDecoded, [this](AsnBuf& in, const AsnHeader& header) {
                         const std::size_t start = in.Offset();
                         if constexpr (std::is_base_of_v<AsnPrimitive, Base>) {
                           this->DecodeContent(in, header.tag, header.length);
                         } else {
                           unsigned long counted = 0;
                           this->BDecContent(in, header.tag, header.length, counted);
                         }
                         if (header.length != kIndefiniteLength && in.Offset() != start + header.length) {
                           AsnThrowDecodeError(header.start, "content does not match its length");
                         }
                       });
  }

  // The content first, then each header in front of it, innermost first.
  unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) override {
    constexpr AsnTagChain kTags = AsnOwnTagsOf<Self>();
    unsigned long length = 0;
    if constexpr (std::is_base_of_v<AsnPrimitive, Base>) {
      length = this->ContentLength();
      this->WriteContent(buf.ReserveFront(length));
    } else {
      length = this->BEncContent(buf);
    }
    for (unsigned index = kTags.count; index-- > 0;) {
      const unsigned long size = AsnEncodedSize(kTags.tags[index], length);
      AsnWriteHeader(buf.ReserveFront(size - length), kTags.tags[index], length);
      length = size;
    }
    return length;
  }

 private:
  bool PrimitiveConstructedAllowed() const {
    if constexpr (std::is_base_of_v<AsnPrimitive, Base>) {
      return Base::kConstructedAllowed;
    } else {
      return false;
    }
  }
};
#pragma GCC visibility pop
