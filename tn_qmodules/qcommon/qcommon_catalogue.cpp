// Catalogue entries of the records and lists of qcommon. Their code is in the
// conversion library, which keeps no static object beyond its module object,
// so the entries are made here, where the other modules make theirs.
#include "tn_velkor/qcommon/qasn_column.h"
#include "tn_velkor/qcommon/qasn_uni_res_id.h"
#include "tn_velkor/qcommon/qasn_err_info_return.h"
#include "tn_velkor/qcommon/qasn_port_index.h"
#include "tn_velkor/qcommon/qcommon_lists.h"
#include "tn_platform/asn/asn_catalogue.h"

namespace {
const bool s_qcommonCatalogued = [] {
  using namespace qcommon;
  AsnCatalogue::Add({"QAsnNameAndValueString", "qcommon", &CreateAsnValue<QAsnNameAndValueString>, ""});
  AsnCatalogue::Add({"QAsnUniResID", "qcommon", &CreateAsnValue<QAsnUniResID>, ""});
  AsnCatalogue::Add({"QAsnErrInfo", "qcommon", &CreateAsnValue<QAsnErrInfo>, ""});
  AsnCatalogue::Add({"QAsnColumn", "qcommon", &CreateAsnValue<QAsnColumn>, ""});
  AsnCatalogue::Add({"QAsnPortIndex", "qcommon", &CreateAsnValue<QAsnPortIndex>, ""});
  AsnCatalogue::Add({"QAsnErrInfoReturn", "qcommon", &CreateAsnValue<QAsnErrInfoReturn>, ""});
  AsnCatalogue::Add(
      {"QAsnTinyIntList", "qcommon", &CreateAsnValue<QAsnTinyIntList>, "AsnTinyInt", &CreateAsnValue<AsnTinyInt>});
  AsnCatalogue::Add({"QAsnNVSList", "qcommon", &CreateAsnValue<QAsnNVSList>, "QAsnNameAndValueString",
                     &CreateAsnValue<QAsnNameAndValueString>});
  AsnCatalogue::Add(
      {"QAsnErrInfoList", "qcommon", &CreateAsnValue<QAsnErrInfoList>, "QAsnErrInfo", &CreateAsnValue<QAsnErrInfo>});
  return true;
}();
}  // namespace
