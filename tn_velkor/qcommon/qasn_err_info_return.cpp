#include "tn_velkor/qcommon/qasn_err_info_return.h"

#include "tn_velkor/asn/value_type_descriptions.h"

namespace qcommon {

void QAsnErrInfoReturn::DescribeMembers(AsnMemberLines<QAsnErrInfoReturn>& lines) {
  using Record = QAsnErrInfoReturn;
  lines.Add("retCode", &Record::retCode);
  lines.Add("errInfoList", &Record::errInfoList, 0);
}

}  // namespace qcommon
