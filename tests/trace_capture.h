// Collects the trace lines written while it lives and restores the previous
// sink afterwards. One at a time: the lines are kept in one shared vector.
#pragma once

#include <vector>

#include "tn_platform/trace/trace_sink.h"

class TraceCapture {
 public:
  TraceCapture() : m_previous(ns_utility::SetTraceSink(&Collect)) { Lines().clear(); }
  ~TraceCapture() { ns_utility::SetTraceSink(m_previous); }
  TraceCapture(const TraceCapture&) = delete;
  TraceCapture& operator=(const TraceCapture&) = delete;

  static std::vector<ns_utility::TraceLine>& Lines() {
    static std::vector<ns_utility::TraceLine> lines;
    return lines;
  }

 private:
  static void Collect(const ns_utility::TraceLine& line) { Lines().push_back(line); }
  ns_utility::TraceSink m_previous;
};
