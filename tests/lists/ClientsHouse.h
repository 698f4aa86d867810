// A house in which the client routines are called as the dispatcher calls them.
#pragma once

#include "engine/RecordReader.h"
#include "engine/SelectionQueries.h"
#include "lists/modClients.h"
#include "tests/engine/SpiedHouse.h"
#include "twqb/enTables.h"

namespace twqb {

struct MoveFlags {
  bool never = false;
  bool mostRecent = false;
};

class ClientsHouse : public SpiedHouse {
 public:
  explicit ClientsHouse(HouseOptions options = {}, std::string_view faults = {}, std::string_view country = "US")
      : SpiedHouse(std::move(options), faults) {
    Connect(country);
  }

  // All clients, in the order in which they were inserted.
  void Send(const MoveFlags& flags = {}) { SendSelection(BuildSelectSQL(enClients, {.IgnoreLastSync = true}), flags); }
  void SendSelection(const std::string& sql, const MoveFlags& flags = {}) {
    Vars().g_TableOk = TableOk::False;
    MoveClientsToQB(sql, flags.never, flags.mostRecent, Session());
  }
  // All customers, in QuickBooks' order.
  void Get(const MoveFlags& flags = {}) {
    RecordList records;
    Vars().g_TableOk = TableOk::False;
    const bool noBar = std::exchange(Vars().g_NoProgressBar, true);  // the reader's own form work is not looked at
    ASSERT_TRUE(ApplyQBFiltersAndReadRecords(enClients, records, Session(), {}));
    Vars().g_NoProgressBar = noBar;
    MoveClientsToTW(records, flags.never, flags.mostRecent, Dependent::No, nullptr);
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
};

inline TableOk Outcome() { return Vars().g_TableOk; }

}  // namespace twqb
