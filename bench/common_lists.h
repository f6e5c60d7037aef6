// The 10,000-element common record lists the benchmarks share.
#pragma once

#include <cstdio>

#include "tn_velkor/qcommon/qcommon.h"

namespace bench_lists {

constexpr int kElements = 10000;

// Names of 9 octets ("name00042"), values of 16 octets ("value00000000042").
inline qcommon::QAsnNVSList MakeNvsList() {
  qcommon::QAsnNVSList list;
  char text[32];
  for (int i = 0; i < kElements; ++i) {
    qcommon::QAsnNameAndValueString* element = list.Append();
    std::snprintf(text, sizeof text, "name%05d", i);
    element->name.Set(text);
    std::snprintf(text, sizeof text, "value%011d", i);
    element->value.Set(text);
  }
  return list;
}

// One object identifier, an error code, the object's name; no description.
inline qcommon::QAsnErrInfoList MakeErrInfoList() {
  qcommon::QAsnErrInfoList list;
  char text[32];
  for (int i = 0; i < kElements; ++i) {
    qcommon::QAsnErrInfo* element = list.Append();
    element->objID.Append()->Set(100000 + i);
    element->errCode = 2000 + i % 50;
    std::snprintf(text, sizeof text, "object%05d", i);
    element->objName.GetOrCreate().Set(text);
  }
  return list;
}

}  // namespace bench_lists
