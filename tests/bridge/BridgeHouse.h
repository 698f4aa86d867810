// A house with a bridge object to it, past the question of the first run.
#pragma once

#include "bridge/modTWQBBridge.h"
#include "services/Errors.h"
#include "tests/engine/SpiedHouse.h"
#include "tests/support/Bridge.h"

namespace twqb {

class BridgeHouse : public SpiedHouse {
 public:
  explicit BridgeHouse(HouseOptions options = {}, std::string_view faults = {})
      : SpiedHouse(std::move(options), faults) {
    pull = GetTableFromQB;
    EnterSpied();
    Setting("GENERAL", "FIRST_TIME", "False");
  }
  void Client(std::string_view columns, std::string_view values) {
    Sql("INSERT INTO Client (" + std::string(columns) + ") VALUES (" + std::string(values) + ")");
  }
  [[nodiscard]] std::string ColumnOf(std::string_view key, std::string_view column) {
    return Scalar("SELECT " + std::string(column) + " FROM Client WHERE ClientID = '" + std::string(key) + "'");
  }
  [[nodiscard]] std::string Keys() {
    return Scalar("SELECT group_concat(ClientID, ',') FROM (SELECT ClientID FROM Client ORDER BY rowid)");
  }
  [[nodiscard]] std::string LastSend() { return SettingOf("QBSEND_", "Clients_LastSendAt"); }
  [[nodiscard]] std::string LastGet() { return SettingOf("QBGET_", "Customers_LastSendAt"); }
};

// Whether another program gets a session with the company file that a bridge has open.
[[nodiscard]] inline bool OthersCanOpenTheFile(TestHouse& house) {
  auto other = house.quickbooks->CreateTransport();
  other->OpenConnection("OTHER", "other");
  return IgnoreErrors([&] { other->BeginSession("", OpenMode::DoNotCare); });
}

inline constexpr std::string_view kSubscribed = "SubscriptionQueryRq 1 status 0 Info \"Status OK\"\n";

}  // namespace twqb
