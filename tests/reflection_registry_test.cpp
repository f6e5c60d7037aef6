// What the four common records register with the reflection library, read
// back from the registry: classes, attributes, type descriptions, the create
// and destroy functions, and the lazy, once-only registration.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "asn/qasn_column.h"
#include "asn/qasn_uni_res_id.h"
#include "asn/qcommon_lists.h"
#include "asn/value_type_descriptions.h"
#include "platform/refl/class_infor.h"

namespace {

using qcommon::QAsnColumn;
using qcommon::QAsnErrInfo;
using qcommon::QAsnNameAndValueString;
using qcommon::QAsnTinyIntList;
using qcommon::QAsnUniResID;

// One row of the registration table.
struct AttributeRow {
  const char* name;
  short number;
  const char* typeName;  // the custom basic type's or the custom type's name
  unsigned customId;     // 4 AsnOcts, 40 AsnTinyInt, 41 SEQUENCE OF
};

struct ClassRow {
  const refl::CClassInfor& (*classInfor)();
  const char* name;
  unsigned long size;
  std::vector<AttributeRow> attributes;
  std::vector<unsigned short> positions;
};

std::vector<ClassRow> Table() {
  const QAsnNameAndValueString nvs;
  const QAsnUniResID uni;
  const QAsnErrInfo err;
  const QAsnColumn column;
  return {
      {&QAsnNameAndValueString::GetClassInfor,
       "QAsnNameAndValueString",
       sizeof(QAsnNameAndValueString),
       {{"name", -1, "AsnOcts", 4}, {"value", -1, "AsnOcts", 4}},
       {MemberPosition(nvs, &QAsnNameAndValueString::name), MemberPosition(nvs, &QAsnNameAndValueString::value)}},
      {&QAsnUniResID::GetClassInfor,
       "QAsnUniResID",
       sizeof(QAsnUniResID),
       {{"strFDN", -1, "AsnOcts", 4},
        {"strMOC", -1, "AsnOcts", 4},
        {"neID", -1, "AsnTinyInt", 40},
        {"poSerialNum", 0, "AsnOcts", 4}},
       {MemberPosition(uni, &QAsnUniResID::strFDN), MemberPosition(uni, &QAsnUniResID::strMOC),
        MemberPosition(uni, &QAsnUniResID::neID), MemberPosition(uni, &QAsnUniResID::poSerialNum)}},
      {&QAsnErrInfo::GetClassInfor,
       "QAsnErrInfo",
       sizeof(QAsnErrInfo),
       {{"objID", -1, "qcommon::QAsnTinyIntList", 41},
        {"objName", 0, "AsnOcts", 4},
        {"errCode", -1, "AsnTinyInt", 40},
        {"strOperDesc", 1, "AsnOcts", 4}},
       {MemberPosition(err, &QAsnErrInfo::objID), MemberPosition(err, &QAsnErrInfo::objName),
        MemberPosition(err, &QAsnErrInfo::errCode), MemberPosition(err, &QAsnErrInfo::strOperDesc)}},
      {&QAsnColumn::GetClassInfor,
       "QAsnColumn",
       sizeof(QAsnColumn),
       {{"strCondition", -1, "AsnOcts", 4}},
       {MemberPosition(column, &QAsnColumn::strCondition)}},
  };
}

TEST(ReflectionRegistry, CommonRecordsRegisterTheirTable) {
  for (const ClassRow& row : Table()) {
    const refl::CClassInfor& infor = row.classInfor();
    SCOPED_TRACE(row.name);
    EXPECT_EQ(infor.Name(), row.name);
    EXPECT_EQ(infor.Size(), row.size);
    EXPECT_EQ(refl::CClassInfor::Find(row.name), &infor);
    const auto& attributes = infor.Attributes();
    ASSERT_EQ(attributes.size(), row.attributes.size());
    for (std::size_t i = 0; i < attributes.size(); ++i) {
      const refl::CAttribInfor& attribute = attributes[i];
      const AttributeRow& expected = row.attributes[i];
      SCOPED_TRACE(expected.name);
      EXPECT_EQ(attribute.name, expected.name);
      EXPECT_EQ(attribute.number, expected.number);
      EXPECT_EQ(attribute.position, row.positions[i]);
      EXPECT_EQ(attribute.access, refl::Enum::Public);
      EXPECT_EQ(attribute.type.TypeName(), expected.typeName);
      EXPECT_EQ(attribute.type.CustomId(), expected.customId);
      // Only the optional members carry the may-null modifier.
      EXPECT_EQ(attribute.type.IsMayNull(), expected.number >= 0);
    }
  }
}

TEST(ReflectionRegistry, ValueTypesShareOneCustomBasicDescriptionEach) {
  const auto& uni = QAsnUniResID::GetClassInfor().Attributes();
  const auto& err = QAsnErrInfo::GetClassInfor().Attributes();
  const refl::CCustomBasicTypeInfor* octs = uni[0].type.CustomBasic();
  ASSERT_NE(octs, nullptr);
  // Plain and optional octet-string members of every record: one description.
  EXPECT_EQ(uni[1].type.CustomBasic(), octs);
  EXPECT_EQ(uni[3].type.CustomBasic(), octs);
  EXPECT_EQ(err[1].type.CustomBasic(), octs);
  EXPECT_EQ(QAsnNameAndValueString::GetClassInfor().Attributes()[0].type.CustomBasic(), octs);
  EXPECT_EQ(QAsnColumn::GetClassInfor().Attributes()[0].type.CustomBasic(), octs);
  EXPECT_FALSE(uni[0].type.IsMayNull());
  EXPECT_TRUE(uni[3].type.IsMayNull());

  const refl::CCustomBasicTypeInfor* tiny = uni[2].type.CustomBasic();
  ASSERT_NE(tiny, nullptr);
  EXPECT_EQ(err[2].type.CustomBasic(), tiny);

  struct BasicRow {
    const refl::CCustomBasicTypeInfor* basic;
    const char* name;
    unsigned long size;
    unsigned kindCode;
    unsigned customId;
  };
  const BasicRow rows[] = {{octs, "AsnOcts", sizeof(AsnOcts), 45, 4}, {tiny, "AsnTinyInt", sizeof(AsnTinyInt), 14, 40}};
  for (const BasicRow& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.basic->Name(), row.name);
    EXPECT_EQ(row.basic->Size(), row.size);
    EXPECT_EQ(row.basic->Underlying().KindCode(), row.kindCode);
    EXPECT_FALSE(row.basic->Underlying().IsMayNull());
    EXPECT_EQ(row.basic->Underlying().CustomBasic(), nullptr);
    EXPECT_EQ(row.basic->CustomId(), row.customId);
  }

