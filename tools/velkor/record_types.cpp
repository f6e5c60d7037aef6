#include "tools/velkor/record_types.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
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
  if (colons == std::string_view::npos) return AsnCatalogue::Find(name);
  return AsnCatalogue::Find(name.substr(0, colons), name.substr(colons + 2));
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

// The tags a value of `value`'s class carries on its own: a record's or
// list's own chain (with the tags written on its type), else its universal
// tag (none for a CHOICE or an open value).
AsnTagChain OwnTagsOf(const AsnType& value) {
  switch (AsnKindOf(value)) {
    case AsnMemberKind::kList:
      return static_cast<const AsnListBase&>(value).OwnTags();
    case AsnMemberKind::kRecord:
    case AsnMemberKind::kChoice:
      return static_cast<const AsnSequence&>(value).Plan().ownTags;
    case AsnMemberKind::kOcts:
      return AsnTagChainOf(kTagOctetString);
    case AsnMemberKind::kBool:
      return AsnTagChainOf(kTagBoolean);
    case AsnMemberKind::kPrimitive:
      return AsnTagChainOf(static_cast<const AsnPrimitive&>(value).UniversalTag());
    default:
      return AsnTagChainOf(kTagInteger);
  }
}

// The tags written on a member or a type as a module writes them ("[0]
// IMPLICIT", "[1] EXPLICIT [APPLICATION 5] IMPLICIT"), or "": those of
// `chain` around the `own` tags of the type it holds, each EXPLICIT, and an
// IMPLICIT one where the outermost own tag is replaced.
std::string TagText(const AsnTagChain& chain, const AsnTagChain& own) {
  static const char* const kClassNames[] = {"UNIVERSAL ", "APPLICATION ", "", "PRIVATE "};
  const bool ownHeaderless = own.count == 1 && AsnTagIsHeaderless(own.Outer());
  const unsigned ownCount = ownHeaderless ? 0 : own.count;
  const unsigned around = chain.count >= ownCount ? chain.count - ownCount : 0;
  const auto written = [&](AsnTag tag, const char* mode) {
    return "[" + std::string(kClassNames[static_cast<unsigned>(TagClassOf(tag)) >> 6]) +
           std::to_string(TagNumber(tag)) + "] " + mode;
  };
  std::string text;
  for (unsigned i = 0; i < around; ++i) {
    if (ownHeaderless && i + 1 == chain.count && AsnTagIsHeaderless(chain.tags[i])) break;
    text += (text.empty() ? "" : " ") + written(chain.tags[i], "EXPLICIT");
  }
  if (ownCount > 0 && around < chain.count && TagWithForm(chain.tags[around], false) != TagWithForm(own.Outer(), false)) {
    text += (text.empty() ? "" : " ") + written(chain.tags[around], "IMPLICIT");
  }
  return text;
}

// A record's, CHOICE's or list's keyword in ASN.1 terms.
std::string StructureOf(const AsnType& value) {
  if (const auto* list = dynamic_cast<const AsnListBase*>(&value)) return list->SortedInDer() ? "SET OF" : "SEQUENCE OF";
  switch (static_cast<const AsnSequence&>(value).Plan().structure) {
    case AsnStructure::kSet:
      return "SET";
    case AsnStructure::kChoice:
      return "CHOICE";
    default:
      return "SEQUENCE";
  }
}

