#include "tn_velkor/qcommon/qasn_port_index.h"

#include "tn_velkor/asn/value_type_descriptions.h"

namespace qcommon {

void QAsnPortIndex::DescribeMembers(AsnMemberLines<QAsnPortIndex>& lines) {
  using Record = QAsnPortIndex;
  lines.Add("level1ID", &Record::level1ID);
  lines.Add("level2ID", &Record::level2ID);
  lines.Add("level2SubID", &Record::level2SubID, 0);
  lines.Add("level3ID", &Record::level3ID);
  lines.Add("level3SubID", &Record::level3SubID, 1);
  lines.Add("level4ID", &Record::level4ID);
  lines.Add("strIndexText", &Record::strIndexText, 2);
}

}  // namespace qcommon
