// A house in which the send of payments is called as the dispatcher calls it, with a client and a project whose invoice
// is in QuickBooks.
#pragma once

#include "tests/transactions/TransactionsHouse.h"
#include "transactions/PaymentsOut.h"

namespace twqb {

inline constexpr TestedTable kTestedPayments = {
    .table = enPayments, .name = "Payment", .keyColumn = "PayID", .toQB = MovePaymentsToQB, .toTW = nullptr};

class PaymentsHouse : public TransactionsHouse {
 public:
  explicit PaymentsHouse(HouseOptions options = {}, std::string_view faults = {}, std::string_view country = "US")
      : TransactionsHouse(kTestedPayments, std::move(options), faults, country) {
    Add("Account", "<Name>Other Income</Name><AccountType>Income</AccountType>");
    client = AddCustomer("<Name>Acme</Name>", Tag());
    job = AddCustomer("<Name>Roof</Name><ParentRef><ListID>" + client + "</ListID></ParentRef>", Tag());
    AddItem("Service", "Design", "Other Income");
    Insert("Client", {{"ClientID", "'ACME'"}, {"QBLinkID", "'" + client + "'"}});
    Insert("Project", {{"ProjectID", "'ROOF:'"}, {"ClientID", "'ACME'"}, {"QBLinkID", "'" + job + "'"}});
    Clear();
  }

  // An invoice of the project's on both sides; its TxnID.
  std::string Invoice(std::string_view number, std::string_view amount = "100.00") {
    const auto answer =
        Company(fmt::format("<InvoiceAddRq><InvoiceAdd><CustomerRef><ListID>{}</ListID></CustomerRef><RefNumber>{}"
                            "</RefNumber><InvoiceLineAdd><ItemRef><FullName>Design</FullName></ItemRef><Amount>{}"
                            "</Amount></InvoiceLineAdd></InvoiceAdd></InvoiceAddRq>",
                            job, number, amount),
                Tag());
    EXPECT_NE(answer.find("statusCode=\"0\""), std::string::npos) << answer;
    auto id = TextOf(answer, "TxnID");
    Insert("TransactionTable", {{"TransactionID", "'" + std::string(number) + "'"},
                                {"TransactionInvNum", "'" + std::string(number) + "'"},
                                {"ProjectID", "'ROOF:'"},
                                {"ClientID", "'ACME'"},
                                {"QBLinkID", "'" + id + "'"}});
    return id;
  }
  // A check; `changed` says what is otherwise.
  void Payment(std::string_view key, const Columns& changed = {}) {
    Columns columns = {{"PayDate", "'2008-03-04'"}, {"PayAmt", "100"}, {"PayMethod", "'1'"}, {"ClientID", "'ACME'"}};
    for (const auto& [name, value] : changed) columns[name] = value;
    columns["PayID"] = "'" + std::string(key) + "'";
    Insert("Payment", columns);
  }
  // What of it goes to the invoice of that number; the row's key is both.
  void Allocate(std::string_view payment, std::string_view invoice, std::string_view amount,
                const Columns& changed = {}) {
    Columns columns = {{"TransactionInvNum", "'" + std::string(invoice) + "'"},
                       {"ProjectID", "'ROOF:'"},
                       {"ClientID", "'ACME'"},
                       {"TransactionPayAmtApplied", std::string(amount)}};
    for (const auto& [name, value] : changed) columns[name] = value;
    columns["TransactionID"] = fmt::format("'{}-{}'", payment, invoice);
    columns["PayID"] = "'" + std::string(payment) + "'";
    Insert("TransactionTable", columns);
  }
  // A retainer of the project's, or of the client's as a whole.
  void Retainer(std::string_view key, std::string_view project, const Columns& changed = {}) {
    Columns columns = {{"PayRetainer", "-1"}};
    for (const auto& [name, value] : changed) columns[name] = value;
    Payment(key, columns);
    Allocate(key, "R", "NULL", {{"ProjectID", "'" + std::string(project) + "'"}});
  }
  [[nodiscard]] std::string AllocationLink(std::string_view payment, std::string_view invoice) {
    return Scalar(fmt::format("SELECT QBLinkID FROM TransactionTable WHERE TransactionID = '{}-{}'", payment, invoice));
  }
  [[nodiscard]] std::string Balance(std::string_view txnId) {
    return TextOf(Company(fmt::format("<InvoiceQueryRq><TxnID>{}</TxnID></InvoiceQueryRq>", txnId), Tag()),
                  "BalanceRemaining");
  }
  // What the n-th payment that went over the wire says.
  [[nodiscard]] std::string Sent(std::size_t nth = 0) const {
    const std::string_view open = "<ReceivePaymentAdd>";
    const auto body = Requests("ReceivePaymentAddRq").at(nth);
    return body.substr(open.size(), body.find("</ReceivePaymentAdd>") - open.size());
  }

  std::string client;  // ListIDs
  std::string job;     //
};

inline std::string ManualBox(int count) {
  return fmt::format(
      "There were {} Tallywick Payment(s) which you have\r\nmanually received in QuickBooks. They were not "
      "sent\r\nagain "
      "to QuickBooks. Please see the \"TWQBLog\" file for additional details",
      count);
}
inline std::string ExceedingBox(int count) {
  return fmt::format(
      "There were {} Tallywick Payment(s) for which the payment amount\r\nexceeded the QuickBooks' Invoice amount. "
      "This "
      "could be because you\r\nhave manually received some payments in QuickBooks. They were not sent\r\nto "
      "QuickBooks. "
      "Please see the \"TWQBLog\" file for additional details.",
      count);
}
inline std::string MissingBox(int count) {
  return fmt::format(
      "There were {} Tallywick Payment(s) that did tranfer because \r\nthe associated invoice(s) are not in QuickBooks."
      "\r\nPlease see the \"TWQBLog\" file for additional details",
      count);
}

}  // namespace twqb
