#include "platform/qmodules/module_type_descriptions.h"

#include "platform/refl/basic_type_description.h"

namespace {

refl::CCustomBasicTypeInfor* s_pAsnIntTypeInfor = nullptr;
refl::CCustomBasicTypeInfor* s_pAsnBoolTypeInfor = nullptr;

}  // namespace

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
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnTinyInt>>() {
  CaptureTypeInfor<AsnTinyInt>();
  SetMayNull(true);
}
