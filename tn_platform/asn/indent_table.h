// The indentation of value printing (records and lists alike): entry k of
// the table is a run of 2k blanks, for k from 0 to 39.
#pragma once
#pragma GCC visibility push(default)

constexpr unsigned long kIndentTableSize = 40;

// The entry for `level`; levels beyond the table get its deepest entry.
const char* IndentText(unsigned long level);
#pragma GCC visibility pop
