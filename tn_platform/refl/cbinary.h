// refl::CBinary: an owned run of octets, the reflection library's value type
// for binary content. Empty content has no data: data() is null.
//
// Content of up to kInlineOctets octets lives inside the object itself, so
// the short texts that most records carry (names, identifiers, values) cost
// no allocation; longer content takes one heap block.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

namespace refl {

class CBinary {
 public:
  static constexpr std::size_t kInlineOctets = 24;

  CBinary() = default;
  // `size` zero octets (size 0 gives empty content).
  explicit CBinary(std::size_t size) {
    Reserve(size);
    if (size != 0) std::memset(m_data, 0, size);
    m_size = size;
  }
  // `size` octets copied from `data` (size 0 gives empty content).
  CBinary(const void* data, std::size_t size) { Assign(data, size); }
  CBinary(const CBinary& other) { Assign(other.m_data, other.m_size); }
  CBinary(CBinary&& other) noexcept { TakeFrom(other); }
  CBinary& operator=(const CBinary& other) {
    if (this != &other) Assign(other.m_data, other.m_size);
    return *this;
  }
  CBinary& operator=(CBinary&& other) noexcept {
    if (this != &other) {
      Release();
      TakeFrom(other);
    }
    return *this;
  }
  ~CBinary() { Release(); }

  [[gnu::always_inline]] void Assign(const void* data, std::size_t size) {
    if (size > m_capacity) Reserve(size);  // never the case for our own content
    if (size != 0) std::memmove(m_data, data, size);
    m_size = size;
  }
  std::size_t size() const { return m_size; }
  bool empty() const { return m_size == 0; }
  const unsigned char* data() const { return m_size == 0 ? nullptr : m_data; }
  std::string_view view() const { return std::string_view(reinterpret_cast<const char*>(m_data), m_size); }

  bool operator==(const CBinary& other) const {
    return m_size == other.m_size && (m_size == 0 || std::memcmp(m_data, other.m_data, m_size) == 0);
  }
  bool operator!=(const CBinary& other) const { return !(*this == other); }

 private:
  bool OnHeap() const { return m_data != m_inline; }
  // Room for `size` octets; the content is not kept.
  void Reserve(std::size_t size) {
    if (size <= m_capacity) return;
    unsigned char* block = new unsigned char[size];
    Release();
    m_data = block;
    m_capacity = size;
  }
  void Release() {
    if (OnHeap()) delete[] m_data;
    m_data = m_inline;
    m_capacity = kInlineOctets;
    m_size = 0;
  }
  // Moves the content of `other` (left empty) into this empty object.
  void TakeFrom(CBinary& other) {
    if (other.OnHeap()) {
      m_data = std::exchange(other.m_data, other.m_inline);
      m_capacity = std::exchange(other.m_capacity, kInlineOctets);
    } else if (other.m_size != 0) {
      std::memcpy(m_inline, other.m_inline, other.m_size);
    }
    m_size = std::exchange(other.m_size, 0);
  }

  unsigned char* m_data = m_inline;
  std::size_t m_size = 0;
  std::size_t m_capacity = kInlineOctets;
  unsigned char m_inline[kInlineOctets];
};

}  // namespace refl
#pragma GCC visibility pop
