// The workloads with the C code asn1c generates from qcommon.asn: DER
// encoding into a caller's buffer, BER decoding into a fresh structure,
// ASN_STRUCT_FREE to free it.
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "QAsnErrInfoList.h"
#include "QAsnNVSList.h"
#include "QAsnUniResID.h"
#include "bench/side_by_side/workloads.h"

namespace side_by_side {
namespace {

template <class T>
T* Zeroed() {
  return static_cast<T*>(std::calloc(1, sizeof(T)));
}

QAsnNVSList_t* BuildNvsList() {
  const WorkloadTexts& texts = Texts();
  auto* list = Zeroed<QAsnNVSList_t>();
  for (int i = 0; i < kListElements; ++i) {
    auto* element = Zeroed<QAsnNameAndValueString_t>();
    OCTET_STRING_fromBuf(&element->name, texts.names[i].data(), static_cast<int>(texts.names[i].size()));
    OCTET_STRING_fromBuf(&element->value, texts.values[i].data(), static_cast<int>(texts.values[i].size()));
    ASN_SEQUENCE_ADD(&list->list, element);
  }
  return list;
}

QAsnErrInfoList_t* BuildErrInfoList() {
  const WorkloadTexts& texts = Texts();
  auto* list = Zeroed<QAsnErrInfoList_t>();
  for (int i = 0; i < kListElements; ++i) {
    auto* element = Zeroed<QAsnErrInfo_t>();
    auto* id = static_cast<long*>(std::malloc(sizeof(long)));
    *id = i;
    ASN_SEQUENCE_ADD(&element->objID.list, id);
    if (i % 2 == 0) {
      element->objName = OCTET_STRING_new_fromBuf(&asn_DEF_OCTET_STRING, texts.objNames[i].data(),
                                                   static_cast<int>(texts.objNames[i].size()));
    }
    element->errCode = i % 7;
    ASN_SEQUENCE_ADD(&list->list, element);
  }
  return list;
}

QAsnUniResID_t* BuildUniResId() {
  auto* record = Zeroed<QAsnUniResID_t>();
  OCTET_STRING_fromBuf(&record->strFDN, "NE=1", -1);
  OCTET_STRING_fromBuf(&record->strMOC, "NE", -1);
  record->neID = 7;
  record->poSerialNum = OCTET_STRING_new_fromBuf(&asn_DEF_OCTET_STRING, "SN1", -1);
  return record;
}

class Asn1cWorkloads : public Workloads {
 public:
  explicit Asn1cWorkloads(const ReferenceEncodings& input)
      : input_(input), nvs_(BuildNvsList()), errInfo_(BuildErrInfoList()), uniResId_(BuildUniResId()) {}
  ~Asn1cWorkloads() override {
    ASN_STRUCT_FREE(asn_DEF_QAsnNVSList, nvs_);
    ASN_STRUCT_FREE(asn_DEF_QAsnErrInfoList, errInfo_);
    ASN_STRUCT_FREE(asn_DEF_QAsnUniResID, uniResId_);
  }

  void EncodeNvs() override { Encode(asn_DEF_QAsnNVSList, nvs_, nvsBytes_); }
  void EncodeErrInfo() override { Encode(asn_DEF_QAsnErrInfoList, errInfo_, errInfoBytes_); }
  void EncodeUniResId() override { Encode(asn_DEF_QAsnUniResID, uniResId_, uniResIdBytes_); }

  void DecodeNvs() override { DecodeAndFree(asn_DEF_QAsnNVSList, input_.nvs.data(), input_.nvs.size()); }
  void DecodeErrInfo() override { DecodeAndFree(asn_DEF_QAsnErrInfoList, input_.errInfo.data(), input_.errInfo.size()); }
  void DecodeUniResId() override {
    DecodeAndFree(asn_DEF_QAsnUniResID, input_.uniResId.data(), input_.uniResId.size());
  }

  void BuildNvs() override { ASN_STRUCT_FREE(asn_DEF_QAsnNVSList, BuildNvsList()); }
  void BuildErrInfo() override { ASN_STRUCT_FREE(asn_DEF_QAsnErrInfoList, BuildErrInfoList()); }

  void RoundTripUniResId() override {
    Encode(asn_DEF_QAsnUniResID, uniResId_, uniResIdBytes_);
    DecodeAndFree(asn_DEF_QAsnUniResID, uniResIdBytes_.buffer.data(), uniResIdBytes_.used);
  }

  std::string EncodedNvs() override { return Bytes(nvsBytes_); }
  std::string EncodedErrInfo() override { return Bytes(errInfoBytes_); }
  std::string EncodedUniResId() override { return Bytes(uniResIdBytes_); }

 private:
  // A caller's buffer, sized once, kept across passes.
  struct Output {
    std::vector<char> buffer = std::vector<char>(1 << 20);
    std::size_t used = 0;
  };

  static void Encode(asn_TYPE_descriptor_t& type, void* value, Output& out) {
    const asn_enc_rval_t result = der_encode_to_buffer(&type, value, out.buffer.data(), out.buffer.size());
    if (result.encoded < 0) throw std::runtime_error("asn1c: encoding failed");
    out.used = static_cast<std::size_t>(result.encoded);
  }

  static void DecodeAndFree(asn_TYPE_descriptor_t& type, const char* data, std::size_t size) {
    void* value = nullptr;
    const asn_dec_rval_t result = ber_decode(nullptr, &type, &value, data, size);
    ASN_STRUCT_FREE(type, value);
    if (result.code != RC_OK || result.consumed != size) throw std::runtime_error("asn1c: decoding failed");
  }

  static std::string Bytes(const Output& out) { return std::string(out.buffer.data(), out.used); }

  const ReferenceEncodings& input_;
  QAsnNVSList_t* nvs_;
  QAsnErrInfoList_t* errInfo_;
  QAsnUniResID_t* uniResId_;
  Output nvsBytes_, errInfoBytes_, uniResIdBytes_;
};

}  // namespace

std::unique_ptr<Workloads> MakeAsn1cWorkloads(const ReferenceEncodings& input) {
  return std::make_unique<Asn1cWorkloads>(input);
}

}  // namespace side_by_side
