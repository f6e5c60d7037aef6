#include "tn_velkor/qcommon/qasn_column.h"

#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_platform/refl/object_functions.h"

namespace qcommon {
void QAsnColumn::DescribeMembers(AsnMemberLines<QAsnColumn>& lines) {
  lines.Add("strCondition", &QAsnColumn::strCondition);
}

}  // namespace qcommon
