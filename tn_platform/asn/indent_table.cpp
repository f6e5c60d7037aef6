#include "tn_platform/asn/indent_table.h"

const char* IndentText(unsigned long level) {
  // 2 x 39 blanks; entry k is the tail of 2k blanks.
  static const char kBlanks[] = "                                                                              ";
  static_assert(sizeof(kBlanks) - 1 == 2 * (kIndentTableSize - 1), "deepest entry has 78 blanks");
  const unsigned long entry = level < kIndentTableSize ? level : kIndentTableSize - 1;
  return kBlanks + (sizeof(kBlanks) - 1) - 2 * entry;
}
