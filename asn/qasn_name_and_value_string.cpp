#include "asn/qasn_name_and_value_string.h"

#include "asn/value_type_descriptions.h"
#include "platform/refl/object_functions.h"

namespace qcommon {
void QAsnNameAndValueString::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnNameAndValueString;
  const Record probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::name), "name", -1).CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::value), "value", -1).CaptureTypeInfor<AsnOcts>();
}

const refl::CClassInfor& QAsnNameAndValueString::GetClassInfor() {
  return *refl::CClassInfor::GetClassInforImpl<QAsnNameAndValueString>(
      "QAsnNameAndValueString", &refl::CreateObject<QAsnNameAndValueString>,
      &refl::DestroyObject<QAsnNameAndValueString>, &RegisterAttributes);
}

AsnType* QAsnNameAndValueString::Clone() const { return new QAsnNameAndValueString(*this); }

bool QAsnNameAndValueString::BindReflection(refl::CRefrence& reference) const {
  return refl::helper::ChangeTypeTo_ClassType(reference, GetClassInfor(), this);
}

}  // namespace qcommon
