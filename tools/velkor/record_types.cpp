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

// A member's type as `types` shows it: a list's with its module
// ("qcommon::QAsnNVSList"), which `types` takes as a name; a value with its
// own codec by its ASN.1 type ("BIT STRING").
std::string MemberTypeName(const AsnMemberStep& step) {
  if (step.kind == AsnMemberKind::kPrimitive) {
    const std::unique_ptr<AsnType, refl::DestroyFunction> value(static_cast<AsnType*>(step.create()), step.destroy);
    return static_cast<const AsnPrimitive&>(*value).AsnTypeName();
  }
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
    os << type["name"].get<std::string>() << " (" << type["module"].get<std::string>() << ")";
    if (type["kind"] == "list") {
      os << ": SEQUENCE OF " << type["element"].get<std::string>() << '\n';
      continue;
    }
    os << '\n';
    std::size_t nameWidth = 0;
    std::size_t typeWidth = 0;
    for (const Json& member : type["members"]) {
      nameWidth = std::max(nameWidth, member["name"].get<std::string>().size());
      typeWidth = std::max(typeWidth, member["type"].get<std::string>().size());
    }
    for (const Json& member : type["members"]) {
      os << "  " << std::left << std::setw(static_cast<int>(nameWidth)) << member["name"].get<std::string>() << "  "
         << std::setw(static_cast<int>(typeWidth)) << member["type"].get<std::string>() << "  ";
      if (member["optional"].get<bool>()) {
        os << "optional [" << member["number"].get<int>() << "]\n";
      } else {
        os << "mandatory\n";
      }
    }
  }
}

Json DescribeTypesJson(std::string_view only) {
  Json types = Json::array();
  for (const AsnCatalogueEntry& entry : SelectedEntries(only)) {
    Json type = {{"name", entry.name}, {"module", entry.module}};
    if (entry.createElement != nullptr) {
      type["kind"] = "list";
      type["element"] = entry.elementName;
    } else {
      type["kind"] = "record";
      type["members"] = Json::array();
      const std::unique_ptr<AsnType> value(entry.create());
      if (const auto* record = dynamic_cast<const AsnSequence*>(value.get())) {
        for (const AsnMemberStep& step : record->Plan().members) {
          type["members"].push_back({{"name", step.name},
                                     {"type", MemberTypeName(step)},
                                     {"optional", step.optional},
                                     {"number", step.number}});
        }
      }
    }
    types.push_back(type);
  }
  return types;
}

}  // namespace velkor
