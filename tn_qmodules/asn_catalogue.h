// The catalogue of value types that the interface modules define: records and
// lists by their type name, for programs that work on a type given by name
// (the velkor tool). Each module's catalogue entries are compiled from its
// ASN.1 text and added when the library that holds them is loaded.
//
// The catalogue lives in libtn_qmodules, beside the entries of every module
// the project compiles: a program that calls it links that library (the CMake
// package and pkg-config do), keeps it even when linked with --as-needed, and
// so finds every type.
#pragma once
#pragma GCC visibility push(default)

#include <string>
#include <string_view>
#include <vector>

#include "tn_platform/asn/asn_type.h"

struct AsnCatalogueEntry {
  std::string name;         // the type name, as typeName() answers ("QAsnFiberInfo")
  std::string module;       // the interface module ("qinventoryfiber")
  AsnType* (*create)();     // a new default value, owned by the caller
  std::string elementName;  // for a list: the element's type name; else empty
  AsnType* (*createElement)() = nullptr;  // for a list: a new default element; else null
};

class AsnCatalogue {
 public:
  // Adds an entry (a second entry of the same module and name is ignored);
  // returns true. Modules may share type names (Filter, Name, Version).
  static bool Add(AsnCatalogueEntry entry);
  // The entry of that type name (of the module loaded first that has one),
  // or null.
  static const AsnCatalogueEntry* Find(std::string_view name);
  // The entry of that type name in that module, or null.
  static const AsnCatalogueEntry* Find(std::string_view module, std::string_view name);
  // Every entry, ordered by module, then name.
  static std::vector<AsnCatalogueEntry> All();
};

// The create function of a catalogue entry.
template <class T>
AsnType* CreateAsnValue() {
  return new T();
}
#pragma GCC visibility pop
