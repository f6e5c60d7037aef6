#include "tn_platform/asn/asn_explicit_tags.h"

#include "tn_platform/asn/asn_decode_error.h"

namespace {

// Whether a value whose own tag is `own` takes an item with `tag`.
bool OwnTagTakes(AsnTag own, bool eitherForm, AsnTag tag) {
  if (own == kAsnOpenTag) return tag != 0;
  if (own == kAsnChoiceTag) return tag != 0;  // the alternatives are checked by the decoder
  return tag == own || (eitherForm && tag == TagWithForm(own, true));
}

// Reads the header of `chain.tags[level]` and what it holds.
void ReadLevel(AsnBuf& buf, const AsnTagChain& chain, bool eitherForm, unsigned level, AsnLengthCheck check,
               unsigned long& counted, AsnContentDecoder decode, void* context) {
  const bool own = level + 1 == chain.count;
  const AsnTag expected = chain.tags[level];
  const AsnHeader header = BDecHeader(
      buf, counted, [&](AsnTag tag) { return own ? OwnTagTakes(expected, eitherForm, tag) : tag == expected; }, check);
  if (header.status == AsnHeader::kWrongTag && expected == kAsnOpenTag) {
    AsnThrowDecodeError(header.start, "end-of-contents where a value belongs");
  }
  // End-of-contents octets where a CHOICE belongs: refused by the tag, before
  // the length they carry is checked, in the words the CHOICE refuses any
  // tag no alternative takes.
  if (header.status == AsnHeader::kWrongTag && expected == kAsnChoiceTag) decode(context, buf, header);
  if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, expected, buf);
  const std::size_t contentStart = buf.Offset();
  if (own) {
    decode(context, buf, header);
  } else {
    AsnDecodeInsideExplicit(buf, chain, eitherForm, level + 1, header.length, decode, context);
  }
  if (header.length != kIndefiniteLength && buf.Offset() != contentStart + header.length) {
    AsnThrowDecodeError(header.start, "content does not match its length");
  }
}

}  // namespace

void AsnDecodeInsideExplicit(AsnBuf& buf, const AsnTagChain& chain, bool eitherForm, unsigned level,
                             unsigned long length, AsnContentDecoder decode, void* context) {
  const std::size_t tagStart = buf.ItemStart();
  const AsnOpenValueGuard open(buf, AsnHolder::kValue, length);
  if (length == 0 || (length == kIndefiniteLength && AtEoc(buf))) {
    AsnThrowDecodeError(tagStart, "explicit tag without the value it holds");
  }
  unsigned long counted = 0;
  ReadLevel(buf, chain, eitherForm, level, AsnLengthCheck::kNone, counted, decode, context);
  if (length == kIndefiniteLength) BDecEoc(buf, counted);
}

void AsnDecodeUnderTags(AsnBuf& buf, const AsnTagChain& chain, bool eitherForm, unsigned long& bytesDecoded,
                        AsnContentDecoder decode, void* context) {
  const std::size_t start = buf.Offset();
  unsigned long counted = 0;
  ReadLevel(buf, chain, eitherForm, 0, AsnLengthCheck::kPrimitiveOnly, counted, decode, context);
  bytesDecoded += buf.Offset() - start;
}
