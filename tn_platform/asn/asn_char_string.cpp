#include "tn_platform/asn/asn_char_string.h"

#include <cstring>
#include <ostream>

#include "tn_platform/asn/asn_text_codes.h"

namespace {

// How a type's characters travel.
enum class Octets { kUtf8, kOne, kTwo, kFour };

struct CharStringType {
  const char* className;
  const char* asnName;
  Octets octets;
  bool (*takes)(unsigned code);
};

bool AnyCode(unsigned) { return true; }
bool Numeric(unsigned code) { return (code >= '0' && code <= '9') || code == ' '; }
bool Printable(unsigned code) {
  return (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z') || (code >= '0' && code <= '9') ||
         (code != 0 && std::strchr(" '()+,-./:=?", static_cast<int>(code)) != nullptr);
}
bool Ascii(unsigned code) { return code < 0x80; }
bool Visible(unsigned code) { return code >= 0x20 && code < 0x7F; }
bool Graphic(unsigned code) { return (code >= 0x20 && code < 0x7F) || (code >= 0xA0 && code <= 0xFF) || code == 0x1B; }
bool Latin1(unsigned code) { return code <= 0xFF; }
bool Ucs2(unsigned code) { return code <= 0xFFFF; }

const CharStringType& TypeOf(unsigned number) {
  static const CharStringType kObjectDescriptor{"AsnObjectDescriptor", "ObjectDescriptor", Octets::kOne, Graphic};
  static const CharStringType kUtf8{"AsnUtf8String", "UTF8String", Octets::kUtf8, AnyCode};
  static const CharStringType kNumeric{"AsnNumericString", "NumericString", Octets::kOne, Numeric};
  static const CharStringType kPrintable{"AsnPrintableString", "PrintableString", Octets::kOne, Printable};
  static const CharStringType kTeletex{"AsnTeletexString", "TeletexString", Octets::kOne, Latin1};
  static const CharStringType kVideotex{"AsnVideotexString", "VideotexString", Octets::kOne, Latin1};
  static const CharStringType kIa5{"AsnIa5String", "IA5String", Octets::kOne, Ascii};
  static const CharStringType kGraphicString{"AsnGraphicString", "GraphicString", Octets::kOne, Graphic};
  static const CharStringType kVisible{"AsnVisibleString", "VisibleString", Octets::kOne, Visible};
  static const CharStringType kGeneral{"AsnGeneralString", "GeneralString", Octets::kOne, Latin1};
  static const CharStringType kUniversal{"AsnUniversalString", "UniversalString", Octets::kFour, AnyCode};
  static const CharStringType kBmp{"AsnBmpString", "BMPString", Octets::kTwo, Ucs2};
  switch (number) {
    case 7: return kObjectDescriptor;
    case 12: return kUtf8;
    case 18: return kNumeric;
    case 19: return kPrintable;
    case 20: return kTeletex;
    case 21: return kVideotex;
    case 22: return kIa5;
    case 25: return kGraphicString;
    case 26: return kVisible;
    case 27: return kGeneral;
    case 28: return kUniversal;
    default: return kBmp;
  }
}

std::string CodeText(unsigned code) {
  static const char kDigits[] = "0123456789ABCDEF";
  std::string text = "U+";
  for (int shift = code > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4) text.push_back(kDigits[(code >> shift) & 0xF]);
  return text;
}

// The type's content octets for UTF-8 `text` into `out` (may be null, to
// measure); returns their count, or fills `fault` with what the type cannot hold.
std::size_t ToContent(const CharStringType& type, std::string_view text, unsigned char* out, std::string* fault) {
  if (type.octets == Octets::kUtf8) {
    if (out != nullptr) std::memcpy(out, text.data(), text.size());
    return text.size();
  }
  std::size_t size = 0;
  const std::size_t width = type.octets == Octets::kOne ? 1 : type.octets == Octets::kTwo ? 2 : 4;
  for (std::size_t i = 0; i < text.size();) {
    unsigned code = 0;
    const std::size_t length = asn_text::Utf8Length(text.data() + i, text.data() + text.size(), &code);
    if (length == 0 || !type.takes(code)) {
      if (fault != nullptr) {
        *fault = length == 0 ? "invalid UTF-8" : CodeText(code) + " is not in the " + type.asnName + " alphabet";
      }
      return 0;
    }
    if (out != nullptr) {
      for (std::size_t k = width; k-- > 0;) *out++ = static_cast<unsigned char>(code >> (8 * k));
    }
    size += width;
    i += length;
  }
  return size;
}

// The text of the type's content octets, or an empty `fault` left filled.
std::string FromContent(const CharStringType& type, std::string_view content, std::string& fault) {
  std::string text;
  if (type.octets == Octets::kUtf8) {
    for (std::size_t i = 0; i < content.size();) {
      unsigned code = 0;
      const std::size_t length = asn_text::Utf8Length(content.data() + i, content.data() + content.size(), &code);
      if (length == 0) {
        fault = "UTF8String content is not valid UTF-8 (octet " + std::to_string(i) + ")";
        return text;
      }
      i += length;
    }
    return std::string(content);
  }
  const std::size_t width = type.octets == Octets::kOne ? 1 : type.octets == Octets::kTwo ? 2 : 4;
  if (content.size() % width != 0) {
    fault = std::string(type.asnName) + " content of " + AsnOctetCount(content.size()) + " is not whole characters";
    return text;
  }
  for (std::size_t i = 0; i < content.size(); i += width) {
    unsigned code = 0;
    for (std::size_t k = 0; k < width; ++k) code = (code << 8) | static_cast<unsigned char>(content[i + k]);
    if (!type.takes(code) || (code >= 0xD800 && code <= 0xDFFF) || code > 0x10FFFF) {
      fault = CodeText(code) + " is not in the " + type.asnName + " alphabet";
      return text;
    }
    asn_text::AppendUtf8(text, code);
  }
  return text;
}

}  // namespace

template <unsigned kNumber>
const char* AsnCharString<kNumber>::AsnTypeName() const {
  return TypeOf(kNumber).asnName;
}

template <unsigned kNumber>
bool AsnCharString<kNumber>::Set(std::string_view text) {
  const CharStringType& type = TypeOf(kNumber);
  std::string fault;
  if (type.octets == Octets::kUtf8) {
    FromContent(type, text, fault);
  } else {
    ToContent(type, text, nullptr, &fault);
  }
  if (!fault.empty()) return false;
  m_text.assign(text);
  return true;
}

template <unsigned kNumber>
void AsnCharString<kNumber>::DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) {
  const std::size_t at = buf.ItemStart();
  const CharStringType& type = TypeOf(kNumber);
  std::string scratch;
  const std::string_view content = asn_primitive::ReadOctets(buf, tag, length, kTagOctetString, type.asnName, scratch);
  std::string fault;
  std::string text = FromContent(type, content, fault);
  if (!fault.empty()) asn_primitive::Refuse(at, fault);
  m_text.swap(text);
}

