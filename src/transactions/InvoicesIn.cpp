#include "transactions/InvoicesIn.h"

#include <fmt/format.h>

#include <array>

#include "engine/Mapping.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Errors.h"
#include "transactions/NewRow.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

// --- What the two kinds differ in ------------------------------------------------------------------------------------

enum class Sign : std::int8_t { Kept, Turned };

Currency Signed(Sign sign, Currency amount) { return sign == Sign::Kept ? amount : Currency() - amount; }

Currency OrNothing(const Record& field) { return AmountOf(field).value_or(Currency()); }

struct DocumentKind {
  std::string_view routine;
  std::string_view log;
  std::string_view detail;  // what stands for the lines of a document without any
  std::string_view numberPrefix;
  std::string_view lines;  // the list, and the two branches of an entry
  std::string_view line;
  std::string_view group;
  Sign sign;  // of the subtotal and of plain lines; a group, and what stands for all lines, keep theirs in the details
  std::optional<std::string> (*shown)(const Record& document);
  Currency (*tax)(const Record& document);
  Currency (*billed)(const Record& document, Currency tax);
};

std::optional<std::string> ShownNumber(const Record& invoice) {
  const auto number = invoice["RefNumber"];
  return number.IsNothing() ? std::nullopt : std::optional("Invoice Number: " + number.GetValue());
}

// The total is not among what QuickBooks says of an invoice: it is what was paid and what is open. What was paid comes
// negative.
Currency TaxOfInvoice(const Record& invoice) {
  return OrNothing(invoice["BalanceRemaining"]) - OrNothing(invoice["AppliedAmount"]) - OrNothing(invoice["Subtotal"]);
}

Currency BilledByInvoice(const Record& invoice, Currency tax) { return OrNothing(invoice["Subtotal"]) + tax; }

Currency TaxOfCreditMemo(const Record& memo) {
  const auto total = AmountOf(memo["TotalAmount"]);
  const auto subtotal = AmountOf(memo["Subtotal"]);
  return total && subtotal ? Signed(Sign::Turned, *total - *subtotal) : Currency();
}

Currency BilledByCreditMemo(const Record& memo, Currency /*tax*/) {
  return Signed(Sign::Turned, OrNothing(memo["TotalAmount"]));
}

constexpr DocumentKind kInvoice = {
    .routine = "MoveInvoicesToTW",
    .log = "Error transfering Invoice to Tallywick. Customer = ",
    .detail = "Invoice transfered from QuickBooks",
    .numberPrefix = "",
    .lines = "ORInvoiceLineRetList",
    .line = "InvoiceLineRet",
    .group = "InvoiceLineGroupRet",
    .sign = Sign::Kept,
    .shown = ShownNumber,
    .tax = TaxOfInvoice,
    .billed = BilledByInvoice,
};

constexpr DocumentKind kCreditMemo = {
    .routine = "MoveCreditMemosToTW",
    .log = "Error transfering Credit Memo to Tallywick. Customer = ",
    .detail = "Credit Memo from QuickBooks",
    .numberPrefix = "CM",
    .lines = "ORCreditMemoLineRetList",
    .line = "CreditMemoLineRet",
    .group = "CreditMemoLineGroupRet",
    .sign = Sign::Turned,
    .shown = nullptr,
    .tax = TaxOfCreditMemo,
    .billed = BilledByCreditMemo,
};

// --- The row ---------------------------------------------------------------------------------------------------------

struct Document {
  const DocumentKind& kind;
  const TxnArrival& arrival;
  const Record& record;
  Currency tax;
};

Given InvoiceDateOf(const Document& document) {
  const auto date = document.record["TxnDate"];
  return DateOf(date.IsNothing() ? document.record["TimeCreated"] : date);
}

// The number's last characters tell documents apart. The prefix comes on top of the column's size.
Given NumberOf(const Document& document) {
  const auto number = document.record["RefNumber"].GetValue();
  const int size = document.arrival.rows.DefinedSize("TransactionInvNum");
  const auto cut = size > 0 ? Right(number, static_cast<std::size_t>(size)) : number;
  return std::string(document.kind.numberPrefix) + cut;
}

Given ServiceAmountOf(const Document& document) {
  const auto subtotal = AmountOf(document.record["Subtotal"]);
  return subtotal ? Given(Signed(document.kind.sign, *subtotal)) : Given();
}

Given SendFlagOf(const Document& document) {
  const auto printed = document.record["IsToBePrinted"];
  return printed.IsNothing() ? Given() : std::string(printed.GetBoolean() ? "P" : "B");
}

Given NoAmount(const Document& /*document*/) { return Currency(); }

using Column = NewColumn<Document>;
constexpr std::array kColumns = {
    Column{"TransactionDate", [](const Document& document) { return DateOf(document.record["TimeCreated"]); }},
    Column{"InvoiceDate", InvoiceDateOf},
    Column{"TransactionInvDateFrom", InvoiceDateOf},
    Column{"TransactionInvDateTo", InvoiceDateOf},
    Column{"ClientID", [](const Document& document) -> Given { return document.arrival.values[1]; }},
    Column{"ProjectID", [](const Document& document) -> Given { return document.arrival.values[0]; }},
    Column{"TransactionInvNum", NumberOf},
    Column{"ServiceAmt", ServiceAmountOf},
    Column{"ServiceTaxAmt", NoAmount},
    Column{"ExpTaxAmt", [](const Document& document) -> Given { return document.tax; }},
    Column{"ExpAmt", NoAmount},
    Column{"TransactionInvBillAmt",
           [](const Document& document) -> Given { return document.kind.billed(document.record, document.tax); }},
    Column{"calcAmtOwedToDate", NoAmount},
    Column{"TransactionManInvPaidToday", NoAmount},
    Column{"TransactionInvDiscount", NoAmount},
    Column{"TransactionManInvMiscAmt", NoAmount},
    Column{"TransactionMemo", [](const Document& document) { return TextOf(document.record["Memo"]); }},
    Column{"TransactionInvSendBillFlag", SendFlagOf},
    Column{"TransactionManInv", [](const Document& /*document*/) -> Given { return true; }},
    Column{"QBLinkID", [](const Document& document) -> Given { return document.arrival.txnId; }},
    Column{"LastUpdated", [](const Document& /*document*/) { return PresentMoment(); }},
    Column{"TransactionID", [](const Document& /*document*/) -> Given { return GenerateGUID(); }},
    Column{"TransactionJointInv", [](const Document& /*document*/) -> Given { return false; }},
};