  // Describing a member anew reuses the description made first.
  refl::CGnlTypeInfor again;
  again.CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>();
  EXPECT_EQ(again.CustomBasic(), octs);
  EXPECT_TRUE(again.IsMayNull());
}

TEST(ReflectionRegistry, ObjIdIsACustomTypeOfItsOwn) {
  const refl::CGnlTypeInfor& objID = QAsnErrInfo::GetClassInfor().Attributes()[0].type;
  EXPECT_EQ(objID.CustomBasic(), nullptr);
  EXPECT_EQ(objID.Class(), nullptr);
  EXPECT_EQ(objID.TypeName(), "qcommon::QAsnTinyIntList");
  EXPECT_EQ(objID.TypeSize(), sizeof(QAsnTinyIntList));
  const std::unique_ptr<QAsnTinyIntList> list(static_cast<QAsnTinyIntList*>(objID.Creator()()));
  EXPECT_EQ(list->Count(), 0u);
  EXPECT_STREQ(list->typeName(), "QAsnTinyIntList");
}

// Every create function of the registration makes a default object; every
// destroy function deletes one and ignores null.
TEST(ReflectionRegistry, CreateAndDestroyFunctions) {
  std::vector<const refl::CGnlTypeInfor*> types;
  for (const ClassRow& row : Table()) {
    const refl::CClassInfor& infor = row.classInfor();
    SCOPED_TRACE(row.name);
    infor.Destroyer()(nullptr);
    auto* record = static_cast<AsnSequence*>(infor.Creator()());
    EXPECT_STREQ(record->typeName(), row.name);
    infor.Destroyer()(record);
    for (const auto& attribute : infor.Attributes()) types.push_back(&attribute.type);
  }
  for (const refl::CGnlTypeInfor* type : types) {
    SCOPED_TRACE(type->TypeName());
    type->Destroyer()(nullptr);
    type->Destroyer()(type->Creator()());
  }

  auto* octs = static_cast<AsnOcts*>(types[0]->Creator()());
  EXPECT_EQ(octs->Len(), 0u);
  EXPECT_EQ(octs->data(), nullptr);
  types[0]->Destroyer()(octs);
  auto* tiny = static_cast<AsnTinyInt*>(QAsnUniResID::GetClassInfor().Attributes()[2].type.Creator()());
  EXPECT_EQ(tiny->Value(), 0);
  delete tiny;
}

