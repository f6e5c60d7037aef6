#include "tn_qmodules/qreturn/asn_other_to_svr_fault_rpt_strc.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

void AsnOtherToSvrFaultRptStrc::DescribeMembers(AsnMemberLines<AsnOtherToSvrFaultRptStrc>& lines) {
  using Record = AsnOtherToSvrFaultRptStrc;
  lines.Add("neID", &Record::neID);
  lines.Add("alarmGroupID", &Record::alarmGroupID);
  lines.Add("alarmCode", &Record::alarmCode);
  lines.Add("strAlarmText", &Record::strAlarmText);
  lines.Add("faultID", &Record::faultID);
  lines.Add("occurTime", &Record::occurTime);
  lines.Add("strLocation", &Record::strLocation, 0);
}

namespace {
const bool s_faultReportCatalogued =
    AsnCatalogue::Add({"AsnOtherToSvrFaultRptStrc", "qreturn", &CreateAsnValue<AsnOtherToSvrFaultRptStrc>, ""});
}  // namespace
