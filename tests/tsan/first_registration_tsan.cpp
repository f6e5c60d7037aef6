// First registration from many threads at once, for every type. Each thread
// walks the whole catalogue and the runtime's value types (AsnOcts,
// AsnTinyInt, AsnInt, AsnBool) in an order of its own, using each for the
// first time in this process: records through their reflection hook and the
// registry, every type through an encoding and a decoding, value types
// through their descriptions. Afterwards every class must be registered
// exactly once, every thread must have seen that same class and description,
// each class must have registered the members of its member plan, and each
// list's catalogue entry must make (createElement) the element type the list
// appends itself. ThreadSanitizer (the build made by scripts/tsan.sh) must see
// no race.
//
// A program of its own: the first use has to be the first in its process.
// Exit status 0 when every check holds.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <typeinfo>
#include <vector>

#include "tn_platform/asn/asn_list_base.h"
#include "tn_qmodules/asn_catalogue.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_velkor/ns_velkor.h"

namespace {

constexpr int kThreads = 16;

// What one thread saw.
struct Seen {
  std::map<std::string, const refl::CClassInfor*> classes;           // record name -> its class
  std::map<std::string, const refl::CCustomBasicTypeInfor*> values;  // "AsnOcts", "AsnOcts?" -> description
  std::map<std::string, std::string> encodings;                      // type name -> encoding used
  std::map<std::string, bool> lists;  // list name -> its entry's createElement makes the list's element type
};

template <class T>
const refl::CCustomBasicTypeInfor* Describe() {
  refl::CGnlTypeInfor type;
  type.CaptureTypeInfor<T>();
  return type.CustomBasic();
}

// The value types' descriptions, plain and optional ("?").
const std::vector<std::pair<std::string, const refl::CCustomBasicTypeInfor* (*)()>> kValueTypes = {
    {"AsnOcts", &Describe<AsnOcts>},
    {"AsnOcts?", &Describe<refl::MayNullPointer<AsnOcts>>},
    {"AsnTinyInt", &Describe<AsnTinyInt>},
    {"AsnTinyInt?", &Describe<refl::MayNullPointer<AsnTinyInt>>},
    {"AsnInt", &Describe<AsnInt>},
    {"AsnInt?", &Describe<refl::MayNullPointer<AsnInt>>},
    {"AsnBool", &Describe<AsnBool>},
};

// An encoding of `type` to decode: a record's default value; a list with one
// default element (so that decoding it uses the element type).
std::string SampleEncoding(const AsnCatalogueEntry& type) {
  const std::unique_ptr<AsnType> value(type.create());
  if (auto* list = dynamic_cast<AsnListBase*>(value.get())) list->AppendElement();
  return AsnEncodeValue(*value);
}

// One step per catalogue type and per value type, in the thread's own order.
void Walk(int index, const std::vector<AsnCatalogueEntry>& catalogue, Seen& seen) {
  std::vector<std::function<void()>> steps;
  for (const AsnCatalogueEntry& type : catalogue) {
    steps.emplace_back([&type, &seen] {
      const std::string bytes = SampleEncoding(type);
      const std::unique_ptr<AsnType> value(type.create());
      AsnDecodeValue(*value, bytes);
      seen.encodings[type.name] = AsnEncodeValue(*value);
      if (auto* list = dynamic_cast<AsnListBase*>(value.get())) {
        const std::unique_ptr<AsnType> made(type.createElement != nullptr ? type.createElement() : nullptr);
        const AsnType& appended = list->AppendElement();
        seen.lists[type.name] = made != nullptr && typeid(*made) == typeid(appended);
      }
      if (const auto* record = dynamic_cast<const AsnSequence*>(value.get())) {
        refl::CRefrence reference;
        record->BindReflection(reference);
        seen.classes[type.name] = reference.ClassInfor();
        if (refl::CClassInfor::Find(type.name) != reference.ClassInfor()) seen.classes[type.name] = nullptr;
      }
    });
  }
  for (const auto& [name, describe] : kValueTypes) {
    steps.emplace_back([&name = name, describe = describe, &seen] { seen.values[name] = describe(); });
  }
  std::shuffle(steps.begin(), steps.end(), std::mt19937(static_cast<unsigned>(index)));
  for (const auto& step : steps) step();
}

// "name:number ..." of a class's registered attributes or of a record's
// member plan, which is made apart from the registration (from the same
// member lines).
std::string MembersOf(const refl::CClassInfor& infor) {
  std::string text;
  for (const refl::CAttribInfor& attribute : infor.Attributes())
    text += (text.empty() ? "" : " ") + attribute.name + ":" + std::to_string(attribute.number);
  return text;
}
std::string MembersOf(const AsnRecordPlan& plan) {
  std::string text;
  for (const AsnMemberStep& member : plan.members)
    text += (text.empty() ? "" : " ") + std::string(member.name) + ":" + std::to_string(member.number);
  return text;
}

// Every member of `infor` refers to the one description of its type.
bool MembersShareDescriptions(const refl::CClassInfor& infor, const Seen& seen) {
  for (const refl::CAttribInfor& attribute : infor.Attributes()) {
    if (attribute.type.IsMayNull() != (attribute.number >= 0)) return false;
    const auto value = seen.values.find(attribute.type.TypeName());
    if (value != seen.values.end()) {
      if (attribute.type.CustomBasic() != value->second) return false;
    } else if (const refl::CClassInfor* member = refl::CClassInfor::Find(attribute.type.TypeName())) {
      if (attribute.type.Class() != member) return false;
    }
  }
  return true;
}

int Check(const std::vector<AsnCatalogueEntry>& catalogue, const std::vector<Seen>& seen) {
  int failures = 0;
  auto fail = [&failures](const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    ++failures;
  };
  for (int i = 1; i < kThreads; ++i) {
    if (seen[i].classes != seen[0].classes || seen[i].values != seen[0].values ||
        seen[i].encodings != seen[0].encodings || seen[i].lists != seen[0].lists)
      fail("thread " + std::to_string(i) + " saw other classes, descriptions or encodings than thread 0");
  }
  for (const auto& [name, describe] : kValueTypes) {
    if (seen[0].values.at(name) == nullptr) fail(name + ": no description");
  }
  if (seen[0].values.at("AsnOcts") != seen[0].values.at("AsnOcts?") ||
      seen[0].values.at("AsnTinyInt") != seen[0].values.at("AsnTinyInt?") ||
      seen[0].values.at("AsnInt") != seen[0].values.at("AsnInt?"))
    fail("an optional member's value type has a description of its own");

  std::multiset<std::string> registered;
  for (const refl::CClassInfor* infor : refl::CClassInfor::Registered()) registered.insert(infor->Name());
  for (const AsnCatalogueEntry& type : catalogue) {
    if (const auto list = seen[0].lists.find(type.name); list != seen[0].lists.end()) {
      if (!list->second) fail(type.name + ": createElement does not make the element type the list appends");
      continue;
    }
    const auto found = seen[0].classes.find(type.name);
    const refl::CClassInfor* infor = found == seen[0].classes.end() ? nullptr : found->second;
    if (infor == nullptr || infor != refl::CClassInfor::Find(type.name)) {
      fail(type.name + ": not the registered class");
      continue;
    }
    if (registered.count(type.name) != 1) fail(type.name + ": registered " + std::to_string(registered.count(type.name)) + " times");
    const std::unique_ptr<AsnType> record(type.create());
    const std::string expected = MembersOf(static_cast<AsnSequence&>(*record).Plan());
    if (MembersOf(*infor) != expected) fail(type.name + ": members " + MembersOf(*infor) + ", expected " + expected);
    if (!MembersShareDescriptions(*infor, seen[0])) fail(type.name + ": a member with a description of its own");
  }
  return failures;
}

}  // namespace

int main() {
  const std::vector<AsnCatalogueEntry> catalogue = AsnCatalogue::All();
  for (const AsnCatalogueEntry& type : catalogue) {
    if (refl::CClassInfor::Find(type.name) != nullptr) {
      std::fprintf(stderr, "%s was registered before its first use\n", type.name.c_str());
      return 1;
    }
  }

  std::vector<Seen> seen(kThreads);
  std::atomic<int> ready{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([i, &catalogue, &seen, &ready] {
      // Start together, to make the first uses overlap.
      ready.fetch_add(1);
      while (ready.load() < kThreads) std::this_thread::yield();
      Walk(i, catalogue, seen[i]);
    });
  }
  for (std::thread& thread : threads) thread.join();

  const int failures = Check(catalogue, seen);
  std::printf("%d threads registered the %zu catalogue types and %zu value type descriptions once: %s\n", kThreads,
              catalogue.size(), kValueTypes.size(), failures == 0 ? "ok" : "FAILED");
  return failures == 0 ? 0 : 1;
}
