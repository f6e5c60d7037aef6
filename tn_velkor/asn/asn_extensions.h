// AsnExtensions: where an extensible record keeps the members it does not
// know, and an extensible CHOICE an alternative it does not know: each one's
// whole encoding as it came (AsnAny), written back where its member line
// stands (AsnMemberLines::Extensions). JSON: the key "..." with an array of
// open values in a record, one open value in a CHOICE.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_any.h"
#include "tn_velkor/asn/asn_list.h"

class AsnExtensions final : public AsnSeqOf<AsnAny> {
 public:
  static constexpr char kTypeName[] = "AsnExtensions";
  static constexpr char kQualifiedName[] = "AsnExtensions";

  AsnType* Clone() const override { return new AsnExtensions(*this); }
  const char* typeName() const override { return kTypeName; }
};
#pragma GCC visibility pop
