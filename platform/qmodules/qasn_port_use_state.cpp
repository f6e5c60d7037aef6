#include "platform/qmodules/qasn_port_use_state.h"

#include "platform/asn/asn_catalogue.h"
#include "platform/qmodules/module_type_descriptions.h"

namespace qinventoryport {

void QAsnPortUseState::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnPortUseState;
  const Record probe;
  qmodules::DescribeRecordMember<qcommon::QAsnPortIndex>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::portIndex), "portIndex", -1), false);
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::useState), "useState", -1).CaptureTypeInfor<AsnTinyInt>();
}

const refl::CClassInfor& QAsnPortUseState::GetClassInfor() {
  return *refl::CClassInfor::GetClassInforImpl<QAsnPortUseState>(
      "QAsnPortUseState", &refl::CreateObject<QAsnPortUseState>, &refl::DestroyObject<QAsnPortUseState>,
      &RegisterAttributes);
}

AsnType* QAsnPortUseState::Clone() const { return new QAsnPortUseState(*this); }

bool QAsnPortUseState::BindReflection(refl::CRefrence& reference) const {
  return refl::helper::ChangeTypeTo_ClassType(reference, GetClassInfor(), this);
}

namespace {
const bool s_catalogued =
    AsnCatalogue::Add({"QAsnPortUseState", "qinventoryport", &CreateAsnValue<QAsnPortUseState>, ""});
}  // namespace

}  // namespace qinventoryport
