// Type descriptions of the reflection library.
//
// A CGnlTypeInfor describes the type of one attribute (member) of a class:
// a kind code, the may-null modifier (the member is an optional holder, see
// MayNullPointer), and what the kind refers to:
//   - a custom basic type (a value class of the ASN.1 runtime), shared through
//     a CCustomBasicTypeInfor made once per value class;
//   - a custom type given by name, size, create and destroy functions and an
//     identifier (the SEQUENCE OF lists);
//   - a registered class (a record), through its CClassInfor.
#pragma once
#pragma GCC visibility push(default)

#include <string>

namespace refl {

class CClassInfor;
class CCustomBasicTypeInfor;

namespace Enum {
enum AccessSpecifierEnum { Public = 0, Protected = 1, Private = 2 };
}  // namespace Enum

// Kind codes of type descriptions.
enum TypeKindCode : unsigned {
  kKindNone = 0,
  kKindBool = 1,
  kKindInt32 = 14,
  kKindInt64 = 16,
  kKindBinary = 45,
  kKindCustomBasic = 70,  // refers to a CCustomBasicTypeInfor
  kKindCustom = 71,       // a custom type of its own (name, size, create, destroy, identifier)
  kKindClass = 72,        // refers to a CClassInfor
};

using CreateFunction = void* (*)();
using DestroyFunction = void (*)(void*);

class CGnlTypeInfor {
 public:
  CGnlTypeInfor() = default;
  explicit CGnlTypeInfor(unsigned kindCode) : m_kind(kindCode) {}

  unsigned KindCode() const { return m_kind; }
  bool IsMayNull() const { return m_mayNull; }
  void SetMayNull(bool mayNull) { m_mayNull = mayNull; }

  // Makes this a description of the custom basic type `basic`.
  void ChangeTypeTo_CustomBasicType(const CCustomBasicTypeInfor& basic);
  // Makes this a description of a custom type of its own.
  void ChangeTypeTo_CustomType(const char* name, unsigned long size, CreateFunction create, DestroyFunction destroy,
                               unsigned int customId);
  // Makes this a description of the registered class `classInfor`.
  void ChangeTypeTo_ClassType(const CClassInfor& classInfor);

  // Fills this description for the C++ type T. Specialised by the code that
  // owns T (the library for its value and record types, the runtime for its own).
  template <class T>
  void CaptureTypeInfor();

  // ---- what the description refers to --------------------------------------
  const CCustomBasicTypeInfor* CustomBasic() const { return m_customBasic; }
  const CClassInfor* Class() const { return m_class; }
  // The identifier: the last argument of the custom basic type's or the custom
  // type's construction; 0 for classes.
  inline unsigned CustomId() const;
  // The described type's name, size, and create and destroy functions,
  // whatever the kind refers to.
  const std::string& TypeName() const;
  unsigned long TypeSize() const;
  CreateFunction Creator() const;
  DestroyFunction Destroyer() const;

 private:
  unsigned m_kind = kKindNone;
  bool m_mayNull = false;
  const CCustomBasicTypeInfor* m_customBasic = nullptr;
  const CClassInfor* m_class = nullptr;
  // A custom type of its own.
  std::string m_customName;
  unsigned long m_customSize = 0;
  CreateFunction m_customCreate = nullptr;
  DestroyFunction m_customDestroy = nullptr;
  unsigned m_customId = 0;
};

// The description of a value class of the ASN.1 runtime, shared by every
// attribute of that type.
class CCustomBasicTypeInfor {
 public:
  // Builds the description, stores it in `holder` and returns it.
  static CCustomBasicTypeInfor* InitCustomAnyBasicTypeInfor(CCustomBasicTypeInfor*& holder, const char* name,
                                                            unsigned long size, CreateFunction create,
                                                            DestroyFunction destroy, const CGnlTypeInfor& underlying,
                                                            unsigned int customId);

  const std::string& Name() const { return m_name; }
  unsigned long Size() const { return m_size; }
  CreateFunction Creator() const { return m_create; }
  DestroyFunction Destroyer() const { return m_destroy; }
  const CGnlTypeInfor& Underlying() const { return m_underlying; }
  unsigned CustomId() const { return m_customId; }

 private:
  CCustomBasicTypeInfor() = default;
  std::string m_name;
  unsigned long m_size = 0;
  CreateFunction m_create = nullptr;
  DestroyFunction m_destroy = nullptr;
  CGnlTypeInfor m_underlying;
  unsigned m_customId = 0;
};

// Inline: the record codec asks for it for every member it encodes or decodes.
unsigned CGnlTypeInfor::CustomId() const {
  if (m_kind == kKindCustomBasic) return m_customBasic->CustomId();
  if (m_kind == kKindCustom) return m_customId;
  return 0;
}

}  // namespace refl
#pragma GCC visibility pop
