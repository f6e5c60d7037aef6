// Helpers shared by the tests: octets written as hex text, and the outcome of
// a call that may throw the runtime's CSM_Exception*.
#pragma once

#include <cctype>
#include <memory>
#include <string>
#include <string_view>

#include "tn_platform/asn/csm_exception.h"

namespace test_bytes {

// "30 03 02 01 05" -> the five octets; blanks are ignored.
inline std::string Hex(std::string_view text) {
  std::string octets;
  int high = -1;
  for (const char c : text) {
    if (std::isspace(static_cast<unsigned char>(c))) continue;
    const int digit = std::isdigit(static_cast<unsigned char>(c)) ? c - '0' : std::toupper(c) - 'A' + 10;
    if (high < 0) {
      high = digit;
    } else {
      octets.push_back(static_cast<char>(high * 16 + digit));
      high = -1;
    }
  }
  return octets;
}

// The octets as "30 03 02 01 05".
inline std::string ToHex(std::string_view octets) {
  static const char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const char c : octets) {
    if (!text.empty()) text.push_back(' ');
    text.push_back(kDigits[(static_cast<unsigned char>(c) >> 4) & 0xF]);
    text.push_back(kDigits[static_cast<unsigned char>(c) & 0xF]);
  }
  return text;
}

// Runs `call` and returns the message of the CSM_Exception* it throws (the
// exception is deleted), or "no exception".
template <class Call>
std::string ThrownMessage(Call&& call) {
  try {
    call();
  } catch (CSM_Exception* raw) {
    const std::unique_ptr<CSM_Exception> error(raw);
    return error->Message();
  }
  return "no exception";
}

}  // namespace test_bytes
