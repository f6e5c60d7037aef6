// Character codes shared by the runtime's text readers and writers: the
// values of hex digits, the length of a valid UTF-8 sequence and the
// UTF-8 encoding of a character.
#pragma once

#include <cstddef>
#include <string>

namespace asn_text {

// Hex digit values by character (either case); -1 for any other character.
struct HexDigitValues {
  signed char values[256];
  constexpr HexDigitValues() : values() {
    for (int i = 0; i < 256; ++i) values[i] = -1;
    for (int i = 0; i < 10; ++i) values['0' + i] = static_cast<signed char>(i);
    for (int i = 0; i < 6; ++i) {
      values['a' + i] = static_cast<signed char>(10 + i);
      values['A' + i] = static_cast<signed char>(10 + i);
    }
  }
};
inline constexpr HexDigitValues kHexDigits;

// Length of the valid, shortest-form UTF-8 sequence of one character (not a
// surrogate, at most U+10FFFF) starting at `at`, before `end`; 0 when the
// octets there are no such sequence. `*code` receives the character.
inline std::size_t Utf8Length(const char* at, const char* end, unsigned* code) {
  const unsigned lead = static_cast<unsigned char>(*at);
  if (lead < 0x80) {
    *code = lead;
    return 1;
  }
  std::size_t length = 0;
  unsigned value = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
    value = lead & 0x1F;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    value = lead & 0x0F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    value = lead & 0x07;
  } else {
    return 0;
  }
  if (static_cast<std::size_t>(end - at) < length) return 0;
  for (std::size_t k = 1; k < length; ++k) {
    const unsigned next = static_cast<unsigned char>(at[k]);
    if ((next & 0xC0) != 0x80) return 0;
    value = (value << 6) | (next & 0x3F);
  }
  static constexpr unsigned kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (value < kSmallest[length] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return 0;
  *code = value;
  return length;
}

// Appends the UTF-8 encoding of character `code`.
inline void AppendUtf8(std::string& out, unsigned code) {
  if (code < 0x80) {
    out.push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (code >> 6)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else if (code < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (code >> 12)));
    out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (code >> 18)));
    out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  }
}

}  // namespace asn_text
