// Error-information lists and returns into return-code maps; single returns.
#include "tn_velkor/ns_velkor.h"
#include "tn_velkor/convert/record_values.h"
#include "tn_velkor/frame/trace.h"

namespace ns_velkor {
namespace return_codes_detail {

// Record codes are signed; the maps hold them widened with sign.
inline unsigned long WidenCode(int code) { return static_cast<unsigned long>(static_cast<long>(code)); }

constexpr int kFirstSyntheticKey = 1000000;

}  // namespace return_codes_detail

void Convert2AsnSingleReturn(unsigned long code, AsnSingleReturn* record) {
  if (record == nullptr) return;
  // The record carries the code as a signed 32-bit number: its low 32 bits.
  const int narrowed = static_cast<int>(static_cast<unsigned int>(code));
  if (record->retCode.IsNull()) {
    record->retCode.Adopt(new AsnInt(narrowed));
  } else {
    *record->retCode = narrowed;
  }
  // Success is judged on the whole code: 2^32 narrows to 0 but is a failure.
  record->success = (code == 0);
}

unsigned long Convert2MapIDKey2RetCodeByQAsnErrInfoList(const qcommon::QAsnErrInfoList& list,
                                                        std::map<unsigned long, TERetInfo>& map) {
  using return_codes_detail::WidenCode;
  unsigned long result = 0;
  int nextSyntheticKey = return_codes_detail::kFirstSyntheticKey;
  for (list.MoveFirst(); const qcommon::QAsnErrInfo* element = list.Current(); list.MoveNext()) {
    const unsigned long code = WidenCode(element->errCode.Value());
    if (result == 0) result = code;

    // An object without identifier, or one whose identifier is taken, must
    // still be reported: it goes under a synthetic key.
    const AsnTinyInt* id = element->objID.Count() != 0 ? element->objID.First() : nullptr;
    unsigned long key = 0;
    if (id != nullptr && map.find(WidenCode(id->Value())) == map.end()) {
      key = WidenCode(id->Value());
    } else {
      key = WidenCode(nextSyntheticKey++);
    }

    TERetInfo& info = map[key];
    info.ulRetCode = code;
    info.strObjName = OptionalText(element->objName);
  }
  return result;
}

unsigned long Convert2MapIDKey2RetCodeByQAsnErrInfoReturn(const qcommon::QAsnErrInfoReturn& record,
                                                          std::map<unsigned long, TERetInfo>& map) {
  const int code = record.retCode.Value();
  if (code == 0) return 0;
  TN_VELKOR_TRACE("INFO").PrintfTrace(3, "QAsnErrInfoReturn failed %d, error snapshot:", code);
  TN_VELKOR_TRACE("ASN").TraceAsn(record);
  if (!record.errInfoList.IsNull()) Convert2MapIDKey2RetCodeByQAsnErrInfoList(*record.errInfoList, map);
  return return_codes_detail::WidenCode(code);
}

unsigned long Convert2MapIDKey2RetCodeByQAsnErrInfoReturn2(const qcommon::QAsnErrInfoReturn& record,
                                                           std::map<unsigned long, TERetInfo>& map) {
  const unsigned long code = Convert2MapIDKey2RetCodeByQAsnErrInfoReturn(record, map);
  if (code != 0 && record.errInfoList.IsNull()) {
    // The caller filled the map with the operation's objects; a failure
    // without details applies to each of them.
    for (auto& entry : map) entry.second = TERetInfo{std::string(), code};
  }
  return code;
}

unsigned long IgnoreMapRetCodeErrorCode(unsigned long iRetCode, std::map<unsigned long, TERetInfo>& map,
                                        unsigned long iRetCode1, unsigned long iRetCode2, unsigned long iRetCode3) {
  const auto ignorable = [&](unsigned long code) {
    return code == iRetCode1 || code == iRetCode2 || code == iRetCode3;
  };
  bool removed = false;
  for (auto entry = map.begin(); entry != map.end();) {
    const unsigned long code = entry->second.ulRetCode;
    if (code == 0 || ignorable(code)) {
      TN_VELKOR_TRACE("INFO").PrintfTrace(1, "IgnoreMapRetCodeErrorCode iRetCode1 %d, iRetCode2 %d, iRetCode3 %d",
                                          static_cast<int>(iRetCode1), static_cast<int>(iRetCode2),
                                          static_cast<int>(iRetCode3));
      entry = map.erase(entry);
      removed = true;
    } else {
      ++entry;
    }
  }
  if (ignorable(iRetCode)) return 0;
  // Every listed failure was tolerable: the operation as a whole succeeded.
  if (removed && map.empty()) return 0;
  return iRetCode;
}

}  // namespace ns_velkor
