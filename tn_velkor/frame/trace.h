// The library's trace statement. Each trace is one statement that makes a
// ns_utility::TEDbgHelper for module "tn_velkor", the given category and the
// statement's source position, makes exactly one call on it, and ends it:
//
//   TN_VELKOR_TRACE("INFO").PrintfTrace(3, "QAsnErrInfoReturn failed %d, error snapshot:", code);
//   TN_VELKOR_TRACE("ASN").TraceAsn(record);
//
// The file is the translation unit's: the library is built as one unity
// source, so every line names tn_velkor_unity.
#pragma once

#include "tn_platform/trace/dbg_helper.h"

#define TN_VELKOR_TRACE(category) ns_utility::TEDbgHelper("tn_velkor", (category), __BASE_FILE__, __LINE__)
