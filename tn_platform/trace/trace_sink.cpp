#include "tn_platform/trace/trace_sink.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>

namespace ns_utility {
namespace {

std::atomic<TraceSink> g_sink{nullptr};

// Writes to the destination TN_TRACE names, read once.
void DefaultSink(const TraceLine& line) {
  static std::mutex mutex;
  static FILE* const destination = [] {
    const char* setting = std::getenv("TN_TRACE");
    if (setting == nullptr || *setting == '\0') return static_cast<FILE*>(nullptr);
    if (std::string(setting) == "stderr") return stderr;
    return std::fopen(setting, "a");
  }();
  if (destination == nullptr) return;
  const std::string text = FormatTraceLine(line) + "\n";
  const std::lock_guard<std::mutex> lock(mutex);
  std::fwrite(text.data(), 1, text.size(), destination);
  std::fflush(destination);
}

}  // namespace

TraceSink SetTraceSink(TraceSink sink) { return g_sink.exchange(sink); }

void EmitTrace(const TraceLine& line) {
  const TraceSink sink = g_sink.load();
  (sink ? sink : DefaultSink)(line);
}

std::string FormatTraceLine(const TraceLine& line) {
  // Timing lines carry neither module nor source position: leave those out
  // rather than print empty fields.
  std::string text;
  if (!line.module.empty()) text += line.module + " ";
  text += line.category + " ";
  if (!line.file.empty()) text += line.file + ":" + std::to_string(line.line) + " ";
  return text + "[" + std::to_string(line.level) + "] " + line.text;
}

}  // namespace ns_utility
