#include "tn_qmodules/qinventoryfiber/qasn_fiber_info_template.h"

#include "tn_platform/asn/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"

namespace qinventoryfiber {

void QAsnFiberInfoTemplate::DescribeMembers(AsnMemberLines<QAsnFiberInfoTemplate>& lines) {
  using Record = QAsnFiberInfoTemplate;
  lines.Add("column1", &Record::column1, 0);
  lines.Add("column2", &Record::column2, 1);
  lines.Add("column3", &Record::column3, 2);
  lines.Add("column4", &Record::column4, 3);
  lines.Add("column5", &Record::column5, 4);
  lines.Add("column6", &Record::column6, 5);
  lines.Add("column7", &Record::column7, 6);
  lines.Add("column8", &Record::column8, 7);
  lines.Add("column9", &Record::column9, 8);
  lines.Add("column10", &Record::column10, 9);
  lines.Add("column11", &Record::column11, 10);
  lines.Add("column12", &Record::column12, 11);
}

namespace {
const bool s_catalogued =
    AsnCatalogue::Add({"QAsnFiberInfoTemplate", "qinventoryfiber", &CreateAsnValue<QAsnFiberInfoTemplate>, ""});
}  // namespace

}  // namespace qinventoryfiber
