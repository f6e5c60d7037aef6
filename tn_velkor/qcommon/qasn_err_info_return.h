// qcommon::QAsnErrInfoReturn: the outcome of an operation on several objects,
// an overall code and, optionally, one error entry per object.
//
//   QAsnErrInfoReturn ::= SEQUENCE {
//     retCode INTEGER,
//     errInfoList [0] IMPLICIT QAsnErrInfoList OPTIONAL }
#pragma once
#pragma GCC visibility push(default)

#include "tn_velkor/qcommon/qcommon_lists.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_velkor/asn/asn_record.h"
#include "tn_platform/refl/may_null_pointer.h"

namespace qcommon {

class QAsnErrInfoReturn : public AsnRecord<QAsnErrInfoReturn> {
 public:
  static constexpr char kClassName[] = "QAsnErrInfoReturn";

  AsnTinyInt retCode;  // the overall code, 0 for success
  refl::MayNullPointer<QAsnErrInfoList> errInfoList;

  QAsnErrInfoReturn() { Constructor(*this); }
  QAsnErrInfoReturn(const QAsnErrInfoReturn& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~QAsnErrInfoReturn() override { Destructor(*this); }
  QAsnErrInfoReturn& operator=(const QAsnErrInfoReturn& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<QAsnErrInfoReturn>;
  static void DescribeMembers(AsnMemberLines<QAsnErrInfoReturn>& lines);
};

}  // namespace qcommon
#pragma GCC visibility pop
