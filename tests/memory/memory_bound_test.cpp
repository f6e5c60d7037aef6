// The memory a whole-value decode takes, accepted or refused, stays within
// the bound the README states: peak heap <= kBytesPerInputOctet x input +
// kFixedBytes. The shapes are the costly ones: lists of the smallest
// elements (each a whole object in memory for a few octets), lists refused
// at their last octet (built in full before the refusal), declared lengths
// far beyond the input, deep nesting, long octet strings.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "tests/memory/allocation_count.h"
#include "tests/test_bytes.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

using test_bytes::Hex;

// The bound the README states.
constexpr double kBytesPerInputOctet = 24;
constexpr unsigned long long kFixedBytes = 4096;

// Inputs of about this size, big enough that the fixed part is small beside
// the part that grows with the input.
constexpr std::size_t kInputSize = 1 << 20;

std::string Length(std::size_t length) {
  if (length < 0x80) return std::string(1, static_cast<char>(length));
  std::string octets;
  for (; length != 0; length >>= 8) octets.insert(octets.begin(), static_cast<char>(length & 0xFF));
  return static_cast<char>(0x80 | octets.size()) + octets;
}

std::string Tlv(const std::string& tag, const std::string& content) { return tag + Length(content.size()) + content; }

// A SEQUENCE OF `element` repeated to about kInputSize octets.
std::string ListOf(const std::string& element) {
  std::string content;
  while (content.size() + element.size() <= kInputSize) content += element;
  return Tlv("\x30", content);
}

struct Shape {
  const char* name;
  std::function<AsnType*()> create;
  std::string input;
};

template <class T>
std::function<AsnType*()> Make() {
  return [] { return new T(); };
}

struct Cost {
  unsigned long long peak;
  bool accepted;
};

// The peak heap of one decode into a new value, the value included, counted
// after the type's first use (its one-time registration is not the decode's).
Cost Measure(const Shape& shape) {
  delete shape.create();
  {
    std::unique_ptr<AsnType> warm(shape.create());
    try {
      AsnDecodeValue(*warm, Hex("30 00"));
    } catch (CSM_Exception* error) {
      delete error;
    }
  }
  const unsigned long long before = AllocatedBytesLive();
  AllocationResetPeak();
  bool accepted = true;
  {
    std::unique_ptr<AsnType> value(shape.create());
    try {
      AsnDecodeValue(*value, shape.input);
    } catch (CSM_Exception* error) {
      delete error;
      accepted = false;
    }
  }
  return {AllocatedBytesPeak() - before, accepted};
}

std::string WithoutLastOctet(std::string input) {
  input.pop_back();
  return input;
}

std::string LastOctetChanged(std::string input) {
  input.back() = static_cast<char>(0x05);
  return input;
}

TEST(MemoryBound, HoldsForTheCostlyShapes) {
  using namespace qcommon;
  const std::string emptyPair = Hex("30 04 04 00 04 00");
  const std::string zero = Hex("02 01 00");
  const std::string bareErrInfo = Hex("30 05 30 00 02 01 00");
  const std::string fullErrInfo = Hex("30 0C 30 03 02 01 00 80 00 02 01 00 81 00");
  const std::string pairIndefinite = Hex("30 80 04 00 04 00 00 00");
  const std::string bigOcts = std::string(kInputSize, 'x');
  std::string nested = Hex("30 80");
  for (int level = 0; level < 31; ++level) nested += Hex("24 80");
  for (std::size_t i = 0; nested.size() < kInputSize; ++i) nested += Hex("04 01 41");
  for (int level = 0; level < 32; ++level) nested += Hex("00 00");

  const Shape shapes[] = {
      {"QAsnNVSList of empty pairs", Make<QAsnNVSList>(), ListOf(emptyPair)},
      {"... refused at its last octet", Make<QAsnNVSList>(), LastOctetChanged(ListOf(emptyPair))},
      {"... cut by its last octet", Make<QAsnNVSList>(), WithoutLastOctet(ListOf(emptyPair))},
      {"... of indefinite-length pairs", Make<QAsnNVSList>(), ListOf(pairIndefinite)},
      {"QAsnTinyIntList of zeros", Make<QAsnTinyIntList>(), ListOf(zero)},
      {"... cut by its last octet", Make<QAsnTinyIntList>(), WithoutLastOctet(ListOf(zero))},
      {"QAsnErrInfoList of bare entries", Make<QAsnErrInfoList>(), ListOf(bareErrInfo)},
      {"... of entries with every member", Make<QAsnErrInfoList>(), ListOf(fullErrInfo)},
      {"QAsnErrInfoReturn with such a list", Make<QAsnErrInfoReturn>(),
       Tlv("\x30", Hex("02 01 00") + Tlv("\xA0", ListOf(fullErrInfo).substr(4)))},
      {"QAsnColumn with a 1 MiB OCTET STRING", Make<QAsnColumn>(), Tlv("\x30", Tlv("\x04", bigOcts))},
      {"... in one-octet segments 32 levels deep", Make<QAsnColumn>(), nested},
      {"QAsnNVSList declaring 2^31-1 octets", Make<QAsnNVSList>(), Hex("30 84 7F FF FF FF") + emptyPair},
      {"QAsnColumn declaring 2^63-1 octets", Make<QAsnColumn>(), Hex("30 0B 04 88 7F FF FF FF FF FF FF FF 41")},
  };
  for (const Shape& shape : shapes) {
    const Cost cost = Measure(shape);
    const double perOctet = static_cast<double>(cost.peak) / static_cast<double>(shape.input.size());
    std::printf("%-45s %9zu octets %s: peak %10llu bytes, %6.2f per octet\n", shape.name, shape.input.size(),
                cost.accepted ? "accepted" : "refused ", cost.peak, perOctet);
    EXPECT_LE(cost.peak, kBytesPerInputOctet * static_cast<double>(shape.input.size()) + kFixedBytes) << shape.name;
  }
}

}  // namespace
