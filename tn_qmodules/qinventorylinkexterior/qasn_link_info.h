// qinventorylinkexterior::QAsnLinkInfo: an external link between two network
// elements.
//
//   QAsnLinkInfo ::= SEQUENCE {
//     linkResID QAsnUniResID,
//     strText1 OCTET STRING, strText2 OCTET STRING,
//     strText3 OCTET STRING, strText4 OCTET STRING,
//     tinyValue1 INTEGER, tinyValue2 INTEGER,
//     srcResID QAsnUniResID, dstResID QAsnUniResID,
//     tinyValue3 INTEGER, tinyValue4 INTEGER,
//     spareValue OCTET STRING,
//     attrList [0] IMPLICIT QAsnNVSList OPTIONAL,
//     intValue1 INTEGER, intValue2 INTEGER, intValue3 INTEGER,
//     strText5 OCTET STRING, strText6 OCTET STRING, strText7 OCTET STRING,
//     tinyValue5 INTEGER,
//     optTinyValue [1] IMPLICIT INTEGER OPTIONAL }
//
// spareValue is an opaque octet string reserved for the sender; the link
// converters do not read it.
#pragma once
#pragma GCC visibility push(default)

#include "tn_velkor/qcommon/qasn_uni_res_id.h"
#include "tn_velkor/qcommon/qcommon_lists.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_velkor/asn/asn_record.h"
#include "tn_platform/refl/may_null_pointer.h"

namespace qinventorylinkexterior {

class QAsnLinkInfo : public AsnRecord<QAsnLinkInfo> {
 public:
  static constexpr char kClassName[] = "QAsnLinkInfo";

  qcommon::QAsnUniResID linkResID;
  AsnOcts strText1;
  AsnOcts strText2;
  AsnOcts strText3;
  AsnOcts strText4;
  AsnTinyInt tinyValue1;
  AsnTinyInt tinyValue2;
  qcommon::QAsnUniResID srcResID;
  qcommon::QAsnUniResID dstResID;
  AsnTinyInt tinyValue3;
  AsnTinyInt tinyValue4;
  AsnOcts spareValue;
  refl::MayNullPointer<qcommon::QAsnNVSList> attrList;
  AsnInt intValue1;
  AsnInt intValue2;
  AsnInt intValue3;
  AsnOcts strText5;
  AsnOcts strText6;
  AsnOcts strText7;
  AsnTinyInt tinyValue5;
  refl::MayNullPointer<AsnTinyInt> optTinyValue;

  QAsnLinkInfo() { Constructor(*this); }
  QAsnLinkInfo(const QAsnLinkInfo& other) : AsnRecord() { CopyConstructor(*this, other); }
  ~QAsnLinkInfo() override { Destructor(*this); }
  QAsnLinkInfo& operator=(const QAsnLinkInfo& other) {
    Assign(*this, other);
    return *this;
  }

 private:
  friend class AsnRecord<QAsnLinkInfo>;
  static void DescribeMembers(AsnMemberLines<QAsnLinkInfo>& lines);
};

}  // namespace qinventorylinkexterior
#pragma GCC visibility pop
