#include "asn/value_type_descriptions.h"

#include "platform/asn/asn_sequence.h"
#include "platform/refl/basic_type_description.h"

namespace {

// Holders of the two custom basic descriptions, null until first needed.
refl::CCustomBasicTypeInfor* s_pAsnOctsTypeInfor = nullptr;
refl::CCustomBasicTypeInfor* s_pAsnTinyIntTypeInfor = nullptr;

}  // namespace

template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnOcts>() {
  ChangeTypeTo_CustomBasicType(
      refl::BasicTypeDescription<AsnOcts>(s_pAsnOctsTypeInfor, "AsnOcts", kKindBinary, kAsnOctsClassId));
}

template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>() {
  CaptureTypeInfor<AsnOcts>();
  SetMayNull(true);
}

template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnTinyInt>() {
  ChangeTypeTo_CustomBasicType(
      refl::BasicTypeDescription<AsnTinyInt>(s_pAsnTinyIntTypeInfor, "AsnTinyInt", kKindInt32, kAsnTinyIntClassId));
}
