// A machine in another time zone, and else the one that it stands in front of.
#pragma once

#include "platform/Forwarding.h"

namespace twqb {

class MachineInZone : public ForwardingMachine {
 public:
  MachineInZone(Machine& inner, const TimeZoneInformation& zone) : ForwardingMachine(inner), zone_(zone) {}
  TimeZoneInformation GetTimeZoneInformation() override { return zone_; }
  int DaylightMinutes(Date /*standardTime*/) override {
    return zone_.state == TimeZoneState::Daylight ? -zone_.daylightBias : 0;
  }

 private:
  TimeZoneInformation zone_;
};

}  // namespace twqb
