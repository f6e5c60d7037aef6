#include "tn_platform/asn/asn_value_notation.h"

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tn_platform/asn/asn_choice.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_member.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_value_kind.h"
#include "tn_platform/asn/indent_table.h"

namespace {

void WriteOctets(std::ostream& os, std::string_view octets) {
  asn_primitive::PrintHex(os, octets);
  // The text, for the reader, when the octets are text a comment may hold.
  if (!octets.empty() && AsnOctetsAreText(octets) && octets.find("*/") == std::string_view::npos &&
      octets.find("/*") == std::string_view::npos) {
    os << " /* \"" << octets << "\" */";
  }
}

// Writes "{", the items one a line (each by `writeItem(os, level)`, commas
// between), then "}"; "{}" when there are none. `comments` follow the items,
// one a line.
template <class ForEachItem>
void WriteBraced(std::ostream& os, unsigned level, ForEachItem&& forEachItem,
                 const std::vector<std::string>& comments = {}) {
  bool any = false;
  forEachItem([&](auto&& writeItem) {
    os << (any ? ",\n" : "{\n") << IndentText(level + 1);
    writeItem(level + 1);
    any = true;
  });
  for (const std::string& comment : comments) {
    os << (any ? "\n" : "{\n") << IndentText(level + 1) << "/* " << comment << " */";
    any = true;
  }
  if (any) {
    os << '\n' << IndentText(level) << '}';
  } else {
    os << "{}";
  }
}

// An unknown member or alternative, kept as its encoding, in a comment.
std::string UnknownText(const char* what, const AsnType& unknown) {
  std::ostringstream text;
  text << what << ' ';
  unknown.Print(text, 0, false);
  return text.str();
}

// The comments on a record's unknown members.
std::vector<std::string> UnknownMembers(const AsnSequence& record) {
  std::vector<std::string> comments;
  const AsnRecordPlan& plan = record.Plan();
  if (plan.extensible) {
    plan.ExtensionsIn(const_cast<AsnSequence*>(&record))->ForEachElement([&](const AsnType& unknown) {
      comments.push_back(UnknownText("unknown member", unknown));
    });
  }
  return comments;
}

}  // namespace

void AsnWriteValueNotation(std::ostream& os, const AsnType& value, unsigned level) {
  switch (AsnKindOf(value)) {
    case AsnMemberKind::kOcts:
      WriteOctets(os, static_cast<const AsnOcts&>(value).view());
      return;
    case AsnMemberKind::kList:
      WriteBraced(os, level, [&](auto&& item) {
        static_cast<const AsnListBase&>(value).ForEachElement([&](AsnType& element) {
          item([&](unsigned inner) { AsnWriteValueNotation(os, element, inner); });
        });
      });
      return;
    case AsnMemberKind::kRecord:
      WriteBraced(
          os, level,
          [&](auto&& item) {
            for (const AsnMember& member : AsnMembersOf(static_cast<const AsnSequence&>(value))) {
              const AsnType* held = member.Value();
              if (held == nullptr) continue;
              item([&](unsigned inner) {
                os << member.Name() << ' ';
                AsnWriteValueNotation(os, *held, inner);
              });
            }
          },
          UnknownMembers(static_cast<const AsnSequence&>(value)));
      return;
    case AsnMemberKind::kChoice: {
      const auto& choice = static_cast<const AsnChoice&>(value);
      const AsnRecordPlan& plan = choice.Plan();
      void* const base = const_cast<AsnChoice*>(&choice);
      const std::size_t index = choice.Which();
      if (index == AsnChoice::kUnknown) {
        plan.ExtensionsIn(base)->ForEachElement(
            [&](const AsnType& unknown) { os << "/* " << UnknownText("unknown alternative", unknown) << " */"; });
      } else if (index != AsnChoice::kNone) {
        os << plan.members[index].name << " : ";
        AsnWriteValueNotation(os, *plan.members[index].ValueIn(base), level);
      }
      return;
    }
    default:  // INTEGER and BOOLEAN print as value notation writes them
      value.Print(os, level, false);
      return;
  }
}

std::string AsnToValueNotation(const AsnType& value) {
  std::ostringstream os;
  AsnWriteValueNotation(os, value);
  return os.str();
}
