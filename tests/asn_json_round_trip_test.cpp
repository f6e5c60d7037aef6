// Every catalogued type, over generated values that cover each JER rule
// (integer boundaries, empty, binary and long strings, absent and present
// optional members, empty and long lists): BER -> JSON -> BER gives the same
// octets in both forms and both layouts, and the list streams read what the
// whole-value codecs write, the JSON one fed a few octets at a time; a list's
// catalogue entry names the element type it makes.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <string>

#include "tests/test_bytes.h"
#include "tests/trickle_source.h"
#include "tn_platform/asn/asn_ber_list_reader.h"
#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_json_list_reader.h"
#include "tn_platform/asn/asn_choice.h"
#include "tn_platform/asn/asn_constraint_check.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive_sample.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/asn_value_kind.h"
#include "tn_qmodules/asn_catalogue.h"

namespace {

constexpr int kVariants = 4;
// Below this depth lists are empty, optional members absent and a CHOICE
// takes its last alternative, so that a type that holds itself ends.
constexpr int kDeepest = 6;

// Variant 0: zeros, empty strings and lists, optional members absent;
// 1: maxima, binary octets, short lists; 2: minima, long strings, a long list
// at the top; 3: text with escapes, -1, 2^53 + 1.
void Fill(AsnType& value, int variant, int depth) {
  switch (AsnKindOf(value)) {
    case AsnMemberKind::kOcts: {
      std::string binary(300, '\0');
      for (std::size_t i = 0; i < binary.size(); ++i) binary[i] = static_cast<char>(i * 7);
      const std::string octets[] = {"", std::string("\x00\xff\x80\x7f\"\\", 6), binary, "\xc3\xa9 \"q\" \\ \n\t"};
      static_cast<AsnOcts&>(value).Set(octets[variant].data(), octets[variant].size());
      break;
    }
    case AsnMemberKind::kTinyInt: {
      const int values[] = {0, std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), -1};
      static_cast<AsnTinyInt&>(value).Set(values[variant]);
      break;
    }
    case AsnMemberKind::kInt: {
      const long long values[] = {0, std::numeric_limits<long long>::max(), std::numeric_limits<long long>::min(),
                                  (1LL << 53) + 1};
      static_cast<AsnInt&>(value).Set(values[variant]);
      break;
    }
    case AsnMemberKind::kBool:
      static_cast<AsnBool&>(value).Set(variant % 2 == 1);
      break;
    case AsnMemberKind::kList: {
      const int counts[] = {0, 2, depth == 0 ? 150 : 3, 1};
      auto& list = static_cast<AsnListBase&>(value);
      if (depth > kDeepest) break;  // a type that holds itself ends
      for (int i = 0; i < counts[variant]; ++i) Fill(list.AppendElement(), variant, depth + 1);
      break;
    }
    case AsnMemberKind::kRecord: {
      auto& record = static_cast<AsnSequence&>(value);
      for (const AsnMemberStep& member : record.Plan().members) {
        if (member.optional && (variant == 0 || depth > kDeepest)) continue;
        Fill(*member.ValueOrCreateIn(&record), variant, depth + 1);
        AsnFitToBounds(member, *member.ValueIn(&record), [&](AsnType& element) { Fill(element, variant, depth + 2); });
      }
      break;
    }
    case AsnMemberKind::kChoice: {
      auto& choice = static_cast<AsnChoice&>(value);
      const std::size_t count = choice.Plan().members.size();
      Fill(choice.Choose(depth > kDeepest ? count - 1 : static_cast<std::size_t>(variant) % count), variant,
           depth + 1);
      break;
    }
    case AsnMemberKind::kPrimitive:  // a sample value; the kinds have their own vectors
      AsnGiveSampleValue(static_cast<AsnPrimitive&>(value));
      break;
  }
}

TEST(AsnJsonRoundTrip, EveryCataloguedTypeKeepsItsOctets) {
  int checked = 0;
  for (const AsnCatalogueEntry& entry : AsnCatalogue::All()) {
    for (int variant = 0; variant < kVariants; ++variant) {
      SCOPED_TRACE(entry.name + " variant " + std::to_string(variant));
      const std::unique_ptr<AsnType> made(entry.create());
      Fill(*made, variant, 0);
      const std::string ber = AsnEncodeValue(*made);
      const std::unique_ptr<AsnType> decoded(entry.create());
      AsnDecodeValue(*decoded, ber);
      for (const AsnJsonForm form : {AsnJsonForm::kJer, AsnJsonForm::kReadable}) {
        for (const AsnJsonLayout layout : {AsnJsonLayout::kOneLine, AsnJsonLayout::kIndented}) {
          const std::string json = AsnToJson(*decoded, form, layout);
          const std::unique_ptr<AsnType> back(entry.create());
          ASSERT_EQ(test_bytes::ThrownMessage([&] { AsnReadJson(*back, json, form); }), "no exception") << json;
          EXPECT_EQ(AsnEncodeValue(*back), ber) << json;
          EXPECT_EQ(AsnJsonToBer(*std::unique_ptr<AsnType>(entry.create()), json, form), ber);
        }
      }
      if (entry.createElement != nullptr) {
        EXPECT_EQ(std::unique_ptr<AsnType>(entry.createElement())->typeName(), entry.elementName);
      }
      const auto* list = dynamic_cast<const AsnListBase*>(made.get());
      if (list != nullptr && !list->OwnTags().Wrapped() && !list->SortedInDer()) {
        // The streams: BER element by element, and JER text a few octets at a time.
        const AsnTag tag = list->OwnTags().Outer();
        std::string content;
        AsnBerListReader berReader(Trickle(ber, 5), entry.createElement, entry.name, tag);
        while (AsnType* element = berReader.Next()) content += AsnEncodeValue(*element);
        EXPECT_EQ(AsnEncodedListHeader(content.size(), tag) + content, ber);
        const std::string jer = AsnToJson(*decoded, AsnJsonForm::kJer, AsnJsonLayout::kIndented);
        AsnJsonListReader jsonReader(Trickle(jer, 3), AsnJsonForm::kJer, entry.createElement, entry.name);
        content.clear();
        while (const std::unique_ptr<AsnType> element = jsonReader.Next()) content += AsnEncodeValue(*element);
        EXPECT_EQ(AsnEncodedListHeader(content.size(), tag) + content, ber);
        AsnJsonListReader encodingReader(Trickle(jer, 64), AsnJsonForm::kJer, entry.createElement, entry.name);
        content.clear();
        while (encodingReader.NextEncoded(content)) {
        }
        EXPECT_EQ(AsnEncodedListHeader(content.size(), tag) + content, ber);
      }
      ++checked;
    }
  }
  EXPECT_GE(checked, 4 * 20);
}

}  // namespace