TEST(ReflectionRegistry, HookBindsTheObjectToItsClass) {
  QAsnErrInfo info;
  refl::CRefrence reference;
  EXPECT_FALSE(reference.IsBound());
  EXPECT_TRUE(info.BindReflection(reference));
  EXPECT_EQ(reference.ClassInfor(), &QAsnErrInfo::GetClassInfor());
  EXPECT_EQ(reference.Object(), &info);
  EXPECT_STREQ(info.typeName(), "QAsnErrInfo");
}

TEST(ReflectionRegistry, FindAnswersRegisteredNamesOnly) {
  QAsnColumn::GetClassInfor();
  EXPECT_EQ(refl::CClassInfor::Find("QAsnColumn"), &QAsnColumn::GetClassInfor());
  EXPECT_EQ(refl::CClassInfor::Find("qcommon::QAsnColumn"), nullptr);
  EXPECT_EQ(refl::CClassInfor::Find("QAsnNoSuchRecord"), nullptr);
  EXPECT_EQ(refl::CClassInfor::Find(""), nullptr);
}

// Registration happens on first use of the hook, once. Returns 0 when it
// does; run in a process in which no record was used yet.
int CheckFirstUseRegistersOnce() {
  const char* const names[] = {"QAsnNameAndValueString", "QAsnUniResID", "QAsnErrInfo", "QAsnColumn"};
  for (const char* name : names) {
    if (refl::CClassInfor::Find(name) != nullptr) return 1;
  }
  QAsnUniResID record;  // constructing a record registers nothing
  if (refl::CClassInfor::Find("QAsnUniResID") != nullptr) return 2;
  refl::CRefrence first;
  record.BindReflection(first);
  const refl::CClassInfor* registered = refl::CClassInfor::Find("QAsnUniResID");
  if (registered == nullptr || first.ClassInfor() != registered) return 3;
  if (refl::CClassInfor::Find("QAsnErrInfo") != nullptr) return 4;
  const std::size_t count = refl::CClassInfor::Registered().size();
  for (int i = 0; i < 3; ++i) {
    refl::CRefrence again;
    QAsnUniResID().BindReflection(again);
    if (again.ClassInfor() != registered) return 5;
  }
  if (refl::CClassInfor::Registered().size() != count || registered->Attributes().size() != 4) return 6;
  return 0;
}

// The death-test machinery runs the statement in this binary started afresh
// ("threadsafe" style), where no record has been used yet.
TEST(ReflectionRegistryDeathTest, FirstHookCallRegistersExactlyOnce) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(std::exit(CheckFirstUseRegistersOnce()), ::testing::ExitedWithCode(0), "");
}

}  // namespace
