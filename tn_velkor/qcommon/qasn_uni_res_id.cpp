#include "tn_velkor/qcommon/qasn_uni_res_id.h"

#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_platform/refl/object_functions.h"

namespace qcommon {
void QAsnUniResID::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnUniResID;
  const Record probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strFDN), "strFDN", -1).CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strMOC), "strMOC", -1).CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::neID), "neID", -1).CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::poSerialNum), "poSerialNum", 0)
      .CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>();
}

}  // namespace qcommon
