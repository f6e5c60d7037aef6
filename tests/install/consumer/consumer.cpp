// A service module's use of the installed package: the public header alone,
// a conversion, a record encoded and decoded, and the type catalogue. Prints
// the catalogue's type names, one a line, for the install check to compare
// with `velkor types`.
#include <tn_velkor/ns_velkor.h>

#include <cstdio>
#include <map>
#include <string>

int main() {
  static_assert(TN_VELKOR_VERSION_MAJOR >= 1, "the version header comes with the public header");
  qcommon::QAsnNVSList list;
  qcommon::QAsnNameAndValueString* pair = list.Append();
  pair->name.Set("Memo");
  pair->value.Set("spare");
  std::map<std::string, std::string> map;
  ns_velkor::Convert2MapKeyValue(list, map);

  const qcommon::QAsnNVSList& encoded = list;  // encoding takes a const value
  const std::string octets = AsnEncodeValue(encoded);
  qcommon::QAsnNVSList back;
  AsnDecodeValue(back, octets);
  if (map["Memo"] != "spare" || back.Count() != 1 || octets.size() != 17) {
    std::fprintf(stderr, "consumer: unexpected results\n");
    return 1;
  }
  for (const AsnCatalogueEntry& entry : AsnCatalogue::All()) std::printf("%s\n", entry.name.c_str());
  return 0;
}
