#include "cli/books/BalanceBooks.h"

#include <fmt/core.h>

#include <pugixml.hpp>
#include <stdexcept>
#include <string_view>

#include "adapters/companyfile/CompanyFile.h"
#include "cli/workplace/CompanyAnswer.h"
#include "messages/ValueFormat.h"
#include "platform/Decimal.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

// --- BillingDb -------------------------------------------------------------------------------------------------------

std::string TextIn(const ado::Recordset& row, std::string_view column) { return ToText(row.Field(column)); }

Currency MoneyIn(const ado::Recordset& row, std::string_view column) {
  const auto value = row.Field(column);
  return IsNull(value) ? Currency() : ToDecimal(value).ToCurrency();
}

template <typename Take>
void ForEachRow(ado::Connection& billing, std::string_view statement, Take take) {
  const auto rows = billing.OpenRecordset(statement, ado::CursorType::Static, ado::LockType::ReadOnly);
  for (; !rows->Eof(); rows->MoveNext()) take(*rows);
}

// The client of a project is the project's own, so that both sides mean the same one.
Payer PayerOf(const ado::Recordset& row, const Payers& payers) {
  auto project = TextIn(row, "ProjectID");
  const auto found = payers.byProject.find(FoldCase(project));
  if (found != payers.byProject.end()) return found->second;
  // What the rows of a retainer have that is for the client as a whole.
  if (project == "{CLIENT RETAINER}") project.clear();
  return {.client = TextIn(row, "ClientID"), .project = std::move(project)};
}

Method MethodOf(std::string_view code) {
  if (code == "6") return Method::Debit;
  return code == "A" ? Method::OutOfRetainer : Method::Money;
}

// --- QuickBooks ------------------------------------------------------------------------------------------------------

class QuickBooks {
 public:
  QuickBooks(const Workplace& place, Machine& machine, const Payers& payers)
      : company_(place.company), machine_(machine), payers_(payers) {
    company::CompanyFile file(company_, machine_);
    form_ = FormOf(file);
  }

  // Calls `take` with each record of a kind.
  template <typename Take>
  void ForEachRecord(std::string_view kind, std::string_view fields, Take take) const {
    const CompanyAnswer answer(company::CompanyFile(company_, machine_), form_,
                               fmt::format("<{0}QueryRq>{1}</{0}QueryRq>", kind, fields));
    for (const auto& record : answer.Response().children()) take(record);
  }

  [[nodiscard]] Payer PayerOf(const pugi::xml_node& record) const {
    const auto customer = record.child("CustomerRef");
    const auto found = payers_.byLink.find(customer.child_value("ListID"));
    if (found != payers_.byLink.end()) return found->second;
    return {.customer = customer.child_value("FullName")};
  }

 private:
  std::string company_;
  Machine& machine_;
  const Payers& payers_;
  messages::Form form_;
};

// What is not there is nothing; but what is there and can't be read must not look like nothing.
Currency AmountIn(const pugi::xml_node& record, const char* field) {
  const std::string_view text = record.child_value(field);
  if (text.empty()) return {};
  if (const auto amount = messages::ParseAmount(text)) return *amount;
  throw std::runtime_error(fmt::format("QuickBooks' {} \"{}\" is no amount.", field, text));
}

std::string NumberOrId(const pugi::xml_node& record) {
  const std::string number = record.child_value("RefNumber");
  return number.empty() ? record.child_value("TxnID") : number;
}

BookedDocument DocumentOf(const pugi::xml_node& record, const QuickBooks& quickBooks) {
  return {.payer = quickBooks.PayerOf(record),
          .id = record.child_value("TxnID"),
          .number = NumberOrId(record),
          .isPending = messages::ParseBool(record.child_value("IsPending")).value_or(false)};
}

}  // namespace

Payers ReadPayers(ado::Connection& billing) {
  Payers payers;
  ForEachRow(billing, "SELECT ProjectID, ClientID, QBLinkID FROM Project ORDER BY ProjectID",
             [&](const ado::Recordset& row) {
               const Payer payer = {.client = TextIn(row, "ClientID"), .project = TextIn(row, "ProjectID")};
               payers.byProject.emplace(FoldCase(payer.project), payer);
               if (const auto link = TextIn(row, "QBLinkID"); !link.empty()) payers.byLink.emplace(link, payer);
             });
  ForEachRow(billing, "SELECT ClientID, QBLinkID FROM Client ORDER BY ClientID", [&](const ado::Recordset& row) {
    if (const auto link = TextIn(row, "QBLinkID"); !link.empty()) {
      payers.byLink.emplace(link, Payer{.client = TextIn(row, "ClientID")});
    }
  });
  return payers;
}

