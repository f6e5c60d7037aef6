#include "tn_platform/asn/asn_null.h"

#include <ostream>

void AsnNull::DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) {
  const std::size_t at = buf.ItemStart();
  if (length == kIndefiniteLength) asn_primitive::Refuse(at, "indefinite length on a primitive NULL");
  if (length != 0) asn_primitive::Refuse(at, "NULL with content octets");
  asn_primitive::ReadPrimitive(buf, tag, length, "NULL");
}

void AsnNull::Print(std::ostream& os, unsigned long, bool) const { os << "NULL"; }
