// What the four common records register with the reflection library, read
// back from the registry: classes, attributes, type descriptions, the create
// and destroy functions, and the lazy, once-only registration.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <tuple>

#include "tn_velkor/qcommon/qasn_column.h"
#include "tn_velkor/qcommon/qasn_uni_res_id.h"
#include "tn_velkor/qcommon/qcommon_lists.h"
#include "tn_velkor/asn/value_type_descriptions.h"
#include "tn_platform/refl/class_infor.h"

namespace {

using qcommon::QAsnColumn;
using qcommon::QAsnErrInfo;
using qcommon::QAsnNameAndValueString;
using qcommon::QAsnTinyIntList;
using qcommon::QAsnUniResID;

struct ClassRow {
  const refl::CClassInfor& (*classInfor)();
  const char* name;
  unsigned long size;
};
const ClassRow kClasses[] = {
    {&QAsnNameAndValueString::GetClassInfor, "QAsnNameAndValueString", sizeof(QAsnNameAndValueString)},
    {&QAsnUniResID::GetClassInfor, "QAsnUniResID", sizeof(QAsnUniResID)},
    {&QAsnErrInfo::GetClassInfor, "QAsnErrInfo", sizeof(QAsnErrInfo)},
    {&QAsnColumn::GetClassInfor, "QAsnColumn", sizeof(QAsnColumn)},
};

// The attributes of every class, in registration order.
struct AttributeRow {
  const char* className;
  const char* name;
  short number;          // -1 mandatory, else the optional member's number
  const char* typeName;  // the custom basic type's or the custom type's name
  unsigned customId;     // 4 AsnOcts, 40 AsnTinyInt, 41 SEQUENCE OF
};
const AttributeRow kAttributes[] = {
    {"QAsnNameAndValueString", "name", -1, "AsnOcts", 4},
    {"QAsnNameAndValueString", "value", -1, "AsnOcts", 4},
    {"QAsnUniResID", "strFDN", -1, "AsnOcts", 4},
    {"QAsnUniResID", "strMOC", -1, "AsnOcts", 4},
    {"QAsnUniResID", "neID", -1, "AsnTinyInt", 40},
    {"QAsnUniResID", "poSerialNum", 0, "AsnOcts", 4},
    {"QAsnErrInfo", "objID", -1, "qcommon::QAsnTinyIntList", 41},
    {"QAsnErrInfo", "objName", 0, "AsnOcts", 4},
    {"QAsnErrInfo", "errCode", -1, "AsnTinyInt", 40},
    {"QAsnErrInfo", "strOperDesc", 1, "AsnOcts", 4},
    {"QAsnColumn", "strCondition", -1, "AsnOcts", 4},
};

TEST(ReflectionRegistry, CommonRecordsRegisterTheirTable) {
  std::map<std::string, const refl::CCustomBasicTypeInfor*> shared;  // type name -> its one description
  for (const ClassRow& row : kClasses) {
    const refl::CClassInfor& infor = row.classInfor();
    SCOPED_TRACE(row.name);
    EXPECT_EQ(infor.Name(), row.name);
    EXPECT_EQ(infor.Size(), row.size);
    EXPECT_EQ(refl::CClassInfor::Find(row.name), &infor);
    std::size_t i = 0;
    for (const AttributeRow& expected : kAttributes) {
      if (infor.Name() != expected.className) continue;
      SCOPED_TRACE(expected.name);
      ASSERT_LT(i, infor.Attributes().size());
      const refl::CAttribInfor& attribute = infor.Attributes()[i++];
      EXPECT_EQ(attribute.name, expected.name);
      EXPECT_EQ(attribute.number, expected.number);
      EXPECT_LT(attribute.position, row.size);
      EXPECT_EQ(attribute.access, refl::Enum::Public);
      EXPECT_EQ(attribute.type.TypeName(), expected.typeName);
      EXPECT_EQ(attribute.type.CustomId(), expected.customId);
      EXPECT_EQ(attribute.type.IsMayNull(), expected.number >= 0);  // only optional members may be null
      // Plain and optional members of one value type share one description.
      EXPECT_EQ(shared.emplace(expected.typeName, attribute.type.CustomBasic()).first->second,
                attribute.type.CustomBasic());
    }
    EXPECT_EQ(i, infor.Attributes().size());
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
    EXPECT_EQ(basic->Name(), name);
    EXPECT_EQ(basic->Size(), size);
    EXPECT_EQ(basic->Underlying().KindCode(), kindCode);
    EXPECT_EQ(basic->CustomId(), customId);
    EXPECT_FALSE(basic->Underlying().IsMayNull());
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
