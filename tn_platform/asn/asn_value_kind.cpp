#include "tn_platform/asn/asn_value_kind.h"

#include <string>
#include <typeinfo>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_sequence.h"

namespace {

AsnMemberKind KindByCast(const AsnType& value) {
  if (dynamic_cast<const AsnSequence*>(&value)) return AsnMemberKind::kRecord;
  if (dynamic_cast<const AsnListBase*>(&value)) return AsnMemberKind::kList;
  if (dynamic_cast<const AsnOcts*>(&value)) return AsnMemberKind::kOcts;
  if (dynamic_cast<const AsnTinyInt*>(&value)) return AsnMemberKind::kTinyInt;
  if (dynamic_cast<const AsnInt*>(&value)) return AsnMemberKind::kInt;
  if (dynamic_cast<const AsnBool*>(&value)) return AsnMemberKind::kBool;
  if (dynamic_cast<const AsnPrimitive*>(&value)) return AsnMemberKind::kPrimitive;
  const std::string what = std::string("values of type ") + value.typeName() + " have no JSON form";
  throw new CSM_Exception(kAsnDecodeError, 1, "", "asn_value_kind", what.c_str(), nullptr);
}

}  // namespace

AsnMemberKind AsnKindOf(const AsnType& value) {
  // Values come in runs of one class (a list's elements): the last class's
  // answer is kept, as casts across shared libraries compare type names.
  thread_local const std::type_info* lastClass = nullptr;
  thread_local AsnMemberKind lastKind = AsnMemberKind::kRecord;
  const std::type_info& valueClass = typeid(value);
  if (&valueClass != lastClass) {
    lastKind = KindByCast(value);
    lastClass = &valueClass;
  }
  return lastKind;
}
