// A house in which selection statements are built and run: in a time zone, for one dialect, with the settings of the
// profile file held in memory, so that thousands of statements cost no file.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Forwarding.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "services/Database.h"
#include "services/ModuleVariables.h"
#include "tests/support/TablesByNumber.h"
#include "tests/support/TestHouse.h"
#include "twqb/enTables.h"

namespace twqb {

inline constexpr TimeZoneInformation kGreenwich = {.bias = 0, .daylightBias = -60, .state = TimeZoneState::Standard};
inline constexpr TimeZoneInformation kNewYork = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Standard};
inline constexpr TimeZoneInformation kNewYorkSummer = {
    .bias = 300, .daylightBias = -60, .state = TimeZoneState::Daylight};
inline constexpr TimeZoneInformation kHelsinki = {.bias = -120, .daylightBias = -60, .state = TimeZoneState::Standard};
inline constexpr TimeZoneInformation kDelhi = {.bias = -330, .daylightBias = 0, .state = TimeZoneState::Unknown};

inline constexpr std::string_view kSql = "SQLITE";
inline constexpr std::string_view kJet = "JETLITE";

class SelectionMachine : public ForwardingMachine {
 public:
  SelectionMachine(Machine& inner, const TimeZoneInformation& inZone) : ForwardingMachine(inner), zone(inZone) {}
  TimeZoneInformation GetTimeZoneInformation() override { return zone; }
  int DaylightMinutes(Date /*standardTime*/) override {
    return zone.state == TimeZoneState::Daylight ? -zone.daylightBias : 0;
  }
  std::string GetPrivateProfileString(std::string_view section, std::string_view key, std::string_view fallback,
                                      int /*size*/, std::string_view /*file*/) override {
    const auto found = settings.find(std::string(section) + "/" + std::string(key));
    return found == settings.end() ? std::string(fallback) : found->second;
  }

  TimeZoneInformation zone;
  std::map<std::string, std::string> settings;  // by section, slash, key
};

class SelectionHouse : public TestHouse {
 public:
  explicit SelectionHouse(const TimeZoneInformation& zone = kGreenwich, std::string_view provider = kSql)
      : TestHouse({.provider = std::string(provider), .zone = zone}), settings(machine, zone), provider_(provider) {
    EnterSelection();
    connection_ = database.CreateConnection();
    OpenConnection(*connection_, nullptr, "");
  }
  // Composes the library with this house, as at the start of a table's run.
  void EnterSelection() {
    auto seams = Seams();
    seams.machine = &settings;
    Enter(seams);
    Vars().g_DbKind = DbKindOf(provider_);
  }

  void Setting(std::string_view section, std::string_view key, std::string_view value) {
    settings.settings[std::string(section) + "/" + std::string(key)] = value;
  }
  // The time of the last send of a table, by its send name.
  void SentAt(std::string_view table, std::string_view time) {
    Setting("QBSEND_", std::string(table) + "_LastSendAt", time);
  }

  [[nodiscard]] ado::Connection& Connection() { return *connection_; }
  // Runs a statement to its last row; raises when the database does not take it.
  void Run(const std::string& sql) { (void)Keys(sql, ""); }
  // The values of a column of the rows that a statement selects, in its order, each with a blank behind it.
  [[nodiscard]] std::string Keys(const std::string& sql, std::string_view column) {
    const auto rows = connection_->OpenRecordset(sql, ado::CursorType::Static, ado::LockType::ReadOnly);
    std::string keys;
    for (; !rows->Eof(); rows->MoveNext()) {
      if (!column.empty()) keys += ToText(rows->Field(column)) + " ";
    }
    return keys;
  }

  SelectionMachine settings;

 private:
  std::string provider_;
  std::unique_ptr<ado::Connection> connection_;
};

// Keys in the order of the alphabet, where the statement asks for none.
inline std::string Sorted(const std::string& keys) {
  auto each = Split(keys, ' ');
  std::ranges::sort(each);
  std::string sorted;
  for (const auto& key : each) {
    if (!key.empty()) sorted += key + " ";
  }
  return sorted;
}

// A statement that must come out: what was set and filtered, and the text behind the base. In Greenwich.
struct SelectionCorner {
  std::string what;
  std::string_view provider = kSql;
  std::string sentAt = {};  // empty: never
  std::string passed = {};  // PassedID
  SavedFilters filters = {};
  std::string statement;
};

enum class Taken : std::uint8_t { Yes, No };  // by the database

// Builds every corner's statement, compares it, and runs it.
template <typename Corners>
void ExpectSelections(enTables table, std::string_view sendName, const std::string& base, const Corners& corners,
                      Taken taken = Taken::Yes) {
  SelectionHouse sql(kGreenwich, kSql);
  SelectionHouse jet(kGreenwich, kJet);
  for (const auto& corner : corners) {
    SCOPED_TRACE(corner.what);
    auto& house = corner.provider == kSql ? sql : jet;
    house.EnterSelection();
    house.SentAt(sendName, corner.sentAt.empty() ? "01/01/1900" : corner.sentAt);
    Vars().g_PassedID = corner.passed;
    const auto statement = BuildSelectSQL(table, corner.filters);
    EXPECT_EQ(statement, base + corner.statement);
    if (taken == Taken::Yes) {
      EXPECT_NO_THROW(house.Run(statement));
    } else {
      EXPECT_THROW(house.Run(statement), PlatformError);
    }
  }
}

}  // namespace twqb