// The bare tag of a structure, before tags written on its type.
AsnTagChain BareTagsOf(const std::string& structure) {
  if (structure == "CHOICE") return AsnTagChainOf(kAsnChoiceTag);
  return AsnTagChainOf(structure.rfind("SET", 0) == 0 ? kTagSet : kTagSequence);
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

void DecodeBytes(AsnType& value, std::string_view bytes, std::vector<AsnConstraintViolation>* violations) {
  AsnDecodeBudget options;
  options.violations = violations;
  try {
    AsnDecodeValue(value, bytes, options);
  } catch (CSM_Exception* exception) {
    ThrowBadInput(DecodeErrorMessage(exception, 0));
  }
}

std::size_t DecodeFrontBytes(AsnType& value, std::string_view bytes, std::size_t base,
                             std::vector<AsnConstraintViolation>* violations) {
  AsnDecodeBudget options;
  options.violations = violations;
  try {
    return AsnDecodeFront(value, bytes, options);
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
    const std::string tag = type.value("tag", "");
    os << type["name"].get<std::string>() << " ::= " << (tag.empty() ? "" : tag + " ");
    const std::string module = "  -- " + type["module"].get<std::string>() + "\n";
    if (type["kind"] == "value") {
      os << type["type"].get<std::string>() << module;
      continue;
    }
    if (type["kind"] == "list") {
      os << type["structure"].get<std::string>() << " " << type["element"].get<std::string>() << module;
      continue;
    }
    os << type["structure"].get<std::string>() << " {" << module;
    std::size_t nameWidth = 0;
    for (const Json& member : type["members"]) {
      nameWidth = std::max(nameWidth, member["name"].get<std::string>().size());
    }
    std::vector<std::string> lines;
    for (const Json& member : type["members"]) {
      std::ostringstream line;
      const std::string memberTag = member["tag"].get<std::string>();
      line << "  " << std::left << std::setw(static_cast<int>(nameWidth)) << member["name"].get<std::string>()
           << "  " << (memberTag.empty() ? "" : memberTag + " ") << member["type"].get<std::string>();
      if (member.contains("default")) {
        line << " DEFAULT " << member["default"].get<std::string>();
      } else if (member["optional"].get<bool>() && type["structure"] != "CHOICE") {
        line << " OPTIONAL";
      }
      lines.push_back(line.str());
    }
    if (type.contains("extensionsAt")) {
      lines.insert(lines.begin() + type["extensionsAt"].get<std::ptrdiff_t>(), "  ...");
    }
    for (std::size_t i = 0; i < lines.size(); ++i) os << lines[i] << (i + 1 < lines.size() ? ",\n" : "\n");
    os << "}\n";
  }
}

Json DescribeTypesJson(std::string_view only) {
  Json types = Json::array();
  for (const AsnCatalogueEntry& entry : SelectedEntries(only)) {
    Json type = {{"name", entry.name}, {"module", entry.module}};
    const std::unique_ptr<AsnType> value(entry.create());
    const auto* record = dynamic_cast<const AsnSequence*>(value.get());
    if (entry.createElement != nullptr || record != nullptr) {
      type["structure"] = StructureOf(*value);
      type["tag"] = TagText(OwnTagsOf(*value), BareTagsOf(type["structure"]));
    }
    if (entry.createElement != nullptr) {
      type["kind"] = "list";
      type["element"] = AsnTypeOf(*std::unique_ptr<AsnType>(entry.createElement()));
    } else if (record == nullptr) {
      type["kind"] = "value";  // a type assignment of another kind: Version ::= INTEGER
      type["type"] = AsnTypeOf(*value, true);
    } else {
      type["kind"] = "record";
      type["members"] = Json::array();
      for (const AsnMemberStep& step : record->Plan().members) {
        const std::unique_ptr<AsnType, refl::DestroyFunction> member(static_cast<AsnType*>(step.create()),
                                                                     step.destroy);
        Json described = {{"name", step.name},
                          {"type", AsnTypeOf(*member)},
                          {"tag", TagText(step.tags, OwnTagsOf(*member))},
                          {"optional", step.optional},
                          {"number", step.number},
                          {"class", MemberClassName(step)}};
        if (step.HasDefault()) described["default"] = AsnToValueNotation(*step.defaultValue);
        type["members"].push_back(described);
      }
      if (record->Plan().extensible) type["extensionsAt"] = record->Plan().extension.index;
    }
    types.push_back(type);
  }
  return types;
}

}  // namespace velkor
