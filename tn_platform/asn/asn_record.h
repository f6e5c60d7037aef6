// AsnRecord<Record>: the parts every record class has in common, written once.
// A record derives from AsnRecord<itself> and provides, beside its members:
//   static constexpr char kClassName[]   its registered class name;
//   static void RegisterAttributes(refl::CClassInfor&, refl::Enum::AccessSpecifierEnum)
//                                         its members, in declaration order;
//   its special members, which apply AsnSequence's generic Constructor,
//   CopyConstructor, Destructor and Assign once its own members exist.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/refl/object_functions.h"

template <class Record>
class AsnRecord : public AsnSequence {
 public:
  AsnType* Clone() const override { return new Record(static_cast<const Record&>(*this)); }

  // The reflection hook: binds `reference` to this record as an instance of
  // its class, registering the class on first use.
  bool BindReflection(refl::CRefrence& reference) const override {
    return refl::helper::ChangeTypeTo_ClassType(reference, GetClassInfor(), static_cast<const Record*>(this));
  }

  // The class description, registered on first use under Record::kClassName.
  static const refl::CClassInfor& GetClassInfor() {
    return *refl::CClassInfor::GetClassInforImpl<Record>(Record::kClassName, &refl::CreateObject<Record>,
                                                         &refl::DestroyObject<Record>, &Record::RegisterAttributes);
  }

 protected:
  AsnRecord() = default;
  AsnRecord(const AsnRecord&) = default;
  AsnRecord& operator=(const AsnRecord&) = default;
};
#pragma GCC visibility pop
