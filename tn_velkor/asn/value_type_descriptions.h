// Reflection descriptions of the runtime's value classes used in records:
// AsnOcts, AsnTinyInt, AsnInt and AsnBool, plain and optional. Each value
// class has one custom basic description, made on first need and shared by
// every member of that type; an optional member adds the may-null modifier.
// Records and lists as members are described by AsnMemberLines; a value
// with its own codec (AsnPrimitive) by AsnDescribePrimitive.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/refl/may_null_pointer.h"
#include "tn_platform/refl/object_functions.h"
#include "tn_platform/refl/type_infor.h"

template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnOcts>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnTinyInt>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnTinyInt>>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnInt>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnInt>>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnBool>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnBool>>();

// A member of a class `Value` with its own codec: a custom type of its class
// name and size, identified as kAsnPrimitiveClassId; optional: may be null.
template <class Value>
void AsnDescribePrimitive(refl::CGnlTypeInfor& type, bool optional) {
  type.ChangeTypeTo_CustomType(Value::kTypeName, sizeof(Value), &refl::CreateObject<Value>, &refl::DestroyObject<Value>,
                               kAsnPrimitiveClassId);
  type.SetMayNull(optional);
}

#pragma GCC visibility pop
