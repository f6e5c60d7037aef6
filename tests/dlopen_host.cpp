// dlopen_host: loads the conversion library the way the management server
// does and drives its module object.
//
//   dlopen_host <path to libtn_velkor.so>
//
// Checks that loading registers exactly one module "tn_velkor" (id 1357,
// state 0), that Init leaves state 1 and exactly one timing line in the trace
// sink, and that Fini leaves state 3. Prints a short report; exits 0 when
// every check holds, 1 otherwise.
#include <dlfcn.h>

#include <cstdio>
#include <string>
#include <vector>

#include "tn_platform/module/module_mgr.h"
#include "tn_platform/trace/trace_sink.h"

namespace {

std::vector<ns_utility::TraceLine> g_lines;

void CaptureLine(const ns_utility::TraceLine& line) { g_lines.push_back(line); }

std::vector<ModuleObject*> ModulesNamed(const std::string& name) {
  std::vector<ModuleObject*> found;
  for (ModuleObject* module : ModuleMgr::Instance()->Modules()) {
    if (module->GetModuleName() == name) found.push_back(module);
  }
  return found;
}

int Fail(const std::string& why) {
  std::fprintf(stderr, "dlopen_host: FAILED: %s\n", why.c_str());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s <path to libtn_velkor.so>\n", argv[0]);
    return 2;
  }
  const char* path = argv[1];
  ns_utility::SetTraceSink(CaptureLine);

  if (!ModulesNamed("tn_velkor").empty()) return Fail("a module tn_velkor is registered before loading");
  // The library stays loaded until exit: the manager keeps the module's
  // address, and the registration is never withdrawn.
  if (dlopen(path, RTLD_NOW | RTLD_LOCAL) == nullptr) return Fail(std::string("dlopen: ") + dlerror());

  const std::vector<ModuleObject*> modules = ModulesNamed("tn_velkor");
  if (modules.size() != 1) return Fail("expected one module tn_velkor, found " + std::to_string(modules.size()));
  ModuleObject& module = *modules.front();
  const int id = module.GetModuleID();
  if (id != 1357) return Fail("module id " + std::to_string(id));
  const int created = module.State();
  if (created != 0) return Fail("state after loading is " + std::to_string(created));

  g_lines.clear();
  if (module.Init() != 0) return Fail("Init did not return 0");
  const int initialised = module.State();
  if (initialised != 1) return Fail("state after Init is " + std::to_string(initialised));
  if (g_lines.size() != 1) return Fail("Init wrote " + std::to_string(g_lines.size()) + " trace lines, expected 1");
  const ns_utility::TraceLine timing = g_lines.front();
  const std::string& text = timing.text;
  if (timing.category != "TIME" || text.rfind("Init tn_velkor took ", 0) != 0 || text.size() < 24 ||
      text.compare(text.size() - 3, 3, " us") != 0) {
    return Fail("unexpected Init line: " + ns_utility::FormatTraceLine(timing));
  }

  module.Fini();
  const int finished = module.State();
  if (finished != 3) return Fail("state after Fini is " + std::to_string(finished));

  std::printf("loaded %s\n", path);
  std::printf("module %s (id %d) registered, state %d -> Init -> %d -> Fini -> %d\n", module.GetModuleName().c_str(),
              id, created, initialised, finished);
  std::printf("Init timing: %s\n", timing.text.c_str());
  return 0;
}
