// ModuleMgr: the process-wide module manager. Modules register when they are
// loaded; a host lists them, looks them up by name and drives Init and Fini.
#pragma once
#pragma GCC visibility push(default)

#include <mutex>
#include <string>
#include <vector>

#include "tn_platform/module/module_object.h"

class ModuleMgr {
 public:
  static ModuleMgr* Instance();

  // Records `module` (not owned). Returns 0; registering the same object
  // again changes nothing.
  virtual int RegisterModule(ModuleObject* module);
  virtual ~ModuleMgr() = default;

  // The registered modules, in registration order.
  std::vector<ModuleObject*> Modules() const;
  // The first registered module of that name, or null.
  ModuleObject* Find(const std::string& name) const;

 private:
  ModuleMgr() = default;
  mutable std::mutex m_mutex;
  std::vector<ModuleObject*> m_modules;
};
#pragma GCC visibility pop
