// qinventoryport::QAsnPortUseStateList ::= SEQUENCE OF QAsnPortUseState
#pragma once
#pragma GCC visibility push(default)

#include "tn_velkor/asn/asn_list.h"
#include "tn_qmodules/qinventoryport/qasn_port_use_state.h"

namespace qinventoryport {

class QAsnPortUseStateList : public AsnSeqOf<QAsnPortUseState> {
 public:
  QAsnPortUseStateList() = default;
  QAsnPortUseStateList(const QAsnPortUseStateList&) = default;
  QAsnPortUseStateList& operator=(const QAsnPortUseStateList&) = default;

  AsnType* Clone() const override;
  static constexpr char kTypeName[] = "QAsnPortUseStateList";
  const char* typeName() const override { return kTypeName; }
};

}  // namespace qinventoryport
#pragma GCC visibility pop
