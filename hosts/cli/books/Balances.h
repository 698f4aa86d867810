// What clients owe, as each side has it, and for every difference the records that make it up.
//
// Values alone: nothing here reads a file (BalanceBooks does) or prints (BalancesCommand). The amounts of the records
// behind a difference add up to it, so that none is left without a cause.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Currency.h"

namespace twqb::cli {

// Whose balance it is. A client has a balance of its own beside those of its projects. A customer of QuickBooks that no
// link leads to has its full name alone.
struct Payer {
  std::string client;
  std::string project;
  std::string customer;
  friend auto operator<=>(const Payer&, const Payer&) = default;
};

// --- BillingDb -------------------------------------------------------------------------------------------------------

struct BilledInvoice {
  Payer payer;
  std::string number;
  std::string project;  // as the row has it
  std::string link;
  Currency billed;
  Currency retainer;  // how much of a retainer it has used up
};

enum class Method : std::uint8_t { Money, Debit, OutOfRetainer };

// What of a payment goes to an invoice: that of its number and project.
struct Allocation {
  Payer payer;
  std::string number;
  std::string project;  // as the row has it
  std::string payment;  // the payment's reference, or else its key
  std::string link;
  Currency amount;
  Method method = Method::Money;
  bool isRetainer = false;
};

// An invoice that is none yet: it is owed by nobody, and never goes.
struct DraftInvoice {
  std::string number;
  std::string project;  // as the row has it
};

struct BilledSide {
  std::vector<BilledInvoice> invoices;
  std::vector<DraftInvoice> drafts = {};
  std::vector<Allocation> allocations;
};

// --- QuickBooks ------------------------------------------------------------------------------------------------------

// An invoice; a credit memo is one of negative amounts.
struct BookedDocument {
  Payer payer;
  std::string id;
  std::string number;
  Currency amount;
  Currency open;
  bool isPending = false;
};

// What of a payment went to a document, discounts included.
struct Settlement {
  std::string payment;  // its reference, or else its identifier
  std::string id;
  std::string document;
  Currency amount;
};

// What of a payment went nowhere yet.
struct UnusedPayment {
  Payer payer;
  Currency amount;
};

struct BookedSide {
  std::vector<BookedDocument> documents;
  std::vector<Settlement> settlements;
  std::vector<UnusedPayment> unused;
};

// --- Side by side ----------------------------------------------------------------------------------------------------

enum class Cause : std::uint8_t {
  NeverSent,
  BelowNothing,
  TwinIsGone,
  LinkIsTaken,
  OtherCustomer,
  Pending,
  NotInBilling,
  AmountDiffers,
  PaymentInBillingAlone,
  MoreThanIsOpen,
  InvoiceIsPaid,
  Debit,
  PaymentInQuickBooksAlone,
  PaymentDiffers,
  OtherCredit,
  InvoiceIsDraft,
  NoSuchInvoice,
  NotApplied,
};

// The name of a cause for programs, and in words.
[[nodiscard]] std::string_view CauseName(Cause cause);
[[nodiscard]] std::string_view CauseText(Cause cause);

struct BalanceRecord {
  Cause cause;
  std::string invoice = {};  // its number
  std::string payment = {};
  Currency billing = {};  // what it adds to the balance of either side
  Currency quickBooks = {};
  // Of money that was applied to nothing: how much; it adds to no balance.
  Currency billingUnused = {};
  Currency quickBooksUnused = {};
  [[nodiscard]] Currency Difference() const { return billing - quickBooks; }
};

struct Balance {
  Payer payer;
  Currency billing;
  Currency quickBooks;
  std::vector<BalanceRecord> records;  // none where the sides agree in all
  [[nodiscard]] Currency Difference() const { return billing - quickBooks; }
};

// The balances of all who owe something on either side, or about whom the sides differ, by client and project; then
// customers without a link.
[[nodiscard]] std::vector<Balance> CompareBalances(const BilledSide& billed, const BookedSide& booked);

}  // namespace twqb::cli
