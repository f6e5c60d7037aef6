// qcommon::QAsnColumn: one column selection of a query template.
//
//   QAsnColumn ::= SEQUENCE { strCondition OCTET STRING }
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_octs.h"
#include "tn_velkor/asn/asn_record.h"

namespace qcommon {

class QAsnColumn : public AsnRecord<QAsnColumn> {
 public:
  static constexpr char kClassName[] = "QAsnColumn";

  AsnOcts strCondition;

  QAsnColumn() { Constructor(*this); }
  QAsnColumn(const QAsnColumn& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~QAsnColumn() override { Destructor(*this); }
  QAsnColumn& operator=(const QAsnColumn& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<QAsnColumn>;
  static void DescribeMembers(AsnMemberLines<QAsnColumn>& lines);
};

}  // namespace qcommon
#pragma GCC visibility pop
