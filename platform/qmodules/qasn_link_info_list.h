// qinventorylinkexterior::QAsnLinkInfoList ::= SEQUENCE OF QAsnLinkInfo
#pragma once

#include "asn/asn_list.h"
#include "platform/qmodules/qasn_link_info.h"

namespace qinventorylinkexterior {

class QAsnLinkInfoList : public AsnSeqOf<QAsnLinkInfo> {
 public:
  QAsnLinkInfoList() = default;
  QAsnLinkInfoList(const QAsnLinkInfoList&) = default;
  QAsnLinkInfoList& operator=(const QAsnLinkInfoList&) = default;

  AsnType* Clone() const override;
  const char* typeName() const override { return "QAsnLinkInfoList"; }
};

}  // namespace qinventorylinkexterior
