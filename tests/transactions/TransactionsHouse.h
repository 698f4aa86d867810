// A house in which the routines of a table of transactions are called as the dispatcher calls them, which may pull
// customers and jobs, and what several of its tests say.
#pragma once

#include <algorithm>

#include "bridge/modTWQBBridge.h"
#include "tests/lists/ListHouse.h"

namespace twqb {

using Texts = std::vector<std::string>;

class TransactionsHouse : public ListHouse {
 public:
  TransactionsHouse(const TestedTable& table, HouseOptions options, std::string_view faults, std::string_view country)
      : ListHouse(table, std::move(options), faults, country) {
    pull = GetTableFromQB;
    EnterSpied();
    Connect(country);
  }

  // The get of records that QuickBooks is made to return to the query of that name.
  void GetAnswer(std::string_view query, std::string_view records) {
    traffic.canned.push_back(
        fmt::format("<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><{0}QueryRs requestID=\"1\" statusCode=\"0\" "
                    "statusSeverity=\"Info\" statusMessage=\"Status OK\">{1}</{0}QueryRs></QBXMLMsgsRs></QBXML>",
                    query, records));
    Get();
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
};

// Boxes and lines that several tests meet.
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
