// tn_velkor: conversions between Q-interface records and the server's model
// objects. Everything a caller needs: the conversion functions of namespace
// ns_velkor and, through the includes, every record and model type they take,
// whole-value encoding and decoding (AsnEncodeValue, AsnDecodeValue), the
// type catalogue (AsnCatalogue) and the version (TN_VELKOR_VERSION).
//
// Conventions of every function here:
// - It runs on the caller's thread, reads its source, writes its target and
//   keeps no reference to either. It takes no lock.
// - It adds to the caller's maps and lists and never clears them first.
// - It reports nothing but its result: bad or missing input gives neutral
//   values (empty text, 0, -1 for none), as each function says.
// - Walking a record list moves that list's cursor, even through a const
//   reference: two threads must not convert the same list (or records that
//   share one) at the same time.
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>
#include <list>
#include <map>
#include <string>

// Whole-value encoding and decoding, the type catalogue and the exception.
#include "tn_qmodules/asn_catalogue.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/csm_exception.h"
// The model objects.
#include "tn_platform/model/fiber_cable.h"
#include "tn_platform/model/link_mgr_model.h"
#include "tn_platform/model/link_port_index.h"
#include "tn_platform/model/tncp_port_index.h"
// The records of qcommon and of the other interface modules.
#include "tn_qmodules/qinventoryfiber/qinventoryfiber.h"
#include "tn_qmodules/qinventorylinkexterior/qinventorylinkexterior.h"
#include "tn_qmodules/qinventoryport/qinventoryport.h"
#include "tn_qmodules/qreturn/qreturn.h"
#include "tn_velkor/qcommon/qcommon.h"
#include "tn_velkor/version.h"

namespace ns_velkor {

// ---- name/value lists --------------------------------------------------------

// Adds every element of `list` to `map`, name -> value, in list order: a
// later duplicate name overwrites an earlier one and the caller's entry.
// Names and values are the texts of the octet strings (up to a zero byte).
void Convert2MapKeyValue(const qcommon::QAsnNVSList& list, std::map<std::string, std::string>& map);

// ---- return codes ------------------------------------------------------------
//
// A return code is an unsigned long, 0 for success. Codes read from records
// are signed 32-bit values widened with sign: a negative record code becomes a
// very large unsigned value. A return-code map files each object's name and
// code under its identifier, or under a synthetic key counted from 1000000
// when the object has no identifier or its identifier is already taken.

// The value of a return-code map.
struct TERetInfo {
  std::string strObjName;  // the object's name, or empty
  unsigned long ulRetCode = 0;

