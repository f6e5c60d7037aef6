// AsnOtherToSvrFaultRptStrc: a fault report that another system sends to the
// server (module qreturn, see qreturn.asn).
//
//   AsnOtherToSvrFaultRptStrc ::= SEQUENCE {
//     neID INTEGER,
//     alarmGroupID INTEGER,
//     alarmCode INTEGER,
//     strAlarmText OCTET STRING,
//     faultID INTEGER,
//     occurTime INTEGER,
//     strLocation [0] IMPLICIT OCTET STRING OPTIONAL }
//
// The conversions read only alarmGroupID and faultID (both mandatory, the
// group first), which together identify a new alarm. The other members are a
// plausible outline of the report, kept so that the record encodes like a
// real one: neID, alarmCode, strAlarmText, occurTime and strLocation.
#pragma once
#pragma GCC visibility push(default)

#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_velkor/asn/asn_record.h"
#include "tn_platform/refl/may_null_pointer.h"

class AsnOtherToSvrFaultRptStrc : public AsnRecord<AsnOtherToSvrFaultRptStrc> {
 public:
  static constexpr char kClassName[] = "AsnOtherToSvrFaultRptStrc";

  AsnInt neID;          // the reporting network element
  AsnInt alarmGroupID;  // the group of the alarm
  AsnInt alarmCode;     // what kind of fault
  AsnOcts strAlarmText;
  AsnInt faultID;    // the fault, unique within its group
  AsnInt occurTime;  // seconds since 1970
  refl::MayNullPointer<AsnOcts> strLocation;

  AsnOtherToSvrFaultRptStrc() { Constructor(*this); }
  AsnOtherToSvrFaultRptStrc(const AsnOtherToSvrFaultRptStrc& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~AsnOtherToSvrFaultRptStrc() override { Destructor(*this); }
  AsnOtherToSvrFaultRptStrc& operator=(const AsnOtherToSvrFaultRptStrc& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<AsnOtherToSvrFaultRptStrc>;
  static void DescribeMembers(AsnMemberLines<AsnOtherToSvrFaultRptStrc>& lines);
};
#pragma GCC visibility pop
