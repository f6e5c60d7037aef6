// The library's module object as the module manager sees it: name, number,
// state transitions, the timing line of Init, and the empty entry table.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "frame/tn_velkor_module.h"
#include "platform/module/module_mgr.h"
#include "platform/trace/trace_sink.h"

namespace {

std::vector<ns_utility::TraceLine>& CapturedLines() {
  static std::vector<ns_utility::TraceLine> lines;
  return lines;
}

void CaptureLine(const ns_utility::TraceLine& line) { CapturedLines().push_back(line); }

// Captures every trace line for as long as it lives, then puts the old sink back.
class TraceCapture {
 public:
  TraceCapture() : m_previous(ns_utility::SetTraceSink(CaptureLine)) { CapturedLines().clear(); }
  ~TraceCapture() { ns_utility::SetTraceSink(m_previous); }
  const std::vector<ns_utility::TraceLine>& Lines() const { return CapturedLines(); }

 private:
  ns_utility::TraceSink m_previous;
};

ModuleObject& Module() {
  ModuleObject* module = ModuleMgr::Instance()->Find("tn_velkor");
  EXPECT_NE(module, nullptr);
  return *module;
}

class ProbeEntry : public ModuleEntry {
 public:
  bool Matches(std::uint64_t, std::uint64_t) const override { return true; }
};

TEST(ModuleFrame, RegisteredOnceAtLoadTime) {
  int named = 0;
  for (ModuleObject* module : ModuleMgr::Instance()->Modules()) named += module->GetModuleName() == "tn_velkor";
  EXPECT_EQ(named, 1);
  EXPECT_NE(dynamic_cast<tn_velkor*>(&Module()), nullptr);
}

TEST(ModuleFrame, StateFollowsInitAndFini) {
  ModuleObject& module = Module();
  const struct {
    const char* step;
    int state;
  } steps[] = {
      {"Fini", 3},  // Fini needs no Init before it
      {"Init", 1}, {"Init", 1}, {"Fini", 3}, {"Fini", 3}, {"Init", 1}, {"Fini", 3},
  };
  for (const auto& s : steps) {
    SCOPED_TRACE(s.step);
    if (std::string(s.step) == "Init") {
      EXPECT_EQ(module.Init(), 0);
    } else {
      module.Fini();
    }
    EXPECT_EQ(module.State(), s.state);
    // Name and number are the same in every state.
    std::string name = module.GetModuleName();
    EXPECT_EQ(name, "tn_velkor");
    name[0] = 'X';  // a fresh string each call
    EXPECT_EQ(module.GetModuleName(), "tn_velkor");
    EXPECT_EQ(module.GetModuleID(), 1357);
    EXPECT_EQ(module.Reserved(), 0);
  }
}

TEST(ModuleFrame, InitWritesOneTimingLine) {
  ModuleObject& module = Module();
  const TraceCapture capture;
  EXPECT_EQ(module.Init(), 0);
  ASSERT_EQ(capture.Lines().size(), 1u);
  const ns_utility::TraceLine& line = capture.Lines()[0];
  EXPECT_EQ(line.category, "TIME");
  const std::string prefix = "Init tn_velkor took ";
  ASSERT_EQ(line.text.compare(0, prefix.size(), prefix), 0) << line.text;
  const std::string rest = line.text.substr(prefix.size());
  ASSERT_GE(rest.size(), 4u) << line.text;
  EXPECT_EQ(rest.substr(rest.size() - 3), " us");
  EXPECT_EQ(rest.find_first_not_of("0123456789"), rest.size() - 3) << line.text;

  module.Fini();
  module.GetModuleName();
  std::list<ModuleEntry*> entries;
  module.ListEntries(entries);
  EXPECT_EQ(capture.Lines().size(), 1u);  // nothing else traces
}

TEST(ModuleFrame, HasNoEntries) {
  ModuleObject& module = Module();
  const std::uint64_t big = std::numeric_limits<std::uint64_t>::max();
  for (const auto& arguments : {std::pair<std::uint64_t, std::uint64_t>{0, 0}, {1, 2}, {big, big}}) {
    EXPECT_EQ(module.FindEntry(arguments.first, arguments.second), nullptr);
  }

  ProbeEntry a, b, c;
  std::list<ModuleEntry*> entries{&a, &b, &c};
  module.ListEntries(entries);
  EXPECT_EQ(entries, (std::list<ModuleEntry*>{&a, &b, &c}));

  module.ReleaseEntries();
  module.ReleaseEntries();
  EXPECT_EQ(module.FindEntry(0, 0), nullptr);
  module.ListEntries(entries);
  EXPECT_EQ(entries.size(), 3u);
}

TEST(ModuleFrame, ManagerIgnoresARepeatedRegistration) {
  ModuleObject& module = Module();
  const std::size_t before = ModuleMgr::Instance()->Modules().size();
  EXPECT_EQ(ModuleMgr::Instance()->RegisterModule(&module), 0);
  EXPECT_EQ(ModuleMgr::Instance()->Modules().size(), before);
  EXPECT_EQ(ModuleMgr::Instance()->Find("no such module"), nullptr);
}

}  // namespace

namespace {

TEST(TraceFacility, FormatsLinesWithAndWithoutASourcePosition) {
  EXPECT_EQ(ns_utility::FormatTraceLine({"tn_velkor", "INFO", "tn_velkor_unity", 42, 3, "code 7"}),
            "tn_velkor INFO tn_velkor_unity:42 [3] code 7");
  EXPECT_EQ(ns_utility::FormatTraceLine({"", "TIME", "", 0, 1, "Init tn_velkor took 5 us"}),
            "TIME [1] Init tn_velkor took 5 us");
}

}  // namespace
