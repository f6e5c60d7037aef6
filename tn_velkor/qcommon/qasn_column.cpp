#include "tn_velkor/qcommon/qasn_column.h"

#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_platform/refl/object_functions.h"

namespace qcommon {
void QAsnColumn::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  const QAsnColumn probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &QAsnColumn::strCondition), "strCondition", -1)
      .CaptureTypeInfor<AsnOcts>();
}

}  // namespace qcommon
