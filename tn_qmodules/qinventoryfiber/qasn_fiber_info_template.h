// qinventoryfiber::QAsnFiberInfoTemplate: which columns of fiber information
// a request concerns. A column is selected when its component is present.
//
//   QAsnFiberInfoTemplate ::= SEQUENCE {
//     column1 [0] IMPLICIT QAsnColumn OPTIONAL,
//     column2 [1] IMPLICIT QAsnColumn OPTIONAL,
//     ...
//     column12 [11] IMPLICIT QAsnColumn OPTIONAL }
#pragma once
#pragma GCC visibility push(default)

#include "tn_velkor/qcommon/qasn_column.h"
#include "tn_velkor/asn/asn_record.h"
#include "tn_platform/refl/may_null_pointer.h"

namespace qinventoryfiber {

class QAsnFiberInfoTemplate : public AsnRecord<QAsnFiberInfoTemplate> {
 public:
  static constexpr char kClassName[] = "QAsnFiberInfoTemplate";

  refl::MayNullPointer<qcommon::QAsnColumn> column1;
  refl::MayNullPointer<qcommon::QAsnColumn> column2;
  refl::MayNullPointer<qcommon::QAsnColumn> column3;
  refl::MayNullPointer<qcommon::QAsnColumn> column4;
  refl::MayNullPointer<qcommon::QAsnColumn> column5;
  refl::MayNullPointer<qcommon::QAsnColumn> column6;
  refl::MayNullPointer<qcommon::QAsnColumn> column7;
  refl::MayNullPointer<qcommon::QAsnColumn> column8;
  refl::MayNullPointer<qcommon::QAsnColumn> column9;
  refl::MayNullPointer<qcommon::QAsnColumn> column10;
  refl::MayNullPointer<qcommon::QAsnColumn> column11;
  refl::MayNullPointer<qcommon::QAsnColumn> column12;

  QAsnFiberInfoTemplate() { Constructor(*this); }
  QAsnFiberInfoTemplate(const QAsnFiberInfoTemplate& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~QAsnFiberInfoTemplate() override { Destructor(*this); }
  QAsnFiberInfoTemplate& operator=(const QAsnFiberInfoTemplate& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<QAsnFiberInfoTemplate>;
  static void DescribeMembers(AsnMemberLines<QAsnFiberInfoTemplate>& lines);
};

}  // namespace qinventoryfiber
#pragma GCC visibility pop
