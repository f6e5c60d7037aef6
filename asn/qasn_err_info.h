// qcommon::QAsnErrInfo: one error entry of an operation's result.
//
//   QAsnErrInfo ::= SEQUENCE {
//     objID QAsnTinyIntList, objName [0] IMPLICIT OCTET STRING OPTIONAL,
//     errCode INTEGER, strOperDesc [1] IMPLICIT OCTET STRING OPTIONAL }
#pragma once

#include "asn/qasn_tiny_int_list.h"
#include "platform/asn/asn_int.h"
#include "platform/asn/asn_octs.h"
#include "platform/asn/asn_sequence.h"
#include "platform/refl/may_null_pointer.h"

namespace qcommon {

class QAsnErrInfo : public AsnSequence {
 public:
  QAsnTinyIntList objID;  // the first element identifies the object
  refl::MayNullPointer<AsnOcts> objName;
  AsnTinyInt errCode;
  refl::MayNullPointer<AsnOcts> strOperDesc;

  QAsnErrInfo() { Constructor(*this); }
  QAsnErrInfo(const QAsnErrInfo& other) : AsnSequence() { CopyConstructor(*this, other); }
  ~QAsnErrInfo() override { Destructor(*this); }
  QAsnErrInfo& operator=(const QAsnErrInfo& other) {
    Assign(*this, other);
    return *this;
  }

  AsnType* Clone() const override;
  bool BindReflection(refl::CRefrence& reference) const override;
  // The class description, registered on first use as "QAsnErrInfo".
  static const refl::CClassInfor& GetClassInfor();

 private:
  static void RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access);
};

}  // namespace qcommon
