#include "transactions/PaymentsIn.h"

#include <fmt/format.h>

#include <array>

#include "engine/DependentPull.h"
#include "engine/Mapping.h"
#include "services/Conversions.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"
#include "transactions/NewRow.h"
#include "transactions/PaymentMethods.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

// --- Rows of payments ------------------------------------------------------------------------------------------------

Date PaymentDateOf(const Record& payment) {
  const auto date = payment["TxnDate"];
  return date.IsNothing() ? TheMachine().Now().Midnight() : date.GetDate();
}

// The money or its discount: what differs between the two rows of a payment.
struct PaymentRow {
  const TxnArrival& arrival;
  std::optional<Currency> amount;
  std::int16_t method;
};

Given ClientOf(const PaymentRow& payment) {
  const auto name = FieldAtPath(payment.arrival.record, "CustomerRef.FullName");
  return name.IsNothing() ? Given() : payment.arrival.values[1];
}

Given MemoOf(const PaymentRow& payment) {
  const auto memo = payment.arrival.record["Memo"];
  return memo.IsNothing() ? Given() : CutTo(payment.arrival.rows, "PayMemo", memo.GetValue());
}

using PaymentColumn = NewColumn<PaymentRow>;
constexpr std::array kPaymentColumns = {
    PaymentColumn{"PayID", [](const PaymentRow& /*payment*/) -> Given { return GenerateGUID(); }},
    PaymentColumn{"QBLinkID", [](const PaymentRow& payment) -> Given { return payment.arrival.txnId; }},
    PaymentColumn{"PayDate",
                  [](const PaymentRow& payment) -> Given {
                    return FormatSQLDate(PaymentDateOf(payment.arrival.record), DateForm::WithTime);
                  }},
    PaymentColumn{"PayAmt",
                  [](const PaymentRow& payment) { return payment.amount ? Given(*payment.amount) : Given(); }},
    PaymentColumn{"PayMethod", [](const PaymentRow& payment) -> Given { return std::int64_t{payment.method}; }},
    PaymentColumn{"PayMemo", MemoOf},
    PaymentColumn{"ClientID", ClientOf},
    PaymentColumn{"PayRef", [](const PaymentRow& payment) { return TextOf(payment.arrival.record["RefNumber"]); }},
    PaymentColumn{"PayEnteredBy", [](const PaymentRow& /*payment*/) -> Given { return std::string("TWQB"); }},
    PaymentColumn{
        "PayLastModifiedOn",
        [](const PaymentRow& /*payment*/) -> Given { return FormatSQLDate(TheMachine().Now(), DateForm::WithTime); }},
    PaymentColumn{"LastUpdated", [](const PaymentRow& /*payment*/) { return PresentMoment(); }},
};

// Adds the row; its key.
std::string AddPayment(const PaymentRow& payment) {
  AddRow<PaymentRow>(payment.arrival.rows, kPaymentColumns, payment);
  return ColumnText(payment.arrival.rows, "PayID");
}

std::string AddMoney(const TxnArrival& arrival) {
  const auto method = FieldAtPath(arrival.record, "PaymentMethodRef.FullName");
  auto payId = AddPayment({.arrival = arrival,
                           .amount = AmountOf(arrival.record["TotalAmount"]),
                           .method = method.IsNothing() ? kCheckMethod : PaymentMethodCode(method.GetValue())});
  if (payId.empty()) {
    TellErrorToObserver("AddMoney", 0, "the new payment has no PayID");
    TheDesk().ShowMessageBox({.text = "Problem in collecting PayID for QBLink = " + arrival.txnId,
                              .title = "Error",
                              .icon = BoxIcon::Information});
  }
  NoteKey(payId);
  return payId;
}

// --- Rows of allocations ---------------------------------------------------------------------------------------------

// What of a payment goes where.
struct Allocation {
  const TxnArrival& arrival;
  std::string payId;
  std::string projectId = {};
  Given number = {};
  Currency amount = {};
};

