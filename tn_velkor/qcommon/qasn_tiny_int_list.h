// qcommon::QAsnTinyIntList ::= SEQUENCE OF INTEGER
#pragma once
#pragma GCC visibility push(default)

#include "tn_velkor/asn/asn_list.h"
#include "tn_platform/asn/asn_int.h"

extern template class AsnList<AsnTinyInt>;
extern template class AsnSeqOf<AsnTinyInt>;

namespace qcommon {

class QAsnTinyIntList : public AsnSeqOf<AsnTinyInt> {
 public:
  // The name its reflection description carries.
  static constexpr char kQualifiedName[] = "qcommon::QAsnTinyIntList";

  QAsnTinyIntList() = default;
  QAsnTinyIntList(const QAsnTinyIntList&) = default;
  QAsnTinyIntList& operator=(const QAsnTinyIntList&) = default;

  AsnType* Clone() const override;
  static constexpr char kTypeName[] = "QAsnTinyIntList";
  const char* typeName() const override { return kTypeName; }
};

}  // namespace qcommon
#pragma GCC visibility pop
