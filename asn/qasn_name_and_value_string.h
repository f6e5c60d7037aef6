// qcommon::QAsnNameAndValueString: one name/value pair of texts.
//
//   QAsnNameAndValueString ::= SEQUENCE { name OCTET STRING, value OCTET STRING }
#pragma once

#include "platform/asn/asn_octs.h"
#include "platform/asn/asn_sequence.h"

namespace qcommon {

class QAsnNameAndValueString : public AsnSequence {
 public:
  AsnOcts name;
  AsnOcts value;

  QAsnNameAndValueString() { Constructor(*this); }
  QAsnNameAndValueString(const QAsnNameAndValueString& other) : AsnSequence() { CopyConstructor(*this, other); }
  ~QAsnNameAndValueString() override { Destructor(*this); }
  QAsnNameAndValueString& operator=(const QAsnNameAndValueString& other) {
    Assign(*this, other);
    return *this;
  }

  AsnType* Clone() const override;
  bool BindReflection(refl::CRefrence& reference) const override;
  // The class description, registered on first use as "QAsnNameAndValueString".
  static const refl::CClassInfor& GetClassInfor();

 private:
  static void RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access);
};

}  // namespace qcommon
