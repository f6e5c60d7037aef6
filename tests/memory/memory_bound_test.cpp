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
#include <vector>

#include "tests/memory/allocation_count.h"
#include "tests/test_bytes.h"
#include "tn_platform/asn/asn_member.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/asn_catalogue.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

using test_bytes::Hex;
using test_bytes::Tlv;

// The bound the README states, for any input.
constexpr unsigned long long kBytesPerInputOctet = 23;
constexpr unsigned long long kFixedBytes = 4096;
// With a budget of E list elements: kBytesPerElement x E for the elements,
// the octet strings' content (at most the input, in a segmented one built up
// as it comes: up to 3 x input for a moment), and the fixed part.
constexpr unsigned long long kBytesPerElement = 256;
constexpr unsigned long long kBudgetedBytesPerInputOctet = 3;

// `element` repeated to at most `size` octets (at least once).
std::string Repeated(const std::string& element, std::size_t size) {
  std::string content = element;
  while (content.size() + element.size() <= size) content += element;
  return content;
}

// `input` with its last octet replaced by `by`: cut by "", refused by "\x05".
std::string LastOctetReplaced(std::string input, const char* by) { return input.replace(input.size() - 1, 1, by); }

// A shape of input of about `size` octets, and the type it is decoded as.
struct Shape {
  const char* name;
  AsnType* (*create)();
  std::function<std::string(std::size_t size)> input;
};

template <class T>
AsnType* Create() {
  return new T();
}

struct Cost {
  unsigned long long peak;
  bool accepted;
};

// The peak heap of one decode into a new value, the value included, counted
// after the type's first use (its one-time registration is not the decode's).
Cost Measure(const Shape& shape, const std::string& input, const AsnDecodeBudget& budget) {
  test_bytes::ThrownMessage([&shape] { AsnDecodeValue(*std::unique_ptr<AsnType>(shape.create()), Hex("30 00")); });
  const unsigned long long before = AllocatedBytesLive();
  AllocationResetPeak();
  const bool accepted = test_bytes::ThrownMessage([&] {
                          AsnDecodeValue(*std::unique_ptr<AsnType>(shape.create()), input, budget);
                        }) == "no exception";
  return {AllocatedBytesPeak() - before, accepted};
}

std::vector<Shape> CostlyShapes() {
  using namespace qcommon;
  const std::string emptyPair = Hex("30 04 04 00 04 00");
  const std::string pairIndefinite = Hex("30 80 04 00 04 00 00 00");
  const std::string zero = Hex("02 01 00");
  const std::string bareErrInfo = Hex("30 05 30 00 02 01 00");
  const std::string fullErrInfo = Hex("30 0C 30 03 02 01 00 80 00 02 01 00 81 00");
  const auto list = [](const std::string& element) {
    return [element](std::size_t size) { return Tlv("\x30", Repeated(element, size)); };
  };
  return {
      {"QAsnNVSList of empty pairs", Create<QAsnNVSList>, list(emptyPair)},
      {"... refused at its last octet", Create<QAsnNVSList>,
       [=](std::size_t size) { return LastOctetReplaced(list(emptyPair)(size), "\x05"); }},
      {"... cut by its last octet", Create<QAsnNVSList>,
       [=](std::size_t size) { return LastOctetReplaced(list(emptyPair)(size), ""); }},
      {"... of indefinite-length pairs", Create<QAsnNVSList>, list(pairIndefinite)},
      {"QAsnTinyIntList of zeros", Create<QAsnTinyIntList>, list(zero)},
      {"... cut by its last octet", Create<QAsnTinyIntList>,
       [=](std::size_t size) { return LastOctetReplaced(list(zero)(size), ""); }},
      {"QAsnErrInfoList of bare entries", Create<QAsnErrInfoList>, list(bareErrInfo)},
      {"... of entries with every member", Create<QAsnErrInfoList>, list(fullErrInfo)},
      {"QAsnErrInfoReturn with such a list", Create<QAsnErrInfoReturn>,
       [=](std::size_t size) { return Tlv("\x30", Hex("02 01 00") + Tlv("\xA0", Repeated(fullErrInfo, size))); }},
      {"QAsnColumn with one long OCTET STRING", Create<QAsnColumn>,
       [](std::size_t size) { return Tlv("\x30", Tlv("\x04", std::string(size, 'x'))); }},
      {"... in two segments", Create<QAsnColumn>,
       [](std::size_t size) {
         const std::string half = Tlv("\x04", std::string(size / 2, 'x'));
         return Tlv("\x30", Tlv("\x24", half + half));
       }},
      {"... in one-octet segments 32 levels deep", Create<QAsnColumn>,
       [](std::size_t size) {
         std::string nested = Hex("30 80") + Repeated(Hex("24 80"), 62);
         return nested + Repeated(Hex("04 01 41"), size) + Repeated(Hex("00 00"), 64);
       }},
      {"QAsnNVSList declaring 2^31-1 octets", Create<QAsnNVSList>,
       [=](std::size_t size) { return Hex("30 84 7F FF FF FF") + Repeated(emptyPair, size); }},
      {"QAsnColumn declaring 2^63-1 octets", Create<QAsnColumn>,
       [](std::size_t size) { return Hex("30 8A 04 88 7F FF FF FF FF FF FF FF") + std::string(size, 'x'); }},
  };
}

