// refl::CBinary: an owned run of octets, the reflection library's value type
// for binary content. Empty content has no data: data() is null.
#pragma once
#pragma GCC visibility push(default)

#include <cstddef>
#include <string>
#include <string_view>

namespace refl {

class CBinary {
 public:
  CBinary() = default;
  // `size` zero octets (size 0 gives empty content).
  explicit CBinary(std::size_t size) : m_octets(size, '\0') {}
  // `size` octets copied from `data` (size 0 gives empty content).
  CBinary(const void* data, std::size_t size) { Assign(data, size); }

  void Assign(const void* data, std::size_t size) {
    if (size == 0) {
      m_octets.clear();
      return;
    }
    m_octets.assign(static_cast<const char*>(data), size);
  }
  std::size_t size() const { return m_octets.size(); }
  bool empty() const { return m_octets.empty(); }
  const unsigned char* data() const {
    return m_octets.empty() ? nullptr : reinterpret_cast<const unsigned char*>(m_octets.data());
  }
  std::string_view view() const { return m_octets; }

  bool operator==(const CBinary& other) const { return m_octets == other.m_octets; }
  bool operator!=(const CBinary& other) const { return m_octets != other.m_octets; }

 private:
  std::string m_octets;
};

}  // namespace refl
#pragma GCC visibility pop
