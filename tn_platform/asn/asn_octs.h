// AsnOcts: an OCTET STRING value. The content lives in a refl::CBinary and
// may hold any octets, zero bytes included.
#pragma once
#pragma GCC visibility push(default)

#include <string>
#include <string_view>

#include "tn_platform/asn/asn_type.h"
#include "tn_platform/asn/ber.h"
#include "tn_platform/refl/cbinary.h"

class AsnOcts : public AsnType {
 public:
  AsnOcts() = default;
  explicit AsnOcts(const char* text) { Set(text); }
  AsnOcts(const void* data, std::size_t size) { Set(data, size); }

  // Sets the content to the characters of a zero-terminated text (null: empty).
  void Set(const char* text);
  // Sets the content to `size` octets at `data`.
  // Inlined, with the copy it makes: every decoded octet string is set here.
  [[gnu::always_inline]] void Set(const void* data, std::size_t size) { m_content.Assign(data, size); }
  // Same as Set(const char*): replaces the content.
  void ReSet(const char* text) { Set(text); }

  std::size_t Len() const { return m_content.size(); }
  // The content, or null when it is empty.
  const unsigned char* data() const { return m_content.data(); }
  const refl::CBinary& content() const { return m_content; }
  std::string_view view() const { return m_content.view(); }

  bool operator==(const AsnOcts& other) const { return m_content == other.m_content; }
  bool operator!=(const AsnOcts& other) const { return !(*this == other); }

  AsnType* Clone() const override { return new AsnOcts(*this); }
  void BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum format) override;
  unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum format) override;
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  static constexpr char kTypeName[] = "AsnOcts";
  const char* typeName() const override { return kTypeName; }

  // Content octets alone, for implicit tags; returns how many were written.
  unsigned long BEncContent(AsnBuf& buf) const {
    buf.PutSegRvs(m_content.data(), m_content.size());
    return m_content.size();
  }
  // Decodes the content after `tag` and `length` were read: the primitive form,
  // or the constructed form made of OCTET STRING segments (X.690 8.7.3).
  void BDecContent(AsnBuf& buf, AsnTag tag, unsigned long length, unsigned long& bytesDecoded);

 private:
  refl::CBinary m_content;
};

// True when `octets` are UTF-8 text without control characters: valid,
// shortest-form sequences of characters other than C0, DEL and C1 controls.
bool AsnOctetsAreText(std::string_view octets);

// Writes octets as ASN.1 value notation: "text" when they are text as
// AsnOctetsAreText has it (a quote doubled), else 'hex'H.
void PrintOctets(std::ostream& os, std::string_view octets);
#pragma GCC visibility pop
