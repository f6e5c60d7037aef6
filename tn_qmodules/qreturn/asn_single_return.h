// AsnSingleReturn: the outcome of an operation that concerns one object
// (module qreturn, see qreturn.asn).
//
//   AsnSingleReturn ::= SEQUENCE {
//     success BOOLEAN,
//     retCode [0] IMPLICIT INTEGER OPTIONAL }
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_velkor/asn/asn_record.h"
#include "tn_platform/refl/may_null_pointer.h"

class AsnSingleReturn : public AsnRecord<AsnSingleReturn> {
 public:
  static constexpr char kClassName[] = "AsnSingleReturn";

  AsnBool success;                       // true when the operation succeeded
  refl::MayNullPointer<AsnInt> retCode;  // the return code, 0 for success

  AsnSingleReturn() { Constructor(*this); }
  AsnSingleReturn(const AsnSingleReturn& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~AsnSingleReturn() override { Destructor(*this); }
  AsnSingleReturn& operator=(const AsnSingleReturn& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<AsnSingleReturn>;
  static void DescribeMembers(AsnMemberLines<AsnSingleReturn>& lines);
};
#pragma GCC visibility pop
