// Uses the installed package: the public header by its installed name, and a
// runtime header by its prefixed path below include/.
#include <tn_velkor/ns_velkor.h>

#include <cstdio>
#include <map>
#include <string>

#include "tn_platform/asn/asn_value_io.h"

int main() {
  qcommon::QAsnNVSList list;
  qcommon::QAsnNameAndValueString* pair = list.Append();
  pair->name.Set("Memo");
  pair->value.Set("spare");
  std::map<std::string, std::string> map;
  ns_velkor::Convert2MapKeyValue(list, map);

  const std::string octets = AsnEncodeValue(list);
  qcommon::QAsnNVSList back;
  AsnDecodeValue(back, octets);
  if (map["Memo"] != "spare" || back.Count() != 1 || octets.size() != 17) {
    std::fprintf(stderr, "consumer: unexpected results\n");
    return 1;
  }
  std::printf("consumer: Memo=%s, %zu octets\n", map["Memo"].c_str(), octets.size());
  return 0;
}
