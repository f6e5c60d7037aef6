#include "tn_velkor/qcommon/qasn_name_and_value_string.h"

#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_platform/refl/object_functions.h"

namespace qcommon {
void QAsnNameAndValueString::DescribeMembers(AsnMemberLines<QAsnNameAndValueString>& lines) {
  using Record = QAsnNameAndValueString;
  lines.Add("name", &Record::name);
  lines.Add("value", &Record::value);
}

}  // namespace qcommon
