#include "tn_platform/trace/dbg_helper.h"

#include <cstdarg>
#include <cstdio>
#include <sstream>

#include "tn_platform/asn/asn_type.h"
#include "tn_platform/trace/trace_sink.h"

namespace ns_utility {

TEDbgHelper::TEDbgHelper(const char* module, const char* category, const char* file, int line)
    : m_module(module), m_category(category), m_file(file), m_line(line) {}

void TEDbgHelper::PrintfTrace(int level, const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list measure;
  va_copy(measure, args);
  const int size = std::vsnprintf(nullptr, 0, format, measure);
  va_end(measure);
  std::string text(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
  if (size > 0) std::vsnprintf(&text[0], text.size() + 1, format, args);
  va_end(args);
  Emit(level, std::move(text));
}

void TEDbgHelper::TraceAsn(const AsnType& record) {
  std::ostringstream text;
  record.Print(text, 0, false);
  Emit(3, text.str());
}

void TEDbgHelper::Emit(int level, std::string text) const {
  EmitTrace(TraceLine{m_module ? m_module : "", m_category ? m_category : "", m_file ? m_file : "", m_line, level,
                      std::move(text)});
}

}  // namespace ns_utility