Given DateOfPayment(const Allocation& allocation) { return PaymentDateOf(allocation.arrival.record); }
Given NotSet(const Allocation& /*allocation*/) { return false; }

using AllocationColumn = NewColumn<Allocation>;
constexpr std::array kAllocationKeys = {
    AllocationColumn{"TransactionID", [](const Allocation& /*allocation*/) -> Given { return GenerateGUID(); }},
    AllocationColumn{"PayID", [](const Allocation& allocation) -> Given { return allocation.payId; }},
};
constexpr std::array kAllocationColumns = {
    AllocationColumn{"ProjectID", [](const Allocation& allocation) -> Given { return allocation.projectId; }},
    AllocationColumn{"ClientID", [](const Allocation& allocation) -> Given { return allocation.arrival.values[1]; }},
    AllocationColumn{"TransactionInvSendBillFlag",
                     [](const Allocation& /*allocation*/) -> Given { return std::string("B"); }},
    AllocationColumn{"TransactionJointInv", NotSet},
    AllocationColumn{"TransactionManInv", NotSet},
    AllocationColumn{"TransactionPayLateFeeRecd", [](const Allocation& /*allocation*/) -> Given { return Currency(); }},
    AllocationColumn{"TransactionDate", DateOfPayment},
    AllocationColumn{"InvoiceDate", DateOfPayment},
    AllocationColumn{"TransactionInvNum", [](const Allocation& allocation) { return allocation.number; }},
    AllocationColumn{"TransactionPayAmtApplied",
                     [](const Allocation& allocation) -> Given { return allocation.amount; }},
    AllocationColumn{"QBLinkID", [](const Allocation& allocation) -> Given { return allocation.arrival.txnId; }},
    AllocationColumn{"LastUpdated", [](const Allocation& /*allocation*/) { return PresentMoment(); }},
};

// The payments of a record, and the table that says where they go.
struct Booked {
  const TxnArrival& arrival;
  std::string money;                    // keys
  std::optional<std::string> discount;  //
  ado::Recordset& allocations;
};

void Begin(const Booked& booked, const Allocation& allocation) {
  booked.allocations.AddNew();
  WriteColumns<Allocation>(booked.allocations, kAllocationKeys, allocation);
}

void Finish(const Booked& booked, const Allocation& allocation) {
  WriteColumns<Allocation>(booked.allocations, kAllocationColumns, allocation);
  booked.allocations.Update();
}

// The payer's own project, which comes in first; "" when there is none for all that.
std::string PulledProject(const TxnArrival& arrival) {
  const auto listId = arrival.record["CustomerRef"]["ListID"].GetValue();
  TransferCustomerOrJobFromQB(listId, &arrival.connection, "Project");
  return LookUp(arrival.connection, Sql("SELECT ProjectID FROM Project WHERE QBLINKID = '{}';", listId));
}

Currency DiscountOf(const Record& entry) { return AmountOf(entry["DiscountAmount"]).value_or(Currency()); }

bool IsInvoiceHere(const TxnArrival& arrival, std::string_view txnId) {
  std::string number;
  IgnoreErrors([&] {
    number =
        LookUp(arrival.connection, Sql("SELECT TransactionInvNum FROM TransactionTable WHERE QBLinkID = '{}';", txnId));
  });
  return !number.empty();
}

enum class EntryEnd : std::uint8_t { Done, LeavesRecord };

