// qcommon::QAsnErrInfo: one error entry of an operation's result.
//
//   QAsnErrInfo ::= SEQUENCE {
//     objID QAsnTinyIntList, objName [0] IMPLICIT OCTET STRING OPTIONAL,
//     errCode INTEGER, strOperDesc [1] IMPLICIT OCTET STRING OPTIONAL }
#pragma once
#pragma GCC visibility push(default)

#include "tn_velkor/qcommon/qasn_tiny_int_list.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_velkor/asn/asn_record.h"
#include "tn_platform/refl/may_null_pointer.h"

namespace qcommon {

class QAsnErrInfo : public AsnRecord<QAsnErrInfo> {
 public:
  static constexpr char kClassName[] = "QAsnErrInfo";

  QAsnTinyIntList objID;  // the first element identifies the object
  refl::MayNullPointer<AsnOcts> objName;
  AsnTinyInt errCode;
  refl::MayNullPointer<AsnOcts> strOperDesc;

  QAsnErrInfo() { Constructor(*this); }
  QAsnErrInfo(const QAsnErrInfo& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~QAsnErrInfo() override { Destructor(*this); }
  QAsnErrInfo& operator=(const QAsnErrInfo& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<QAsnErrInfo>;
  static void DescribeMembers(AsnMemberLines<QAsnErrInfo>& lines);
};

}  // namespace qcommon
#pragma GCC visibility pop
