// refl::MayNullPointer<T>: the holder of an optional member. It owns at most
// one heap T; an empty holder means the member is absent.
#pragma once
#pragma GCC visibility push(default)

namespace refl {

// The untyped part, through which generic code (the record codec) reaches a
// holder of any T. The stored pointer is always a T* converted to void*.
class MayNullPointerBase {
 public:
  bool IsNull() const { return m_object == nullptr; }
  void* RawObject() const { return m_object; }
  // Stores an object created by T's create function; the holder must be empty.
  void RawAdopt(void* object) { m_object = object; }
  // Gives up the held object without destroying it.
  void* RawRelease() {
    void* object = m_object;
    m_object = nullptr;
    return object;
  }

 protected:
  MayNullPointerBase() = default;
  ~MayNullPointerBase() = default;
  void* m_object = nullptr;
};

template <class T>
class MayNullPointer : public MayNullPointerBase {
 public:
  MayNullPointer() = default;
  // A deep copy: the copy holds its own object equal to the source's.
  MayNullPointer(const MayNullPointer& other) : MayNullPointerBase() {
    if (!other.IsNull()) m_object = new T(*other.Get());
  }
  MayNullPointer& operator=(const MayNullPointer& other) {
    if (this == &other) return *this;
    if (other.IsNull()) {
      Reset();
    } else if (IsNull()) {
      m_object = new T(*other.Get());
    } else {
      *Get() = *other.Get();
    }
    return *this;
  }
  ~MayNullPointer() { Reset(); }

  T* Get() const { return static_cast<T*>(m_object); }
  T* operator->() const { return Get(); }
  T& operator*() const { return *Get(); }

  // The held object; when none is held, a default one is created first.
  // Inlined: decoding makes every present optional member here.
  [[gnu::always_inline]] T& GetOrCreate() {
    if (m_object == nullptr) m_object = new T();
    return *Get();
  }
  // Takes ownership of `object` unless it is already the held one. A held
  // object is not destroyed: use on an empty holder.
  void Adopt(T* object) {
    if (object != Get()) m_object = object;
  }
  // Destroys the held object, if any, and leaves the holder empty.
  void Reset() {
    delete Get();  // virtual deleting destructor of the ASN.1 value classes
    m_object = nullptr;
  }
};

}  // namespace refl
#pragma GCC visibility pop
