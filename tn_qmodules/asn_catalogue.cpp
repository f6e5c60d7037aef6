#include "tn_qmodules/asn_catalogue.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>

namespace {
struct Catalogue {
  std::mutex mutex;
  std::map<std::string, std::unique_ptr<AsnCatalogueEntry>, std::less<>> entries;
};

Catalogue& TheCatalogue() {
  static Catalogue* const catalogue = new Catalogue;  // outlives every module's static objects
  return *catalogue;
}
}  // namespace

bool AsnCatalogue::Add(AsnCatalogueEntry entry) {
  Catalogue& catalogue = TheCatalogue();
  const std::lock_guard<std::mutex> lock(catalogue.mutex);
  const std::string name = entry.name;
  catalogue.entries.emplace(name, std::make_unique<AsnCatalogueEntry>(std::move(entry)));
  return true;
}

const AsnCatalogueEntry* AsnCatalogue::Find(std::string_view name) {
  Catalogue& catalogue = TheCatalogue();
  const std::lock_guard<std::mutex> lock(catalogue.mutex);
  const auto found = catalogue.entries.find(name);
  return found == catalogue.entries.end() ? nullptr : found->second.get();
}

std::vector<AsnCatalogueEntry> AsnCatalogue::All() {
  Catalogue& catalogue = TheCatalogue();
  std::vector<AsnCatalogueEntry> all;
  {
    const std::lock_guard<std::mutex> lock(catalogue.mutex);
    for (const auto& entry : catalogue.entries) all.push_back(*entry.second);
  }
  std::stable_sort(all.begin(), all.end(),
                   [](const AsnCatalogueEntry& a, const AsnCatalogueEntry& b) { return a.module < b.module; });
  return all;
}
