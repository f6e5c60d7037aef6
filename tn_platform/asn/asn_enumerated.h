// AsnEnumerated: an ENUMERATED value, a number with the identifiers its type
// names. A generated subclass supplies the names table and whether the type
// is extensible; the base class alone takes any number and has no names.
// JSON and value notation write the identifier; a number the table does not
// name (kept only for an extensible type) is written as the number.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>

#include "tn_platform/asn/asn_primitive.h"

struct AsnEnumeratedName {
  long long value;
  const char* name;
};

class AsnEnumerated : public AsnPrimitive {
 public:
  static constexpr AsnTag kUniversalTag = MakeTag(AsnTagClass::kUniversal, false, 10);
  static constexpr bool kConstructedAllowed = false;
  static constexpr char kTypeName[] = "AsnEnumerated";

  AsnEnumerated() = default;
  explicit AsnEnumerated(long long value) : m_value(value) {}
  long long Value() const { return m_value; }
  void Set(long long value) { m_value = value; }
  bool operator==(const AsnEnumerated& other) const { return m_value == other.m_value; }

  // The type's identifiers with their numbers (`count` of them), and whether
  // numbers beyond them are kept (an extensible type, "...").
  virtual const AsnEnumeratedName* Names(std::size_t& count) const {
    count = 0;
    return nullptr;
  }
  virtual bool Extensible() const { return true; }
  // The identifier of the value, or null.
  const char* Name() const;
  // Sets the value named `name`; false when the type has no such identifier.
  bool SetName(std::string_view name);

  AsnType* Clone() const override { return new AsnEnumerated(*this); }
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  const char* typeName() const override { return kTypeName; }
  AsnTag UniversalTag() const override { return kUniversalTag; }
  const char* AsnTypeName() const override { return "ENUMERATED"; }
  void DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) override;
  unsigned long ContentLength() const override { return AsnIntegerOctets(m_value); }
  unsigned char* WriteContent(unsigned char* out) const override {
    return AsnWriteInteger(out, m_value, AsnIntegerOctets(m_value));
  }
  void AssignFrom(const AsnPrimitive& other) override { m_value = static_cast<const AsnEnumerated&>(other).m_value; }
  void WriteJson(AsnJsonOut& out) const override;
  void ReadJson(AsnJsonIn& in) override;

 private:
  // True when the type takes `value`.
  bool Takes(long long value) const;

  long long m_value = 0;
};
#pragma GCC visibility pop
