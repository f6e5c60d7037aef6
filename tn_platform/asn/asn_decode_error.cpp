#include "tn_platform/asn/asn_decode_error.h"

#include <utility>

AsnDecodeError::AsnDecodeError(std::size_t offset, std::string what, bool inputEnds)
    : CSM_Exception(kAsnDecodeError, 0, "", "asn_runtime", "", nullptr),
      m_offset(offset),
      m_what(std::move(what)),
      m_inputEnds(inputEnds) {
  Compose();
}

void AsnDecodeError::AddMember(const char* name) {
  m_path.insert(0, std::string(".") + name);
  Compose();
}

void AsnDecodeError::AddIndex(unsigned long index) {
  m_path.insert(0, "[" + std::to_string(index) + "]");
  Compose();
}

void AsnDecodeError::AddTypeName(const char* name) {
  m_path.insert(0, name);
  Compose();
}

void AsnDecodeError::MoveBy(std::size_t base) {
  m_offset += base;
  Compose();
}

void AsnDecodeError::Compose() {
  std::string message = m_path.empty() ? m_what : m_path + ": " + m_what;
  message += " at offset " + std::to_string(m_offset);
  SetMessage(std::move(message));
}

std::string AsnOctetCount(std::size_t count) { return std::to_string(count) + (count == 1 ? " octet" : " octets"); }

void AsnThrowDecodeError(std::size_t offset, const std::string& what) { throw new AsnDecodeError(offset, what); }

void AsnThrowInputEnds(std::size_t inputEnd, const std::string& what) {
  throw new AsnDecodeError(inputEnd, what, true);
}
