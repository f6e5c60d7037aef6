#include "fuzz/differential/differential.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

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
#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

// The text of allowed_verdicts.txt, compiled in by the build.
constexpr const char* kAllowedVerdictsText =
#include "differential_allowed_verdicts.inc"
    ;

template <class T>
AsnType* Create() {
  return new T();
}

struct TypePair {
  const char* name;
  AsnType* (*ours)();
  asn_TYPE_descriptor_t* theirs;
  std::vector<BerIntegerTag> integerTags;
};

const std::vector<TypePair>& Types() {
  static const std::vector<TypePair> types = {
      {"QAsnNameAndValueString", Create<qcommon::QAsnNameAndValueString>, &asn_DEF_QAsnNameAndValueString, {{0x00, 2}}},
      {"QAsnUniResID", Create<qcommon::QAsnUniResID>, &asn_DEF_QAsnUniResID, {{0x00, 2}}},
      {"QAsnErrInfo", Create<qcommon::QAsnErrInfo>, &asn_DEF_QAsnErrInfo, {{0x00, 2}}},
      {"QAsnColumn", Create<qcommon::QAsnColumn>, &asn_DEF_QAsnColumn, {{0x00, 2}}},
      {"QAsnTinyIntList", Create<qcommon::QAsnTinyIntList>, &asn_DEF_QAsnTinyIntList, {{0x00, 2}}},
      {"QAsnNVSList", Create<qcommon::QAsnNVSList>, &asn_DEF_QAsnNVSList, {{0x00, 2}}},
      {"QAsnErrInfoList", Create<qcommon::QAsnErrInfoList>, &asn_DEF_QAsnErrInfoList, {{0x00, 2}}},
      // level2SubID [0] and level3SubID [1] are INTEGERs too.
      {"QAsnPortIndex", Create<qcommon::QAsnPortIndex>, &asn_DEF_QAsnPortIndex, {{0x00, 2}, {0x80, 0}, {0x80, 1}}},
      {"QAsnErrInfoReturn", Create<qcommon::QAsnErrInfoReturn>, &asn_DEF_QAsnErrInfoReturn, {{0x00, 2}}},
  };
  return types;
}

struct AllowedVerdict {
  std::string kind;
  std::string acceptedBy;  // "ours" or "asn1c"
};

const std::vector<AllowedVerdict>& Allowed() {
  static const std::vector<AllowedVerdict> allowed = [] {
    std::vector<AllowedVerdict> lines;
    std::istringstream text(kAllowedVerdictsText);
    std::string line;
    while (std::getline(text, line)) {
      std::istringstream fields(line.substr(0, line.find('#')));
      AllowedVerdict verdict;
      if (!(fields >> verdict.kind)) continue;
      if (!(fields >> verdict.acceptedBy) || (verdict.acceptedBy != "ours" && verdict.acceptedBy != "asn1c")) {
        std::fprintf(stderr, "allowed_verdicts.txt: bad line: %s\n", line.c_str());
        std::abort();
      }
      lines.push_back(verdict);
    }
    return lines;
  }();
  return allowed;
}

bool IsAllowed(const std::string& kind, const char* acceptedBy) {
  for (const AllowedVerdict& verdict : Allowed()) {
    if (verdict.kind == kind && verdict.acceptedBy == acceptedBy) return true;
  }
  return false;
}

struct Reading {
  bool accepted = false;
  std::string der;      // when accepted
  std::string refusal;  // when refused
  std::size_t offset = 0;
};

Reading OursRead(const TypePair& type, std::string_view bytes) {
  Reading reading;
  const std::unique_ptr<AsnType> value(type.ours());
  try {
    AsnDecodeValue(*value, bytes);
  } catch (CSM_Exception* raw) {
    const std::unique_ptr<CSM_Exception> error(raw);
    const auto* located = dynamic_cast<const AsnDecodeError*>(error.get());
    if (located == nullptr || located->Offset() > bytes.size()) {
      std::fprintf(stderr, "a refusal without a place inside the input: %s\n", error->Message().c_str());
      std::abort();
    }
    reading.refusal = located->Message();
    reading.offset = located->Offset();
    return reading;
  }
  reading.accepted = true;
  reading.der = AsnEncodeValue(*value);
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

const char* DifferentialTypeName(std::size_t index) { return Types().at(index).name; }

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
    if (IsAllowed(finding.kind, acceptedBy)) {
      result.verdict = finding.kind;
      result.explained = true;
      break;
    }
  }
  return result;
}
