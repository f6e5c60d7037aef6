// Decoding helpers shared by the fuzz targets.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/csm_exception.h"

// Decodes `bytes` into `record`; false (and nothing else) when they are
// malformed. Every refusal must be located: an AsnDecodeError placed inside
// the input, its path starting with the record's type name.
inline bool FuzzDecode(AsnType& record, std::string_view bytes) {
  try {
    AsnDecodeValue(record, bytes);
    return true;
  } catch (CSM_Exception* raw) {
    const std::unique_ptr<CSM_Exception> error(raw);
    const auto* located = dynamic_cast<const AsnDecodeError*>(error.get());
    if (located == nullptr || located->Offset() > bytes.size() || located->Path().rfind(record.typeName(), 0) != 0) {
      std::abort();
    }
    return false;
  }
}

// Our own encoding must survive itself: re-encoding what decoded gives bytes
// that decode and re-encode to the same bytes.
template <class Record>
void CheckReencoding(Record& record) {
  const std::string once = AsnEncodeValue(record);
  Record again;
  if (!FuzzDecode(again, once) || AsnEncodeValue(again) != once) std::abort();
}
