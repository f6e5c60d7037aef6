#include "tn_velkor/qcommon/qasn_err_info.h"

#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_platform/refl/object_functions.h"

namespace qcommon {
void QAsnErrInfo::DescribeMembers(AsnMemberLines<QAsnErrInfo>& lines) {
  using Record = QAsnErrInfo;
  lines.Add("objID", &Record::objID);
  lines.Add("objName", &Record::objName, 0);
  lines.Add("errCode", &Record::errCode);
  lines.Add("strOperDesc", &Record::strOperDesc, 1);
}

}  // namespace qcommon
