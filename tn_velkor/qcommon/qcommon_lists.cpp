#include "tn_velkor/qcommon/qcommon_lists.h"

template class AsnList<qcommon::QAsnNameAndValueString>;
template class AsnSeqOf<qcommon::QAsnNameAndValueString>;
template class AsnList<qcommon::QAsnErrInfo>;
template class AsnSeqOf<qcommon::QAsnErrInfo>;

namespace qcommon {
AsnType* QAsnNVSList::Clone() const { return new QAsnNVSList(*this); }
AsnType* QAsnErrInfoList::Clone() const { return new QAsnErrInfoList(*this); }
}  // namespace qcommon
