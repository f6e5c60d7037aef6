// The library's module object as the module manager sees it, beyond what
// dlopen_host checks on a fresh load (one registration, id, one Init and Fini,
// the timing line): repeated registration, Init and Fini in any order and
// number, the empty entry table, and the trace line format.
#include <gtest/gtest.h>

#include <cstdint>
#include <list>
#include <tuple>

#include "tn_platform/module/module_mgr.h"
#include "tn_platform/trace/trace_sink.h"

namespace {

struct ProbeEntry : ModuleEntry {
  bool Matches(std::uint64_t, std::uint64_t) const override { return true; }
};

TEST(ModuleFrame, RepeatedRegistrationInitAndFini) {
  ModuleMgr& manager = *ModuleMgr::Instance();
  ModuleObject* module = manager.Find("tn_velkor");
  ASSERT_NE(module, nullptr);
  const std::size_t before = manager.Modules().size();
  EXPECT_EQ(manager.RegisterModule(module), 0);  // ignored
  EXPECT_EQ(manager.Modules().size(), before);
  // Fini needs no Init before it; both may be repeated.
  for (const bool init : {false, true, true, false, false, true, false}) {
    SCOPED_TRACE(init ? "Init" : "Fini");
    if (init) {
      EXPECT_EQ(module->Init(), 0);
    } else {
      module->Fini();
    }
    EXPECT_EQ(std::make_tuple(module->State(), module->GetModuleID(), module->Reserved()),
              std::make_tuple(init ? 1 : 3, 1357, 0));
  }
}

TEST(ModuleFrame, HasNoEntries) {
  ModuleObject& module = *ModuleMgr::Instance()->Find("tn_velkor");
  for (const std::uint64_t key : {std::uint64_t{0}, std::uint64_t{1}, ~std::uint64_t{0}}) {
    EXPECT_EQ(module.FindEntry(key, key), nullptr);
  }
  ProbeEntry a, b;
  std::list<ModuleEntry*> entries{&a, &b};
  module.ListEntries(entries);  // appends nothing, removes nothing
  EXPECT_EQ(entries, (std::list<ModuleEntry*>{&a, &b}));
  module.ReleaseEntries();
  module.ReleaseEntries();  // repeatable
}

TEST(TraceFacility, FormatsLinesWithAndWithoutASourcePosition) {
  EXPECT_EQ(ns_utility::FormatTraceLine({"tn_velkor", "INFO", "tn_velkor_unity", 42, 3, "code 7"}),
            "tn_velkor INFO tn_velkor_unity:42 [3] code 7");
  EXPECT_EQ(ns_utility::FormatTraceLine({"", "TIME", "", 0, 1, "Init tn_velkor took 5 us"}),
            "TIME [1] Init tn_velkor took 5 us");
}

}  // namespace
