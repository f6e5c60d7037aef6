// The record and list types of the catalogue, for fuzz targets that pick the
// type of their input from its first octet.
//
// The choice is the octet modulo the number of types, in the catalogue's
// order (module, then name): a type added to the catalogue shifts the choice
// of the seeds that follow it, which costs coverage until the next merge but
// never a false finding.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tn_qmodules/asn_catalogue.h"
#include "tn_velkor/ns_velkor.h"

inline const std::vector<AsnCatalogueEntry>& FuzzCatalogue() {
  static const std::vector<AsnCatalogueEntry> entries = [] {
    std::vector<AsnCatalogueEntry> all = AsnCatalogue::All();
    if (all.empty()) {
      std::fprintf(stderr, "the catalogue is empty: the interface modules are not linked\n");
      std::abort();
    }
    return all;
  }();
  return entries;
}

inline const AsnCatalogueEntry& FuzzChooseType(std::uint8_t octet) {
  const std::vector<AsnCatalogueEntry>& all = FuzzCatalogue();
  return all[octet % all.size()];
}
