#include "tn_qmodules/qinventoryport/qasn_port_use_state.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

namespace qinventoryport {

void QAsnPortUseState::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnPortUseState;
  const Record probe;
  DescribeRecordMember<qcommon::QAsnPortIndex>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::portIndex), "portIndex", -1), false);
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::useState), "useState", -1).CaptureTypeInfor<AsnTinyInt>();
}

namespace {
const bool s_catalogued =
    AsnCatalogue::Add({"QAsnPortUseState", "qinventoryport", &CreateAsnValue<QAsnPortUseState>, ""});
}  // namespace

}  // namespace qinventoryport
