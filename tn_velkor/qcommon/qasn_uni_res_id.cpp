#include "tn_velkor/qcommon/qasn_uni_res_id.h"

#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_platform/refl/object_functions.h"

namespace qcommon {
void QAsnUniResID::DescribeMembers(AsnMemberLines<QAsnUniResID>& lines) {
  using Record = QAsnUniResID;
  lines.Add("strFDN", &Record::strFDN);
  lines.Add("strMOC", &Record::strMOC);
  lines.Add("neID", &Record::neID);
  lines.Add("poSerialNum", &Record::poSerialNum, 0);
}

}  // namespace qcommon
