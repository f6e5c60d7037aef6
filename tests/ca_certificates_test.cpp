// Real data nobody here wrote: every CA certificate of Debian's
// ca-certificates package decodes as X.509's Certificate (the public RFC 5280
// modules, compiled into tn_corpus), and its DER re-encoding, and the DER of
// its JER and readable JSON read back, are the certificate's own octets.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "tests/test_bytes.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/asn_catalogue.h"

namespace {

constexpr char kCertificates[] = "/usr/share/ca-certificates/mozilla";

// The octets of the first PEM block of `text`.
std::string PemBody(const std::string& text) {
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

TEST(CaCertificates, EveryOneDecodesAndReEncodesToItsOwnOctets) {
  if (!std::filesystem::is_directory(kCertificates)) GTEST_SKIP() << kCertificates << " is not installed";
  const AsnCatalogueEntry* entry = AsnCatalogue::Find("Certificate");
  ASSERT_NE(entry, nullptr) << "tn_corpus is not loaded";
  int checked = 0;
  for (const auto& file : std::filesystem::directory_iterator(kCertificates)) {
    SCOPED_TRACE(file.path().filename().string());
    std::ifstream in(file.path());
    std::stringstream text;
    text << in.rdbuf();
    const std::string der = PemBody(text.str());
    const std::unique_ptr<AsnType> certificate(entry->create());
    ASSERT_EQ(test_bytes::ThrownMessage([&] { AsnDecodeValue(*certificate, der); }), "no exception");
    EXPECT_EQ(AsnEncodeValue(*certificate), der);
    for (const AsnJsonForm form : {AsnJsonForm::kJer, AsnJsonForm::kReadable}) {
      const std::unique_ptr<AsnType> back(entry->create());
      AsnReadJson(*back, AsnToJson(*certificate, form), form);
      EXPECT_EQ(AsnEncodeValue(*back), der);
    }
    ++checked;
  }
  EXPECT_GE(checked, 100);
}

}  // namespace