// From the smallest inputs, where the fixed part shows, to ones where the
// part that grows with the input dwarfs it.
constexpr std::size_t kSizes[] = {0, 256, 1 << 16, 1 << 20};

TEST(MemoryBound, HoldsForTheCostlyShapesAtEverySize) {
  for (const Shape& shape : CostlyShapes()) {
    for (const std::size_t size : kSizes) {
      const std::string input = shape.input(size);
      const Cost cost = Measure(shape, input, AsnDecodeBudget{});
      std::printf("%-42s %8zu octets %s: peak %9llu bytes, %5.2f per octet\n", shape.name, input.size(),
                  cost.accepted ? "accepted" : "refused ", cost.peak,
                  static_cast<double>(cost.peak) / static_cast<double>(input.size()));
      EXPECT_LE(cost.peak, kBytesPerInputOctet * input.size() + kFixedBytes) << shape.name << ", " << input.size();
    }
  }
}

// Every optional member present, in nested records too: the most objects
// for the fewest octets a record of that type can have.
void MakeEveryMemberPresent(AsnType& value) {
  if (auto* record = dynamic_cast<AsnSequence*>(&value)) {
    for (const AsnMember& member : AsnMembersOf(*record)) MakeEveryMemberPresent(*member.ValueOrCreate());
  }
}

TEST(MemoryBound, HoldsForEveryCatalogueTypeWithEveryMemberPresent) {
  for (const AsnCatalogueEntry& type : AsnCatalogue::All()) {
    const Shape shape{type.name.c_str(), type.create, nullptr};
    std::unique_ptr<AsnType> sample(type.createElement ? type.createElement() : type.create());
    MakeEveryMemberPresent(*sample);
    const std::string encoded = AsnEncodeValue(*sample);
    const std::string input = type.createElement ? Tlv("\x30", Repeated(encoded, 1 << 16)) : encoded;
    const Cost cost = Measure(shape, input, AsnDecodeBudget{});
    EXPECT_TRUE(cost.accepted) << type.name;
    EXPECT_LE(cost.peak, kBytesPerInputOctet * input.size() + kFixedBytes) << type.name << ", " << input.size();
  }
}

TEST(MemoryBound, ABudgetOfListElementsCapsIt) {
  constexpr std::size_t kElements = 1000;
  AsnDecodeBudget budget;
  budget.maxListElements = kElements;
  for (const Shape& shape : CostlyShapes()) {
    const std::string input = shape.input(1 << 20);
    const Cost cost = Measure(shape, input, budget);
    std::printf("%-42s %8zu octets, budget %zu elements: peak %9llu bytes\n", shape.name, input.size(), kElements,
                cost.peak);
    EXPECT_LE(cost.peak, kBytesPerElement * kElements + kBudgetedBytesPerInputOctet * input.size() + kFixedBytes)
        << shape.name;
  }
}

}  // namespace
