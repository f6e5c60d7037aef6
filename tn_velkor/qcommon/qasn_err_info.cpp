#include "tn_velkor/qcommon/qasn_err_info.h"

#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_platform/refl/object_functions.h"

namespace qcommon {
void QAsnErrInfo::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnErrInfo;
  const Record probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::objID), "objID", -1)
      .ChangeTypeTo_CustomType("qcommon::QAsnTinyIntList", sizeof(QAsnTinyIntList),
                               &refl::CreateObject<QAsnTinyIntList>, &refl::DestroyObject<QAsnTinyIntList>,
                               kAsnSeqOfClassId);
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::objName), "objName", 0)
      .CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::errCode), "errCode", -1).CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strOperDesc), "strOperDesc", 1)
      .CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>();
}

}  // namespace qcommon
