// Reflection descriptions of the member types that the records of the other
// interface modules use beyond the common ones (asn/value_type_descriptions.h):
// AsnInt and AsnBool, optional integers, and records or lists as members.
#pragma once

#include "asn/value_type_descriptions.h"
#include "platform/asn/asn_bool.h"
#include "platform/asn/asn_sequence.h"
#include "platform/refl/object_functions.h"

template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnInt>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnInt>>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnBool>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnTinyInt>>();

namespace qmodules {

// Describes a member of record type Record (optional when `optional`).
template <class Record>
void DescribeRecordMember(refl::CGnlTypeInfor& type, bool optional) {
  type.ChangeTypeTo_ClassType(Record::GetClassInfor());
  type.SetMayNull(optional);
}

// Describes a member of SEQUENCE OF list type List, named `qualifiedName`.
template <class List>
void DescribeListMember(refl::CGnlTypeInfor& type, const char* qualifiedName, bool optional) {
  type.ChangeTypeTo_CustomType(qualifiedName, sizeof(List), &refl::CreateObject<List>, &refl::DestroyObject<List>,
                               kAsnSeqOfClassId);
  type.SetMayNull(optional);
}

}  // namespace qmodules
