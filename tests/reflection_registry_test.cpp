// What the records register with the reflection library, read back from the
// registry: the type descriptions of the members and the create and destroy
// functions. Names, order and numbers come from the same member lines as the
// member plan, which the interop test compares with the module texts; once-only
// registration is first_registration_tsan's.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <tuple>

#include "tn_platform/refl/class_infor.h"
#include "tn_qmodules/asn_catalogue.h"
#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

// Each member's description: may-null exactly when optional, and of its kind:
// a value type's one shared description, a list's custom type (named with its
// namespace), a record's class.
TEST(ReflectionRegistry, MemberDescriptionsFollowTheirKind) {
  // kind -> custom id, type name ("" for a list: named by the member's type)
  const std::map<AsnMemberKind, std::pair<unsigned, std::string>> described = {
      {AsnMemberKind::kOcts, {4, "AsnOcts"}},
      {AsnMemberKind::kTinyInt, {40, "AsnTinyInt"}},
      {AsnMemberKind::kInt, {42, "AsnInt"}},
      {AsnMemberKind::kBool, {43, "AsnBool"}},
      {AsnMemberKind::kList, {41, ""}}};
  std::map<std::string, const refl::CCustomBasicTypeInfor*> shared;  // type name -> its one description
  for (const AsnCatalogueEntry& entry : AsnCatalogue::All()) {
    const std::unique_ptr<AsnType> value(entry.create());
    const auto* record = dynamic_cast<const AsnSequence*>(value.get());
    if (record == nullptr) continue;
    const refl::CClassInfor& infor = record->ClassInfor();
    ASSERT_EQ(infor.Attributes().size(), record->Plan().members.size()) << entry.name;
    for (std::size_t i = 0; i < infor.Attributes().size(); ++i) {
      const refl::CGnlTypeInfor& type = infor.Attributes()[i].type;
      const AsnMemberStep& member = record->Plan().members[i];
      SCOPED_TRACE(entry.name + "." + member.name);
      EXPECT_EQ(type.IsMayNull(), member.optional);
      EXPECT_LT(infor.Attributes()[i].position, infor.Size());
      if (member.kind == AsnMemberKind::kRecord) {
        ASSERT_NE(type.Class(), nullptr);
        EXPECT_EQ(type.Class()->Name(), member.typeName);
        continue;
      }
      const auto& [customId, typeName] = described.at(member.kind);
      EXPECT_EQ(type.CustomId(), customId);
      if (member.kind == AsnMemberKind::kList) {  // "qcommon::QAsnTinyIntList"
        EXPECT_EQ(type.TypeName().substr(type.TypeName().rfind(':') + 1), member.typeName);
        continue;
      }
      EXPECT_EQ(type.TypeName(), typeName);
      EXPECT_EQ(shared.emplace(typeName, type.CustomBasic()).first->second, type.CustomBasic());
    }
  }
  for (const char* name : {"qcommon::QAsnErrInfo", "QAsnNoSuchRecord", ""}) {
    EXPECT_EQ(refl::CClassInfor::Find(name), nullptr) << name;  // registered names only
  }
  // name, size, underlying kind code
  const std::tuple<const char*, unsigned long, unsigned> rows[] = {{"AsnOcts", sizeof(AsnOcts), 45},
                                                                   {"AsnTinyInt", sizeof(AsnTinyInt), 14}};
  for (const auto& [name, size, kindCode] : rows) {
    const refl::CCustomBasicTypeInfor* basic = shared.at(name);
    EXPECT_EQ(
        std::make_tuple(basic->Name(), basic->Size(), basic->Underlying().KindCode(), basic->Underlying().IsMayNull()),
        std::make_tuple(name, size, kindCode, false));
  }
}

// Every create function makes a default object, bound by the hook to its
// class; every destroy function deletes one and ignores null.
TEST(ReflectionRegistry, CreateAndDestroyFunctions) {
  for (const refl::CClassInfor* infor :
       {&qcommon::QAsnNameAndValueString::GetClassInfor(), &qcommon::QAsnUniResID::GetClassInfor(),
        &qcommon::QAsnErrInfo::GetClassInfor(), &qcommon::QAsnColumn::GetClassInfor()}) {
    SCOPED_TRACE(infor->Name());
    infor->Destroyer()(nullptr);
    auto* record = static_cast<AsnSequence*>(infor->Creator()());
    refl::CRefrence reference;
    EXPECT_TRUE(record->BindReflection(reference));
    EXPECT_EQ(std::make_tuple(reference.ClassInfor(), reference.Object()), std::make_tuple(infor, record));
    infor->Destroyer()(record);
    for (const refl::CAttribInfor& attribute : infor->Attributes()) {
      attribute.type.Destroyer()(nullptr);
      attribute.type.Destroyer()(attribute.type.Creator()());
    }
  }
  const refl::CGnlTypeInfor& objID = qcommon::QAsnErrInfo::GetClassInfor().Attributes()[0].type;
  const std::unique_ptr<qcommon::QAsnTinyIntList> list(static_cast<qcommon::QAsnTinyIntList*>(objID.Creator()()));
  EXPECT_STREQ(list->typeName(), "QAsnTinyIntList");
  EXPECT_EQ(objID.TypeSize(), sizeof(qcommon::QAsnTinyIntList));
}

}  // namespace
