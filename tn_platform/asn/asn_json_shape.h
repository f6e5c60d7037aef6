// What the JSON reader knows of a type without a value of it: its kind and,
// for a record or CHOICE, its member plan with each member's type and name;
// for a list, its element's type and the tag an element carries; for a value
// with its own codec, a default value of its class to read into. Made once
// per value class on first use (from default values made for the purpose)
// and kept for the life of the process, so that reading needs no value to
// find its way and allocates nothing for it. Internal to the runtime.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/asn_type.h"

struct AsnJsonShape {
  AsnMemberKind kind = AsnMemberKind::kRecord;
  const AsnRecordPlan* plan = nullptr;              // a record's
  std::vector<std::string_view> names;              // a record's member names
  std::vector<const AsnJsonShape*> members;         // a record's member types
  const AsnJsonShape* element = nullptr;            // a list's element type
  AsnTag elementTag = 0;                            // the tag of a list's element
  AsnTag tag = kTagSequence;                        // the universal tag a value of the type carries
  std::unique_ptr<AsnType> prototype;               // a kPrimitive's default value
  bool nullIsValue = false;                         // a NULL: JSON null is its value, not absence
  const AsnJsonShape* extensions = nullptr;         // an extensible record's unknown members (a list)
  // The constructed values a value of the type opens in BER on its own (its
  // own tags: asn_tagging.h's AsnConstructedLevels), and a record's members
  // each with the tags written on them: what the reader counts against the
  // nesting limit, so that it accepts what the decoder does.
  unsigned levels = 0;
  std::vector<unsigned char> memberLevels;
  // Whether a value of the type goes to BER as its text is read: a
  // SEQUENCE or SEQUENCE OF of such values under one tag each, without
  // DEFAULT members or unknown ones, or a primitive value. The others (SET,
  // SET OF, CHOICE, explicit tags) are read into a value and encoded.
  bool berDirect = true;
};

// The shape of the class of `value`. Safe to call from several threads.
// Throws CSM_Exception* for a value class the runtime does not know.
const AsnJsonShape& AsnJsonShapeOf(const AsnType& value);
