#include "adapters/companyfile/UnknownSums.h"

#include <utility>

#include "adapters/companyfile/ListRecord.h"
#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/TxnStore.h"

namespace twqb::company {

namespace {

class Sums {
 public:
  explicit Sums(CompanyStore& store) : store_(store), txns_(store.Database()) {}

  // What is applied to it may be refused, and then is not applied to others either.
  void AddAllOf(const std::string& txnId) {
    AddTxn(txnId);
    for (const auto& step : txns_.ApplicationsOf(txnId)) {
      AddEnds(step);
      for (const auto& other : txns_.ApplicationsMadeBy(step.paymentId)) AddEnds(other);
    }
  }

  [[nodiscard]] std::set<std::string, std::less<>> Found() && { return std::move(found_); }

 private:
  void AddEnds(const Application& step) {
    for (const auto& end : {step.paymentId, step.sourceId, step.targetId}) {
      if (!end.empty() && !found_.contains(end)) AddTxn(end);
    }
  }

  void AddTxn(const std::string& txnId) {
    found_.insert(txnId);
    const auto txn = txns_.Find(txnId);
    if (!txn) return;
    if (txn->kind->entityBalance != BalanceEffect::None) AddRecord(txn->entityId);
    if (txn->kind->accountBalance != BalanceEffect::None) AddRecord(txn->accountId);
    if (txn->kind->settlement != Settlement::Payment) return;
    pugi::xml_document body;
    ParseBody(body, txn->body);
    AddRecord(std::string(ChildText(ChildElement(body, "DepositToAccountRef"), "ListID")));
  }

  // It, and what it counts for.
  void AddRecord(std::string listId) {
    while (!listId.empty()) {
      found_.emplace(ToldId(listId));
      const auto found = store_.FindById(listId);
      listId = found ? found->record.parentId : std::string();
    }
  }

  CompanyStore& store_;
  TxnStore txns_;
  std::set<std::string, std::less<>> found_;
};

}  // namespace

std::set<std::string, std::less<>> UnknownSums(CompanyStore& store) {
  Sums sums(store);
  for (const auto& txnId : store.UnknownAmounts()) sums.AddAllOf(txnId);
  return std::move(sums).Found();
}

}  // namespace twqb::company
