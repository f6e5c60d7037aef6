// ns_utility::TEDbgHelper: writes one trace line for a module. Made on the
// stack for one statement, given the module name, a category word, the source
// file and line; then exactly one of PrintfTrace or TraceAsn.
#pragma once
#pragma GCC visibility push(default)

#include <string>

class AsnType;

namespace ns_utility {

class TEDbgHelper {
 public:
  TEDbgHelper(const char* module, const char* category, const char* file, int line);
  ~TEDbgHelper() = default;
  TEDbgHelper(const TEDbgHelper&) = delete;
  TEDbgHelper& operator=(const TEDbgHelper&) = delete;

  // Writes one line at `level` with printf-style formatting.
  void PrintfTrace(int level, const char* format, ...) __attribute__((format(printf, 3, 4)));
  // Writes the record's Print output as the line's text (level 3).
  void TraceAsn(const AsnType& record);

 private:
  void Emit(int level, std::string text) const;

  const char* m_module;
  const char* m_category;
  const char* m_file;
  int m_line;
};

}  // namespace ns_utility
#pragma GCC visibility pop
