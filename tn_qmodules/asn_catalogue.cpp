#include "tn_qmodules/asn_catalogue.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>

namespace {
struct Catalogue {
  std::mutex mutex;
  // By name, each name's entries in the order their modules were loaded.
  std::map<std::string, std::vector<std::unique_ptr<AsnCatalogueEntry>>, std::less<>> entries;
};

Catalogue& TheCatalogue() {
  static Catalogue* const catalogue = new Catalogue;  // outlives every module's static objects
  return *catalogue;
}
}  // namespace

bool AsnCatalogue::Add(AsnCatalogueEntry entry) {
  Catalogue& catalogue = TheCatalogue();
  const std::lock_guard<std::mutex> lock(catalogue.mutex);
  auto& named = catalogue.entries[entry.name];
  for (const auto& known : named) {
    if (known->module == entry.module) return true;
  }
  named.push_back(std::make_unique<AsnCatalogueEntry>(std::move(entry)));
  return true;
}

const AsnCatalogueEntry* AsnCatalogue::Find(std::string_view name) {
  Catalogue& catalogue = TheCatalogue();
  const std::lock_guard<std::mutex> lock(catalogue.mutex);
  const auto found = catalogue.entries.find(name);
  return found == catalogue.entries.end() ? nullptr : found->second.front().get();
}

const AsnCatalogueEntry* AsnCatalogue::Find(std::string_view module, std::string_view name) {
  Catalogue& catalogue = TheCatalogue();
  const std::lock_guard<std::mutex> lock(catalogue.mutex);
  const auto found = catalogue.entries.find(name);
  if (found == catalogue.entries.end()) return nullptr;
  for (const auto& entry : found->second) {
    if (entry->module == module) return entry.get();
  }
  return nullptr;
}

std::vector<AsnCatalogueEntry> AsnCatalogue::All() {
  Catalogue& catalogue = TheCatalogue();
  std::vector<AsnCatalogueEntry> all;
  {
    const std::lock_guard<std::mutex> lock(catalogue.mutex);
    for (const auto& named : catalogue.entries) {
      for (const auto& entry : named.second) all.push_back(*entry);
    }
  }
  std::stable_sort(all.begin(), all.end(),
                   [](const AsnCatalogueEntry& a, const AsnCatalogueEntry& b) { return a.module < b.module; });
  return all;
}
