// Name/value lists into name/value maps.
#include "tn_velkor/ns_velkor.h"
#include "tn_velkor/convert/octs_text.h"

namespace ns_velkor {

void Convert2MapKeyValue(const qcommon::QAsnNVSList& list, std::map<std::string, std::string>& map) {
  for (list.MoveFirst(); const qcommon::QAsnNameAndValueString* element = list.Current(); list.MoveNext()) {
    std::string& value = map[OctsText(element->name)];
    value = OctsText(element->value);
  }
}

}  // namespace ns_velkor
