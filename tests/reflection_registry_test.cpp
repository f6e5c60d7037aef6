// What the records register with the reflection library, read back from the
// registry: classes, attributes, type descriptions, the create and destroy
// functions, and the lazy, once-only registration.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <tuple>

#include "tn_platform/refl/class_infor.h"
#include "tn_qmodules/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

using qcommon::QAsnColumn;
using qcommon::QAsnErrInfo;
using qcommon::QAsnNameAndValueString;
using qcommon::QAsnTinyIntList;
using qcommon::QAsnUniResID;

// The reflection id and type name a member's description carries, by kind.
std::pair<unsigned, std::string> Described(const AsnMemberStep& member) {
  switch (member.kind) {
    case AsnMemberKind::kOcts:
      return {4, "AsnOcts"};
    case AsnMemberKind::kTinyInt:
      return {40, "AsnTinyInt"};
    case AsnMemberKind::kInt:
      return {42, "AsnInt"};
    case AsnMemberKind::kBool:
      return {43, "AsnBool"};
    case AsnMemberKind::kList:
      return {41, ""};  // its qualified name, checked below
    case AsnMemberKind::kRecord:
      return {0, member.typeName};
  }
  return {};
}

// Every record class registers what its member plan holds: the members, in
// order, with their offsets, numbers (-1 for a mandatory member, rising
// numbers from 0 for the optional ones) and type descriptions. Which members
// a record has is its module text's to say; the interop test compares the two.
TEST(ReflectionRegistry, EveryRecordRegistersItsMemberPlan) {
  std::map<std::string, const refl::CCustomBasicTypeInfor*> shared;  // type name -> its one description
  for (const AsnCatalogueEntry& entry : AsnCatalogue::All()) {
    const std::unique_ptr<AsnType> value(entry.create());
    const auto* record = dynamic_cast<const AsnSequence*>(value.get());
    if (record == nullptr) continue;
    SCOPED_TRACE(entry.name);
    const refl::CClassInfor& infor = record->ClassInfor();
    const AsnRecordPlan& plan = record->Plan();
    EXPECT_EQ(infor.Name(), plan.className);
    EXPECT_EQ(refl::CClassInfor::Find(entry.name), &infor);
    ASSERT_EQ(infor.Attributes().size(), plan.members.size());
    short nextOptional = 0;
    for (std::size_t i = 0; i < plan.members.size(); ++i) {
      const refl::CAttribInfor& attribute = infor.Attributes()[i];
      const AsnMemberStep& member = plan.members[i];
      SCOPED_TRACE(attribute.name);
      EXPECT_EQ(std::make_tuple(attribute.name, attribute.number, attribute.position, attribute.type.IsMayNull()),
                std::make_tuple(std::string(member.name), member.number, member.offset, member.optional));
      if (member.optional) {  // numbered upwards in declaration order
        EXPECT_GE(attribute.number, nextOptional);
        nextOptional = static_cast<short>(attribute.number + 1);
      } else {
        EXPECT_EQ(attribute.number, -1);
      }
      EXPECT_LT(attribute.position, infor.Size());
      EXPECT_EQ(attribute.access, refl::Enum::Public);
      const auto [customId, typeName] = Described(member);
      if (member.kind == AsnMemberKind::kRecord) {
        ASSERT_NE(attribute.type.Class(), nullptr);
        EXPECT_EQ(attribute.type.Class()->Name(), typeName);
        continue;
      }
      EXPECT_EQ(attribute.type.CustomId(), customId);
      if (member.kind == AsnMemberKind::kList) {  // named with its namespace: "qcommon::QAsnTinyIntList"
        EXPECT_EQ(attribute.type.TypeName().substr(attribute.type.TypeName().rfind(':') + 1), member.typeName);
        continue;
      }
      EXPECT_EQ(attribute.type.TypeName(), typeName);
      // Plain and optional members of one value type share one description.
      EXPECT_EQ(shared.emplace(typeName, attribute.type.CustomBasic()).first->second, attribute.type.CustomBasic());
    }
  }
  for (const char* name : {"qcommon::QAsnErrInfo", "QAsnNoSuchRecord", ""}) {
    EXPECT_EQ(refl::CClassInfor::Find(name), nullptr) << name;  // registered names only
  }

  // name, size, underlying kind code, custom id
  const std::tuple<const char*, unsigned long, unsigned, unsigned> rows[] = {
      {"AsnOcts", sizeof(AsnOcts), 45, 4}, {"AsnTinyInt", sizeof(AsnTinyInt), 14, 40}};
  for (const auto& [name, size, kindCode, customId] : rows) {
    const refl::CCustomBasicTypeInfor* basic = shared.at(name);
    ASSERT_NE(basic, nullptr) << name;
    EXPECT_EQ(std::make_tuple(basic->Name(), basic->Size(), basic->Underlying().KindCode(), basic->CustomId(),
                              basic->Underlying().IsMayNull()),
              std::make_tuple(name, size, kindCode, customId, false));
  }
  refl::CGnlTypeInfor again;  // describing a member anew reuses the description made first
  again.CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>();
  EXPECT_EQ(again.CustomBasic(), shared.at("AsnOcts"));
  EXPECT_TRUE(again.IsMayNull());
}

