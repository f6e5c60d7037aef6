#include "tools/velkor/record_types.h"

#include <algorithm>
#include <iomanip>
#include <vector>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_catalogue.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_member.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_value_io.h"
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

// Runs a decode of a value that starts `base` octets into the input, turning
// the runtime's exception into the tool's error.
template <class Decode>
auto Decoding(Decode decode, const AsnType&, std::string_view, std::size_t base = 0) {
  try {
    return decode();
  } catch (CSM_Exception* exception) {
    ThrowBadInput(DecodeErrorMessage(exception, base));
  }
}

struct MemberRow {
  std::string name;
  std::string type;
  bool optional;
  int number;
};

std::vector<MemberRow> MembersOf(const AsnSequence& record) {
  std::vector<MemberRow> rows;
  for (const refl::CAttribInfor& attribute : record.ClassInfor().Attributes())
    rows.push_back({attribute.name, attribute.type.TypeName(), attribute.type.IsMayNull(), attribute.number});
  return rows;
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

std::unique_ptr<AsnType> CreateCatalogued(std::string_view name) {
  const AsnCatalogueEntry* entry = FindEntry(name);
  if (entry == nullptr) ThrowBadUsage(TypeNameProblem(name));
  return std::unique_ptr<AsnType>(entry->create());
}

std::unique_ptr<AsnType> CreateElementOf(const AsnListBase& list) {
  const AsnCatalogueEntry* entry = AsnCatalogue::Find(list.typeName());
  if (entry == nullptr || entry->elementName.empty())
    ThrowBadInput(std::string("list type ") + list.typeName() + " is not in the catalogue");
  const std::string& element = entry->elementName;
  if (element == "AsnOcts") return std::make_unique<AsnOcts>();
  if (element == "AsnTinyInt") return std::make_unique<AsnTinyInt>();
  if (element == "AsnInt") return std::make_unique<AsnInt>();
  if (element == "AsnBool") return std::make_unique<AsnBool>();
  const AsnCatalogueEntry* elementEntry = AsnCatalogue::Find(element);
  if (elementEntry == nullptr) ThrowBadInput("element type " + element + " is not in the catalogue");
  return std::unique_ptr<AsnType>(elementEntry->create());
}

void DecodeBytes(AsnType& value, std::string_view bytes) {
  Decoding(
      [&] {
        AsnDecodeValue(value, bytes);
        return true;
      },
      value, bytes);
}

std::size_t DecodeFrontBytes(AsnType& value, std::string_view bytes, std::size_t base) {
  return Decoding([&] { return AsnDecodeFront(value, bytes); }, value, bytes, base);
}

std::string EncodeBytes(const AsnType& value) { return AsnEncodeValue(const_cast<AsnType&>(value)); }

void PrintValue(std::ostream& os, const AsnType& value) {
  if (dynamic_cast<const AsnListBase*>(&value) != nullptr) {
    os << value.typeName() << " {";
    value.Print(os, 1, true);
    os << "\n}";
    return;
  }
  value.Print(os, 0, false);
}

void DescribeTypes(std::ostream& os, std::string_view only) {
  bool first = true;
  for (const AsnCatalogueEntry& entry : SelectedEntries(only)) {
    if (!first) os << '\n';
    first = false;
    if (!entry.elementName.empty()) {
      os << entry.name << " (" << entry.module << "): SEQUENCE OF " << entry.elementName << '\n';
      continue;
    }
    os << entry.name << " (" << entry.module << ")\n";
    const std::unique_ptr<AsnType> value(entry.create());
    const auto* record = dynamic_cast<const AsnSequence*>(value.get());
    if (record == nullptr) continue;
    const std::vector<MemberRow> rows = MembersOf(*record);
    std::size_t nameWidth = 0;
    std::size_t typeWidth = 0;
    for (const MemberRow& row : rows) {
      nameWidth = std::max(nameWidth, row.name.size());
      typeWidth = std::max(typeWidth, row.type.size());
    }
    for (const MemberRow& row : rows) {
      os << "  " << std::left << std::setw(static_cast<int>(nameWidth)) << row.name << "  "
         << std::setw(static_cast<int>(typeWidth)) << row.type << "  ";
      if (row.optional) {
        os << "optional [" << row.number << "]\n";
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
    if (!entry.elementName.empty()) {
      type["kind"] = "list";
      type["element"] = entry.elementName;
      types.push_back(type);
      continue;
    }
    type["kind"] = "record";
    Json members = Json::array();
    const std::unique_ptr<AsnType> value(entry.create());
    if (const auto* record = dynamic_cast<const AsnSequence*>(value.get())) {
      for (const MemberRow& row : MembersOf(*record)) {
        members.push_back({{"name", row.name}, {"type", row.type}, {"optional", row.optional}, {"number", row.number}});
      }
    }
    type["members"] = members;
    types.push_back(type);
  }
  return types;
}

}  // namespace velkor
