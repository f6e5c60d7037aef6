#include "asn/qasn_column.h"

#include "asn/value_type_descriptions.h"
#include "platform/refl/object_functions.h"

namespace qcommon {
void QAsnColumn::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  const QAsnColumn probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &QAsnColumn::strCondition), "strCondition", -1)
      .CaptureTypeInfor<AsnOcts>();
}

const refl::CClassInfor& QAsnColumn::GetClassInfor() {
  return *refl::CClassInfor::GetClassInforImpl<QAsnColumn>("QAsnColumn", &refl::CreateObject<QAsnColumn>,
                                                           &refl::DestroyObject<QAsnColumn>, &RegisterAttributes);
}

AsnType* QAsnColumn::Clone() const { return new QAsnColumn(*this); }

bool QAsnColumn::BindReflection(refl::CRefrence& reference) const {
  return refl::helper::ChangeTypeTo_ClassType(reference, GetClassInfor(), this);
}

}  // namespace qcommon
