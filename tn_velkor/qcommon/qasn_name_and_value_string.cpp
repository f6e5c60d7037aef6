#include "tn_velkor/qcommon/qasn_name_and_value_string.h"

#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_platform/refl/object_functions.h"

namespace qcommon {
void QAsnNameAndValueString::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnNameAndValueString;
  const Record probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::name), "name", -1).CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::value), "value", -1).CaptureTypeInfor<AsnOcts>();
}

}  // namespace qcommon
