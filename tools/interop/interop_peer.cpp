// interop_peer: our side of the interoperability test with an independent
// ASN.1 implementation. It works on any type of the catalogue, through the
// generic member walk, so a new record needs nothing here.
//
//   interop_peer list                     one line per type: name module element
//   interop_peer sample TYPE full|minimal the BER hex of the sample value
//   interop_peer decode TYPE HEX          decodes, prints the hex of the re-encoding
//   interop_peer print TYPE HEX           decodes, prints the value's Print text
//
// The sample value (interop_test.py builds the same one from the module text):
// - every value has a context (text, k): a record member's text is its member
//   name, a top-level value's text is its type name; k is the index of the
//   innermost list element around the value (0 outside lists); the elements of
//   a list take the list's text and their own index as k;
// - OCTET STRING: the text when k is 0, else the text + "#" + k;
// - INTEGER: seed = (sum over the text's octets of (position + 1) * octet
//   + 7919 * k) mod 2^32, h = seed * 2654435761 mod 2^32, s = h as signed
//   32-bit, value = s >> (h mod 29) (arithmetic shift);
// - BOOLEAN: TRUE;
// - a list: two elements;
// - optional members: present in "full" down to depth 3 (the top value is
//   at depth 0, its members at 1), absent in "minimal" and from depth 4 on;
// - a CHOICE: its last alternative in "full" and from depth 4 on, its first
//   in "minimal", whose text is the alternative's name.
// From depth 4 on a type that holds itself (LDAP's Filter through an
// alternative, a record through an optional member) ends.
// Exit status: 0 done, 1 decoding error (message on stderr), 2 usage error.
#include <dlfcn.h>

#include <cstdint>
#include <cstdlib>
#include <cstdio>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

#include "tn_platform/asn/asn_big_int.h"
#include "tn_platform/asn/asn_choice.h"
#include "tn_platform/asn/asn_constraint_check.h"
#include "tn_platform/asn/asn_bool.h"
#include "tn_qmodules/asn_catalogue.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_member.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive_sample.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/csm_exception.h"
#include "tn_velkor/ns_velkor.h"

namespace {

struct UsageError {
  std::string message;
};

struct Context {
  std::string text;
  unsigned k;
};

std::int32_t SampleInteger(const Context& context) {
  std::uint32_t seed = 7919u * context.k;
  for (std::size_t i = 0; i < context.text.size(); ++i) {
    seed += static_cast<std::uint32_t>(i + 1) * static_cast<unsigned char>(context.text[i]);
  }
  const std::uint32_t h = seed * 2654435761u;
  return static_cast<std::int32_t>(h) >> (h % 29);
}

std::string SampleText(const Context& context) {
  return context.k == 0 ? context.text : context.text + "#" + std::to_string(context.k);
}

std::string Hex(const std::string& octets) {
  static const char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const char c : octets) {
    text.push_back(kDigits[(static_cast<unsigned char>(c) >> 4) & 0xF]);
    text.push_back(kDigits[static_cast<unsigned char>(c) & 0xF]);
  }
  return text;
}

std::string Octets(const std::string& hex) {
  if (hex.size() % 2 != 0) throw UsageError{"odd number of hex digits"};
  std::string octets;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    octets.push_back(static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16)));
  }
  return octets;
}

const AsnCatalogueEntry& EntryOf(const std::string& name) {
  const AsnCatalogueEntry* entry = AsnCatalogue::Find(name);
  if (entry == nullptr) throw UsageError{"type " + name + " is not in the catalogue"};
  return *entry;
}

// From this depth (values inside values) on, a CHOICE takes its last
// alternative and optional members are absent, so that a type that holds
// itself ends.
constexpr unsigned kEnding = 4;

