#include "cli/books/Balances.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "platform/Text.h"

namespace twqb::cli {

namespace {

struct CauseWords {
  std::string_view name;
  std::string_view text;
};
// In the order of the enumeration.
constexpr std::array kCauses = {
    CauseWords{"neverSent", "invoice in BillingDb alone: it was not sent"},
    CauseWords{"belowNothing", "invoice in BillingDb alone: what is below nothing never goes"},
    CauseWords{"twinIsGone", "invoice in BillingDb alone: what its link leads to is gone"},
    CauseWords{"linkIsTaken", "invoice in BillingDb alone: another one has its link"},
    CauseWords{"otherCustomer", "invoice of another client or project on the other side"},
    CauseWords{"pending", "invoice that is pending in QuickBooks, where it is not owed yet"},
    CauseWords{"notInBilling", "invoice or credit memo in QuickBooks alone"},
    CauseWords{"amountDiffers", "invoice of different amounts"},
    CauseWords{"paymentInBillingAlone", "payment in BillingDb alone"},
    CauseWords{"moreThanIsOpen", "payment in BillingDb alone: of more than QuickBooks has open for its invoice"},
    CauseWords{"invoiceIsPaid", "payment in BillingDb alone: its invoice is paid in QuickBooks already"},
    CauseWords{"debit", "payment in BillingDb alone: a debit never goes"},
    CauseWords{"paymentInQuickBooksAlone", "payment in QuickBooks alone"},
    CauseWords{"paymentDiffers", "payment of different amounts"},
    CauseWords{"otherCredit", "invoice or credit memo set off in QuickBooks by what is no payment"},
    CauseWords{"invoiceIsDraft", "payment of an invoice that is still a draft in BillingDb, in no balance"},
    CauseWords{"noSuchInvoice", "payment of an invoice that BillingDb does not have, in no balance"},
    CauseWords{"notApplied", "retainers and payments that went to nothing yet, in no balance"},
};
static_assert(kCauses.size() == static_cast<std::size_t>(Cause::NotApplied) + 1);

// Keys of BillingDb match without case.
using InvoiceKey = std::pair<std::string, std::string>;
InvoiceKey KeyOf(const std::string& number, const std::string& project) {
  return {FoldCase(number), FoldCase(project)};
}

// An invoice with what was paid to it, and its twin.
struct HereInvoice {
  const BilledInvoice* row = nullptr;
  std::vector<const Allocation*> paid = {};
  Currency open = {};
  const BookedDocument* twin = nullptr;
  Cause alone = Cause::NeverSent;  // without a twin
};

struct ThereDocument {
  const BookedDocument* record = nullptr;
  std::vector<const Settlement*> paid = {};
  bool isTwin = false;
  Cause alone = Cause::NotInBilling;  // as no invoice's twin
};

// Why a payment without a link stays here. What is open in QuickBooks holds it back as it does when payments are sent.
Cause WhyInBillingAlone(const Allocation& allocation, const BookedDocument& twin) {
  if (allocation.method == Method::Debit) return Cause::Debit;
  const auto none = Currency();
  const bool isCreditMemo = twin.amount < none;
  if (isCreditMemo) return Cause::PaymentInBillingAlone;
  if (twin.open == none) return Cause::InvoiceIsPaid;
  return allocation.amount > twin.open ? Cause::MoreThanIsOpen : Cause::PaymentInBillingAlone;
}

struct PaidOnBothSides {
  std::string name;
  Currency here = {};
  Currency there = {};
  bool isHere = false;
  bool isThere = false;
};

class Comparison {
 public:
  Comparison(const BilledSide& billed, const BookedSide& booked) {
    for (const auto& row : billed.invoices) invoices_.push_back({.row = &row, .open = row.billed});
    for (const auto& record : booked.documents) documents_.emplace(record.id, ThereDocument{.record = &record});
    Allocate(billed);
    for (const auto& settlement : booked.settlements) {
      const auto found = documents_.find(settlement.document);
      if (found != documents_.end()) found->second.paid.push_back(&settlement);
    }
    for (auto& invoice : invoices_) FindTwin(invoice);
    AddUp();
    AddUnused(booked.unused);
  }

