// The check the JSON reader targets share: refusals are located, and what is
// accepted survives a write and a re-read in every layout.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "fuzz/fuzz_decode.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_transcoder.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_qmodules/asn_catalogue.h"

// Reads `text` as a `type` in `form`; false when it is refused (and the
// refusal is a located AsnDecodeError), else checks the round trips.
inline bool FuzzJsonReadsStably(const AsnCatalogueEntry& type, std::string_view text, AsnJsonForm form) {
  const std::unique_ptr<AsnType> value(type.create());
  // The fast path takes a document whole or not at all, and never one the
  // strict reader refuses (checked below).
  std::string direct;
  std::size_t used = AsnJsonTranscoder(*value, form).Transcode(text, direct);
  if (used > 0 && text.find_first_not_of(" \t\r\n", used) != std::string_view::npos) used = 0;
  try {
    AsnReadJson(*value, text, form);
  } catch (CSM_Exception* raw) {
    const std::unique_ptr<CSM_Exception> error(raw);
    const auto* located = dynamic_cast<const AsnDecodeError*>(error.get());
    if (located == nullptr || !located->Placed() || located->Offset() > text.size() ||
        located->Path().rfind(type.name, 0) != 0 || used > 0) {
      std::abort();
    }
    return false;
  }
  const std::string ber = AsnEncodeValue(*value);
  if (used > 0 && direct != ber) std::abort();
  for (const AsnJsonLayout layout : {AsnJsonLayout::kOneLine, AsnJsonLayout::kIndented}) {
    const std::string written = AsnToJson(*value, form, layout);
    const std::unique_ptr<AsnType> again(type.create());
    AsnReadJson(*again, written, form);  // an exception here escapes: a finding
    if (AsnEncodeValue(*again) != ber || AsnToJson(*again, form, layout) != written) std::abort();
  }
  const std::unique_ptr<AsnType> decoded(type.create());
  if (!FuzzDecode(*decoded, ber)) std::abort();
  if (AsnToJson(*decoded, form) != AsnToJson(*value, form)) std::abort();
  return true;
}
