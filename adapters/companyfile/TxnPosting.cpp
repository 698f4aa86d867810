#include "adapters/companyfile/TxnPosting.h"

#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/TxnAmounts.h"

namespace twqb::company {

namespace {

class Poster {
 public:
  Poster(CompanyStore& store, Posting posting) : store_(store), posting_(posting) {}

  void Add(std::string_view listId, BalanceEffect effect, Currency amount) {
    if (listId.empty() || effect == BalanceEffect::None || amount == Currency{}) return;
    const bool raises = (effect == BalanceEffect::Raises) == (posting_ == Posting::Enter);
    store_.AddToBalance(listId, raises ? amount : Negated(amount));
  }

 private:
  CompanyStore& store_;
  Posting posting_;
};

}  // namespace

void PostBalances(CompanyStore& store, TxnStore& txns, const TxnRecord& txn, Posting posting) {
  if (!txn.posted) return;
  const auto& kind = *txn.kind;
  Poster poster(store, posting);
  if (kind.settlement != Settlement::Payment) {
    poster.Add(txn.entityId, kind.entityBalance, txn.amount);
    poster.Add(txn.accountId, kind.accountBalance, txn.amount);
    return;
  }
  auto settled = txn.open;
  poster.Add(txn.entityId, kind.entityBalance, txn.open);
  for (const auto& step : txns.ApplicationsMadeBy(txn.txnId)) {
    if (step.sourceId != txn.txnId) continue;
    const auto target = txns.Find(step.targetId);
    poster.Add(target->entityId, kind.entityBalance, step.amount + step.discount);
    settled = settled + step.amount + step.discount;
  }
  poster.Add(txn.accountId, kind.accountBalance, settled);
  pugi::xml_document body;
  ParseBody(body, txn.body);
  poster.Add(ChildText(ChildElement(body, "DepositToAccountRef"), "ListID"), BalanceEffect::Raises, txn.amount);
}

}  // namespace twqb::company
