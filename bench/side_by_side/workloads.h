// The workloads of the side-by-side benchmark, implemented once per codec.
// Every function does one complete pass; a pass over a list handles
// kListElements elements, a pass over the single record handles one.
//
//  - NVS list: QAsnNVSList, names "attr%05d" (9 octets), values
//    "value-%010d" (16 octets);
//  - ErrInfo list: QAsnErrInfoList, objID {i}, objName "obj%05d" on even i
//    only, errCode i % 7;
//  - UniResID: {"NE=1", "NE", 7, poSerialNum "SN1"}.
#pragma once

#include <memory>
#include <string>

namespace side_by_side {

constexpr int kListElements = 10000;

class Workloads {
 public:
  virtual ~Workloads() = default;

  // Encode the prepared value; the bytes stay readable through Encoded*().
  virtual void EncodeNvs() = 0;
  virtual void EncodeErrInfo() = 0;
  virtual void EncodeUniResId() = 0;
  // Decode the reference encoding into a fresh value, then free it.
  virtual void DecodeNvs() = 0;
  virtual void DecodeErrInfo() = 0;
  virtual void DecodeUniResId() = 0;
  // Build the value in code, then free it.
  virtual void BuildNvs() = 0;
  virtual void BuildErrInfo() = 0;
  // Encode the prepared record, decode the bytes into a fresh one, free it.
  virtual void RoundTripUniResId() = 0;

  // The bytes of the last encode of each value.
  virtual std::string EncodedNvs() = 0;
  virtual std::string EncodedErrInfo() = 0;
  virtual std::string EncodedUniResId() = 0;
};

// The texts of the list workloads, made once so that building measures
// only the building.
struct WorkloadTexts {
  WorkloadTexts();
  std::string names[kListElements];
  std::string values[kListElements];
  std::string objNames[kListElements];
};
const WorkloadTexts& Texts();

// Reference encodings both codecs decode (ours, checked against asn1c's).
struct ReferenceEncodings {
  std::string nvs;
  std::string errInfo;
  std::string uniResId;
};

std::unique_ptr<Workloads> MakeOurWorkloads(const ReferenceEncodings& input);
std::unique_ptr<Workloads> MakeAsn1cWorkloads(const ReferenceEncodings& input);

}  // namespace side_by_side
