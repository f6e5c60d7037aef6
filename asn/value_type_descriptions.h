// Reflection descriptions of the runtime's value classes used in records:
// AsnOcts (plain and optional) and AsnTinyInt. Each value class has one
// custom basic description, made on first need and shared by every member of
// that type; an optional member adds the may-null modifier.
#pragma once

#include "platform/asn/asn_int.h"
#include "platform/asn/asn_octs.h"
#include "platform/refl/may_null_pointer.h"
#include "platform/refl/type_infor.h"

template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnOcts>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<refl::MayNullPointer<AsnOcts>>();
template <>
void refl::CGnlTypeInfor::CaptureTypeInfor<AsnTinyInt>();
