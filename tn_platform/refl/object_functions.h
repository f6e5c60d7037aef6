// The create and destroy functions that class and type descriptions carry.
#pragma once
#pragma GCC visibility push(default)

namespace refl {

// A new default T, owned by the caller.
template <class T>
void* CreateObject() {
  return new T();
}

// Deletes a T made by CreateObject<T> (through its virtual destructor, where
// T has one); null is ignored.
template <class T>
void DestroyObject(void* object) {
  delete static_cast<T*>(object);
}

}  // namespace refl
#pragma GCC visibility pop
