// Record members as every converter reads and writes them (private to the
// library). Record integers are signed 32-bit (AsnTinyInt); model levels are
// unsigned 64-bit; optional members are MayNullPointer holders.
#pragma once

#include <cstdint>
#include <string>

#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/refl/may_null_pointer.h"
#include "tn_velkor/convert/octs_text.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace ns_velkor {

// A record integer widened with its sign to a model level: -1 becomes 2^64-1.
inline std::uint64_t WidenLevel(std::int32_t value) {
  return static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
}

// The low 32 bits of a model level, as the record keeps them.
inline std::int32_t LowLevel(std::uint64_t level) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(level)); }

// An optional integer's value, or `absent` when the member is absent.
inline std::int32_t OptionalInt(const refl::MayNullPointer<AsnTinyInt>& holder, std::int32_t absent) {
  return holder.IsNull() ? absent : holder->Value();
}

// An optional octet string's text, or the empty text when it is absent.
inline std::string OptionalText(const refl::MayNullPointer<AsnOcts>& holder) {
  return holder.IsNull() ? std::string() : OctsText(*holder);
}

// A port-index record into a model end (TNCPPortIndex, TEFiberEnd): levels
// widened with sign, an absent sub-level -1, an absent text empty.
template <class End>
void ReadPortIndex(const qcommon::QAsnPortIndex& record, End& end) {
  end.level1ID = WidenLevel(record.level1ID.Value());
  end.level2ID = WidenLevel(record.level2ID.Value());
  end.level2SubID = OptionalInt(record.level2SubID, -1);
  end.level3ID = WidenLevel(record.level3ID.Value());
  end.level3SubID = OptionalInt(record.level3SubID, -1);
  end.level4ID = WidenLevel(record.level4ID.Value());
  end.strIndexText = OptionalText(record.strIndexText);
}

}  // namespace ns_velkor
