// AsnOid and AsnRelativeOid: OBJECT IDENTIFIER and RELATIVE-OID values, their
// arcs of up to 64 bits each. An OBJECT IDENTIFIER has at least two arcs, the
// first 0, 1 or 2 and, below 2, the second under 40 (the two travel as one
// subidentifier, 40 * first + second). Decoding refuses a subidentifier with
// a leading 0x80 octet (not minimal), one beyond 64 bits and content that
// ends inside one. JSON writes the dotted form ("1.2.840.113549"), value
// notation { 1 2 840 113549 }.
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tn_platform/asn/asn_primitive.h"

// What the two classes share; kRelative: a RELATIVE-OID.
template <bool kRelative>
class AsnArcs : public AsnPrimitive {
 public:
  static constexpr AsnTag kUniversalTag = MakeTag(AsnTagClass::kUniversal, false, kRelative ? 13 : 6);
  static constexpr bool kConstructedAllowed = false;

  AsnArcs() = default;
  AsnArcs(std::initializer_list<std::uint64_t> arcs) : m_arcs(arcs) {}

  const std::vector<std::uint64_t>& Arcs() const { return m_arcs; }
  // Sets the arcs; false (nothing changed) when they make no value of the type.
  bool SetArcs(const std::vector<std::uint64_t>& arcs);
  // "1.2.840.113549".
  std::string ToDotted() const;
  // Sets the value from its dotted form; false (nothing changed) when it is none.
  bool SetDotted(std::string_view text);
  bool operator==(const AsnArcs& other) const { return m_arcs == other.m_arcs; }

  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  AsnTag UniversalTag() const override { return kUniversalTag; }
  const char* AsnTypeName() const override { return kRelative ? "RELATIVE-OID" : "OBJECT IDENTIFIER"; }
  void DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) override;
  unsigned long ContentLength() const override;
  unsigned char* WriteContent(unsigned char* out) const override;
  void AssignFrom(const AsnPrimitive& other) override { m_arcs = static_cast<const AsnArcs&>(other).m_arcs; }
  void WriteJson(AsnJsonOut& out) const override { out.String(ToDotted()); }
  void ReadJson(AsnJsonIn& in) override;

 private:
  std::vector<std::uint64_t> m_arcs;
};

class AsnOid : public AsnArcs<false> {
 public:
  static constexpr char kTypeName[] = "AsnOid";
  using AsnArcs::AsnArcs;
  AsnType* Clone() const override { return new AsnOid(*this); }
  const char* typeName() const override { return kTypeName; }
};

class AsnRelativeOid : public AsnArcs<true> {
 public:
  static constexpr char kTypeName[] = "AsnRelativeOid";
  using AsnArcs::AsnArcs;
  AsnType* Clone() const override { return new AsnRelativeOid(*this); }
  const char* typeName() const override { return kTypeName; }
};

extern template class AsnArcs<false>;
extern template class AsnArcs<true>;
#pragma GCC visibility pop
