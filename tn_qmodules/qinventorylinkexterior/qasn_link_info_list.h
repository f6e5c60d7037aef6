// qinventorylinkexterior::QAsnLinkInfoList ::= SEQUENCE OF QAsnLinkInfo
#pragma once
#pragma GCC visibility push(default)

#include "tn_velkor/asn/asn_list.h"
#include "tn_qmodules/qinventorylinkexterior/qasn_link_info.h"

namespace qinventorylinkexterior {

class QAsnLinkInfoList : public AsnSeqOf<QAsnLinkInfo> {
 public:
  QAsnLinkInfoList() = default;
  QAsnLinkInfoList(const QAsnLinkInfoList&) = default;
  QAsnLinkInfoList& operator=(const QAsnLinkInfoList&) = default;

  AsnType* Clone() const override;
  static constexpr char kTypeName[] = "QAsnLinkInfoList";
  const char* typeName() const override { return kTypeName; }
};

}  // namespace qinventorylinkexterior
#pragma GCC visibility pop
