#include "tn_qmodules/qinventoryfiber/qasn_fiber_info.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

namespace qinventoryfiber {

void QAsnFiberInfo::DescribeMembers(AsnMemberLines<QAsnFiberInfo>& lines) {
  using Record = QAsnFiberInfo;
  lines.Add("fiberText1", &Record::fiberText1);
  lines.Add("fiberValue1", &Record::fiberValue1);
  lines.Add("fiberText2", &Record::fiberText2);
  lines.Add("fiberValue2", &Record::fiberValue2);
  lines.Add("fiberValue3", &Record::fiberValue3);
  lines.Add("aEndPort", &Record::aEndPort);
  lines.Add("zEndPort", &Record::zEndPort);
  lines.Add("hybridMaxCapacity", &Record::hybridMaxCapacity, 0);
  lines.Add("fiberValue5", &Record::fiberValue5, 1);
  lines.Add("doubleValue", &Record::doubleValue, 2);
  lines.Add("floatValue", &Record::floatValue, 3);
  lines.Add("fiberText3", &Record::fiberText3, 4);
  lines.Add("fiberText4", &Record::fiberText4, 5);
  lines.Add("fiberText5", &Record::fiberText5, 6);
  lines.Add("fiberText6", &Record::fiberText6, 7);
  lines.Add("fiberText7", &Record::fiberText7, 8);
  lines.Add("attrList", &Record::attrList, 9);
  lines.Add("fiberValue6", &Record::fiberValue6, 10);
  lines.Add("fiberText8", &Record::fiberText8, 11);
  lines.Add("fiberText9", &Record::fiberText9, 12);
  lines.Add("aEndResID", &Record::aEndResID, 13);
  lines.Add("zEndResID", &Record::zEndResID, 14);
  lines.Add("fiberValue7", &Record::fiberValue7, 15);
}

namespace {
const bool s_catalogued = AsnCatalogue::Add({"QAsnFiberInfo", "qinventoryfiber", &CreateAsnValue<QAsnFiberInfo>, ""});
}  // namespace

}  // namespace qinventoryfiber
