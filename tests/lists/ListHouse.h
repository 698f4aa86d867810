// A house in which the routines of a list table are called as the dispatcher calls them.
#pragma once

#include <fmt/core.h>

#include <utility>

#include "engine/ListTable.h"
#include "tests/engine/SpiedHouse.h"
#include "tests/support/TablesByNumber.h"
#include "twqb/enTables.h"

namespace twqb {

// The two saved settings about records with a twin.
struct MoveFlags {
  bool never = false;
  bool mostRecent = false;

  [[nodiscard]] TwinRule Rule() const { return TwinRuleOf(never, mostRecent); }
};

// What the tests say of the table.
struct TestedTable {
  std::int32_t table;
  std::string_view name;
  std::string_view keyColumn;
  void (*toQB)(const SendCall& call);
  void (*toTW)(const GetCall& call);
};

class ListHouse : public SpiedHouse {
 public:
  ListHouse(const TestedTable& table, HouseOptions options, std::string_view faults, std::string_view country)
      : SpiedHouse(std::move(options), faults), table_(table) {
    Connect(country);
  }

  // All rows, in the order of their selection.
  void Send(const MoveFlags& flags = {}) {
    SendSelection(BuildSelectSQL(table_.table, {.IgnoreLastSync = true}), flags);
  }
  void SendSelection(const std::string& sql, const MoveFlags& flags = {}) {
    Vars().g_TableOk = TableOk::False;
    table_.toQB({.sql = twqb::Sql::Own(sql), .rule = flags.Rule(), .session = Session(), .run = Vars()});
  }
  // All records, in QuickBooks' order.
  void Get(const MoveFlags& flags = {}) {
    const auto records = Read();
    Vars().g_TableOk = TableOk::False;
    table_.toTW({.records = records, .rule = flags.Rule(), .run = Vars()});
  }
  // Records at hand, as a pull on `connection` or not.
  void Take(const RecordList& records, Dependent dependent = Dependent::No, ado::Connection* connection = nullptr) {
    table_.toTW({.records = records,
                 .rule = TwinRule::Overwrite,
                 .run = Vars(),
                 .dependent = dependent,
                 .connection = connection});
  }
  // What the reader makes of QuickBooks' records. Its own form work is not looked at.
  [[nodiscard]] RecordList Read(const ReadFilters& filters = {}) {
    RecordList records;
    const bool noBar = std::exchange(Vars().g_NoProgressBar, true);
    EXPECT_TRUE(ApplyQBFiltersAndReadRecords(table_.table, records, Session(), filters));
    Vars().g_NoProgressBar = noBar;
    return records;
  }
  void Row(std::string_view columns, std::string_view values) {
    Sql("INSERT INTO " + std::string(table_.name) + " (" + std::string(columns) + ") VALUES (" + std::string(values) +
        ")");
  }
  // The form in which the company file is asked by the tests themselves.
  [[nodiscard]] static std::string Tag() {
    return Vars().g_QBCountry == "CA" || Vars().g_QBCountry == "UK" ? Vars().g_QBCountry + "3.0" : "3.0";
  }
  [[nodiscard]] std::string ColumnOf(std::string_view key, std::string_view column) {
    return Scalar("SELECT " + std::string(column) + " FROM " + std::string(table_.name) + " WHERE " +
                  std::string(table_.keyColumn) + " = '" + std::string(key) + "'");
  }
  [[nodiscard]] std::string Keys() {
    const auto key = std::string(table_.keyColumn);
    return Scalar("SELECT group_concat(" + key + ", ',') FROM (SELECT " + key + " FROM " + std::string(table_.name) +
                  " ORDER BY rowid)");
  }
  // Adds a record to the company file with its fields in wire order; its ListID.
  std::string Add(std::string_view kind, std::string_view fields) {
    const auto answer = Company(fmt::format("<{0}AddRq><{0}Add>{1}</{0}Add></{0}AddRq>", kind, fields), Tag());
    EXPECT_NE(answer.find("statusCode=\"0\""), std::string::npos) << answer;
    return TextOf(answer, "ListID");
  }
  // What the company file says of the record with that identifier.
  [[nodiscard]] std::string Ask(std::string_view kind, std::string_view listId) {
    return Company(fmt::format("<{0}QueryRq><ListID>{1}</ListID></{0}QueryRq>", kind, listId), Tag());
  }

 private:
  const TestedTable& table_;
};

inline TableOk Outcome() { return Vars().g_TableOk; }

}  // namespace twqb
