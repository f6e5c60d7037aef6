// AsnSingleReturn: the outcome of an operation that concerns one object
// (module qreturn, see qreturn.asn).
//
//   AsnSingleReturn ::= SEQUENCE {
//     success BOOLEAN,
//     retCode [0] IMPLICIT INTEGER OPTIONAL }
#pragma once

#include "platform/asn/asn_bool.h"
#include "platform/asn/asn_int.h"
#include "platform/asn/asn_sequence.h"
#include "platform/refl/may_null_pointer.h"

class AsnSingleReturn : public AsnSequence {
 public:
  AsnBool success;                       // true when the operation succeeded
  refl::MayNullPointer<AsnInt> retCode;  // the return code, 0 for success

  AsnSingleReturn() { Constructor(*this); }
  AsnSingleReturn(const AsnSingleReturn& other) : AsnSequence() { CopyConstructor(*this, other); }
  ~AsnSingleReturn() override { Destructor(*this); }
  AsnSingleReturn& operator=(const AsnSingleReturn& other) {
    Assign(*this, other);
    return *this;
  }

  AsnType* Clone() const override;
  bool BindReflection(refl::CRefrence& reference) const override;
  // The class description, registered on first use as "AsnSingleReturn".
  static const refl::CClassInfor& GetClassInfor();

 private:
  static void RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access);
};
