#include "tn_qmodules/qreturn/asn_other_to_svr_fault_rpt_strc.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

void AsnOtherToSvrFaultRptStrc::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = AsnOtherToSvrFaultRptStrc;
  const Record probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::neID), "neID", -1).CaptureTypeInfor<AsnInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::alarmGroupID), "alarmGroupID", -1)
      .CaptureTypeInfor<AsnInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::alarmCode), "alarmCode", -1).CaptureTypeInfor<AsnInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strAlarmText), "strAlarmText", -1)
      .CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::faultID), "faultID", -1).CaptureTypeInfor<AsnInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::occurTime), "occurTime", -1).CaptureTypeInfor<AsnInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strLocation), "strLocation", 0)
      .CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>();
}

namespace {
const bool s_faultReportCatalogued =
    AsnCatalogue::Add({"AsnOtherToSvrFaultRptStrc", "qreturn", &CreateAsnValue<AsnOtherToSvrFaultRptStrc>, ""});
}  // namespace
