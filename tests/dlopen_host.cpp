// dlopen_host: loads the conversion library the way the management server
// does and drives its module object.
//
//   dlopen_host <path to libtn_velkor.so>
//
// Loading registers exactly one module "tn_velkor" (id 1357, state 0, reserved
// 0); registering it again is ignored. Init and Fini may come in any order and
// number (state 1 after Init, 3 after Fini). The module has no entries. Prints
// a one-line report; exits 0 when every check holds.
#include <dlfcn.h>

#include <cstdio>
#include <string>
#include <vector>

#include "tn_platform/module/module_mgr.h"
#include "tn_platform/trace/trace_sink.h"

namespace {

std::vector<ns_utility::TraceLine> g_lines;
int g_failures = 0;

void Check(bool holds, const std::string& what) {
  if (!holds) std::fprintf(stderr, "dlopen_host: FAILED: %s\n", what.c_str());
  g_failures += !holds;
}

std::vector<ModuleObject*> ModulesNamed(const std::string& name) {
  std::vector<ModuleObject*> found;
  for (ModuleObject* module : ModuleMgr::Instance()->Modules()) {
    if (module->GetModuleName() == name) found.push_back(module);
  }
  return found;
}

struct ProbeEntry : ModuleEntry {
  bool Matches(std::uint64_t, std::uint64_t) const override { return true; }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s <path to libtn_velkor.so>\n", argv[0]);
    return 2;
  }
  ns_utility::SetTraceSink([](const ns_utility::TraceLine& line) { g_lines.push_back(line); });
  Check(ModulesNamed("tn_velkor").empty(), "a module tn_velkor is registered before loading");
  // The library stays loaded until exit: the manager keeps the module's
  // address, and the registration is never withdrawn.
  if (dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) == nullptr) {
    Check(false, std::string("dlopen: ") + dlerror());
    return 1;
  }
  const std::vector<ModuleObject*> modules = ModulesNamed("tn_velkor");
  Check(modules.size() == 1, "expected one module tn_velkor, found " + std::to_string(modules.size()));
  if (modules.empty()) return 1;
  ModuleObject& module = *modules.front();
  const auto describe = [&module] {
    return "id " + std::to_string(module.GetModuleID()) + ", state " + std::to_string(module.State()) + ", reserved " +
           std::to_string(module.Reserved());
  };
  Check(describe() == "id 1357, state 0, reserved 0", "after loading: " + describe());
  const std::size_t registered = ModuleMgr::Instance()->Modules().size();
  Check(ModuleMgr::Instance()->RegisterModule(&module) == 0, "registering again does not return 0");
  Check(ModuleMgr::Instance()->Modules().size() == registered, "registering again adds a module");

  // Fini needs no Init before it; both may be repeated. Each Init writes one
  // timing line, Fini none.
  std::string timing;
  for (const bool init : {false, true, true, false, false, true, false}) {
    g_lines.clear();
    if (init) Check(module.Init() == 0, "Init did not return 0");
    if (!init) module.Fini();
    const char* step = init ? "Init" : "Fini";
    Check(describe() == (init ? "id 1357, state 1, reserved 0" : "id 1357, state 3, reserved 0"),
          std::string("after ") + step + ": " + describe());
    Check(g_lines.size() == (init ? 1u : 0u), step + (" wrote " + std::to_string(g_lines.size()) + " trace lines"));
    if (!init || g_lines.empty()) continue;
    timing = ns_utility::FormatTraceLine(g_lines.front());
    Check(timing.rfind("TIME [1] Init tn_velkor took ", 0) == 0 && timing.size() > 32 &&
              timing.compare(timing.size() - 3, 3, " us") == 0,
          "unexpected Init line: " + timing);
  }

  for (const std::uint64_t key : {std::uint64_t{0}, std::uint64_t{1}, ~std::uint64_t{0}}) {
    Check(module.FindEntry(key, key) == nullptr, "an entry for key " + std::to_string(key));
  }
  ProbeEntry a, b;
  std::list<ModuleEntry*> entries{&a, &b};
  module.ListEntries(entries);  // appends nothing, removes nothing
  Check(entries == std::list<ModuleEntry*>{&a, &b}, "ListEntries changed the caller's list");
  module.ReleaseEntries();
  module.ReleaseEntries();  // repeatable

  std::printf("loaded %s: module tn_velkor (id 1357), %s; %s\n", argv[1], g_failures == 0 ? "ok" : "FAILED",
              timing.c_str());
  return g_failures == 0 ? 0 : 1;
}
