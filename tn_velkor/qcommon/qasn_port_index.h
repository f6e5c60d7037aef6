// qcommon::QAsnPortIndex: a port address on the Q-interface.
//
//   QAsnPortIndex ::= SEQUENCE {
//     level1ID INTEGER, level2ID INTEGER,
//     level2SubID [0] IMPLICIT INTEGER OPTIONAL,
//     level3ID INTEGER,
//     level3SubID [1] IMPLICIT INTEGER OPTIONAL,
//     level4ID INTEGER,
//     strIndexText [2] IMPLICIT OCTET STRING OPTIONAL }
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_velkor/asn/asn_record.h"
#include "tn_platform/refl/may_null_pointer.h"

namespace qcommon {

class QAsnPortIndex : public AsnRecord<QAsnPortIndex> {
 public:
  static constexpr char kClassName[] = "QAsnPortIndex";

  AsnTinyInt level1ID;
  AsnTinyInt level2ID;
  refl::MayNullPointer<AsnTinyInt> level2SubID;
  AsnTinyInt level3ID;
  refl::MayNullPointer<AsnTinyInt> level3SubID;
  AsnTinyInt level4ID;
  refl::MayNullPointer<AsnOcts> strIndexText;

  QAsnPortIndex() { Constructor(*this); }
  QAsnPortIndex(const QAsnPortIndex& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~QAsnPortIndex() override { Destructor(*this); }
  QAsnPortIndex& operator=(const QAsnPortIndex& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<QAsnPortIndex>;
  static void DescribeMembers(AsnMemberLines<QAsnPortIndex>& lines);
};

}  // namespace qcommon
#pragma GCC visibility pop
