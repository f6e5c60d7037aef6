// ModuleObject: the root class of every module the module manager drives.
// Virtual operations, in the order the manager expects them: destructor,
// GetModuleName, GetModuleID, Init, Fini, FindEntry, ListEntries,
// ReleaseEntries, Reserved.
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>
#include <list>
#include <string>

// An entry of a module's table, owned by the module.
class ModuleEntry {
 public:
  virtual ~ModuleEntry() = default;
  // True when this entry answers to the manager's two arguments.
  virtual bool Matches(std::uint64_t first, std::uint64_t second) const = 0;
};

class ModuleObject {
 public:
  virtual ~ModuleObject() = default;
  virtual std::string GetModuleName() = 0;
  virtual int GetModuleID() = 0;
  virtual int Init() = 0;
  virtual void Fini() = 0;
  virtual ModuleEntry* FindEntry(std::uint64_t first, std::uint64_t second) = 0;
  virtual void ListEntries(std::list<ModuleEntry*>& entries) = 0;
  virtual void ReleaseEntries() = 0;
  virtual int Reserved() = 0;

  // The module's state, kept for the manager: 0 created, 1 initialised, 3 finished.
  int State() const { return m_iState; }

 protected:
  ModuleObject() = default;
  int m_iState = 0;
};
#pragma GCC visibility pop
