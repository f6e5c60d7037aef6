#include "tn_platform/asn/asn_enumerated.h"

#include <limits>
#include <ostream>
#include <string>

const char* AsnEnumerated::Name() const {
  std::size_t count = 0;
  const AsnEnumeratedName* names = Names(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (names[i].value == m_value) return names[i].name;
  }
  return nullptr;
}

bool AsnEnumerated::SetName(std::string_view name) {
  std::size_t count = 0;
  const AsnEnumeratedName* names = Names(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (name == names[i].name) {
      m_value = names[i].value;
      return true;
    }
  }
  return false;
}

bool AsnEnumerated::Takes(long long value) const {
  if (Extensible()) return true;
  std::size_t count = 0;
  const AsnEnumeratedName* names = Names(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (names[i].value == value) return true;
  }
  return false;
}

void AsnEnumerated::DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) {
  const std::size_t at = buf.ItemStart();
  const std::string_view content = asn_primitive::ReadPrimitive(buf, tag, length, "ENUMERATED");
  const auto* octets = reinterpret_cast<const unsigned char*>(content.data());
  switch (AsnCheckInteger(octets, content.size(), 8)) {
    case AsnIntegerFault::kEmpty:
      asn_primitive::Refuse(at, "ENUMERATED without content octets");
    case AsnIntegerFault::kNotMinimal:
      asn_primitive::Refuse(at, "ENUMERATED content is not minimal");
    case AsnIntegerFault::kTooLong:
      asn_primitive::Refuse(at, "ENUMERATED of " + std::to_string(content.size()) + " octets does not fit (at most 8)");
    case AsnIntegerFault::kNone:
      break;
  }
  const long long value = AsnReadInteger(octets, content.size());
  if (!Takes(value)) asn_primitive::Refuse(at, "ENUMERATED value " + std::to_string(value) + " is not one of the type's");
  m_value = value;
}

void AsnEnumerated::Print(std::ostream& os, unsigned long, bool) const {
  if (const char* name = Name()) {
    os << name;
  } else {
    os << m_value;
  }
}

void AsnEnumerated::WriteJson(AsnJsonOut& out) const {
  if (const char* name = Name()) {
    out.String(name);
  } else {
    out.Integer(m_value);
  }
}

void AsnEnumerated::ReadJson(AsnJsonIn& in) {
  if (in.Peek() == AsnJsonIn::Token::kString) {
    const std::string name = in.String();
    if (!SetName(name)) in.Fail("\"" + name + "\" is not an identifier of the type");
    return;
  }
  if (in.Peek() != AsnJsonIn::Token::kNumber) in.FailExpected("an identifier");
  const long long value = in.Integer(std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max());
  if (!Takes(value)) in.Fail("ENUMERATED value " + std::to_string(value) + " is not one of the type's");
  m_value = value;
}
