// Real data nobody here wrote: every CA certificate of Debian's
// ca-certificates package decodes as X.509's Certificate (the public RFC 5280
// modules, compiled into tn_corpus), and its DER re-encoding, and the DER of
// its JER and readable JSON read back, are the certificate's own octets.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/ca_certificates.h"
#include "tests/test_bytes.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/asn_catalogue.h"

namespace {

TEST(CaCertificates, EveryOneDecodesAndReEncodesToItsOwnOctets) {
  const auto certificates = ca_certificates::Load();
  if (certificates.empty()) GTEST_SKIP() << ca_certificates::kFolder << " holds no certificate";
  const AsnCatalogueEntry* entry = AsnCatalogue::Find("rfc5280_pkix1explicit88", "Certificate");
  ASSERT_NE(entry, nullptr) << "tn_corpus is not loaded";
  for (const auto& [name, der] : certificates) {
    SCOPED_TRACE(name);
    const std::unique_ptr<AsnType> certificate(entry->create());
    ASSERT_EQ(test_bytes::ThrownMessage([&] { AsnDecodeValue(*certificate, der); }), "no exception");
    EXPECT_EQ(AsnEncodeValue(*certificate), der);
    for (const AsnJsonForm form : {AsnJsonForm::kJer, AsnJsonForm::kReadable}) {
      const std::unique_ptr<AsnType> back(entry->create());
      AsnReadJson(*back, AsnToJson(*certificate, form), form);
      EXPECT_EQ(AsnEncodeValue(*back), der);
    }
  }
  EXPECT_GE(certificates.size(), 100u);
}

}  // namespace
