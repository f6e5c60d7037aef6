// The library's module object as the module manager sees it: name, number,
// state transitions, the timing line of Init, and the empty entry table.
#include <gtest/gtest.h>

#include <cstdint>
#include <list>
#include <string>

#include "tn_platform/module/module_mgr.h"
#include "trace_capture.h"

namespace {

ModuleObject& Module() {
  ModuleObject* module = ModuleMgr::Instance()->Find("tn_velkor");
  EXPECT_NE(module, nullptr);
  return *module;
}

struct ProbeEntry : ModuleEntry {
  bool Matches(std::uint64_t, std::uint64_t) const override { return true; }
};

TEST(ModuleFrame, RegisteredOnceAtLoadTime) {
  ModuleMgr& manager = *ModuleMgr::Instance();
  int named = 0;
  for (ModuleObject* module : manager.Modules()) named += module->GetModuleName() == "tn_velkor";
  EXPECT_EQ(named, 1);
  const std::size_t before = manager.Modules().size();
  EXPECT_EQ(manager.RegisterModule(&Module()), 0);  // a repeated registration is ignored
  EXPECT_EQ(manager.Modules().size(), before);
}

// Fini needs no Init before it; both may be repeated. Name, number and the
// reserved slot are the same in every state.
TEST(ModuleFrame, StateFollowsInitAndFini) {
  ModuleObject& module = Module();
  for (const bool init : {false, true, true, false, false, true, false}) {
    SCOPED_TRACE(init ? "Init" : "Fini");
    if (init) {
      EXPECT_EQ(module.Init(), 0);
    } else {
      module.Fini();
    }
    EXPECT_EQ(module.State(), init ? 1 : 3);
    EXPECT_EQ(module.GetModuleName(), "tn_velkor");
    EXPECT_EQ(module.GetModuleID(), 1357);
    EXPECT_EQ(module.Reserved(), 0);
  }
}

TEST(ModuleFrame, InitWritesOneTimingLine) {
  ModuleObject& module = Module();
  const TraceCapture capture;
  EXPECT_EQ(module.Init(), 0);
  module.Fini();
  ASSERT_EQ(TraceCapture::Lines().size(), 1u);  // Fini does not trace
  EXPECT_EQ(TraceCapture::Lines()[0].category, "TIME");
  const std::string& text = TraceCapture::Lines()[0].text;
  const std::string prefix = "Init tn_velkor took ";
  ASSERT_GT(text.size(), prefix.size() + 3) << text;
  EXPECT_EQ(text.substr(0, prefix.size()), prefix);
  EXPECT_EQ(text.find_first_not_of("0123456789", prefix.size()), text.size() - 3) << text;  // N us
  EXPECT_EQ(text.substr(text.size() - 3), " us");
}

TEST(ModuleFrame, HasNoEntries) {
  ModuleObject& module = Module();
  for (const std::uint64_t key : {std::uint64_t{0}, std::uint64_t{1}, ~std::uint64_t{0}}) {
    EXPECT_EQ(module.FindEntry(key, key), nullptr);
  }
  ProbeEntry a, b, c;
  std::list<ModuleEntry*> entries{&a, &b, &c};
  module.ListEntries(entries);  // appends nothing, removes nothing
  EXPECT_EQ(entries, (std::list<ModuleEntry*>{&a, &b, &c}));
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