// Every create function makes a default object, bound by the hook to its
// class; every destroy function deletes one and ignores null.
TEST(ReflectionRegistry, CreateAndDestroyFunctions) {
  for (const refl::CClassInfor* common :
       {&QAsnNameAndValueString::GetClassInfor(), &QAsnUniResID::GetClassInfor(), &QAsnErrInfo::GetClassInfor(),
        &QAsnColumn::GetClassInfor()}) {
    const refl::CClassInfor& infor = *common;
    SCOPED_TRACE(infor.Name());
    infor.Destroyer()(nullptr);
    auto* record = static_cast<AsnSequence*>(infor.Creator()());
    refl::CRefrence reference;
    EXPECT_TRUE(record->BindReflection(reference));
    EXPECT_EQ(reference.ClassInfor(), &infor);
    EXPECT_EQ(reference.Object(), record);
    infor.Destroyer()(record);
    for (const refl::CAttribInfor& attribute : infor.Attributes()) {
      attribute.type.Destroyer()(nullptr);
      attribute.type.Destroyer()(attribute.type.Creator()());
    }
  }
  const refl::CGnlTypeInfor& objID = QAsnErrInfo::GetClassInfor().Attributes()[0].type;
  const std::unique_ptr<QAsnTinyIntList> list(static_cast<QAsnTinyIntList*>(objID.Creator()()));
  EXPECT_STREQ(list->typeName(), "QAsnTinyIntList");
  EXPECT_EQ(objID.TypeSize(), sizeof(QAsnTinyIntList));
}

// Registration happens on first use of the hook, once per class. Returns 0
// when it does; run in a process in which no record was used yet.
int CheckFirstUseRegistersOnce() {
  QAsnUniResID record;  // constructing a record registers nothing
  if (refl::CClassInfor::Find("QAsnUniResID") != nullptr || refl::CClassInfor::Find("QAsnErrInfo") != nullptr) return 1;
  refl::CRefrence first, again;
  record.BindReflection(first);
  const std::size_t count = refl::CClassInfor::Registered().size();
  QAsnUniResID().BindReflection(again);
  const refl::CClassInfor* registered = refl::CClassInfor::Find("QAsnUniResID");
  const bool once = registered != nullptr && first.ClassInfor() == registered && again.ClassInfor() == registered &&
                    refl::CClassInfor::Registered().size() == count && registered->Attributes().size() == 4;
  return once && refl::CClassInfor::Find("QAsnErrInfo") == nullptr ? 0 : 2;
}

// The death-test machinery runs the statement in this binary started afresh
// ("threadsafe" style), where no record has been used yet.
TEST(ReflectionRegistryDeathTest, FirstHookCallRegistersExactlyOnce) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(std::exit(CheckFirstUseRegistersOnce()), ::testing::ExitedWithCode(0), "");
}

}  // namespace
