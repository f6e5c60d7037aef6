#include "tn_velkor/qcommon/qasn_port_index.h"

#include "tn_velkor/asn/value_type_descriptions.h"

namespace qcommon {

void QAsnPortIndex::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnPortIndex;
  const Record probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::level1ID), "level1ID", -1).CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::level2ID), "level2ID", -1).CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::level2SubID), "level2SubID", 0)
      .CaptureTypeInfor<refl::MayNullPointer<AsnTinyInt>>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::level3ID), "level3ID", -1).CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::level3SubID), "level3SubID", 1)
      .CaptureTypeInfor<refl::MayNullPointer<AsnTinyInt>>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::level4ID), "level4ID", -1).CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::strIndexText), "strIndexText", 2)
      .CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>();
}

}  // namespace qcommon
