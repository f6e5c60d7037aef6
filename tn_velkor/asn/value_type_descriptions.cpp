#include "tn_velkor/asn/value_type_descriptions.h"

#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/refl/basic_type_description.h"

namespace {

// Holders of the custom basic descriptions, null until first needed.
refl::CCustomBasicTypeInfor* s_pAsnOctsTypeInfor = nullptr;
refl::CCustomBasicTypeInfor* s_pAsnTinyIntTypeInfor = nullptr;
refl::CCustomBasicTypeInfor* s_pAsnIntTypeInfor = nullptr;
refl::CCustomBasicTypeInfor* s_pAsnBoolTypeInfor = nullptr;

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

template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnTinyInt>>() {
  CaptureTypeInfor<AsnTinyInt>();
  SetMayNull(true);
}

template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnInt>() {
  ChangeTypeTo_CustomBasicType(
      refl::BasicTypeDescription<AsnInt>(s_pAsnIntTypeInfor, "AsnInt", kKindInt64, kAsnIntClassId));
}

template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnInt>>() {
  CaptureTypeInfor<AsnInt>();
  SetMayNull(true);
}

template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnBool>() {
  ChangeTypeTo_CustomBasicType(
      refl::BasicTypeDescription<AsnBool>(s_pAsnBoolTypeInfor, "AsnBool", kKindBool, kAsnBoolClassId));
}

template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnBool>>() {
  CaptureTypeInfor<AsnBool>();
  SetMayNull(true);
}
