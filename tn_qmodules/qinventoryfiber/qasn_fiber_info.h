// qinventoryfiber::QAsnFiberInfo: a fiber cable on the Q-interface.
//
//   QAsnFiberInfo ::= SEQUENCE {
//     fiberText1 OCTET STRING, fiberValue1 INTEGER, fiberText2 OCTET STRING,
//     fiberValue2 INTEGER, fiberValue3 INTEGER,
//     aEndPort QAsnPortIndex, zEndPort QAsnPortIndex,
//     hybridMaxCapacity [0] IMPLICIT INTEGER OPTIONAL,
//     fiberValue5 [1] IMPLICIT INTEGER OPTIONAL,
//     doubleValue [2] IMPLICIT OCTET STRING OPTIONAL,   -- decimal text
//     floatValue [3] IMPLICIT OCTET STRING OPTIONAL,    -- decimal text
//     fiberText3 [4] IMPLICIT OCTET STRING OPTIONAL,
//     fiberText4 [5] IMPLICIT OCTET STRING OPTIONAL,
//     fiberText5 [6] IMPLICIT OCTET STRING OPTIONAL,
//     fiberText6 [7] IMPLICIT OCTET STRING OPTIONAL,
//     fiberText7 [8] IMPLICIT OCTET STRING OPTIONAL,
//     attrList [9] IMPLICIT QAsnNVSList OPTIONAL,
//     fiberValue6 [10] IMPLICIT INTEGER OPTIONAL,
//     fiberText8 [11] IMPLICIT OCTET STRING OPTIONAL,
//     fiberText9 [12] IMPLICIT OCTET STRING OPTIONAL,
//     aEndResID [13] IMPLICIT QAsnUniResID OPTIONAL,
//     zEndResID [14] IMPLICIT QAsnUniResID OPTIONAL,
//     fiberValue7 [15] IMPLICIT INTEGER OPTIONAL }
//
// Every INTEGER is an AsnTinyInt (signed 32-bit). The two port indexes are
// mandatory sub-records that the record always holds.
#pragma once
#pragma GCC visibility push(default)

#include "tn_velkor/qcommon/qasn_uni_res_id.h"
#include "tn_velkor/qcommon/qcommon_lists.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_velkor/asn/asn_record.h"
#include "tn_velkor/qcommon/qasn_port_index.h"
#include "tn_platform/refl/may_null_pointer.h"

namespace qinventoryfiber {

class QAsnFiberInfo : public AsnRecord<QAsnFiberInfo> {
 public:
  static constexpr char kClassName[] = "QAsnFiberInfo";

  AsnOcts fiberText1;
  AsnTinyInt fiberValue1;
  AsnOcts fiberText2;
  AsnTinyInt fiberValue2;
  AsnTinyInt fiberValue3;
  qcommon::QAsnPortIndex aEndPort;
  qcommon::QAsnPortIndex zEndPort;
  refl::MayNullPointer<AsnTinyInt> hybridMaxCapacity;
  refl::MayNullPointer<AsnTinyInt> fiberValue5;
  refl::MayNullPointer<AsnOcts> doubleValue;  // decimal text
  refl::MayNullPointer<AsnOcts> floatValue;   // decimal text
  refl::MayNullPointer<AsnOcts> fiberText3;
  refl::MayNullPointer<AsnOcts> fiberText4;
  refl::MayNullPointer<AsnOcts> fiberText5;
  refl::MayNullPointer<AsnOcts> fiberText6;
  refl::MayNullPointer<AsnOcts> fiberText7;
  refl::MayNullPointer<qcommon::QAsnNVSList> attrList;
  refl::MayNullPointer<AsnTinyInt> fiberValue6;
  refl::MayNullPointer<AsnOcts> fiberText8;
  refl::MayNullPointer<AsnOcts> fiberText9;
  refl::MayNullPointer<qcommon::QAsnUniResID> aEndResID;
  refl::MayNullPointer<qcommon::QAsnUniResID> zEndResID;
  refl::MayNullPointer<AsnTinyInt> fiberValue7;

  QAsnFiberInfo() { Constructor(*this); }
  QAsnFiberInfo(const QAsnFiberInfo& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~QAsnFiberInfo() override { Destructor(*this); }
  QAsnFiberInfo& operator=(const QAsnFiberInfo& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<QAsnFiberInfo>;
  static void DescribeMembers(AsnMemberLines<QAsnFiberInfo>& lines);
};

}  // namespace qinventoryfiber
#pragma GCC visibility pop
