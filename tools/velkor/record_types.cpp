#include "tools/velkor/record_types.h"

#include <algorithm>
#include <iomanip>
#include <vector>

#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_record_plan.h"
#include "tn_qmodules/asn_catalogue.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/asn_value_kind.h"
#include "tn_platform/asn/asn_value_notation.h"
#include "tn_platform/asn/csm_exception.h"
#include "tools/velkor/decode_errors.h"
#include "tools/velkor/io.h"
#include "tools/velkor/usage.h"

namespace velkor {

namespace {

// The entry `name` stands for: the catalogue's name, or the name `types`
// shows for a member's type ("qcommon::QAsnNVSList"); null for none.
const AsnCatalogueEntry* FindEntry(std::string_view name) {
  const std::size_t colons = name.rfind("::");
  const AsnCatalogueEntry* entry =
      AsnCatalogue::Find(colons == std::string_view::npos ? name : name.substr(colons + 2));
  if (entry != nullptr && (colons == std::string_view::npos || entry->module == name.substr(0, colons))) return entry;
  return nullptr;
}

// A value's type in ASN.1 terms: the name of a catalogued type (which
// `types` takes) unless `universal`, else its universal type ("OCTET
// STRING", "BIT STRING").
std::string AsnTypeOf(const AsnType& value, bool universal = false) {
  if (!universal && AsnCatalogue::Find(value.typeName()) != nullptr) return value.typeName();
  switch (AsnKindOf(value)) {
    case AsnMemberKind::kOcts:
      return "OCTET STRING";
    case AsnMemberKind::kTinyInt:
    case AsnMemberKind::kInt:
      return "INTEGER";
    case AsnMemberKind::kBool:
      return "BOOLEAN";
    case AsnMemberKind::kPrimitive:
      return static_cast<const AsnPrimitive&>(value).AsnTypeName();
    default:
      return value.typeName();
  }
}

std::string MemberAsnType(const AsnMemberStep& step) {
  const std::unique_ptr<AsnType, refl::DestroyFunction> value(static_cast<AsnType*>(step.create()), step.destroy);
  return AsnTypeOf(*value);
}

// The member's own tags as a module writes them ("[0] IMPLICIT",
// "[APPLICATION 1] EXPLICIT"), or "" for a member that travels with its
// type's tag: each tag around another is explicit, the innermost one, when it
// is not universal, replaced the type's own.
std::string MemberTagText(const AsnMemberStep& step) {
  static const char* const kClassNames[] = {"", "APPLICATION ", "", "PRIVATE "};
  std::string text;
  for (unsigned i = 0; i < step.tags.count; ++i) {
    const AsnTag tag = step.tags.tags[i];
    if (tag == kAsnOpenTag || TagClassOf(tag) == AsnTagClass::kUniversal) continue;
    if (!text.empty()) text += ' ';
    text += "[" + std::string(kClassNames[static_cast<unsigned>(TagClassOf(tag)) >> 6]) +
            std::to_string(TagNumber(tag)) + (i + 1 < step.tags.count ? "] EXPLICIT" : "] IMPLICIT");
  }
  return text;
}

// The member's class, for code: the value class, or a list's with its
// module ("qcommon::QAsnNVSList").
std::string MemberClassName(const AsnMemberStep& step) {
  const AsnCatalogueEntry* list = step.kind == AsnMemberKind::kList ? AsnCatalogue::Find(step.typeName) : nullptr;
  return list == nullptr ? step.typeName : list->module + "::" + step.typeName;
}

std::vector<AsnCatalogueEntry> SelectedEntries(std::string_view only) {
  if (only.empty()) return AsnCatalogue::All();
  const AsnCatalogueEntry* entry = FindEntry(only);
  if (entry == nullptr) ThrowBadUsage(TypeNameProblem(only));
  return {*entry};
}

}  // namespace

std::string TypeNameProblem(std::string_view name) {
  if (FindEntry(name) != nullptr) return "";
  const std::size_t colons = name.rfind("::");
  const std::string_view bare = colons == std::string_view::npos ? name : name.substr(colons + 2);
  std::vector<std::string> names;
  for (const AsnCatalogueEntry& known : AsnCatalogue::All()) names.push_back(known.name);
  return "unknown record type \"" + std::string(name) + "\"" + DidYouMean(bare, names);
}

const AsnCatalogueEntry& CatalogueEntryOf(std::string_view name) {
  const AsnCatalogueEntry* entry = FindEntry(name);
  if (entry == nullptr) ThrowBadUsage(TypeNameProblem(name));
  return *entry;
}

std::unique_ptr<AsnType> CreateCatalogued(std::string_view name) {
  const AsnCatalogueEntry* entry = FindEntry(name);
  if (entry == nullptr) ThrowBadUsage(TypeNameProblem(name));
  return std::unique_ptr<AsnType>(entry->create());
}

void DecodeBytes(AsnType& value, std::string_view bytes) {
  try {
    AsnDecodeValue(value, bytes);
  } catch (CSM_Exception* exception) {
    ThrowBadInput(DecodeErrorMessage(exception, 0));
  }
}

std::size_t DecodeFrontBytes(AsnType& value, std::string_view bytes, std::size_t base) {
  try {
    return AsnDecodeFront(value, bytes);
  } catch (CSM_Exception* exception) {
    ThrowBadInput(DecodeErrorMessage(exception, base));
  }
}

std::string EncodeBytes(const AsnType& value) { return AsnEncodeValue(value); }

void PrintValue(std::ostream& os, const AsnType& value) { AsnWriteValueNotation(os, value); }

void DescribeTypes(std::ostream& os, std::string_view only) {
  bool first = true;
  for (const Json& type : DescribeTypesJson(only)) {
    if (!first) os << '\n';
    first = false;
    os << type["name"].get<std::string>() << " ::= ";
    if (type["kind"] == "value") {
      os << type["type"].get<std::string>() << "  -- " << type["module"].get<std::string>() << '\n';
      continue;
    }
    if (type["kind"] == "list") {
      os << "SEQUENCE OF " << type["element"].get<std::string>() << "  -- " << type["module"].get<std::string>()
         << '\n';
      continue;
    }
    os << "SEQUENCE {  -- " << type["module"].get<std::string>() << '\n';
    std::size_t nameWidth = 0;
    for (const Json& member : type["members"]) {
      nameWidth = std::max(nameWidth, member["name"].get<std::string>().size());
    }
    const std::size_t count = type["members"].size();
    for (std::size_t i = 0; i < count; ++i) {
      const Json& member = type["members"][i];
      const std::string tag = member["tag"].get<std::string>();
      os << "  " << std::left << std::setw(static_cast<int>(nameWidth)) << member["name"].get<std::string>() << "  "
         << (tag.empty() ? "" : tag + " ") << member["type"].get<std::string>()
         << (member["optional"].get<bool>() ? " OPTIONAL" : "") << (i + 1 < count ? ",\n" : "\n");
    }
    os << "}\n";
  }
}

Json DescribeTypesJson(std::string_view only) {
  Json types = Json::array();
  for (const AsnCatalogueEntry& entry : SelectedEntries(only)) {
    Json type = {{"name", entry.name}, {"module", entry.module}};
    const std::unique_ptr<AsnType> value(entry.create());
    const auto* record = dynamic_cast<const AsnSequence*>(value.get());
    if (entry.createElement != nullptr) {
      type["kind"] = "list";
      type["element"] = AsnTypeOf(*std::unique_ptr<AsnType>(entry.createElement()));
    } else if (record == nullptr) {
      type["kind"] = "value";  // a type assignment of another kind: Version ::= INTEGER
      type["type"] = AsnTypeOf(*value, true);
    } else {
      type["kind"] = "record";
      type["members"] = Json::array();
      {
        for (const AsnMemberStep& step : record->Plan().members) {
          type["members"].push_back({{"name", step.name},
                                     {"type", MemberAsnType(step)},
                                     {"tag", MemberTagText(step)},
                                     {"optional", step.optional},
                                     {"number", step.number},
                                     {"class", MemberClassName(step)}});
        }
      }
    }
    types.push_back(type);
  }
  return types;
}

}  // namespace velkor
