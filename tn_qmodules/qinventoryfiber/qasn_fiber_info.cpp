#include "tn_qmodules/qinventoryfiber/qasn_fiber_info.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

namespace qinventoryfiber {

void QAsnFiberInfo::RegisterAttributes(refl::CClassInfor& infor, refl::Enum::AccessSpecifierEnum access) {
  using Record = QAsnFiberInfo;
  using OptionalInt = refl::MayNullPointer<AsnTinyInt>;
  using OptionalOcts = refl::MayNullPointer<AsnOcts>;
  const Record probe;
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberText1), "fiberText1", -1)
      .CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberValue1), "fiberValue1", -1)
      .CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberText2), "fiberText2", -1)
      .CaptureTypeInfor<AsnOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberValue2), "fiberValue2", -1)
      .CaptureTypeInfor<AsnTinyInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberValue3), "fiberValue3", -1)
      .CaptureTypeInfor<AsnTinyInt>();
  DescribeRecordMember<qcommon::QAsnPortIndex>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::aEndPort), "aEndPort", -1), false);
  DescribeRecordMember<qcommon::QAsnPortIndex>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::zEndPort), "zEndPort", -1), false);
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::hybridMaxCapacity), "hybridMaxCapacity", 0)
      .CaptureTypeInfor<OptionalInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberValue5), "fiberValue5", 1)
      .CaptureTypeInfor<OptionalInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::doubleValue), "doubleValue", 2)
      .CaptureTypeInfor<OptionalOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::floatValue), "floatValue", 3)
      .CaptureTypeInfor<OptionalOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberText3), "fiberText3", 4)
      .CaptureTypeInfor<OptionalOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberText4), "fiberText4", 5)
      .CaptureTypeInfor<OptionalOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberText5), "fiberText5", 6)
      .CaptureTypeInfor<OptionalOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberText6), "fiberText6", 7)
      .CaptureTypeInfor<OptionalOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberText7), "fiberText7", 8)
      .CaptureTypeInfor<OptionalOcts>();
  DescribeListMember<qcommon::QAsnNVSList>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::attrList), "attrList", 9), "qcommon::QAsnNVSList",
      true);
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberValue6), "fiberValue6", 10)
      .CaptureTypeInfor<OptionalInt>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberText8), "fiberText8", 11)
      .CaptureTypeInfor<OptionalOcts>();
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberText9), "fiberText9", 12)
      .CaptureTypeInfor<OptionalOcts>();
  DescribeRecordMember<qcommon::QAsnUniResID>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::aEndResID), "aEndResID", 13), true);
  DescribeRecordMember<qcommon::QAsnUniResID>(
      infor.AddAttribInfor(access, MemberPosition(probe, &Record::zEndResID), "zEndResID", 14), true);
  infor.AddAttribInfor(access, MemberPosition(probe, &Record::fiberValue7), "fiberValue7", 15)
      .CaptureTypeInfor<OptionalInt>();
}

namespace {
const bool s_catalogued = AsnCatalogue::Add({"QAsnFiberInfo", "qinventoryfiber", &CreateAsnValue<QAsnFiberInfo>, ""});
}  // namespace

}  // namespace qinventoryfiber
