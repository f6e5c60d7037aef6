// The record lists of qcommon:
//   QAsnNVSList ::= SEQUENCE OF QAsnNameAndValueString
//   QAsnErrInfoList ::= SEQUENCE OF QAsnErrInfo
#pragma once
#pragma GCC visibility push(default)

#include "tn_velkor/asn/asn_list.h"
#include "tn_velkor/qcommon/qasn_err_info.h"
#include "tn_velkor/qcommon/qasn_name_and_value_string.h"

extern template class AsnList<qcommon::QAsnNameAndValueString>;
extern template class AsnSeqOf<qcommon::QAsnNameAndValueString>;
extern template class AsnList<qcommon::QAsnErrInfo>;
extern template class AsnSeqOf<qcommon::QAsnErrInfo>;

namespace qcommon {

class QAsnNVSList : public AsnSeqOf<QAsnNameAndValueString> {
 public:
  // The name its reflection description carries.
  static constexpr char kQualifiedName[] = "qcommon::QAsnNVSList";

  QAsnNVSList() = default;
  QAsnNVSList(const QAsnNVSList&) = default;
  QAsnNVSList& operator=(const QAsnNVSList&) = default;

  AsnType* Clone() const override;
  static constexpr char kTypeName[] = "QAsnNVSList";
  const char* typeName() const override { return kTypeName; }
};

class QAsnErrInfoList : public AsnSeqOf<QAsnErrInfo> {
 public:
  // The name its reflection description carries.
  static constexpr char kQualifiedName[] = "qcommon::QAsnErrInfoList";

  QAsnErrInfoList() = default;
  QAsnErrInfoList(const QAsnErrInfoList&) = default;
  QAsnErrInfoList& operator=(const QAsnErrInfoList&) = default;

  AsnType* Clone() const override;
  static constexpr char kTypeName[] = "QAsnErrInfoList";
  const char* typeName() const override { return kTypeName; }
};

}  // namespace qcommon
#pragma GCC visibility pop
