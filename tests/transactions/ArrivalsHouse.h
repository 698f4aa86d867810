// A house to which QuickBooks returns invoices, credit memos or payments, with a client and a project of the client
// that are linked to C-1 and P-1.
#pragma once

#include <map>
#include <optional>
#include <utility>

#include "tests/transactions/TransactionsHouse.h"
#include "transactions/InvoicesIn.h"
#include "transactions/PaymentsIn.h"

namespace twqb {

inline std::string Element(std::string_view name, std::string_view inside) {
  return fmt::format("<{0}>{1}</{0}>", name, inside);
}

// The elements of a record as QuickBooks returns it, in order; what is changed to nothing is left out.
using Elements = std::vector<std::pair<std::string, std::string>>;
using Changes = std::map<std::string, std::optional<std::string>>;

inline std::string RecordOf(std::string_view kind, Elements elements, const Changes& changes) {
  std::string inside;
  for (const auto& [name, value] : changes) {
    if (std::ranges::find(elements, name, &Elements::value_type::first) == elements.end()) {
      elements.emplace_back(name, "");
    }
  }
  for (const auto& [name, value] : elements) {
    const auto changed = changes.find(name);
    if (changed == changes.end()) {
      inside += Element(name, value);
    } else if (changed->second) {
      inside += Element(name, *changed->second);
    }
  }
  return Element(std::string(kind) + "Ret", inside);
}

inline const std::string kJobRef = "<ListID>P-1</ListID><FullName>Acme:Roof</FullName>";
inline const std::string kCustomerRef = "<ListID>C-1</ListID><FullName>Acme</FullName>";
inline const std::string kKeepGoing = "Do you want to continue transfering rest of the records?";

// What the tests say of a table that is got alone.
constexpr TestedTable Got(std::int32_t table, std::string_view rows, std::string_view key,
                          void (*get)(const GetCall& call)) {
  return {.table = table, .name = rows, .keyColumn = key, .toQB = nullptr, .toTW = get};
}

class ArrivalsHouse : public TransactionsHouse {
 public:
  // `query` is the kind of the records that are asked for.
  ArrivalsHouse(const TestedTable& table, std::string_view query, HouseOptions options, std::string_view faults)
      : TransactionsHouse(table, std::move(options), faults, "US"), query_(query) {
    Sql("INSERT INTO Client (ClientID, QBLinkID) VALUES ('ACME', 'C-1')");
    Sql("INSERT INTO Project (ProjectID, ClientID, QBLinkID) VALUES ('ROOF:', 'ACME', 'P-1')");
    Clear();
  }

  // The get of those records.
  void Take(const Texts& records) {
    std::string text;
    for (const auto& record : records) text += record;
    GetAnswer(query_, text);
  }
  // Details of invoices: text and amount.
  [[nodiscard]] std::string Details() { return RowsOf("ManInvDetailDesc,ManInvDetailAmt", "ManInvDetail"); }
  [[nodiscard]] std::string Count(std::string_view table) {
    return Scalar(fmt::format("SELECT COUNT(*) FROM {}", table));
  }
  // Rows as lines of their columns, in the order in which they were written.
  [[nodiscard]] std::string RowsOf(std::string_view columns, std::string_view table) {
    std::string list;
    for (const auto& column : Split(columns, ',')) {
      list += (list.empty() ? "" : " || '|' || ") + fmt::format("coalesce({}, 'NULL')", column);
    }
    return Scalar(fmt::format("SELECT group_concat(line, char(10)) FROM (SELECT {} AS line FROM {} ORDER BY rowid)",
                              list, table));
  }
  // A column of the one row that the record became.
  [[nodiscard]] std::string Got(std::string_view column, std::string_view txnId = "1-1") {
    return Scalar(fmt::format("SELECT {} FROM TransactionTable WHERE QBLinkID = '{}'", column, txnId));
  }
  [[nodiscard]] Texts ShownRecords() const {
    Texts shown;
    for (const auto& event : desk.FormEvents()) {
      if (shown.empty() || shown.back() != event.state.record) shown.push_back(event.state.record);
    }
    return shown;
  }

 private:
  std::string_view query_;
};

// What a row says of where it comes from.
inline bool IsGuid(std::string_view text) { return text.size() == 38 && text.starts_with('{') && text.ends_with('}'); }

}  // namespace twqb
