// First registration from many threads at once, and what it registers. Each
// thread uses every catalogue type and value type for the first time in this
// process, in an order of its own: encoding, decoding, the reflection hook, the
// descriptions. ThreadSanitizer (scripts/tsan.sh) must see no race. Then each
// record class is registered once, all threads saw the same, each member's
// description is of its kind (a value type's one shared description, a list's
// custom type, a record's class), and the create and destroy functions work.
// A program of its own: the first use has to be the first in its process.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_velkor/ns_velkor.h"

namespace {

constexpr int kThreads = 16;
int g_failures = 0;

void Fail(const std::string& what) {
  std::fprintf(stderr, "%s\n", what.c_str());
  ++g_failures;
}

struct Seen {
  std::map<std::string, const refl::CClassInfor*> classes;           // record name -> its class
  std::map<std::string, const refl::CCustomBasicTypeInfor*> values;  // value type name -> description
  std::map<std::string, std::string> encodings;                      // type name -> encoding
};

template <class T>
const refl::CCustomBasicTypeInfor* Describe() {
  refl::CGnlTypeInfor type;
  type.CaptureTypeInfor<T>();
  return type.CustomBasic();
}

// Plain and optional ("?") forms; the two must share one description.
const std::vector<std::pair<std::string, const refl::CCustomBasicTypeInfor* (*)()>> kValueTypes = {
    {"AsnOcts", &Describe<AsnOcts>},       {"AsnOcts?", &Describe<refl::MayNullPointer<AsnOcts>>},
    {"AsnTinyInt", &Describe<AsnTinyInt>}, {"AsnTinyInt?", &Describe<refl::MayNullPointer<AsnTinyInt>>},
    {"AsnInt", &Describe<AsnInt>},         {"AsnInt?", &Describe<refl::MayNullPointer<AsnInt>>},
    {"AsnBool", &Describe<AsnBool>},
};

void Walk(int index, const std::vector<AsnCatalogueEntry>& catalogue, Seen& seen) {
  std::vector<std::function<void()>> steps;
  for (const AsnCatalogueEntry& type : catalogue) {
    steps.emplace_back([&type, &seen] {
      const std::unique_ptr<AsnType> sample(type.create());
      if (auto* list = dynamic_cast<AsnListBase*>(sample.get())) list->AppendElement();  // uses the element type
      const std::unique_ptr<AsnType> value(type.create());
      AsnDecodeValue(*value, AsnEncodeValue(*sample));
      seen.encodings[type.name] = AsnEncodeValue(*value);
      if (const auto* record = dynamic_cast<const AsnSequence*>(value.get())) {
        refl::CRefrence reference;
        record->BindReflection(reference);
        seen.classes[type.name] = reference.ClassInfor();
      }
    });
  }
  for (const auto& [name, describe] : kValueTypes) {
    steps.emplace_back([&name = name, describe = describe, &seen] { seen.values[name] = describe(); });
  }
  std::shuffle(steps.begin(), steps.end(), std::mt19937(static_cast<unsigned>(index)));
  for (const auto& step : steps) step();
}

void CheckOnceAndShared(const std::vector<Seen>& seen) {
  for (int i = 1; i < kThreads; ++i) {
    if (seen[i].classes != seen[0].classes || seen[i].values != seen[0].values ||
        seen[i].encodings != seen[0].encodings)
      Fail("thread " + std::to_string(i) + " saw other classes, descriptions or encodings than thread 0");
  }
  const auto& values = seen[0].values;
  for (const char* name : {"AsnOcts", "AsnTinyInt", "AsnInt"}) {
    if (values.at(name) == nullptr || values.at(name) != values.at(std::string(name) + "?"))
      Fail(std::string(name) + ": no description, or one of its own for the optional form");
  }
  std::map<std::string, int> registered;
  for (const refl::CClassInfor* infor : refl::CClassInfor::Registered()) ++registered[infor->Name()];
  for (const auto& [name, infor] : seen[0].classes) {
    if (infor == nullptr || infor != refl::CClassInfor::Find(name) || registered[name] != 1) {
      Fail(name + ": registered " + std::to_string(registered[name]) + " times, or not as the class bound");
      continue;
    }
    for (const refl::CAttribInfor& attribute : infor->Attributes()) {
      const auto value = values.find(attribute.type.TypeName());
      if (value != values.end() && attribute.type.CustomBasic() != value->second)
        Fail(name + "." + attribute.name + ": a description of its own");
    }
  }
  for (const char* name : {"qcommon::QAsnErrInfo", "QAsnNoSuchRecord", ""}) {
    if (refl::CClassInfor::Find(name) != nullptr) Fail(std::string("a class named \"") + name + "\"");
  }
  // name, size, underlying kind code of the value types' descriptions
  const std::tuple<const char*, unsigned long, unsigned> basics[] = {{"AsnOcts", sizeof(AsnOcts), 45},
                                                                     {"AsnTinyInt", sizeof(AsnTinyInt), 14}};
  for (const auto& [name, size, kindCode] : basics) {
    const refl::CCustomBasicTypeInfor* basic = values.at(name);
    if (std::make_tuple(basic->Name(), basic->Size(), basic->Underlying().KindCode(),
                        basic->Underlying().IsMayNull()) != std::make_tuple(std::string(name), size, kindCode, false))
      Fail(std::string(name) + ": its description has another name, size or underlying kind");
  }
}

// A member's description as "[optional ]custom <id> <type>" or "[optional ]class <name>"; a
// list's type (custom id 41) without its namespace.
std::string Described(const refl::CGnlTypeInfor& type) {
  const std::string optional = type.IsMayNull() ? "optional " : "";
  if (type.Class() != nullptr) return optional + "class " + type.Class()->Name();
  const std::string name =
      type.CustomId() == 41 ? type.TypeName().substr(type.TypeName().rfind(':') + 1) : type.TypeName();
  return optional + "custom " + std::to_string(type.CustomId()) + " " + name;
}

void CheckMembers(const std::vector<AsnCatalogueEntry>& catalogue) {
  // kind -> custom id and type name ("": a list, named by the member's type)
  const std::map<AsnMemberKind, std::pair<unsigned, std::string>> kinds = {
      {AsnMemberKind::kOcts, {4, "AsnOcts"}},
      {AsnMemberKind::kTinyInt, {40, "AsnTinyInt"}},
      {AsnMemberKind::kInt, {42, "AsnInt"}},
      {AsnMemberKind::kBool, {43, "AsnBool"}},
      {AsnMemberKind::kList, {41, ""}}};
  for (const AsnCatalogueEntry& entry : catalogue) {
    const std::unique_ptr<AsnType> value(entry.create());
    const auto* record = dynamic_cast<const AsnSequence*>(value.get());
    if (record == nullptr) continue;
    const refl::CClassInfor& infor = record->ClassInfor();
    const std::vector<AsnMemberStep>& members = record->Plan().members;
    if (infor.Attributes().size() != members.size()) Fail(entry.name + ": not one attribute per member");
    for (std::size_t i = 0; i < std::min(members.size(), infor.Attributes().size()); ++i) {
      const AsnMemberStep& member = members[i];
      std::string expected = member.optional ? "optional " : "";
      if (member.kind == AsnMemberKind::kRecord) {
        expected += std::string("class ") + member.typeName;
      } else {
        const auto& [customId, typeName] = kinds.at(member.kind);
        expected +=
            "custom " + std::to_string(customId) + " " + (typeName.empty() ? std::string(member.typeName) : typeName);
      }
      const std::string actual = Described(infor.Attributes()[i].type);
      if (actual != expected) Fail(entry.name + "." + member.name + ": " + actual + ", expected " + expected);
      if (infor.Attributes()[i].position >= infor.Size()) Fail(entry.name + "." + member.name + ": outside the object");
    }
  }
}

void CheckCreateAndDestroy(const std::map<std::string, const refl::CClassInfor*>& classes) {
  for (const auto& [name, infor] : classes) {
    infor->Destroyer()(nullptr);
    auto* record = static_cast<AsnSequence*>(infor->Creator()());
    refl::CRefrence reference;
    if (!record->BindReflection(reference) || reference.ClassInfor() != infor || reference.Object() != record)
      Fail(name + ": a created object is not bound to its class");
    infor->Destroyer()(record);
    for (const refl::CAttribInfor& attribute : infor->Attributes()) {
      attribute.type.Destroyer()(nullptr);
      attribute.type.Destroyer()(attribute.type.Creator()());
    }
  }
  const refl::CGnlTypeInfor& objID = qcommon::QAsnErrInfo::GetClassInfor().Attributes()[0].type;
  const std::unique_ptr<AsnType> list(static_cast<qcommon::QAsnTinyIntList*>(objID.Creator()()));
  if (std::string(list->typeName()) != "QAsnTinyIntList" || objID.TypeSize() != sizeof(qcommon::QAsnTinyIntList))
    Fail("QAsnErrInfo.objID: its create function makes no QAsnTinyIntList");
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
      ready.fetch_add(1);  // start together, to make the first uses overlap
      while (ready.load() < kThreads) std::this_thread::yield();
      Walk(i, catalogue, seen[i]);
    });
  }
  for (std::thread& thread : threads) thread.join();
  CheckOnceAndShared(seen);
  CheckMembers(catalogue);
  CheckCreateAndDestroy(seen[0].classes);
  std::printf("%d threads registered %zu record classes once: %s\n", kThreads, seen[0].classes.size(),
              g_failures == 0 ? "ok" : "FAILED");
  return g_failures == 0 ? 0 : 1;
}
