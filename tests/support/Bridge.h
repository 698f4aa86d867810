// A bridge object to a house, as a host has one that works with saved filters.
//
// For tests that make transfers through the public class. The house must have been entered.
#pragma once

#include "tests/support/TestHouse.h"
#include "twqb/CTWQBBridge.h"

namespace twqb {

class Bridge : public CTWQBBridge {
 public:
  explicit Bridge(TestHouse& house) {
    SetConnectString(house.ConnectString());
    SetTWSettingsPath(house.Path("twqb.ini"));
    SetUsePreferencesTW(true);
  }
};

}  // namespace twqb
