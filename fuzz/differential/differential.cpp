#include "fuzz/differential/differential.h"

#include <set>

#include "QAsnColumn.h"
#include "QAsnErrInfo.h"
#include "QAsnErrInfoList.h"
#include "QAsnErrInfoReturn.h"
#include "QAsnNVSList.h"
#include "QAsnNameAndValueString.h"
#include "QAsnPortIndex.h"
#include "QAsnTinyIntList.h"
#include "QAsnUniResID.h"
#include "fuzz/differential/ber_walk.h"
#include "fuzz/fuzz_common.h"

namespace {

struct TypePair {
  const char* name;  // ours: the catalogue's type of that name
  asn_TYPE_descriptor_t* theirs;
  std::vector<BerIntegerTag> integerTags;
};

const std::vector<TypePair>& Types() {
  static const std::vector<TypePair> types = {
      {"QAsnNameAndValueString", &asn_DEF_QAsnNameAndValueString, {{0x00, 2}}},
      {"QAsnUniResID", &asn_DEF_QAsnUniResID, {{0x00, 2}}},
      {"QAsnErrInfo", &asn_DEF_QAsnErrInfo, {{0x00, 2}}},
      {"QAsnColumn", &asn_DEF_QAsnColumn, {{0x00, 2}}},
      {"QAsnTinyIntList", &asn_DEF_QAsnTinyIntList, {{0x00, 2}}},
      {"QAsnNVSList", &asn_DEF_QAsnNVSList, {{0x00, 2}}},
      {"QAsnErrInfoList", &asn_DEF_QAsnErrInfoList, {{0x00, 2}}},
      // level2SubID [0] and level3SubID [1] are INTEGERs too.
      {"QAsnPortIndex", &asn_DEF_QAsnPortIndex, {{0x00, 2}, {0x80, 0}, {0x80, 1}}},
      {"QAsnErrInfoReturn", &asn_DEF_QAsnErrInfoReturn, {{0x00, 2}}},
  };
  return types;
}

// The disagreements that are understood: a form the BER walk finds in the
// input (ber_walk.h) and the side that accepts it. Any other fails.
const std::set<std::string> kAllowed = {
    "integer-not-minimal asn1c",    // asn1c does not check that INTEGER content is minimal
    "integer-empty asn1c",          // asn1c reads an INTEGER without content octets as zero
    "indefinite-primitive asn1c",   // the indefinite length belongs to constructed items only
    "high-tag-low-number asn1c",    // a tag number below 31 takes the one-octet form
    "high-tag-leading-zero asn1c",  // the first octet of a long tag number is never 0x80
    "nested-deeper-than-32 asn1c",  // our limit: at most 32 nested constructed levels
};

struct Reading {
  bool accepted = false;
  std::string der;      // when accepted
  std::string refusal;  // when refused
  std::size_t offset = 0;
};

Reading OursRead(const TypePair& type, std::string_view bytes) {
  Reading reading;
  const std::unique_ptr<AsnType> value(AsnCatalogue::Find(type.name)->create());
  const std::unique_ptr<AsnDecodeError> refusal =
      FuzzRefusal(type.name, bytes.size(), [&] { AsnDecodeValue(*value, bytes); });
  reading.accepted = refusal == nullptr;
  if (reading.accepted) {
    reading.der = AsnEncodeValue(*value);
  } else {
    reading.refusal = refusal->Message();
    reading.offset = refusal->Offset();
  }
  return reading;
}

int AppendOctets(const void* buffer, size_t size, void* key) {
  static_cast<std::string*>(key)->append(static_cast<const char*>(buffer), size);
  return 0;
}

Reading TheirsRead(const TypePair& type, std::string_view bytes) {
  Reading reading;
  void* structure = nullptr;
  const asn_dec_rval_t decoded = ber_decode(nullptr, type.theirs, &structure, bytes.data(), bytes.size());
  char problem[256] = "";
  std::size_t problemLength = sizeof problem;
  if (decoded.code != RC_OK) {
    reading.refusal = decoded.code == RC_WMORE ? "ber_decode wants more octets" : "ber_decode fails";
  } else if (decoded.consumed != bytes.size()) {
    reading.refusal = "ber_decode leaves " + std::to_string(bytes.size() - decoded.consumed) + " octets";
  } else if (asn_check_constraints(type.theirs, structure, problem, &problemLength) != 0) {
    reading.refusal = std::string("asn_check_constraints: ") + problem;
  } else {
    const asn_enc_rval_t encoded = der_encode(type.theirs, structure, AppendOctets, &reading.der);
    if (encoded.encoded < 0) {
      std::fprintf(stderr, "asn1c cannot encode what it decoded\n");
      std::abort();
    }
    reading.accepted = true;
  }
  if (structure != nullptr) ASN_STRUCT_FREE(*type.theirs, structure);
  return reading;
}

std::string Hex(std::string_view bytes) {
  static const char digits[] = "0123456789abcdef";
  std::string hex;
  for (unsigned char octet : bytes) {
    hex += digits[octet >> 4];
    hex += digits[octet & 15];
  }
  return hex;
}

std::string Said(const Reading& reading) {
  return reading.accepted ? "accepts, DER " + Hex(reading.der) : "refuses: " + reading.refusal;
}

}  // namespace

std::size_t DifferentialTypeIndex(std::string_view name) {
  for (std::size_t i = 0; i < Types().size(); ++i) {
    if (name == Types()[i].name) return i;
  }
  return kDifferentialTypeCount;
}

DifferentialVerdict CompareDecoders(std::size_t typeIndex, std::string_view bytes) {
  const TypePair& type = Types().at(typeIndex);
  const Reading ours = OursRead(type, bytes);
  const Reading theirs = TheirsRead(type, bytes);
  DifferentialVerdict result;
  result.details = std::string(type.name) + " " + Hex(bytes) + ": ours " + Said(ours) + "; asn1c " + Said(theirs);
  if (ours.accepted && theirs.accepted) {
    result.explained = ours.der == theirs.der;
    result.verdict = result.explained ? "accepted" : "unexplained";
    return result;
  }
  if (!ours.accepted && !theirs.accepted) {
    result.verdict = "refused";
    result.explained = true;
    return result;
  }
  // One side accepts: a form the other may refuse explains it. Where we
  // refuse, it must be the item our error points at.
  result.verdict = "unexplained";
  const char* acceptedBy = ours.accepted ? "ours" : "asn1c";
  for (const BerFinding& finding : WalkBer(bytes, type.integerTags)) {
    if (!ours.accepted && finding.offset != ours.offset) continue;
    if (kAllowed.count(finding.kind + " " + acceptedBy) != 0) {
      result.verdict = finding.kind;
      result.explained = true;
      break;
    }
  }
  return result;
}
