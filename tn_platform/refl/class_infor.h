// Class descriptions of the reflection library and the registry of classes.
//
// A class registers once, lazily: CClassInfor::GetClassInforImpl<T> keeps the
// class's description in its function-local holder and builds it on the
// first call. Registrations run one at a time, under the registry's lock, so
// several threads may use a record type for the first time at once; later
// calls only read. A class that holds itself (an optional member or list
// element of its own type, LDAP's Filter), or classes that hold each other,
// meet their own description while its attributes are being registered and
// get it as it stands: complete once the outermost registration returns.
#pragma once
#pragma GCC visibility push(default)

#include <atomic>
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

  // Where a class's description is kept: `building` while its attributes
  // are registered (read under the registry's lock only), `complete` after.
  struct Holder {
    std::atomic<CClassInfor*> complete{nullptr};
    CClassInfor* building = nullptr;
  };
  // The description in `holder`, built on the first call: lets
  // `registerAttributes` add its attributes, enters it in the registry and
  // returns it. A call from inside that registration (a class that holds
  // itself) returns the description being built.
  static CClassInfor* InitClassInfor(Holder& holder, const char* name, unsigned long size, CreateFunction create,
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
  static Holder s_holder;  // constant-initialised: no guard
  if (CClassInfor* complete = s_holder.complete.load(std::memory_order_acquire)) return complete;
  return InitClassInfor(s_holder, name, sizeof(T), create, destroy, registerAttributes);
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
