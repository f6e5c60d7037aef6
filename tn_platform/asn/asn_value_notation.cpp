#include "tn_platform/asn/asn_value_notation.h"

#include <sstream>
#include <string_view>

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
// between), then "}"; "{}" when there are none.
template <class ForEachItem>
void WriteBraced(std::ostream& os, unsigned level, ForEachItem&& forEachItem) {
  bool any = false;
  forEachItem([&](auto&& writeItem) {
    os << (any ? ",\n" : "{\n") << IndentText(level + 1);
    writeItem(level + 1);
    any = true;
  });
  if (any) {
    os << '\n' << IndentText(level) << '}';
  } else {
    os << "{}";
  }
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
      WriteBraced(os, level, [&](auto&& item) {
        for (const AsnMember& member : AsnMembersOf(static_cast<const AsnSequence&>(value))) {
          const AsnType* held = member.Value();
          if (held == nullptr) continue;
          item([&](unsigned inner) {
            os << member.Name() << ' ';
            AsnWriteValueNotation(os, *held, inner);
          });
        }
      });
      return;
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
