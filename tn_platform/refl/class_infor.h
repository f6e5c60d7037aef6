// Class descriptions of the reflection library and the registry of classes.
//
// A class registers once, lazily: CClassInfor::GetClassInforImpl<T> keeps the
// class's description in its function-local holder s_pClassInfor and builds
// it on the first call. That first call is serialised, so several threads may
// use a record type for the first time at once; later calls only read.
#pragma once
#pragma GCC visibility push(default)

#include <string>
#include <string_view>
#include <vector>

#include "tn_platform/refl/type_infor.h"

namespace refl {

// One attribute (member) of a class.
struct CAttribInfor {
  Enum::AccessSpecifierEnum access;
  unsigned short position;  // offset of the member within the object
  std::string name;
  short number;  // -1 for mandatory members, 0, 1, ... for optional ones
  CGnlTypeInfor type;
};

class CClassInfor {
 public:
  using RegisterFunction = void (*)(CClassInfor&, Enum::AccessSpecifierEnum);

  // Builds the description of a class, lets `registerAttributes` add its
  // attributes, stores it in `holder`, enters it in the registry and returns it.
  static CClassInfor* InitClassInfor(CClassInfor*& holder, const char* name, unsigned long size, CreateFunction create,
                                     DestroyFunction destroy, RegisterFunction registerAttributes);

  // The description of class T, built on first use.
  template <class T>
  static CClassInfor* GetClassInforImpl(const char* name, CreateFunction create, DestroyFunction destroy,
                                        RegisterFunction registerAttributes);

  // Adds an attribute and returns its type description for the caller to fill.
  CGnlTypeInfor& AddAttribInfor(Enum::AccessSpecifierEnum access, unsigned short position, const char* name,
                                short number);

  const std::string& Name() const { return m_name; }
  unsigned long Size() const { return m_size; }
  CreateFunction Creator() const { return m_create; }
  DestroyFunction Destroyer() const { return m_destroy; }
  const std::vector<CAttribInfor>& Attributes() const { return m_attributes; }
  const CAttribInfor* FindAttribute(std::string_view name) const;

  // ---- registry --------------------------------------------------------
  // The registered class of that name, or null.
  static const CClassInfor* Find(std::string_view name);
  // Every registered class, ordered by name.
  static std::vector<const CClassInfor*> Registered();

 private:
  CClassInfor() = default;
  std::string m_name;
  unsigned long m_size = 0;
  CreateFunction m_create = nullptr;
  DestroyFunction m_destroy = nullptr;
  std::vector<CAttribInfor> m_attributes;
};

template <class T>
CClassInfor* CClassInfor::GetClassInforImpl(const char* name, CreateFunction create, DestroyFunction destroy,
                                            RegisterFunction registerAttributes) {
  static CClassInfor* s_pClassInfor = nullptr;
  // The initialisation of a function-local static runs exactly once, and
  // every other caller waits for it: that makes the lazy first registration
  // safe without a lock of our own, and registers exactly what a plain null
  // test would.
  static const bool s_registered = [&] {
    InitClassInfor(s_pClassInfor, name, sizeof(T), create, destroy, registerAttributes);
    return true;
  }();
  static_cast<void>(s_registered);
  return s_pClassInfor;
}

// Binds `reference` to `object` as an instance of `classInfor`; returns true.
class CRefrence;
namespace helper {
bool ChangeTypeTo_ClassType(CRefrence& reference, const CClassInfor& classInfor, const void* object);
}  // namespace helper

// A reference to an object of a registered class.
class CRefrence {
 public:
  const CClassInfor* ClassInfor() const { return m_class; }
  void* Object() const { return m_object; }
  bool IsBound() const { return m_class != nullptr; }

 private:
  friend bool helper::ChangeTypeTo_ClassType(CRefrence&, const CClassInfor&, const void*);
  const CClassInfor* m_class = nullptr;
  void* m_object = nullptr;
};

}  // namespace refl
#pragma GCC visibility pop