  [[nodiscard]] std::vector<Balance> Result() {
    std::vector<Balance> all;
    for (auto& [payer, balance] : balances_) {
      const bool isEven = balance.Difference() == Currency() && balance.records.empty();
      if (isEven && balance.billing == Currency() && balance.quickBooks == Currency()) continue;
      balance.payer = payer;
      // Where all that happened is the same on both sides, money that waits for its invoice is no news.
      if (const auto found = unused_.find(payer); found != unused_.end() && !isEven) {
        balance.records.push_back(found->second);
      }
      all.push_back(std::move(balance));
    }
    std::ranges::stable_sort(
        all, {}, [](const Balance& balance) { return std::tuple(!balance.payer.customer.empty(), balance.payer); });
    return all;
  }

 private:
  // Of two invoices of one number and project the first one is paid, as it is when payments are sent.
  void Allocate(const BilledSide& billed) {
    std::map<InvoiceKey, HereInvoice*> byKey;
    for (auto& invoice : invoices_) byKey.emplace(KeyOf(invoice.row->number, invoice.row->project), &invoice);
    std::set<InvoiceKey> drafts;
    for (const auto& draft : billed.drafts) drafts.insert(KeyOf(draft.number, draft.project));
    for (const auto& allocation : billed.allocations) {
      if (allocation.method == Method::OutOfRetainer) UseRetainer(allocation.payer, allocation.amount);
      if (allocation.isRetainer) {
        auto& unused = Unused(allocation.payer);
        unused.billingUnused = unused.billingUnused + allocation.amount;
        continue;
      }
      const auto key = KeyOf(allocation.number, allocation.project);
      const auto found = byKey.find(key);
      if (found == byKey.end()) {
        const auto cause = drafts.contains(key) ? Cause::InvoiceIsDraft : Cause::NoSuchInvoice;
        balances_[allocation.payer].records.push_back({.cause = cause,
                                                       .invoice = allocation.number,
                                                       .payment = allocation.payment,
                                                       .billingUnused = allocation.amount});
        continue;
      }
      found->second->paid.push_back(&allocation);
      found->second->open = found->second->open - allocation.amount;
    }
    for (const auto& invoice : invoices_) UseRetainer(invoice.row->payer, invoice.row->retainer);
  }

  BalanceRecord& Unused(const Payer& payer) {
    return unused_.try_emplace(payer, BalanceRecord{.cause = Cause::NotApplied}).first->second;
  }
  void UseRetainer(const Payer& payer, Currency amount) {
    if (amount == Currency()) return;
    auto& unused = Unused(payer);
    unused.billingUnused = unused.billingUnused - amount;
  }
  void AddUnused(const std::vector<UnusedPayment>& payments) {
    for (const auto& payment : payments) {
      auto& unused = Unused(payment.payer);
      unused.quickBooksUnused = unused.quickBooksUnused + payment.amount;
    }
    std::erase_if(unused_, [](const auto& entry) {
      return entry.second.billingUnused == Currency() && entry.second.quickBooksUnused == Currency();
    });
  }

  void FindTwin(HereInvoice& invoice) {
    const auto& row = *invoice.row;
    if (row.link.empty()) {
      invoice.alone = row.billed < Currency() ? Cause::BelowNothing : Cause::NeverSent;
      return;
    }
    const auto found = documents_.find(row.link);
    if (found == documents_.end()) {
      invoice.alone = Cause::TwinIsGone;
    } else if (found->second.isTwin) {
      invoice.alone = Cause::LinkIsTaken;
    } else if (found->second.record->payer != row.payer) {
      invoice.alone = Cause::OtherCustomer;
      found->second.alone = Cause::OtherCustomer;
    } else {
      found->second.isTwin = true;
      invoice.twin = found->second.record;
    }
  }

