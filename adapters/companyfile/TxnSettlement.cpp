#include "adapters/companyfile/TxnSettlement.h"

#include <algorithm>

#include "adapters/companyfile/References.h"
#include "adapters/companyfile/Refused.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/TxnAmounts.h"
#include "adapters/companyfile/TxnLines.h"
#include "messages/ValueFormat.h"

namespace twqb::company {

namespace {

// The fields as messages call them.
constexpr std::string_view kPaymentAmount = "AppliedToTxnAdd payment amount";
constexpr std::string_view kDiscountAmount = "AppliedToTxnAdd discount amount";
constexpr std::string_view kAppliedAmount = "SetCredit applied amount";

constexpr std::string_view kTooMuchForCharge = "You cannot pay more than the amount due.";
constexpr std::string_view kTooMuchForPayment = "You cannot apply more than the amount of the payment.";
constexpr std::string_view kTooMuchForCredit = "You cannot use more than is left of the credit.";
constexpr std::string_view kNegative = "The amount must not be negative.";

// The amount, not below 0; nothing when it is not given. `spoken` is its name in a message.
std::optional<Currency> ReadPart(pugi::xml_node entry, std::string_view name, std::string_view spoken) {
  const auto text = ChildText(entry, name);
  const auto amount = messages::ParseAmount(text);
  if (amount && *amount < Currency{}) Refuse(status::InvalidValue(spoken, text, kNegative));
  return amount;
}

}  // namespace

void MarkChanged(TxnRecord& record, const ClockReading& clock) {
  record.modified = clock.now;
  record.editSequence = std::max(clock.now, record.editSequence + 1);
}

TxnSettlement::TxnSettlement(const TxnContext& context, TxnStore& txns, const ListRecord& payer, std::string accountId)
    : context_(context), txns_(txns), payer_(payer), accountId_(std::move(accountId)) {}

void TxnSettlement::Plan(pugi::xml_node fields, std::optional<Currency> total) {
  if (total && *total < Currency{}) {
    Refuse(status::InvalidValue("total amount", ChildText(fields, "TotalAmount"), kNegative));
  }
  total_ = total.value_or(Currency{});
  Currency last;
  for (const auto entry : fields.children("AppliedToTxnAdd")) {
    const auto before = used_;
    PlanNamed(entry);
    if (used_ != before) last = used_ - before;
  }
  if (!total) total_ = used_;
  if (used_ > total_) Refuse(status::InvalidValue(kPaymentAmount, MoneyText(last), kTooMuchForPayment));
  if (messages::ParseBool(ChildText(fields, "IsAutoApply")).value_or(false)) PlanOldest();
}

void TxnSettlement::PlanNamed(pugi::xml_node entry) {
  const std::string targetId(ChildText(entry, "TxnID"));
  auto& target = Touch(targetId, Settlement::Charge);
  const auto payment = ReadPart(entry, "PaymentAmount", kPaymentAmount);
  const auto discount = ReadPart(entry, "DiscountAmount", kDiscountAmount);
  const auto credits = entry.child("SetCredit");
  if (!payment && !discount && !credits) Refuse(status::MissingElement("PaymentAmount"));

  Application step{.paymentId = {},
                   .sourceId = {},
                   .targetId = targetId,
                   .amount = payment.value_or(Currency{}),
                   .discount = discount.value_or(Currency{}),
                   .discountAccountId = {}};
  if (step.amount > target.open) {
    Refuse(status::InvalidValue(kPaymentAmount, MoneyText(step.amount), kTooMuchForCharge));
  }
  target.open = target.open - step.amount;
  if (step.discount > target.open) {
    Refuse(status::InvalidValue(kDiscountAmount, MoneyText(step.discount), kTooMuchForCharge));
  }
  target.open = target.open - step.discount;
  const auto account =
      FindReferenced(context_.store, ChildElement(entry, "DiscountAccountRef"), SpokenName(context_.kind.name));
  if (account) step.discountAccountId = account->record.listId;
  if (step.discount != Currency{} && !account) Refuse(status::MissingElement("DiscountAccountRef"));
  used_ = used_ + step.amount;
  if (payment || discount) steps_.push_back(std::move(step));
  for (const auto credit : entry.children("SetCredit")) PlanCredit(credit, target, targetId);
}

void TxnSettlement::PlanCredit(pugi::xml_node entry, TxnRecord& target, const std::string& targetId) {
  const std::string creditId(ChildText(entry, "CreditTxnID"));
  auto& credit = Touch(creditId, Settlement::Credit);
  const auto amount = ReadPart(entry, "AppliedAmount", kAppliedAmount).value_or(Currency{});
  if (amount > credit.open) Refuse(status::InvalidValue(kAppliedAmount, MoneyText(amount), kTooMuchForCredit));
  if (amount > target.open) Refuse(status::InvalidValue(kAppliedAmount, MoneyText(amount), kTooMuchForCharge));
  credit.open = credit.open - amount;
  target.open = target.open - amount;
  steps_.push_back({.paymentId = {},
                    .sourceId = creditId,
                    .targetId = targetId,
                    .amount = amount,
                    .discount = {},
                    .discountAccountId = {}});
}

void TxnSettlement::PlanOldest() {
  for (const auto& kind : TxnKinds()) {
    if (kind.settlement != Settlement::Charge || kind.account != context_.kind.account) continue;
    txns_.ForEachOpen(kind, payer_.listId, [&](const TxnRecord& charge) {
      if (Unused() <= Currency{}) return TxnStore::Visit::Enough;
      if (charge.accountId != accountId_) return TxnStore::Visit::GoOn;
      const auto part = std::min(charge.open, Unused());
      steps_.push_back({.paymentId = {},
                        .sourceId = {},
                        .targetId = charge.txnId,
                        .amount = part,
                        .discount = {},
                        .discountAccountId = {}});
      used_ = used_ + part;
      auto after = charge;
      after.open = charge.open - part;
      touched_.emplace(charge.txnId, std::move(after));
      return TxnStore::Visit::GoOn;
    });
  }
}

TxnRecord& TxnSettlement::Touch(std::string_view txnId, Settlement settlement) {
  auto touched = touched_.find(txnId);
  if (touched == touched_.end()) {
    auto record = txns_.Find(txnId);
    if (!record) Refuse(status::ObjectNotFound(txnId));
    touched = touched_.emplace(std::string(txnId), std::move(*record)).first;
  }
  const auto& record = touched->second;
  if (record.kind->settlement != settlement || record.kind->account != context_.kind.account) {
    Refuse(status::ReferenceOfWrongKind("TxnID", txnId, SpokenName(context_.kind.name)));
  }
  if (!IsPayers(record)) Refuse(status::ObjectNotFound(txnId));
  return touched->second;
}

// A payer pays for everything below it as well, out of one account, and not before it has been posted.
bool TxnSettlement::IsPayers(const TxnRecord& record) const {
  if (!record.posted || record.accountId != accountId_) return false;
  if (record.entityId == payer_.listId) return true;
  const auto entity = context_.store.FindById(record.entityId);
  const auto below = KeysBelow(payer_.fullKey);
  return entity && below.from < entity->record.fullKey && entity->record.fullKey < below.to;
}

void TxnSettlement::CarryOut(const std::string& paymentId) {
  for (auto& step : steps_) {
    step.paymentId = paymentId;
    if (step.sourceId.empty()) step.sourceId = paymentId;
    txns_.AddApplication(step);
  }
  for (auto& [id, record] : touched_) {
    MarkChanged(record, context_.clock);
    txns_.UpdateOpen(record);
  }
}

void TxnSettlement::Undo(TxnStore& txns, const std::string& paymentId, const ClockReading& clock) {
  std::map<std::string, Currency> regained;
  for (const auto& step : txns.ApplicationsMadeBy(paymentId)) {
    auto& target = regained[step.targetId];
    target = target + step.amount + step.discount;
    if (step.sourceId != paymentId) {
      auto& credit = regained[step.sourceId];
      credit = credit + step.amount;
    }
  }
  for (const auto& [id, amount] : regained) {
    auto record = txns.Find(id);
    record->open = record->open + amount;
    MarkChanged(*record, clock);
    txns.UpdateOpen(*record);
  }
}

}  // namespace twqb::company
