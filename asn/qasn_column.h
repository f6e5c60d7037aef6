// qcommon::QAsnColumn: one column selection of a query template.
//
//   QAsnColumn ::= SEQUENCE { strCondition OCTET STRING }
#pragma once

#include "platform/asn/asn_octs.h"
#include "platform/asn/asn_sequence.h"

namespace qcommon {

class QAsnColumn : public AsnSequence {
 public:
  AsnOcts strCondition;

  QAsnColumn() { Constructor(*this); }
  QAsnColumn(const QAsnColumn& other) : AsnSequence() { CopyConstructor(*this, other); }
  ~QAsnColumn() override { Destructor(*this); }
  QAsnColumn& operator=(const QAsnColumn& other) {
    Assign(*this, other);
    return *this;
  }

  AsnType* Clone() const override;
  bool BindReflection(refl::CRefrence& reference) const override;
  // The class description, registered on first use as "QAsnColumn".
  static const refl::CClassInfor& GetClassInfor();

 private:
  static void RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access);
};

}  // namespace qcommon
