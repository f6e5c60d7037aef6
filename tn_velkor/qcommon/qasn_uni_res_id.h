// qcommon::QAsnUniResID: the identifier of a managed resource.
//
//   QAsnUniResID ::= SEQUENCE {
//     strFDN OCTET STRING, strMOC OCTET STRING, neID INTEGER,
//     poSerialNum [0] IMPLICIT OCTET STRING OPTIONAL }
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_velkor/asn/asn_record.h"
#include "tn_platform/refl/may_null_pointer.h"

namespace qcommon {

class QAsnUniResID : public AsnRecord<QAsnUniResID> {
 public:
  static constexpr char kClassName[] = "QAsnUniResID";

  AsnOcts strFDN;  // identifier text, e.g. "NE=1001,SH=1,SL=3,PP=2"
  AsnOcts strMOC;  // managed-object class
  AsnTinyInt neID;
  refl::MayNullPointer<AsnOcts> poSerialNum;

  QAsnUniResID() { Constructor(*this); }
  QAsnUniResID(const QAsnUniResID& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~QAsnUniResID() override { Destructor(*this); }
  QAsnUniResID& operator=(const QAsnUniResID& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<QAsnUniResID>;
  static void DescribeMembers(AsnMemberLines<QAsnUniResID>& lines);
};

}  // namespace qcommon
#pragma GCC visibility pop
