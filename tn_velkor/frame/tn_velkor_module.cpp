#include "tn_velkor/frame/tn_velkor_module.h"

#include "tn_platform/module/module_mgr.h"
#include "tn_platform/trace/time_guard.h"

namespace {

// The module's table of entries: null-terminated, and in this library it
// holds only the terminator.
ModuleEntry* s_apEntries[1] = {nullptr};

// The library's one static initialiser: the module object is complete before
// the manager sees it, and is destroyed at exit without being withdrawn.
struct RegisteredModule {
  tn_velkor module;
  RegisteredModule() { ModuleMgr::Instance()->RegisterModule(&module); }
} s_registeredModule;

}  // namespace

std::string tn_velkor::GetModuleName() { return "tn_velkor"; }

int tn_velkor::GetModuleID() { return 1357; }

int tn_velkor::Init() {
  const NSTE_util::TESimpleTimeGuard guard(std::string("Init tn_velkor"));
  m_iState = 1;
  return 0;
}

void tn_velkor::Fini() { m_iState = 3; }

ModuleEntry* tn_velkor::FindEntry(std::uint64_t first, std::uint64_t second) {
  for (ModuleEntry** entry = s_apEntries; *entry != nullptr; ++entry) {
    if ((*entry)->Matches(first, second)) return *entry;
  }
  return nullptr;
}

void tn_velkor::ListEntries(std::list<ModuleEntry*>& entries) {
  for (ModuleEntry** entry = s_apEntries; *entry != nullptr; ++entry) entries.push_back(*entry);
}

void tn_velkor::ReleaseEntries() {
  delete s_apEntries[0];
  s_apEntries[0] = nullptr;
}

int tn_velkor::Reserved() { return 0; }
