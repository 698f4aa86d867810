// A house in which the send of invoices is called as the dispatcher calls it, with a client, a project, an activity and
// an expense code that are in QuickBooks, and the account that new items book to.
#pragma once

#include <memory>

#include "tests/transactions/TransactionsHouse.h"
#include "transactions/InvoiceLines.h"
#include "transactions/InvoicesOut.h"

namespace twqb {

inline constexpr TestedTable kTestedInvoices = {.table = enInvoices,
                                                .name = "TransactionTable",
                                                .keyColumn = "TransactionID",
                                                .toQB = MoveInvoicesToQB,
                                                .toTW = nullptr};

class InvoicesHouse : public TransactionsHouse {
 public:
  explicit InvoicesHouse(HouseOptions options = {}, std::string_view faults = {}, std::string_view country = "US")
      : TransactionsHouse(kTestedInvoices, std::move(options), faults, country) {
    Add("Account", "<Name>Other Income</Name><AccountType>Income</AccountType>");
    client = AddCustomer("<Name>Acme</Name>", Tag());
    job = AddCustomer("<Name>Roof</Name><ParentRef><ListID>" + client + "</ListID></ParentRef>", Tag());
    activity = AddItem("Service", "Design", "Other Income");
    expense = AddItem("OtherCharge", "Travel", "Other Income");
    Insert("Client", {{"ClientID", "'ACME'"}, {"QBLinkID", "'" + client + "'"}});
    Insert("Project", {{"ProjectID", "'ROOF:'"}, {"ClientID", "'ACME'"}, {"QBLinkID", "'" + job + "'"}});
    Insert("Activity", {{"ActivityID", "'DESIGN:'"}, {"QBLinkID", "'" + activity + "'"}});
    Insert("Expense", {{"ExpID", "'TRAVEL:'"}, {"QBLinkID", "'" + expense + "'"}});
    Clear();
  }

  // An invoice of 100, told in one line; `changed` says what is otherwise.
  void Invoice(std::string_view key, const Columns& changed = {}) {
    Columns columns = {{"TransactionInvNum", "'" + std::string(key) + "'"},
                       {"ProjectID", "'ROOF:'"},
                       {"ClientID", "'ACME'"},
                       {"TransactionInvBillAmt", "100"},
                       {"ServiceAmt", "100"}};
    for (const auto& [name, value] : changed) columns[name] = value;
    columns["TransactionID"] = "'" + std::string(key) + "'";
    Insert("TransactionTable", columns);
  }
  // An hour of the invoice's at 50.
  void Hour(std::string_view invoice, const Columns& changed = {}) {
    Columns columns = {{"ActivityID", "'DESIGN:'"}, {"TEHours", "1"}, {"TEBillRate", "50"}, {"TEBill", "-1"}};
    for (const auto& [name, value] : changed) columns[name] = value;
    columns["TEID"] = fmt::format("'{{{}}}'", ++rows_);
    columns["TransactionID"] = "'" + std::string(invoice) + "'";
    Insert("TimeEntry", columns);
  }
  // An expense of the invoice's: one unit at 20.
  void Cost(std::string_view invoice, const Columns& changed = {}) {
    Columns columns = {{"ExpID", "'TRAVEL:'"}, {"ELUnits", "1"}, {"ELCost", "20"}, {"ELBillable", "-1"}};
    for (const auto& [name, value] : changed) columns[name] = value;
    columns["ELID"] = fmt::format("'{{{}}}'", ++rows_);
    columns["TransactionID"] = "'" + std::string(invoice) + "'";
    Insert("ExpenseLog", columns);
  }
  void General(std::string_view key, std::string_view value) { Setting("GENERAL", key, value); }

