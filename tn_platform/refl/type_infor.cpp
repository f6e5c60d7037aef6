#include "tn_platform/refl/type_infor.h"

#include "tn_platform/refl/class_infor.h"

namespace refl {

void CGnlTypeInfor::ChangeTypeTo_CustomBasicType(const CCustomBasicTypeInfor& basic) {
  m_kind = kKindCustomBasic;
  m_customBasic = &basic;
}

void CGnlTypeInfor::ChangeTypeTo_CustomType(const char* name, unsigned long size, CreateFunction create,
                                            DestroyFunction destroy, unsigned int customId) {
  m_kind = kKindCustom;
  m_customName = name;
  m_customSize = size;
  m_customCreate = create;
  m_customDestroy = destroy;
  m_customId = customId;
}

void CGnlTypeInfor::ChangeTypeTo_ClassType(const CClassInfor& classInfor) {
  m_kind = kKindClass;
  m_class = &classInfor;
}

const std::string& CGnlTypeInfor::TypeName() const {
  static const std::string kNone;
  if (m_kind == kKindCustomBasic) return m_customBasic->Name();
  if (m_kind == kKindClass) return m_class->Name();
  if (m_kind == kKindCustom) return m_customName;
  return kNone;
}

unsigned long CGnlTypeInfor::TypeSize() const {
  if (m_kind == kKindCustomBasic) return m_customBasic->Size();
  if (m_kind == kKindClass) return m_class->Size();
  return m_customSize;
}

CreateFunction CGnlTypeInfor::Creator() const {
  if (m_kind == kKindCustomBasic) return m_customBasic->Creator();
  if (m_kind == kKindClass) return m_class->Creator();
  return m_customCreate;
}

DestroyFunction CGnlTypeInfor::Destroyer() const {
  if (m_kind == kKindCustomBasic) return m_customBasic->Destroyer();
  if (m_kind == kKindClass) return m_class->Destroyer();
  return m_customDestroy;
}

CCustomBasicTypeInfor* CCustomBasicTypeInfor::InitCustomAnyBasicTypeInfor(
    CCustomBasicTypeInfor*& holder, const char* name, unsigned long size, CreateFunction create,
    DestroyFunction destroy, const CGnlTypeInfor& underlying, unsigned int customId) {
  auto* basic = new CCustomBasicTypeInfor;  // lives for the rest of the process
  basic->m_name = name;
  basic->m_size = size;
  basic->m_create = create;
  basic->m_destroy = destroy;
  basic->m_underlying = underlying;
  basic->m_customId = customId;
  holder = basic;
  return basic;
}

}  // namespace refl