BilledSide ReadBilledSide(ado::Connection& billing, const Payers& payers) {
  BilledSide side;
  ForEachRow(
      billing,
      "SELECT TransactionInvNum, ClientID, ProjectID, QBLinkID, TransactionInvBillAmt, InvRetainerAmtApplied, "
      "IsDraft FROM TransactionTable WHERE (PayID IS NULL) AND (TransactionInvNum IS NULL OR TransactionInvNum "
      "<> '0')",
      [&](const ado::Recordset& row) {
        if (const auto draft = row.Field("IsDraft"); !IsNull(draft) && !ToDecimal(draft).IsZero()) {
          side.drafts.push_back({.number = TextIn(row, "TransactionInvNum"), .project = TextIn(row, "ProjectID")});
          return;
        }
        side.invoices.push_back({.payer = PayerOf(row, payers),
                                 .number = TextIn(row, "TransactionInvNum"),
                                 .project = TextIn(row, "ProjectID"),
                                 .link = TextIn(row, "QBLinkID"),
                                 .billed = MoneyIn(row, "TransactionInvBillAmt"),
                                 .retainer = MoneyIn(row, "InvRetainerAmtApplied")});
      });
  ForEachRow(billing,
             "SELECT t.PayID, t.TransactionInvNum, t.ClientID, t.ProjectID, t.QBLinkID, t.TransactionPayAmtApplied, "
             "p.PayRef, p.PayMethod, p.PayRetainer FROM TransactionTable AS t LEFT JOIN Payment AS p ON p.PayID = "
             "t.PayID WHERE t.PayID IS NOT NULL",
             [&](const ado::Recordset& row) {
               const auto reference = TextIn(row, "PayRef");
               const auto number = TextIn(row, "TransactionInvNum");
               const auto retainer = row.Field("PayRetainer");
               side.allocations.push_back(
                   {.payer = PayerOf(row, payers),
                    .number = number,
                    .project = TextIn(row, "ProjectID"),
                    .payment = reference.empty() ? TextIn(row, "PayID") : reference,
                    .link = TextIn(row, "QBLinkID"),
                    .amount = MoneyIn(row, "TransactionPayAmtApplied"),
                    .method = MethodOf(TextIn(row, "PayMethod")),
                    .isRetainer = number == "0" || (!IsNull(retainer) && !ToDecimal(retainer).IsZero())});
             });
  return side;
}

BookedSide ReadBookedSide(const Workplace& place, Machine& machine, const Payers& payers) {
  const QuickBooks quickBooks(place, machine, payers);
  const Currency none;
  BookedSide side;
  quickBooks.ForEachRecord("Invoice", "", [&](const pugi::xml_node& record) {
    auto document = DocumentOf(record, quickBooks);
    document.open = AmountIn(record, "BalanceRemaining");
    // What was applied comes negative.
    document.amount = document.open - AmountIn(record, "AppliedAmount");
    side.documents.push_back(std::move(document));
  });
  quickBooks.ForEachRecord("CreditMemo", "", [&](const pugi::xml_node& record) {
    auto document = DocumentOf(record, quickBooks);
    document.open = none - AmountIn(record, "CreditRemaining");
    document.amount = none - AmountIn(record, "TotalAmount");
    side.documents.push_back(std::move(document));
  });
  constexpr std::string_view kWithWhereItWent = "<IncludeLineItems>true</IncludeLineItems>";
  quickBooks.ForEachRecord("ReceivePayment", kWithWhereItWent, [&](const pugi::xml_node& record) {
    for (const auto& applied : record.children("AppliedToTxnRet")) {
      side.settlements.push_back({.payment = NumberOrId(record),
                                  .id = record.child_value("TxnID"),
                                  .document = applied.child_value("TxnID"),
                                  .amount = AmountIn(applied, "Amount") + AmountIn(applied, "DiscountAmount")});
    }
    if (const auto unused = AmountIn(record, "UnusedPayment"); unused != none) {
      side.unused.push_back({.payer = quickBooks.PayerOf(record), .amount = unused});
    }
  });
  return side;
}

std::vector<Balance> CompareBooks(const Workplace& place, ado::Provider& database, Machine& machine) {
  const auto billing = database.CreateConnection();
  billing->SetConnectionString(place.billing + ";Mode=Read");
  billing->Open();
  const auto payers = ReadPayers(*billing);
  const auto billed = ReadBilledSide(*billing, payers);
  billing->Close();
  return CompareBalances(billed, ReadBookedSide(place, machine, payers));
}

}  // namespace twqb::cli
