// What the four common records register with the reflection library, read
// back from the registry: classes, attributes, type descriptions, the create
// and destroy functions, and the lazy, once-only registration.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <tuple>

#include "tn_platform/refl/class_infor.h"
#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace {

using qcommon::QAsnColumn;
using qcommon::QAsnErrInfo;
using qcommon::QAsnNameAndValueString;
using qcommon::QAsnTinyIntList;
using qcommon::QAsnUniResID;

// Per class its attributes in registration order, as name/number/type/custom id
// (number -1: mandatory; custom id 4 AsnOcts, 40 AsnTinyInt, 41 SEQUENCE OF).
struct ClassRow {
  const refl::CClassInfor& (*classInfor)();
  const char* name;
  unsigned long size;
  const char* attributes;
};
const ClassRow kClasses[] = {
    {&QAsnNameAndValueString::GetClassInfor, "QAsnNameAndValueString", sizeof(QAsnNameAndValueString),
     "name/-1/AsnOcts/4 value/-1/AsnOcts/4"},
    {&QAsnUniResID::GetClassInfor, "QAsnUniResID", sizeof(QAsnUniResID),
     "strFDN/-1/AsnOcts/4 strMOC/-1/AsnOcts/4 neID/-1/AsnTinyInt/40 poSerialNum/0/AsnOcts/4"},
    {&QAsnErrInfo::GetClassInfor, "QAsnErrInfo", sizeof(QAsnErrInfo),
     "objID/-1/qcommon::QAsnTinyIntList/41 objName/0/AsnOcts/4 errCode/-1/AsnTinyInt/40 strOperDesc/1/AsnOcts/4"},
    {&QAsnColumn::GetClassInfor, "QAsnColumn", sizeof(QAsnColumn), "strCondition/-1/AsnOcts/4"},
};

TEST(ReflectionRegistry, CommonRecordsRegisterTheirTable) {
  std::map<std::string, const refl::CCustomBasicTypeInfor*> shared;  // type name -> its one description
  for (const ClassRow& row : kClasses) {
    const refl::CClassInfor& infor = row.classInfor();
    SCOPED_TRACE(row.name);
    EXPECT_EQ(std::make_tuple(infor.Name(), infor.Size()), std::make_tuple(row.name, row.size));
    EXPECT_EQ(refl::CClassInfor::Find(row.name), &infor);
    std::string attributes;
    for (const refl::CAttribInfor& attribute : infor.Attributes()) {
      SCOPED_TRACE(attribute.name);
      attributes += (attributes.empty() ? "" : " ") + std::string(attribute.name) + "/" +
                    std::to_string(attribute.number) + "/" + attribute.type.TypeName() + "/" +
                    std::to_string(attribute.type.CustomId());
      EXPECT_LT(attribute.position, row.size);
      EXPECT_EQ(attribute.access, refl::Enum::Public);
      EXPECT_EQ(attribute.type.IsMayNull(), attribute.number >= 0);  // only optional members may be null
      // Plain and optional members of one value type share one description.
      EXPECT_EQ(shared.emplace(attribute.type.TypeName(), attribute.type.CustomBasic()).first->second,
                attribute.type.CustomBasic());
    }
    EXPECT_EQ(attributes, row.attributes);
  }
  for (const char* name : {"qcommon::QAsnErrInfo", "QAsnNoSuchRecord", ""}) {
    EXPECT_EQ(refl::CClassInfor::Find(name), nullptr) << name;  // registered names only
  }
  EXPECT_EQ(shared.at("qcommon::QAsnTinyIntList"), nullptr);  // a custom type of its own, not a class
  EXPECT_EQ(QAsnErrInfo::GetClassInfor().Attributes()[0].type.Class(), nullptr);

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
  for (const ClassRow& row : kClasses) {
    const refl::CClassInfor& infor = row.classInfor();
    SCOPED_TRACE(row.name);
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
