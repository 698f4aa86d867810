// What the houses of transactions have in common: rows by their columns, what was asked of the database, and the faults
// and boxes that several tests meet.
#pragma once

#include <algorithm>
#include <map>

#include "bridge/modTWQBBridge.h"
#include "services/Database.h"
#include "tests/lists/ListHouse.h"

namespace twqb {

using Columns = std::map<std::string, std::string>;  // as SQL expressions
using Texts = std::vector<std::string>;

class TransactionsHouse : public ListHouse {
 public:
  TransactionsHouse(const TestedTable& table, HouseOptions options, std::string_view faults, std::string_view country)
      : ListHouse(table, WithFile(std::move(options), country), faults, country) {
    pull = GetTableFromQB;
    EnterSpied();
    Connect(country);
  }

  // An item that books to the account of that name; its ListID.
  std::string AddItem(std::string_view kind, std::string_view name, std::string_view account) {
    return Add("Item" + std::string(kind),
               fmt::format("<Name>{}</Name><SalesOrPurchase><AccountRef><FullName>{}</FullName></AccountRef>"
                           "</SalesOrPurchase>",
                           name, account));
  }
  void Insert(std::string_view table, const Columns& columns) {
    std::string names;
    std::string values;
    for (const auto& [name, value] : columns) {
      names += (names.empty() ? "" : ", ") + name;
      values += (values.empty() ? "" : ", ") + value;
    }
    Sql(fmt::format("INSERT INTO {} ({}) VALUES ({})", table, names, values));
  }

  [[nodiscard]] std::string LinkOf(std::string_view key) { return ColumnOf(key, "QBLinkID"); }
  // The link of the row of that key is there.
  [[nodiscard]] bool IsSent(std::string_view key) {
    const auto link = LinkOf(key);
    return link != "NULL" && !link.empty();
  }

  [[nodiscard]] bool Asked(std::string_view statement) const {
    return std::ranges::find(traffic.statements, statement) != traffic.statements.end();
  }
  // The statements that begin so, in order.
  [[nodiscard]] Texts Statements(std::string_view beginning) const {
    Texts found;
    for (const auto& statement : traffic.statements) {
      if (statement.starts_with(beginning)) found.push_back(statement);
    }
    return found;
  }
  void Clear() {
    traffic.statements.clear();
    traffic.documents.clear();
  }

  // Makes QuickBooks return those records to the query of that name, which is the next that is asked.
  void Answer(std::string_view query, std::string_view records) {
    traffic.canned.push_back(
        fmt::format("<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><{0}QueryRs requestID=\"1\" statusCode=\"0\" "
                    "statusSeverity=\"Info\" statusMessage=\"Status OK\">{1}</{0}QueryRs></QBXMLMsgsRs></QBXML>",
                    query, records));
  }
  // The get of such records.
  void GetAnswer(std::string_view query, std::string_view records) {
    Answer(query, records);
    Get();
  }

  static MsgSetRequest NewSet() {
    const auto& country = Vars().g_QBCountry;
    return Session().CreateMsgSetRequest(country == "CA" || country == "UK" ? country : "US", Vars().g_QBMajorVer, 0);
  }

 private:
  static HouseOptions WithFile(HouseOptions options, std::string_view country) {
    if (country == "CA") options.company.country = messages::Country::CA;
    if (country == "UK") options.company.country = messages::Country::UK;
    if (country == "AU") options.company.country = messages::Country::AU;
    return options;
  }
};

// A refusal with its question, as tables ask it that have no other words.
inline const std::string kAsk = RefusalText("No.", 3000, "Error") + "\r\n\r\nDo you want to continue?";

inline const std::string kSureToCancel = "Are you sure you want to Cancel?";
inline const std::string kOperationCancelled = "Operation cancelled!";

// QuickBooks refuses the request of that name which is the n-th of them.
inline std::string Refuses(std::string_view request, int nth, int status) {
  return fmt::format("{} {} status {} Error \"No.\"\n", request, nth, status);
}
// A statement fails; `nth` of those that begin so.
inline std::string Breaks(std::string_view statement, int nth = 1) {
  return fmt::format("sql {} raise 0x80040E14 \"Broken.\" {}\n", nth, statement);
}
inline std::string BrokenBox(std::string_view routine) {
  return "Error #: -2147217900(80040E14) -- \r\n\r\nBroken." + ErrorBoxEnd(routine);
}

}  // namespace twqb
