// Helpers shared by the tests: octets written as hex text, golden texts with
// escaped octets, items written the plain way, the outcome of a call that may
// throw the runtime's CSM_Exception*, decoding from a block of exactly the
// input's size, and the rows of a golden file.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tn_platform/asn/asn_value_io.h"
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

// A golden file's text with each "\xHH" made that octet.
inline std::string Unescaped(std::string_view text) {
  std::string octets;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto hex = [&text](std::size_t at) {
      return at < text.size() && std::isxdigit(static_cast<unsigned char>(text[at]));
    };
    const bool escape = text.compare(i, 2, "\\x") == 0 && hex(i + 2) && hex(i + 3);
    octets += escape ? Hex(text.substr(i + 2, 2)) : std::string(text.substr(i, 1));
    i += escape ? 3 : 0;
  }
  return octets;
}

// Definite length octets: the short form below 128, else the long form, in
// the fewest octets after `zeros` leading zero octets (not minimal then).
inline std::string LengthOctets(std::size_t length, unsigned zeros = 0) {
  if (length < 128 && zeros == 0) return std::string(1, static_cast<char>(length));
  std::string octets;
  for (std::size_t rest = length; rest != 0; rest >>= 8) octets.insert(octets.begin(), static_cast<char>(rest & 0xFF));
  if (octets.empty()) octets.push_back('\0');
  octets.insert(0, zeros, '\0');
  return static_cast<char>(0x80 | octets.size()) + octets;
}

// One tag-length-value written the plain way: `identifier` octets, the
// shortest definite length, the content.
inline std::string Tlv(std::string_view identifier, std::string_view content) {
  return std::string(identifier) + LengthOctets(content.size()) + std::string(content);
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

// Decodes `octets` from a heap block of exactly their size, so that a read
// past the end is an AddressSanitizer error rather than a read of a neighbour.
inline void DecodeExact(AsnType& value, std::string_view octets) {
  const std::unique_ptr<char[]> block(new char[octets.size()]);
  std::copy(octets.begin(), octets.end(), block.get());
  AsnDecodeValue(value, std::string_view(block.get(), octets.size()));
}

// Every strict prefix of `octets` is refused with a decoding error (code -54)
// and, under AddressSanitizer, never read beyond its end. `make()` gives a
// fresh value to decode into.
template <class Make>
void ExpectEveryPrefixRefused(Make&& make, std::string_view octets) {
  for (std::size_t size = 0; size < octets.size(); ++size) {
    try {
      auto value = make();
      DecodeExact(*value, octets.substr(0, size));
      ADD_FAILURE() << "accepted the first " << size << " octets of " << ToHex(octets);
    } catch (CSM_Exception* raw) {
      const std::unique_ptr<CSM_Exception> error(raw);
      EXPECT_EQ(error->ErrorCode(), kAsnDecodeError) << error->Message();
    }
  }
}

// The rows of the golden file `name` below tests/ ('#' lines and empty ones
// are comments), each split at " | ".
inline std::vector<std::vector<std::string>> Golden(const std::string& name) {
  std::ifstream in(std::string(TN_TEST_DATA_DIR) + "/" + name);
  EXPECT_TRUE(in) << name;
  std::vector<std::vector<std::string>> rows;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    rows.emplace_back();
    for (std::size_t start = 0, bar = 0; bar != std::string::npos; start = bar + 3) {
      bar = line.find(" | ", start);
      rows.back().push_back(line.substr(start, bar - start));
    }
  }
  EXPECT_FALSE(rows.empty()) << name;
  return rows;
}

}  // namespace test_bytes
