// tn_velkor: the library's module object. One static instance is built and
// registered with ModuleMgr when the library is loaded; the manager drives it
// from then on. The module has no entries.
#pragma once

#include "tn_platform/module/module_object.h"

class tn_velkor : public ModuleObject {
 public:
  tn_velkor() = default;
  // Ends the object's life; the registration is never withdrawn.
  ~tn_velkor() override = default;

  // A new string "tn_velkor".
  std::string GetModuleName() override;
  // 1357.
  int GetModuleID() override;
  // Timed with NSTE_util::TESimpleTimeGuard ("Init tn_velkor"); state 1; returns 0.
  int Init() override;
  // State 3.
  void Fini() override;
  // The first entry whose Matches answers true, or null (always null here).
  ModuleEntry* FindEntry(std::uint64_t first, std::uint64_t second) override;
  // Appends every entry, in table order (none here).
  void ListEntries(std::list<ModuleEntry*>& entries) override;
  // Deletes the entry in the table's slot, if any, and empties the slot.
  void ReleaseEntries() override;
  // 0.
  int Reserved() override;
};
