// AsnPrimitive: a value that carries its own codec. The runtime's generic
// operations (the record decoder, assignment, the encoder's two passes, the
// JSON reader and writer, value notation, the type descriptions) handle
// octet strings, integers and booleans themselves and every other universal
// kind through these functions, one case each (AsnMemberKind::kPrimitive).
//
// A concrete class gives, besides the virtual functions:
//   static constexpr AsnTag kUniversalTag;      the tag it carries on its own
//   static constexpr bool kConstructedAllowed;  BER may segment it (strings)
//   static constexpr char kTypeName[];          its class name
// so that a record's member lines know its tag at compile time.
//
// An open value (AsnAny) carries kAsnOpenTag: it is its whole encoding, any
// tag; as an optional record member numbered n it travels inside [n]
// EXPLICIT, since an open value cannot be tagged implicitly (asn_tagging.h).
#pragma once
#pragma GCC visibility push(default)

#include <string>
#include <string_view>
#include <vector>

#include "tn_platform/asn/asn_json_tokens.h"
#include "tn_platform/asn/asn_type.h"
#include "tn_platform/asn/ber.h"

class AsnPrimitive : public AsnType {
 public:
  virtual AsnTag UniversalTag() const = 0;
  virtual bool ConstructedAllowed() const { return false; }
  // The ASN.1 type's name: "BIT STRING", "UTF8String".
  virtual const char* AsnTypeName() const = 0;

  // Decodes the content after a header with `tag` (the universal one or an
  // implicit one, in either form the type allows) and `length`
  // (kIndefiniteLength for the constructed indefinite form): exactly the
  // content, end-of-contents included. Errors are AsnDecodeError* placed at
  // the item (buf.ItemStart() when called).
  virtual void DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) = 0;
  // The DER content: its length, then the octets written at `out` (returns the end).
  virtual unsigned long ContentLength() const = 0;
  virtual unsigned char* WriteContent(unsigned char* out) const = 0;
  // Takes the value of `other`, a value of the same class.
  virtual void AssignFrom(const AsnPrimitive& other) = 0;
  // The size a SIZE constraint measures: the content's octets, unless the
  // type counts characters or bits.
  virtual unsigned long ConstraintSize() const { return ContentLength(); }
  // JSON in the form `out.Jer()` / `in.Jer()` says.
  virtual void WriteJson(AsnJsonOut& out) const = 0;
  virtual void ReadJson(AsnJsonIn& in) = 0;
  // Print (AsnType) writes ASN.1 value notation, as a value assignment takes it.

  // The whole value: header (either form where allowed) and content.
  void BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum format) override;
  unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum format) override;

  // A complete encoding under `tag` (a member's or an element's; kAsnOpenTag
  // writes an open value as it is): its size, then written at `out`.
  unsigned long EncodedSize(AsnTag tag) const;
  unsigned char* WriteEncoded(unsigned char* out, AsnTag tag) const;
  bool IsOpen() const { return UniversalTag() == kAsnOpenTag; }

 protected:
  AsnPrimitive() = default;
  AsnPrimitive(const AsnPrimitive&) = default;
  AsnPrimitive& operator=(const AsnPrimitive&) = default;
};

// Helpers for the classes' content decoders (AsnOcts reads its segments here too).
namespace asn_primitive {

// The content octets of a string type whose header was read: the primitive
// form (a view into the input) or the constructed form, its segments
// primitive or constructed `segmentTag` values, gathered into `scratch`.
// `typeName` names the type in messages.
// With `segments`, each primitive segment's place is noted there: where its
// item starts in the input and where its content starts in `scratch`.
struct Segment {
  std::size_t itemStart;
  std::size_t contentStart;
};
std::string_view ReadOctets(AsnBuf& buf, AsnTag tag, unsigned long length, AsnTag segmentTag, const char* typeName,
                            std::string& scratch, std::vector<Segment>* segments = nullptr);
// Throws an AsnDecodeError placed at `itemStart`.
[[noreturn]] void Refuse(std::size_t itemStart, const std::string& what);
// Throws: the indefinite length on a primitive value of `typeName`, or on a
// primitive segment of one, whose item starts at `itemStart`.
[[noreturn]] void RefuseIndefinite(std::size_t itemStart, const char* typeName, bool segment);
// The content of the primitive form (a view into the input). Inline: every
// decoded string and number of the primitive kinds is read here.
inline std::string_view ReadPrimitive(AsnBuf& buf, AsnTag, unsigned long length, const char* typeName) {
  if (length == kIndefiniteLength) RefuseIndefinite(buf.ItemStart(), typeName, false);
  const unsigned char* octets = buf.GetSeg(length);
  if (octets == nullptr) BDecLenPastInput(buf, length);
  return std::string_view(reinterpret_cast<const char*>(octets), length);
}
// Writes `octets` as 'hex'H.
void PrintHex(std::ostream& os, std::string_view octets);
// Writes `text` as a cstring: "text", a quote doubled.
void PrintQuoted(std::ostream& os, std::string_view text);

}  // namespace asn_primitive
#pragma GCC visibility pop
