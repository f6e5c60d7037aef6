#include "tn_velkor/qcommon/qasn_tiny_int_list.h"

template class AsnList<AsnTinyInt>;
template class AsnSeqOf<AsnTinyInt>;

namespace qcommon {
AsnType* QAsnTinyIntList::Clone() const { return new QAsnTinyIntList(*this); }
}  // namespace qcommon
