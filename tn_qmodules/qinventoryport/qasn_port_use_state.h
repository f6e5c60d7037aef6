// qinventoryport::QAsnPortUseState: the use state of one port.
//
//   QAsnPortUseState ::= SEQUENCE { portIndex QAsnPortIndex, useState INTEGER }
//
// useState 0 to 4 are the states a port can be in.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_int.h"
#include "tn_velkor/asn/asn_record.h"
#include "tn_velkor/qcommon/qasn_port_index.h"

namespace qinventoryport {

class QAsnPortUseState : public AsnRecord<QAsnPortUseState> {
 public:
  static constexpr char kClassName[] = "QAsnPortUseState";

  qcommon::QAsnPortIndex portIndex;
  AsnTinyInt useState;

  QAsnPortUseState() { Constructor(*this); }
  QAsnPortUseState(const QAsnPortUseState& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~QAsnPortUseState() override { Destructor(*this); }
  QAsnPortUseState& operator=(const QAsnPortUseState& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<QAsnPortUseState>;
  static void DescribeMembers(AsnMemberLines<QAsnPortUseState>& lines);
};

}  // namespace qinventoryport
#pragma GCC visibility pop