  void AddUp() {
    for (const auto& invoice : invoices_) {
      auto& balance = balances_[invoice.row->payer];
      balance.billing = balance.billing + invoice.open;
      if (invoice.twin != nullptr) {
        TellPair(balance, invoice);
      } else {
        Tell(balance, {.cause = invoice.alone, .invoice = invoice.row->number, .billing = invoice.open});
      }
    }
    for (const auto& [id, document] : documents_) {
      const auto& record = *document.record;
      if (record.isPending) continue;
      auto& balance = balances_[record.payer];
      balance.quickBooks = balance.quickBooks + record.open;
      if (document.isTwin) continue;
      Tell(balance, {.cause = document.alone, .invoice = record.number, .quickBooks = record.open});
    }
  }

  // What comes to nothing explains nothing.
  static void Tell(Balance& balance, BalanceRecord record) {
    if (record.Difference() != Currency()) balance.records.push_back(std::move(record));
  }

  void TellPair(Balance& balance, const HereInvoice& invoice) const {
    const auto& twin = *invoice.twin;
    const auto& number = invoice.row->number;
    if (twin.isPending) {
      Tell(balance, {.cause = Cause::Pending, .invoice = number, .billing = invoice.open});
      return;
    }
    Tell(balance,
         {.cause = Cause::AmountDiffers, .invoice = number, .billing = invoice.row->billed, .quickBooks = twin.amount});
    const auto settled = TellPayments(balance, invoice, documents_.at(twin.id).paid);
    // Such as a credit memo that was set against the invoice: the one is less open for it, and so is the other.
    Tell(balance, {.cause = Cause::OtherCredit, .invoice = number, .quickBooks = twin.open - (twin.amount - settled)});
  }

  // Gives what payments have settled in QuickBooks.
  static Currency TellPayments(Balance& balance, const HereInvoice& invoice,
                               const std::vector<const Settlement*>& settlements) {
    Currency settled;
    // One payment in QuickBooks may be two here: the money, and the discount.
    std::map<std::string, PaidOnBothSides> payments;
    for (const auto* settlement : settlements) {
      auto& paid = payments[settlement->id];
      paid.name = settlement->payment;
      paid.isThere = true;
      paid.there = paid.there + settlement->amount;
      settled = settled + settlement->amount;
    }
    const auto none = Currency();
    for (const auto* allocation : invoice.paid) {
      if (allocation->link.empty()) {
        Tell(balance, {.cause = WhyInBillingAlone(*allocation, *invoice.twin),
                       .invoice = invoice.row->number,
                       .payment = allocation->payment,
                       .billing = none - allocation->amount});
        continue;
      }
      auto& paid = payments[allocation->link];
      if (paid.name.empty()) paid.name = allocation->payment;
      paid.isHere = true;
      paid.here = paid.here + allocation->amount;
    }
    for (const auto& [id, paid] : payments) {
      const auto alone = paid.isHere ? Cause::PaymentInBillingAlone : Cause::PaymentInQuickBooksAlone;
      Tell(balance, {.cause = paid.isHere && paid.isThere ? Cause::PaymentDiffers : alone,
                     .invoice = invoice.row->number,
                     .payment = paid.name,
                     .billing = none - paid.here,
                     .quickBooks = none - paid.there});
    }
    return settled;
  }

  std::vector<HereInvoice> invoices_;
  std::map<std::string, ThereDocument> documents_;
  std::map<Payer, Balance> balances_;
  std::map<Payer, BalanceRecord> unused_;
};

}  // namespace

std::string_view CauseName(Cause cause) { return kCauses.at(static_cast<std::size_t>(cause)).name; }
std::string_view CauseText(Cause cause) { return kCauses.at(static_cast<std::size_t>(cause)).text; }

std::vector<Balance> CompareBalances(const BilledSide& billed, const BookedSide& booked) {
  return Comparison(billed, booked).Result();
}

}  // namespace twqb::cli
