// AsnBool: a BOOLEAN value. Encodes TRUE as 0xFF (X.690 11.1); decoding
// accepts any non-zero content octet as TRUE and refuses content that is not
// exactly one octet.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_type.h"
#include "tn_platform/asn/ber.h"

class AsnBool : public AsnType {
 public:
  AsnBool() = default;
  AsnBool(bool value) : m_value(value) {}  // NOLINT
  AsnBool& operator=(bool value) {
    m_value = value;
    return *this;
  }
  void Set(bool value) { m_value = value; }
  bool Value() const { return m_value; }
  operator bool() const { return m_value; }  // NOLINT

  AsnType* Clone() const override { return new AsnBool(*this); }
  void BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum format) override;
  unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum format) override;
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  static constexpr char kTypeName[] = "AsnBool";
  const char* typeName() const override { return kTypeName; }

  unsigned long BEncContent(AsnBuf& buf) const {
    buf.PutByteRvs(m_value ? 0xFF : 0x00);
    return 1;
  }
  void BDecContent(AsnBuf& buf, AsnTag tag, unsigned long length, unsigned long& bytesDecoded);

 private:
  bool m_value = false;
};
#pragma GCC visibility pop