  // The lines of a row of the selection that has those columns, without asking QuickBooks; others are NULL.
  Texts LinesOf(const Columns& columns, const SalesTaxLines& salesTax) {
    std::string sql;
    for (const std::string column : {"TransactionID",
                                     "TransactionInvSendBillFlag",
                                     "TransactionInvBillAmt",
                                     "ClientQBLinkID",
                                     "ProjectQBLInkID",
                                     "ClientCompany",
                                     "ClientStreet",
                                     "ClientStreet2",
                                     "ClientCity",
                                     "ClientState",
                                     "ClientZip",
                                     "InvoiceDate",
                                     "TransactionInvNum",
                                     "TransactionManInv",
                                     "ProjectID",
                                     "ServiceAmt",
                                     "ExpAmt",
                                     "TransactionManInvMiscAmt",
                                     "ServiceTaxAmt",
                                     "ExpTaxAmt",
                                     "MainServiceTaxAmt",
                                     "MainExpenseTaxAmt",
                                     "TransactionInvDiscount",
                                     "InvRetainerAmtApplied"}) {
      const auto given = columns.find(column);
      const bool isLink = column.ends_with("LinkID") || column.ends_with("LInkID");
      sql += sql.empty() ? "SELECT " : ", ";
      sql += (given != columns.end() ? given->second : isLink ? "'1-1'" : "NULL") + " AS " + column;
    }
    const auto connection = Vars().platform.database->CreateConnection();
    OpenConnection(*connection, nullptr, "");
    const auto row = connection->OpenRecordset(sql, ado::CursorType::Static, ado::LockType::ReadOnly);
    auto set = NewSet();
    EXPECT_TRUE(AssignInvoiceFldValues(*row, set.Append("InvoiceAddRq"), RequestKind::Add, salesTax));
    return LinesIn(set.ToXMLString());
  }

  // What the n-th invoice that went over the wire says, but for its lines.
  [[nodiscard]] std::string Header(std::size_t nth = 0) const {
    const auto body = Requests("InvoiceAddRq").at(nth);
    const auto lines = body.find("<InvoiceLineAdd>");
    return body.substr(
        std::string_view("<InvoiceAdd>").size(),
        (lines == std::string::npos ? body.find("</InvoiceAdd>") : lines) - std::string_view("<InvoiceAdd>").size());
  }
  // Its lines, in order, as they stand on the wire.
  [[nodiscard]] Texts Lines(std::size_t nth = 0) const { return LinesIn(Requests("InvoiceAddRq").at(nth)); }
  [[nodiscard]] static Texts LinesIn(const std::string& body) {
    const std::string open = "<InvoiceLineAdd>";
    Texts lines;
    for (auto at = body.find(open); at != std::string::npos; at = body.find(open, at + 1)) {
      const auto from = at + open.size();
      lines.push_back(body.substr(from, body.find("</InvoiceLineAdd>", from) - from));
    }
    return lines;
  }
  // The invoice as QuickBooks has it, by the link of the row.
  [[nodiscard]] std::string InQuickBooks(std::string_view key) {
    return Company("<InvoiceQueryRq><TxnID>" + LinkOf(key) +
                       "</TxnID><IncludeLineItems>1</IncludeLineItems>"
                       "</InvoiceQueryRq>",
                   Tag());
  }

  std::string client;    // ListIDs
  std::string job;       //
  std::string activity;  //
  std::string expense;   //

 private:
  int rows_ = 0;
};

// Lines, as they stand on the wire of an American file.
inline std::string ByName(std::string_view item) {
  return fmt::format("<ItemRef><FullName>{}</FullName></ItemRef>", item);
}
inline std::string ById(std::string_view id) { return fmt::format("<ItemRef><ListID>{}</ListID></ItemRef>", id); }
inline const std::string kNon = "<SalesTaxCodeRef><FullName>NON</FullName></SalesTaxCodeRef>";
inline std::string AmountLine(std::string_view item, std::string_view amount) {
  return fmt::format("{}<Quantity>1</Quantity><Amount>{}</Amount>{}", ByName(item), amount, kNon);
}

inline const std::string kProblem =
    "There was a problem in transfering Invoice(s). Please make sure\r\nthe associated data does exist in QuickBooks. "
    "Specifically, make\r\nsure all the associated Clients and Projects are tranfered to QuickBooks.\r\n";
inline std::string ZeroBox(const Texts& keys) {
  std::string text = "Following Invoice(s) not transferred to QuickBooks, because the Invoice Amount is zero: -\r\n";
  for (const auto& key : keys) text += "\r\nTransactionID = " + key + ",  TransactionInvNum = " + key;
  return text;
}
inline std::string InvalidReferenceBox(std::string_view advice) {
  return "Invalid Reference.\r\n\r\nQuickBooks has reported the following error: -\r\nNo.\r\n(Error Code = 3140\r\n"
         "Severity: Error)\r\n\r\nSuggestion: -\r\nIf this table needs an account, please choose a valid account from "
         "the\r\n" +
         std::string(advice);
}

}  // namespace twqb
