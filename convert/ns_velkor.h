// tn_velkor: conversions between Q-interface records and the server's model
// objects. Everything a caller needs: the conversion functions of namespace
// ns_velkor and, through the includes, every type they take.
//
// Conventions of every function here:
// - It runs on the caller's thread, reads its source, writes its target and
//   keeps no reference to either. It takes no lock.
// - It adds to the caller's maps and lists and never clears them first.
// - It reports nothing but its result: bad or missing input gives neutral
//   values (empty text, 0, -1 for none), as each function says.
// - Walking a record list moves that list's cursor, even through a const
//   reference: two threads must not convert the same list (or records that
//   share one) at the same time.
#pragma once

#include <map>
#include <string>

#include "asn/qasn_column.h"
#include "asn/qasn_uni_res_id.h"
#include "asn/qcommon_lists.h"

namespace ns_velkor {

// ---- name/value lists --------------------------------------------------------

// Adds every element of `list` to `map`, name -> value, in list order: a
// later duplicate name overwrites an earlier one and the caller's entry.
// Names and values are the texts of the octet strings (up to a zero byte).
void Convert2MapKeyValue(const qcommon::QAsnNVSList& list, std::map<std::string, std::string>& map);

// @@return-codes@@

// @@alarm-ids@@

// @@ports@@

// @@links@@

// @@fiber@@

}  // namespace ns_velkor