template <unsigned kNumber>
unsigned long AsnCharString<kNumber>::ContentLength() const {
  return ToContent(TypeOf(kNumber), m_text, nullptr, nullptr);
}

template <unsigned kNumber>
unsigned char* AsnCharString<kNumber>::WriteContent(unsigned char* out) const {
  return out + ToContent(TypeOf(kNumber), m_text, out, nullptr);
}

template <unsigned kNumber>
void AsnCharString<kNumber>::Print(std::ostream& os, unsigned long, bool) const {
  asn_primitive::PrintQuoted(os, m_text);
}

template <unsigned kNumber>
void AsnCharString<kNumber>::ReadJson(AsnJsonIn& in) {
  if (in.Peek() != AsnJsonIn::Token::kString) in.FailExpected("a string");
  const std::string text = in.String();
  const CharStringType& type = TypeOf(kNumber);
  std::string fault;
  if (type.octets != Octets::kUtf8) ToContent(type, text, nullptr, &fault);
  if (!fault.empty()) in.Fail(fault);
  m_text = text;
}

#define TN_ASN_CHAR_STRING(number, name)                        \
  template <>                                                   \
  const char AsnCharString<number>::kTypeName[] = name;         \
  template class AsnCharString<number>;

TN_ASN_CHAR_STRING(7, "AsnObjectDescriptor")
TN_ASN_CHAR_STRING(12, "AsnUtf8String")
TN_ASN_CHAR_STRING(18, "AsnNumericString")
TN_ASN_CHAR_STRING(19, "AsnPrintableString")
TN_ASN_CHAR_STRING(20, "AsnTeletexString")
TN_ASN_CHAR_STRING(21, "AsnVideotexString")
TN_ASN_CHAR_STRING(22, "AsnIa5String")
TN_ASN_CHAR_STRING(25, "AsnGraphicString")
TN_ASN_CHAR_STRING(26, "AsnVisibleString")
TN_ASN_CHAR_STRING(27, "AsnGeneralString")
TN_ASN_CHAR_STRING(28, "AsnUniversalString")
TN_ASN_CHAR_STRING(30, "AsnBmpString")
