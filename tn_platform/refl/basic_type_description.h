// The custom basic description of a value class, made once on first need and
// stored in `holder`.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/refl/object_functions.h"
#include "tn_platform/refl/type_infor.h"

namespace refl {

// Each instantiation (one per value class) makes its description exactly
// once, even when several threads need it first at the same time.
template <class Value>
const CCustomBasicTypeInfor& BasicTypeDescription(CCustomBasicTypeInfor*& holder, const char* name, unsigned kindCode,
                                                  unsigned customId) {
  static const bool s_made = [&] {
    const CGnlTypeInfor underlying(kindCode);
    CCustomBasicTypeInfor::InitCustomAnyBasicTypeInfor(holder, name, sizeof(Value), &CreateObject<Value>,
                                                       &DestroyObject<Value>, underlying, customId);
    return true;
  }();
  static_cast<void>(s_made);
  return *holder;
}

}  // namespace refl
#pragma GCC visibility pop
