// The types of structured/structured.asn (tags of every class and mode,
// CHOICE, DEFAULT, extensible records and CHOICEs, SET and SET OF), by name,
// for the tests and the fuzz target.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "tests/structured/structured.h"
#include "tn_qmodules/asn_catalogue.h"

namespace structured_types {

inline const std::map<std::string, AsnType* (*)()>& StructuredTypes() {
  static const std::map<std::string, AsnType* (*)()> kTypes = [] {
    std::map<std::string, AsnType* (*)()> types;
    for (const AsnCatalogueEntry& entry : AsnCatalogue::All()) {
      if (entry.module == "structured") types[entry.name] = entry.create;
    }
    return types;
  }();
  return kTypes;
}

inline std::unique_ptr<AsnType> CreateStructured(const std::string& type) {
  return std::unique_ptr<AsnType>(StructuredTypes().at(type)());
}

}  // namespace structured_types
