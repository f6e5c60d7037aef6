#include "tn_qmodules/qinventorylinkexterior/qasn_link_info.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

namespace qinventorylinkexterior {

void QAsnLinkInfo::DescribeMembers(AsnMemberLines<QAsnLinkInfo>& lines) {
  using Record = QAsnLinkInfo;
  lines.Add("linkResID", &Record::linkResID);
  lines.Add("strText1", &Record::strText1);
  lines.Add("strText2", &Record::strText2);
  lines.Add("strText3", &Record::strText3);
  lines.Add("strText4", &Record::strText4);
  lines.Add("tinyValue1", &Record::tinyValue1);
  lines.Add("tinyValue2", &Record::tinyValue2);
  lines.Add("srcResID", &Record::srcResID);
  lines.Add("dstResID", &Record::dstResID);
  lines.Add("tinyValue3", &Record::tinyValue3);
  lines.Add("tinyValue4", &Record::tinyValue4);
  lines.Add("spareValue", &Record::spareValue);
  lines.Add("attrList", &Record::attrList, 0);
  lines.Add("intValue1", &Record::intValue1);
  lines.Add("intValue2", &Record::intValue2);
  lines.Add("intValue3", &Record::intValue3);
  lines.Add("strText5", &Record::strText5);
  lines.Add("strText6", &Record::strText6);
  lines.Add("strText7", &Record::strText7);
  lines.Add("tinyValue5", &Record::tinyValue5);
  lines.Add("optTinyValue", &Record::optTinyValue, 1);
}

namespace {
const bool s_catalogued =
    AsnCatalogue::Add({"QAsnLinkInfo", "qinventorylinkexterior", &CreateAsnValue<QAsnLinkInfo>, ""});
}  // namespace

}  // namespace qinventorylinkexterior
