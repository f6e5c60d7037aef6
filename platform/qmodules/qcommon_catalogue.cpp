// Catalogue entries of the common records and lists of qcommon (their code is
// in the conversion library, which keeps no static objects of its own).
#include "asn/qasn_column.h"
#include "asn/qasn_uni_res_id.h"
#include "asn/qcommon_lists.h"
#include "platform/asn/asn_catalogue.h"

namespace {
const bool s_qcommonCatalogued = [] {
  using namespace qcommon;
  AsnCatalogue::Add({"QAsnNameAndValueString", "qcommon", &CreateAsnValue<QAsnNameAndValueString>, ""});
  AsnCatalogue::Add({"QAsnUniResID", "qcommon", &CreateAsnValue<QAsnUniResID>, ""});
  AsnCatalogue::Add({"QAsnErrInfo", "qcommon", &CreateAsnValue<QAsnErrInfo>, ""});
  AsnCatalogue::Add({"QAsnColumn", "qcommon", &CreateAsnValue<QAsnColumn>, ""});
  AsnCatalogue::Add({"QAsnTinyIntList", "qcommon", &CreateAsnValue<QAsnTinyIntList>, "AsnTinyInt"});
  AsnCatalogue::Add({"QAsnNVSList", "qcommon", &CreateAsnValue<QAsnNVSList>, "QAsnNameAndValueString"});
  AsnCatalogue::Add({"QAsnErrInfoList", "qcommon", &CreateAsnValue<QAsnErrInfoList>, "QAsnErrInfo"});
  return true;
}();
}  // namespace