  // The fields in declaration order, for code that walks them (JSON): calls
  // visit(name, member pointer) for each.
  template <class Visitor>
  static void DescribeFields(Visitor&& visit) {
    visit("strObjName", &TERetInfo::strObjName);
    visit("ulRetCode", &TERetInfo::ulRetCode);
  }
};

// Writes `code` into `record` (nothing when it is null): retCode becomes the
// low 32 bits of the code as a signed number (created when absent), success
// becomes true exactly when the whole code is 0.
void Convert2AsnSingleReturn(unsigned long code, AsnSingleReturn* record);

// Files every element of `list` in `map`, in list order, and returns the first
// non-zero errCode (0 if there is none). The key is the first element of
// objID; when objID is empty or the map already has that key (from this call
// or before it), the key is the next synthetic one: 1000000, 1000001, ...
// counted afresh by each call and used even where the map already holds it
// (that entry is overwritten). The entry gets the element's errCode and the
// text of objName (empty when absent). Moves the list's cursor.
unsigned long Convert2MapIDKey2RetCodeByQAsnErrInfoList(const qcommon::QAsnErrInfoList& list,
                                                        std::map<unsigned long, TERetInfo>& map);

// Returns the record's retCode. When it is not 0: traces the code ("INFO",
// level 3) and the whole record ("ASN"), and files errInfoList in `map` as the
// list conversion above does; without errInfoList the map stays as it was.
// A code of 0 leaves the map alone and traces nothing.
unsigned long Convert2MapIDKey2RetCodeByQAsnErrInfoReturn(const qcommon::QAsnErrInfoReturn& record,
                                                          std::map<unsigned long, TERetInfo>& map);

// As Convert2MapIDKey2RetCodeByQAsnErrInfoReturn, except that a failed record
// without errInfoList sets every entry already in `map` to an empty name and
// the record's code: a failure without details marks every object.
unsigned long Convert2MapIDKey2RetCodeByQAsnErrInfoReturn2(const qcommon::QAsnErrInfoReturn& record,
                                                           std::map<unsigned long, TERetInfo>& map);

// Removes from `map` every entry whose code is 0, iRetCode1, iRetCode2 or
// iRetCode3 (tracing a notice, "INFO" level 1, before each removal) and
// returns the overall code: 0 when iRetCode is one of the three ignorable
// codes, or when removals left the map empty; iRetCode otherwise. A map that
// was empty to begin with does not clear the result.
unsigned long IgnoreMapRetCodeErrorCode(unsigned long iRetCode, std::map<unsigned long, TERetInfo>& map,
                                        unsigned long iRetCode1, unsigned long iRetCode2, unsigned long iRetCode3);

// ---- alarm identifiers ---------------------------------------------------------
//
// A new alarm's identifier is "<faultID>-<alarmGroupID>", both signed 32-bit
// decimal numbers with their own minus sign: 12-34, 12--7, -5-7. In an alarm
// key map the two numbers sit under "sFaultID" and "lAlarmGroupID".

// The identifier of the numbers under "sFaultID" and "lAlarmGroupID" (0 for a
// missing key); other keys are ignored and the map is not changed.
std::string GetCombineStrByMapKeyValueAsNewAlarmID(const std::map<std::string, int>& map);

// The identifier of the record's faultID and alarmGroupID (each read as an
// int), or the empty text when `record` is null.
std::string GetCombineStrByAsnOtherFaultRptAtrcAsNewAlarmID(const AsnOtherToSvrFaultRptStrc* record);

// Splits an identifier into "sFaultID" and "lAlarmGroupID" of `map` (both are
// created with 0 when missing; other keys stay). Reads with the standard
// stream rules: a number (leading blanks skipped, sign allowed, the rest of a
// token ignored), everything up to and including the next "-", a number. A
// number that is not there leaves its entry unchanged; a field that starts
// with no digit stores 0; a number out of range stores the nearest limit and
// ends the reading:  "12-x" -> 12, 0;  "x-34" -> 0, unchanged;  "12" -> 12,
// unchanged;  "12--34" -> 12, -34.
void GetMapKeyValueByNewAlarmID(const std::string& text, std::map<std::string, int>& map);

// ---- ports -------------------------------------------------------------------

// True when `portNo` is a virtual port number: its high 16 bits (the class,
// read unsigned) are 16 and its low 16 bits 40001 to 40959, or the class is 1
// and the number 51 to 255. Every negative `portNo` is not virtual.
bool isVirtualPort(int portNo);

// Fills `record` from `index`: each level becomes the low 32 bits of the
// model level; a sub-level of -1 makes its component absent (a held object is
// destroyed), any other value present (a held object is reused); the text is
// always present, up to its first NUL (an empty text gives an empty octet
// string).
void Convert2QAsnPortIndex(const ns_utilmib::TNCPPortIndex& index, qcommon::QAsnPortIndex& record);

// Overwrites every field of `index` from `record`: levels are the record's
// signed 32-bit values widened with sign (-1 gives 2^64-1); an absent
// sub-level gives -1; an absent or empty text gives "", else the octets up to
// the first zero byte.
void Convert2CPPortIndex(const qcommon::QAsnPortIndex& record, ns_utilmib::TNCPPortIndex& index);

// Sets map[port index] = use state for every element of `list` whose state
// (low 16 bits) is selected by `stateMask`: bit n selects state n for n = 0 to
// 4; states of 5 and above are never selected. Among equal indexes the last
// element wins; entries already in the map stay unless overwritten. Moves the
// list's cursor.
void Convert2MapCpPortIndex2State(const qinventoryport::QAsnPortUseStateList& list,
                                  std::map<ns_utilmib::TNCPPortIndex, unsigned short>& map, unsigned short stateMask);

// Fills `idx` from the identifier text in `res.strFDN` ("NE=1,SH=1,SL=3,PP=2")
// and returns true when it did. False, `idx` untouched: strFDN has no content
// or its text does not parse. Otherwise strPortFDN becomes the text ("--"
// when it is empty: false). Then, by the text's MOC m (its last key):
// - acceptNode and m == moc: a node end; nodeID from key "ONE" when m is
//   "ONE", else from key "NE"; strPortMOC = moc; true.
// - m contains "SDH": false.
// - "PP", "LP", "SERIAL", "SUBIF": FromPPUni, FromLMPUni, FromSerialPUni,
//   FromSubIfUni of `idx`; true.
// - anything else: false.
// Comparisons are exact and case-sensitive. Fields set before a false stay.
bool Convert2LinkPortIndexByQAsnUniRes(const qcommon::QAsnUniResID& res, ns_utilmib::CLinkPortIndex& idx,
                                       const std::string& moc, bool acceptNode);

// The R1 link port id of `idx`: portID unchanged (all 64 bits) when subGroupNo
// is 0 or -1; else subGroupNo's low 16 bits in bits 16-31 over portID's low 16
// bits, and, when groupNo is not -1, groupNo's low 8 bits in bits 24-31.
//   s 3, g -1, p 0x12345 -> 0x32345;  s 3, g 2, p 0x12345 -> 0x2032345
std::uint64_t GetR1LinkPortId(const ns_utilmib::CLinkPortIndex& idx);

// ---- links -------------------------------------------------------------------

// Fills the record's fields of `model` from `record`; the model's other fields
// keep their values.
// - Texts, tinyValue3/5 and optTinyValue (0 when absent) are copied;
//   tinyValue1/2/4 keep the low 16 bits; intValue1 the low 32 bits, intValue2/3
//   the low 32 bits as a double; tinyValue5Mirror = tinyValue5; strLinkFDN is
//   linkResID's strFDN.
// - Attributes from attrList (exact keys, the last of a repeated name
//   counting): "BuildTime_t" (the current time when missing; 0 when not a
//   number), the texts "srcNeName", "dstNeName", "srcPortName", "dstPortName",
//   "srcCpName", "dstCpName", "srcSubCardName", "dstSubCardName",
//   "srcPortIpAddr", "dstPortIpAddr", "srcPortAlias", "dstPortAlias", and the
//   numbers "srcPortInfoType", "dstPortInfoType", "P2MPLable" (unsigned 16-bit:
//   out of range gives 0) and "MidNe". Any other missing key leaves its field.
// - Each end (srcResID, dstResID) becomes a fresh CLinkPortIndex filled by
//   Convert2LinkPortIndexByQAsnUniRes (node class from strMOC: "ONE", "NE",
//   else "FR"), whatever its result; then strPortMOC = the MOC of strPortFDN
//   ("" when it does not parse), nodeID = neID when nodeID is 0 and neID is a
//   valid NE identifier, oneID from "a_oneID" / "z_oneID", and portID =
//   GetR1LinkPortId.
// Moves the cursor of the record's attrList.
void Convert2LinkMgrModel(const qinventorylinkexterior::QAsnLinkInfo& record, ns_utilmib::CLinkMgrModel& model);

// Appends to `models` one model per record of `list`, in list order, each
// converted by Convert2LinkMgrModel from an Init() model (so a missing key
// gives the Init() value). Models already in `models` stay in front. Moves the
// list's cursor.
void Convert2LinkMgrModelList(const qinventorylinkexterior::QAsnLinkInfoList& list,
                              std::list<ns_utilmib::CLinkMgrModel>& models);

// ---- fiber cables -----------------------------------------------------------

// Fills `record` from `cable` field by field, without clearing it first.
// - Every mapped component is overwritten; every optional one is made present,
//   an empty text and -1 included, reusing an object the record holds.
// - fiberText1 and fiberText5 both get cable.fiberText5. The ends' sub-levels
//   stay present when -1. Texts reach the record up to their first NUL.
// - doubleValue and floatValue travel as six-decimal text ("1.000000").
// - attrList (created empty when absent) gets five entries appended after the
//   ones it holds, in this order: "Memo" (memo), "Reserve" ("1" when reserve
//   is not 0, else "0"), "MaintenanceState", "BuildTime_t" (plain seconds) and
//   "DelayTime" (decimal texts). Filling a record twice gives each key twice.
// - aEndResID and zEndResID (created default when absent) get strFDN from
//   srcPortFDN and dstPortFDN; their other components stay as they were.
// fiberText9 and fiberValue7 are not touched. Throws only when allocation
// fails; the components set until then stay.
void Convert2QAsnFiberInfo(const ns_utilmib::TEFiberCable& cable, qinventoryfiber::QAsnFiberInfo& record);

// Fills `cable` from `record`; the fields not listed keep their values.
// - Ends: levels are the record's signed 32-bit values widened with sign
//   (-1 gives 2^64-1); an absent sub-level gives -1, an absent text "".
// - hybridMaxCapacity: -1 when absent. fiberValue5/6/7: 0 when absent.
//   fiberValue2 and fiberValue3 (and 5, 6) keep the low 16 or 8 bits.
// - doubleValue/floatValue: the number at the start of the text (0 when there
//   is none); absent components read as "1.0" and "-0.1".
// - Texts fiberText2..fiberText9 from the components of the same name;
//   fiberText1 is not read.
// - memo and reserve (low 16 bits of the number, not reduced to 0/1) from the
//   entries "Memo" and "Reserve", the last of a repeated name counting.
//   "MaintenanceState", "BuildTime_t", "DelayTime" and the resource
//   identifiers are not read: maintenanceState, buildTime, delayTime,
//   srcPortFDN and dstPortFDN keep their values.
// - resetValue1 and resetValue2 are set to 0.
// Then the cable repairs itself (FixInvalidFiberParam); when it changed
// anything, one INFO line "[Convert2FiberCable]FixInvalidFiberParam" is traced
// at level 1. Moves the cursor of the record's attrList. Throws only when
// allocation fails: the fields set until then stay, and no repair is made.
void Convert2FiberCable(const qinventoryfiber::QAsnFiberInfo& record, ns_utilmib::TEFiberCable& cable);

// Makes present, with an empty strCondition, each column of `record` whose bit
// is set in `templateType` (column n: bit n-1, for bits 0 to 11). Columns that
// are present stay as they are, content included; nothing is made absent.
// Bits 12 to 63 are ignored. Throws only when allocation fails.
void Convert2QAsnFiberInfoTemplate(const std::uint64_t& templateType, qinventoryfiber::QAsnFiberInfoTemplate& record);

// Sets `templateType` to the mask of the columns present in `record` (column n:
// bit n-1); their content plays no part.
void Convert2FiberInfoTemplateType(const qinventoryfiber::QAsnFiberInfoTemplate& record, std::uint64_t& templateType);

}  // namespace ns_velkor
#pragma GCC visibility pop
