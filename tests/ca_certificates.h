// The CA certificates of Debian's ca-certificates package, as DER: real X.509
// data nobody here wrote, for the certificate test and benchmark.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace ca_certificates {

constexpr char kFolder[] = "/usr/share/ca-certificates/mozilla";

// The octets of the first PEM block of `text`.
inline std::string PemBody(const std::string& text) {
  const std::size_t begin = text.find('\n', text.find("-----BEGIN CERTIFICATE-----")) + 1;
  const std::size_t end = text.find("-----END CERTIFICATE-----");
  std::string octets;
  unsigned bits = 0;
  int count = 0;
  for (std::size_t i = begin; i < end; ++i) {
    const char c = text[i];
    int value = -1;
    if (c >= 'A' && c <= 'Z') value = c - 'A';
    if (c >= 'a' && c <= 'z') value = c - 'a' + 26;
    if (c >= '0' && c <= '9') value = c - '0' + 52;
    if (c == '+') value = 62;
    if (c == '/') value = 63;
    if (value < 0) continue;  // line breaks, padding
    bits = bits << 6 | static_cast<unsigned>(value);
    count += 6;
    if (count >= 8) {
      count -= 8;
      octets.push_back(static_cast<char>(bits >> count & 0xFF));
    }
  }
  return octets;
}

// (file name, DER) of every certificate; empty when the package is missing.
inline std::vector<std::pair<std::string, std::string>> Load() {
  std::vector<std::pair<std::string, std::string>> certificates;
  if (!std::filesystem::is_directory(kFolder)) return certificates;
  for (const auto& file : std::filesystem::directory_iterator(kFolder)) {
    std::ifstream in(file.path());
    std::stringstream text;
    text << in.rdbuf();
    certificates.emplace_back(file.path().filename().string(), PemBody(text.str()));
  }
  return certificates;
}

}  // namespace ca_certificates
