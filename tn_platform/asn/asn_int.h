// INTEGER values: AsnTinyInt holds a signed 32-bit value, AsnInt a signed
// 64-bit value. Both encode minimal two's complement (X.690 8.3) and refuse,
// when decoding, an INTEGER without content octets, with non-minimal content
// or too large for the class.
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>

#include "tn_platform/asn/asn_type.h"
#include "tn_platform/asn/ber.h"

// Content decoding shared by the integer classes.
namespace asn_integer {
// Reads `length` content octets of an INTEGER that must fit in `maxOctets`
// octets; errors are placed at `itemStart`.
std::int64_t DecodeContent(AsnBuf& buf, unsigned long length, unsigned maxOctets, std::size_t itemStart);
}  // namespace asn_integer

class AsnTinyInt : public AsnType {
 public:
  AsnTinyInt() = default;
  AsnTinyInt(int value) : m_value(value) {}  // NOLINT: implicit, like the integer it holds
  AsnTinyInt& operator=(int value) {
    m_value = value;
    return *this;
  }
  void Set(int value) { m_value = value; }
  int Value() const { return m_value; }
  operator int() const { return m_value; }  // NOLINT

  AsnType* Clone() const override { return new AsnTinyInt(*this); }
  void BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum format) override;
  unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum format) override;
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  static constexpr char kTypeName[] = "AsnTinyInt";
  const char* typeName() const override { return kTypeName; }

  unsigned long BEncContent(AsnBuf& buf) const;
  void BDecContent(AsnBuf& buf, AsnTag tag, unsigned long length, unsigned long& bytesDecoded);

 private:
  int m_value = 0;
};

class AsnInt : public AsnType {
 public:
  AsnInt() = default;
  AsnInt(long long value) : m_value(value) {}  // NOLINT
  AsnInt& operator=(long long value) {
    m_value = value;
    return *this;
  }
  void Set(long long value) { m_value = value; }
  long long Value() const { return m_value; }
  operator long long() const { return m_value; }  // NOLINT

  AsnType* Clone() const override { return new AsnInt(*this); }
  void BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum format) override;
  unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum format) override;
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  static constexpr char kTypeName[] = "AsnInt";
  const char* typeName() const override { return kTypeName; }

  unsigned long BEncContent(AsnBuf& buf) const;
  void BDecContent(AsnBuf& buf, AsnTag tag, unsigned long length, unsigned long& bytesDecoded);

 private:
  long long m_value = 0;
};
#pragma GCC visibility pop
