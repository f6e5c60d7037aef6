// First registration from many threads at once. Each thread walks the whole
// catalogue and the runtime's value types in an order of its own, using each
// for the first time in this process: every type through an encoding and a
// decoding, records through their reflection hook, value types through their
// descriptions. Afterwards every record class must be registered exactly
// once, every thread must have seen the same classes, descriptions and
// encodings, and every member must refer to the one description of its value
// type. ThreadSanitizer (scripts/tsan.sh) must see no race.
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
#include <string>
#include <thread>
#include <vector>

#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_qmodules/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_velkor/ns_velkor.h"

namespace {

constexpr int kThreads = 16;

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

int Check(const std::vector<Seen>& seen) {
  int failures = 0;
  auto fail = [&failures](const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    ++failures;
  };
  for (int i = 1; i < kThreads; ++i) {
    if (seen[i].classes != seen[0].classes || seen[i].values != seen[0].values ||
        seen[i].encodings != seen[0].encodings)
      fail("thread " + std::to_string(i) + " saw other classes, descriptions or encodings than thread 0");
  }
  const auto& values = seen[0].values;
  for (const char* name : {"AsnOcts", "AsnTinyInt", "AsnInt"}) {
    if (values.at(name) == nullptr || values.at(name) != values.at(std::string(name) + "?"))
      fail(std::string(name) + ": no description, or one of its own for the optional form");
  }
  std::map<std::string, int> registered;
  for (const refl::CClassInfor* infor : refl::CClassInfor::Registered()) ++registered[infor->Name()];
  for (const auto& [name, infor] : seen[0].classes) {
    if (infor == nullptr || infor != refl::CClassInfor::Find(name) || registered[name] != 1) {
      fail(name + ": registered " + std::to_string(registered[name]) + " times, or not as the class bound");
      continue;
    }
    for (const refl::CAttribInfor& attribute : infor->Attributes()) {
      const auto value = values.find(attribute.type.TypeName());
      if (value != values.end() && attribute.type.CustomBasic() != value->second)
        fail(name + "." + attribute.name + ": a description of its own");
    }
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
      ready.fetch_add(1);  // start together, to make the first uses overlap
      while (ready.load() < kThreads) std::this_thread::yield();
      Walk(i, catalogue, seen[i]);
    });
  }
  for (std::thread& thread : threads) thread.join();
  const int failures = Check(seen);
  std::printf("%d threads registered %zu record classes once: %s\n", kThreads, seen[0].classes.size(),
              failures == 0 ? "ok" : "FAILED");
  return failures == 0 ? 0 : 1;
}