// --- The details -----------------------------------------------------------------------------------------------------

// The statements differ in a blank, which logs and traces of the database show.
constexpr std::string_view kDetailOfLine = "INSERT INTO ManInvDetail(ManInvDetailID, TransactionID,";
constexpr std::string_view kDetailOfWhole = "INSERT INTO ManInvDetail(ManInvDetailID,TransactionID,";

class Details {
 public:
  Details(ado::Connection& connection, std::string transactionId)
      : connection_(connection), transactionId_(std::move(transactionId)) {}

  [[nodiscard]] bool HaveTransaction() const { return !transactionId_.empty(); }

  void Insert(std::string_view into, std::string_view text, Currency amount) {
    connection_.Execute(
        Sql("{0}ManInvDetailDesc,ManInvDetailAmt, ManInvDetailTaxAmt,ManInvDetailTot,ManInvDetailTaxPerc) "
            "VALUES('{1}', '{2}', '{3}',{4},0,{4},0);",
            into, GenerateGUID(), transactionId_, Doubled{FixQuote(text)}, ToText(amount)),
        nullptr);
  }

 private:
  ado::Connection& connection_;
  std::string transactionId_;
};

void WriteLine(const DocumentKind& kind, const Record& entry, Details& details) {
  const auto line = entry[kind.line];
  const bool isLine = !line.IsNothing();
  const auto source = isLine ? line : entry[kind.group];
  std::string text;
  IgnoreErrors([&] { text = source["Desc"].GetValue(); });
  Currency amount;
  IgnoreErrors(
      [&] { amount = isLine ? Signed(kind.sign, source["Amount"].GetAmount()) : source["TotalAmount"].GetAmount(); });
  if (!details.HaveTransaction() || (text.empty() && amount == Currency())) return;
  details.Insert(kDetailOfLine, text.empty() ? "." : text, amount);
}

void WriteDetails(const Document& document, Details& details) {
  const auto& kind = document.kind;
  if (const auto lines = document.record[kind.lines]; lines.IsNothing()) {
    details.Insert(kDetailOfWhole, kind.detail, OrNothing(document.record["Subtotal"]));
  } else {
    for (std::size_t i = 0; i < lines.Count(); ++i) WriteLine(kind, lines.GetAt(i), details);
  }
  if (document.tax != Currency()) details.Insert(kDetailOfLine, "Calculated Taxes", document.tax);
}

// --- Description -----------------------------------------------------------------------------------------------------

// A document without a number isn't taken, and a pending one comes when it is none any more.
bool IsTaken(const Record& document) {
  if (Trim(document["RefNumber"].GetValueOrEmpty()).empty()) return false;
  const auto pending = document["IsPending"];
  return pending.IsNothing() || !pending.GetBoolean();
}

template <const DocumentKind& kKind>
void Write(const TxnArrival& arrival) {
  const Document document = {
      .kind = kKind, .arrival = arrival, .record = arrival.record, .tax = kKind.tax(arrival.record)};
  AddRow<Document>(arrival.rows, kColumns, document);
  Details details(arrival.connection, ColumnText(arrival.rows, "TransactionID"));
  WriteDetails(document, details);
}

constexpr std::array kLinks = {
    TxnLink{
        .reference = "CustomerRef", .keySelect = "SELECT ProjectID FROM Project WHERE QBLINKID = '", .required = true},
    TxnLink{.reference = "CustomerRef",
            .keySelect = "SELECT ClientID FROM Project WHERE QBLINKID = '",
            .failed = FailedLook::IsTold},
};

template <const DocumentKind& kKind>
constexpr TxnTable kDocuments = {
    .tableName = "TransactionTable",
    .keyColumn = "TransactionID",
    .get =
        {
            // The form speaks of invoices over credit memos, too.
            .texts = {.routine = kKind.routine,
                      .shown = "Getting Invoices from QuickBooks...",
                      .log = kKind.log,
                      .askedWith = BoxIcon::Question},
            .links = kLinks,
            .looks = LooksFirst::ForTheLinks,
            .pull = CustomerPull::ClientAndProject,
            .shown = kKind.shown,
            .name = CustomerName,
            .admit = IsTaken,
            .stays = "it has no number, or is pending",
            .write = Write<kKind>,
        },
};

}  // namespace

void MoveInvoicesToTW(const GetCall& call) { GetTransactions(kDocuments<kInvoice>, call); }
void MoveCreditMemosToTW(const GetCall& call) { GetTransactions(kDocuments<kCreditMemo>, call); }

void MoveInvoicesOrCreditMemosToTW(const GetCall& call) {
  constexpr std::int16_t kInvoices = 0;
  call.part == kInvoices ? MoveInvoicesToTW(call) : MoveCreditMemosToTW(call);
}

}  // namespace twqb
