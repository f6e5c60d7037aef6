// ns_utilmib::TEFiberCable: a fiber cable of the inventory.
//
// Defaults (constructor and Init() alike): doubleValue 1.0, floatValue -0.1f,
// hybridMaxCapacity -1, both ends' sub-levels -1, every other number 0 and
// every text empty.
//
// Besides the fields the conversion library maps to and from the fiber record,
// the cable holds fields of its own that the library never reads or writes:
// cableType, strUserLabel, modifyFlag, strCustomInfo and lastModifyTime.
#pragma once
#pragma GCC visibility push(default)

#include <cstdint>
#include <string>

#include "tn_platform/model/fiber_end.h"

namespace ns_utilmib {

class TEFiberCable {
 public:
  std::int32_t fiberValue1 = 0;
  TEFiberEnd aEnd;                      // source end (port index of srcPortFDN)
  TEFiberEnd zEnd;                      // destination end (port index of dstPortFDN)
  std::int32_t hybridMaxCapacity = -1;  // maximum capacity for hybrid use; -1: none
  std::int32_t cableType = 0;           // not used by the conversion library
  std::int32_t resetValue1 = 0;
  std::uint8_t fiberValue3 = 0;
  double doubleValue = 1.0;
  float floatValue = -0.1f;
  std::uint16_t fiberValue2 = 0;
  std::uint8_t fiberValue6 = 0;
  std::string fiberText8;
  std::string fiberText2;
  std::string fiberText3;
  std::string fiberText4;
  std::string strUserLabel;  // not used by the conversion library
  long buildTime = 0;        // seconds since 1970-01-01 UTC
  std::uint8_t fiberValue5 = 0;
  std::string memo;
  std::string fiberText6;
  std::string fiberText7;
  std::string fiberText5;
  std::int32_t resetValue2 = 0;
  std::uint16_t reserve = 0;     // used as a flag: 0 or not 0
  std::string srcPortFDN;        // identifier text of the source port
  std::string dstPortFDN;        // identifier text of the destination port
  std::uint32_t modifyFlag = 0;  // not used by the conversion library
  std::string fiberText9;
  std::int32_t fiberValue7 = 0;
  std::int32_t maintenanceState = 0;
  long long delayTime = 0;
  std::string strCustomInfo;        // not used by the conversion library
  std::int64_t lastModifyTime = 0;  // not used by the conversion library

  // The fields in declaration order, for code that walks a model's fields
  // (comparisons, JSON): calls visit(name, member pointer) for each.
  template <class Visitor>
  static void DescribeFields(Visitor&& visit) {
    visit("fiberValue1", &TEFiberCable::fiberValue1);
    visit("aEnd", &TEFiberCable::aEnd);
    visit("zEnd", &TEFiberCable::zEnd);
    visit("hybridMaxCapacity", &TEFiberCable::hybridMaxCapacity);
    visit("cableType", &TEFiberCable::cableType);
    visit("resetValue1", &TEFiberCable::resetValue1);
    visit("fiberValue3", &TEFiberCable::fiberValue3);
    visit("doubleValue", &TEFiberCable::doubleValue);
    visit("floatValue", &TEFiberCable::floatValue);
    visit("fiberValue2", &TEFiberCable::fiberValue2);
    visit("fiberValue6", &TEFiberCable::fiberValue6);
    visit("fiberText8", &TEFiberCable::fiberText8);
    visit("fiberText2", &TEFiberCable::fiberText2);
    visit("fiberText3", &TEFiberCable::fiberText3);
    visit("fiberText4", &TEFiberCable::fiberText4);
    visit("strUserLabel", &TEFiberCable::strUserLabel);
    visit("buildTime", &TEFiberCable::buildTime);
    visit("fiberValue5", &TEFiberCable::fiberValue5);
    visit("memo", &TEFiberCable::memo);
    visit("fiberText6", &TEFiberCable::fiberText6);
    visit("fiberText7", &TEFiberCable::fiberText7);
    visit("fiberText5", &TEFiberCable::fiberText5);
    visit("resetValue2", &TEFiberCable::resetValue2);
    visit("reserve", &TEFiberCable::reserve);
    visit("srcPortFDN", &TEFiberCable::srcPortFDN);
    visit("dstPortFDN", &TEFiberCable::dstPortFDN);
    visit("modifyFlag", &TEFiberCable::modifyFlag);
    visit("fiberText9", &TEFiberCable::fiberText9);
    visit("fiberValue7", &TEFiberCable::fiberValue7);
    visit("maintenanceState", &TEFiberCable::maintenanceState);
    visit("delayTime", &TEFiberCable::delayTime);
    visit("strCustomInfo", &TEFiberCable::strCustomInfo);
    visit("lastModifyTime", &TEFiberCable::lastModifyTime);
  }

  // Puts the cable back to its defaults.
  void Init() { *this = TEFiberCable(); }

  // Repairs parameters no cable can have: a negative or non-finite
  // doubleValue becomes 1.0, a non-finite floatValue -0.1f, a
  // hybridMaxCapacity below -1 becomes -1. (-0.0 counts as not negative.)
  // Returns true when it changed anything.
  bool FixInvalidFiberParam();
};

}  // namespace ns_utilmib
#pragma GCC visibility pop
