// qcommon::QAsnNameAndValueString: one name/value pair of texts.
//
//   QAsnNameAndValueString ::= SEQUENCE { name OCTET STRING, value OCTET STRING }
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_octs.h"
#include "tn_velkor/asn/asn_record.h"

namespace qcommon {

class QAsnNameAndValueString : public AsnRecord<QAsnNameAndValueString> {
 public:
  static constexpr char kClassName[] = "QAsnNameAndValueString";

  AsnOcts name;
  AsnOcts value;

  QAsnNameAndValueString() { Constructor(*this); }
  QAsnNameAndValueString(const QAsnNameAndValueString& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~QAsnNameAndValueString() override { Destructor(*this); }
  QAsnNameAndValueString& operator=(const QAsnNameAndValueString& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<QAsnNameAndValueString>;
  static void DescribeMembers(AsnMemberLines<QAsnNameAndValueString>& lines);
};

}  // namespace qcommon
#pragma GCC visibility pop
