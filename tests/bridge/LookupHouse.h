// A house for lookups: a session that stands, an object to it, and a way to fill the lists of the company file.
#pragma once

#include <fmt/core.h>

#include <string>
#include <string_view>

#include "tests/bridge/BridgeHouse.h"
#include "tests/quickbooks/CannedQuickBooks.h"

namespace twqb {

inline constexpr std::string_view kNone = "statusCode=\"1\" statusSeverity=\"Info\" statusMessage=\"None.\"";

// A house with a session that stands and an object to it.
class LookupHouse : public BridgeHouse {
 public:
  explicit LookupHouse(std::string_view faults = {}, std::string_view country = "US") : BridgeHouse({}, faults) {
    Connect(country);
    bridge.SetConnectString(ConnectString());
    bridge.SetTWSettingsPath(Path("twqb.ini"));
  }
  // QuickBooks finds no employee, which the object remembers.
  void FindNoEmployee() {
    traffic.canned.push_back(CannedAnswer("EmployeeQueryRs", kNone, ""));
    (void)bridge.GetEmployees();
    EXPECT_TRUE(bridge.NoRecsInQBTable());
    traffic.documents.clear();
  }
  // Adds a record of a kind to the company file; its ListID.
  std::string Add(const std::string& kind, const std::string& fields) {
    const auto answer = Company(fmt::format("<{0}AddRq><{0}Add>{1}</{0}Add></{0}AddRq>", kind, fields));
    EXPECT_NE(answer.find("statusCode=\"0\""), std::string::npos) << answer;
    return TextOf(answer, "ListID");
  }

  CTWQBBridge bridge;
};

}  // namespace twqb