EntryEnd Allocate(const Booked& booked, const Record& entry) {
  const auto& arrival = booked.arrival;
  const auto invoice = entry["TxnID"].GetValueOrEmpty();
  if (invoice.empty() || !IsInvoiceHere(arrival, invoice)) return EntryEnd::Done;
  auto project =
      LookUp(arrival.connection, Sql("SELECT ProjectID FROM TransactionTable WHERE QBLinkID = '{}';", invoice));
  if (project.empty()) project = PulledProject(arrival);
  if (project.empty()) return EntryEnd::LeavesRecord;
  Allocation allocation = {.arrival = arrival,
                           .payId = booked.money,
                           .projectId = std::move(project),
                           .number = TextOf(entry["RefNumber"]),
                           .amount = AmountOf(entry["Amount"]).value_or(Currency())};
  Begin(booked, allocation);
  Finish(booked, allocation);
  if (!booked.discount) return EntryEnd::Done;
  allocation.payId = *booked.discount;
  allocation.amount = DiscountOf(entry);
  if (allocation.amount == Currency()) return EntryEnd::Done;
  Begin(booked, allocation);
  Finish(booked, allocation);
  return EntryEnd::Done;
}

// Money ahead of any invoice. The row is begun before its project is looked for: without one it is dropped.
void BookRetainer(const Booked& booked) {
  const auto& arrival = booked.arrival;
  Allocation retainer = {.arrival = arrival,
                         .payId = booked.money,
                         .projectId = arrival.values[0],
                         .number = std::string("0"),
                         .amount = AmountOf(arrival.record["TotalAmount"]).value_or(Currency())};
  Begin(booked, retainer);
  if (retainer.projectId.empty()) retainer.projectId = PulledProject(arrival);
  if (retainer.projectId.empty()) return;
  Finish(booked, retainer);
  IgnoreErrors([&] {
    arrival.connection.Execute(Sql("UPDATE Payment SET PayRetainer = True WHERE PayID = '{}';", booked.money), nullptr);
  });
}

void Write(const TxnArrival& arrival) {
  auto money = AddMoney(arrival);
  const auto applied = arrival.record["AppliedToTxnRetList"];
  Currency discounts;
  for (std::size_t i = 0; i < applied.Count(); ++i) discounts = discounts + DiscountOf(applied.GetAt(i));
  std::optional<std::string> discount;
  if (discounts != Currency())
    discount = AddPayment({.arrival = arrival, .amount = discounts, .method = kCreditMethod});
  const OpenTable table(arrival.connection, "TransactionTable");
  const Booked booked = {
      .arrival = arrival, .money = std::move(money), .discount = std::move(discount), .allocations = table.Rows()};
  if (applied.IsNothing()) {
    BookRetainer(booked);
    return;
  }
  for (std::size_t i = 0; i < applied.Count(); ++i) {
    if (Allocate(booked, applied.GetAt(i)) == EntryEnd::LeavesRecord) return;
  }
}

// --- Description -----------------------------------------------------------------------------------------------------

std::optional<std::string> ShownCustomer(const Record& payment) { return CustomerName(payment); }

constexpr std::array kLinks = {
    TxnLink{.reference = "CustomerRef",
            .keySelect = "SELECT ProjectID FROM Project WHERE QBLINKID = '",
            .unknown = Unknown::StaysEmpty},
    TxnLink{.reference = "CustomerRef",
            .keySelect = "SELECT ClientID FROM Project WHERE QBLINKID = '",
            .otherwise = "SELECT ClientID FROM Client WHERE QBLINKID = '",
            .failed = FailedLook::IsTold},
};

constexpr TxnTable kPayments = {
    .tableName = "Payment",
    .keyColumn = "PayID",
    .get =
        {
            .texts = {.routine = "MovePaymentsToTW",
                      .shown = "Getting Payments from QuickBooks...",
                      .log = "Error transfering Payment to Tallywick. Customer = ",
                      .afterError = AfterError::AsksAndLeaves,
                      .askedWith = BoxIcon::Question},
            .links = kLinks,
            // A payment that was applied to no invoice here has no row there, and comes once more.
            .hereIn = "TransactionTable",
            .looks = LooksFirst::ForTheLinks,
            .pull = CustomerPull::Client,
            .shown = ShownCustomer,
            .name = CustomerName,
            .write = Write,
        },
};

}  // namespace

void MovePaymentsToTW(const GetCall& call) { GetTransactions(kPayments, call); }

}  // namespace twqb
