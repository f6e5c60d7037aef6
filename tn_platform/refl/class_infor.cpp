#include "tn_platform/refl/class_infor.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace refl {
namespace {

// Registered classes by name. Registration of a class registers the classes
// of its members while it holds the lock, so the lock is recursive.
struct Registry {
  std::recursive_mutex mutex;
  std::map<std::string, const CClassInfor*, std::less<>> classes;
};

Registry& TheRegistry() {
  static Registry registry;
  return registry;
}

}  // namespace

CClassInfor* CClassInfor::InitClassInfor(Holder& holder, const char* name, unsigned long size, CreateFunction create,
                                         DestroyFunction destroy, RegisterFunction registerAttributes) {
  Registry& registry = TheRegistry();
  // Held through the registration: another thread's first use waits for the
  // whole of it, and classes that hold each other cannot be registered from
  // both ends at once.
  const std::lock_guard<std::recursive_mutex> lock(registry.mutex);
  if (CClassInfor* complete = holder.complete.load(std::memory_order_acquire)) return complete;
  if (holder.building != nullptr) return holder.building;  // this registration holds the class itself
  auto* infor = new CClassInfor;  // lives for the rest of the process
  infor->m_name = name;
  infor->m_size = size;
  infor->m_create = create;
  infor->m_destroy = destroy;
  holder.building = infor;
  try {
    if (registerAttributes != nullptr) registerAttributes(*infor, Enum::Public);
  } catch (...) {
    holder.building = nullptr;  // the next use tries again (classes registered meanwhile may point at this one)
    throw;
  }
  registry.classes.emplace(infor->m_name, infor);
  holder.complete.store(infor, std::memory_order_release);
  return infor;
}

CGnlTypeInfor& CClassInfor::AddAttribInfor(Enum::AccessSpecifierEnum access, unsigned short position, const char* name,
                                           short number) {
  m_attributes.push_back(CAttribInfor{access, position, name, number, CGnlTypeInfor{}});
  return m_attributes.back().type;
}

const CAttribInfor* CClassInfor::FindAttribute(std::string_view name) const {
  const auto found =
      std::find_if(m_attributes.begin(), m_attributes.end(), [&](const CAttribInfor& a) { return a.name == name; });
  return found == m_attributes.end() ? nullptr : &*found;
}

const CClassInfor* CClassInfor::Find(std::string_view name) {
  Registry& registry = TheRegistry();
  const std::lock_guard<std::recursive_mutex> lock(registry.mutex);
  const auto found = registry.classes.find(name);
  return found == registry.classes.end() ? nullptr : found->second;
}

std::vector<const CClassInfor*> CClassInfor::Registered() {
  Registry& registry = TheRegistry();
  const std::lock_guard<std::recursive_mutex> lock(registry.mutex);
  std::vector<const CClassInfor*> classes;
  for (const auto& entry : registry.classes) classes.push_back(entry.second);
  return classes;
}

namespace helper {
bool ChangeTypeTo_ClassType(CRefrence& reference, const CClassInfor& classInfor, const void* object) {
  reference.m_class = &classInfor;
  reference.m_object = const_cast<void*>(object);
  return true;
}
}  // namespace helper

}  // namespace refl
