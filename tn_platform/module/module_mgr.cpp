#include "tn_platform/module/module_mgr.h"

#include <algorithm>

ModuleMgr* ModuleMgr::Instance() {
  static ModuleMgr* const instance = new ModuleMgr;  // never destroyed: modules outlive main
  return instance;
}

int ModuleMgr::RegisterModule(ModuleObject* module) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (std::find(m_modules.begin(), m_modules.end(), module) == m_modules.end()) m_modules.push_back(module);
  return 0;
}

std::vector<ModuleObject*> ModuleMgr::Modules() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_modules;
}

ModuleObject* ModuleMgr::Find(const std::string& name) const {
  for (ModuleObject* module : Modules()) {
    if (module->GetModuleName() == name) return module;
  }
  return nullptr;
}
