// The workloads with our codec: the records of qcommon, AsnBuf and the
// whole-value entry points.
#include <string>

#include "bench/side_by_side/workloads.h"
#include "tn_platform/asn/asn_buf.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_velkor/qcommon/qcommon.h"

namespace side_by_side {
namespace {

void FillNvs(qcommon::QAsnNVSList& list) {
  const WorkloadTexts& texts = Texts();
  for (int i = 0; i < kListElements; ++i) {
    qcommon::QAsnNameAndValueString* element = list.Append();
    element->name.Set(texts.names[i].data(), texts.names[i].size());
    element->value.Set(texts.values[i].data(), texts.values[i].size());
  }
}

void FillErrInfo(qcommon::QAsnErrInfoList& list) {
  const WorkloadTexts& texts = Texts();
  for (int i = 0; i < kListElements; ++i) {
    qcommon::QAsnErrInfo* element = list.Append();
    element->objID.Append()->Set(i);
    if (i % 2 == 0) element->objName.GetOrCreate().Set(texts.objNames[i].data(), texts.objNames[i].size());
    element->errCode.Set(i % 7);
  }
}

void FillUniResId(qcommon::QAsnUniResID& record) {
  record.strFDN.Set("NE=1");
  record.strMOC.Set("NE");
  record.neID.Set(7);
  record.poSerialNum.GetOrCreate().Set("SN1");
}

class OurWorkloads : public Workloads {
 public:
  explicit OurWorkloads(const ReferenceEncodings& input) : input_(input) {
    FillNvs(nvs_);
    FillErrInfo(errInfo_);
    FillUniResId(uniResId_);
  }

  void EncodeNvs() override { Encode(nvs_, nvsBytes_); }
  void EncodeErrInfo() override { Encode(errInfo_, errInfoBytes_); }
  void EncodeUniResId() override { Encode(uniResId_, uniResIdBytes_); }

  void DecodeNvs() override {
    qcommon::QAsnNVSList list;
    AsnDecodeValue(list, input_.nvs);
  }
  void DecodeErrInfo() override {
    qcommon::QAsnErrInfoList list;
    AsnDecodeValue(list, input_.errInfo);
  }
  void DecodeUniResId() override {
    qcommon::QAsnUniResID record;
    AsnDecodeValue(record, input_.uniResId);
  }

  void BuildNvs() override {
    qcommon::QAsnNVSList list;
    FillNvs(list);
  }
  void BuildErrInfo() override {
    qcommon::QAsnErrInfoList list;
    FillErrInfo(list);
  }

  void RoundTripUniResId() override {
    Encode(uniResId_, uniResIdBytes_);
    qcommon::QAsnUniResID record;
    AsnDecodeValue(record, uniResIdBytes_.EncodedView());
  }

  std::string EncodedNvs() override { return std::string(nvsBytes_.EncodedView()); }
  std::string EncodedErrInfo() override { return std::string(errInfoBytes_.EncodedView()); }
  std::string EncodedUniResId() override { return std::string(uniResIdBytes_.EncodedView()); }

 private:
  // Into a buffer kept across passes, as asn1c encodes into the caller's.
  static void Encode(AsnType& value, AsnBuf& buf) { AsnEncodeInto(value, buf); }

  const ReferenceEncodings& input_;
  qcommon::QAsnNVSList nvs_;
  qcommon::QAsnErrInfoList errInfo_;
  qcommon::QAsnUniResID uniResId_;
  AsnBuf nvsBytes_, errInfoBytes_, uniResIdBytes_;
};

}  // namespace

std::unique_ptr<Workloads> MakeOurWorkloads(const ReferenceEncodings& input) {
  return std::make_unique<OurWorkloads>(input);
}

}  // namespace side_by_side