// Fills `value` (new, with its defaults) with the sample in `context`.
void Fill(AsnType& value, const Context& context, bool full, unsigned depth = 0) {
  if (auto* choice = dynamic_cast<AsnChoice*>(&value)) {
    const std::size_t index = full || depth >= kEnding ? choice->Plan().members.size() - 1 : 0;
    Fill(choice->Choose(index), Context{choice->Plan().members[index].name, context.k}, full, depth + 1);
  } else if (auto* record = dynamic_cast<AsnSequence*>(&value)) {
    for (const AsnMember& member : AsnMembersOf(*record)) {
      if ((full && depth + 1 < kEnding) || !member.IsOptional()) {
        Fill(*member.ValueOrCreate(), Context{member.Name(), context.k}, full, depth + 1);
        AsnFitToBounds(member.Step(), *member.Value(), [&](AsnType& element) {
          Fill(element, Context{member.Name(), context.k}, full, depth + 2);
        });
      }
    }
  } else if (auto* list = dynamic_cast<AsnListBase*>(&value)) {
    for (unsigned k = 0; k < 2; ++k) Fill(list->AppendElement(), Context{context.text, k}, full, depth + 1);
  } else if (auto* big = dynamic_cast<AsnBigInt*>(&value)) {
    big->Set(SampleInteger(context));
  } else if (auto* primitive = dynamic_cast<AsnPrimitive*>(&value)) {
    AsnGiveSampleValue(*primitive);  // the other universal kinds: a value of the kind's own
  } else if (auto* octets = dynamic_cast<AsnOcts*>(&value)) {
    octets->Set(SampleText(context).c_str());
  } else if (auto* tiny = dynamic_cast<AsnTinyInt*>(&value)) {
    tiny->Set(SampleInteger(context));
  } else if (auto* integer = dynamic_cast<AsnInt*>(&value)) {
    integer->Set(SampleInteger(context));
  } else if (auto* boolean = dynamic_cast<AsnBool*>(&value)) {
    boolean->Set(true);
  } else {
    throw UsageError{std::string("no sample for values of type ") + value.typeName()};
  }
}

int Run(int argc, char** argv) {
  const std::string command = argc > 1 ? argv[1] : "";
  if (command == "list" && argc == 2) {
    for (const AsnCatalogueEntry& entry : AsnCatalogue::All()) {
      std::cout << entry.name << ' ' << entry.module << ' ' << (entry.elementName.empty() ? "-" : entry.elementName)
                << '\n';
    }
    return 0;
  }
  if (command == "sample" && argc == 4) {
    const std::string mode = argv[3];
    if (mode != "full" && mode != "minimal") throw UsageError{"mode must be full or minimal"};
    const std::unique_ptr<AsnType> value(EntryOf(argv[2]).create());
    Fill(*value, Context{argv[2], 0}, mode == "full");
    std::cout << Hex(AsnEncodeValue(*value)) << '\n';
    return 0;
  }
  if ((command == "decode" || command == "print") && argc == 4) {
    const std::unique_ptr<AsnType> value(EntryOf(argv[2]).create());
    AsnDecodeValue(*value, Octets(argv[3]));
    if (command == "decode") {
      std::cout << Hex(AsnEncodeValue(*value)) << '\n';
    } else {
      value->Print(std::cout, 0, false);
      std::cout << '\n';
    }
    return 0;
  }
  throw UsageError{
      "usage: interop_peer list | sample TYPE full|minimal | decode TYPE HEX | print TYPE HEX"};
}

}  // namespace

int main(int argc, char** argv) {
  // A library of further interface modules (the test modules), whose types
  // join the catalogue when it is loaded.
  if (const char* module = std::getenv("TN_INTEROP_MODULE")) {
    if (dlopen(module, RTLD_NOW) == nullptr) {
      std::cerr << "interop_peer: cannot load " << module << ": " << dlerror() << '\n';
      return 2;
    }
  }
  try {
    return Run(argc, argv);
  } catch (const UsageError& error) {
    std::cerr << "interop_peer: " << error.message << '\n';
    return 2;
  } catch (const std::exception& error) {
    std::cerr << "interop_peer: " << error.what() << '\n';
    return 2;
  } catch (CSM_Exception* raw) {
    const std::unique_ptr<CSM_Exception> error(raw);
    std::cerr << "interop_peer: " << error->Message() << '\n';
    return 1;
  }
}
