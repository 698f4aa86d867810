// How payments and credits settle charges: what a received payment is set against, and what becomes of that when the
// payment is deleted.
//
// A settlement is planned first, against what is open in the file, and carried out when nothing can refuse it any more.
#pragma once

#include <map>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/companyfile/ListRecord.h"
#include "adapters/companyfile/TxnRequests.h"
#include "adapters/companyfile/TxnStore.h"

namespace twqb::company {

class TxnSettlement {
 public:
  // Of a payment by `payer` that stands on the account `accountId`. What is given must outlive the object.
  TxnSettlement(const TxnContext& context, TxnStore& txns, const ListRecord& payer, std::string accountId);

  // Plans what the request says: charges named one by one, the oldest ones, or none. Throws Refused: 3120 for a charge
  // or credit that is not there or is not the payer's, 3240 for one of another kind, 3210 for more than is open or more
  // than `total`. Where the request says no total, the parts that it pays make it up.
  void Plan(pugi::xml_node fields, std::optional<Currency> total);

  [[nodiscard]] Currency Total() const { return total_; }
  [[nodiscard]] Currency Unused() const { return total_ - used_; }
  // Writes the links and what is open now.
  void CarryOut(const std::string& paymentId);

  // Takes back what the payment settled. Its links stay until it is deleted.
  static void Undo(TxnStore& txns, const std::string& paymentId, const ClockReading& clock);

 private:
  void PlanNamed(pugi::xml_node entry);
  void PlanCredit(pugi::xml_node entry, TxnRecord& target, const std::string& targetId);
  void PlanOldest();
  // The transaction as it will be after what is planned already.
  TxnRecord& Touch(std::string_view txnId, Settlement settlement);
  [[nodiscard]] bool IsPayers(const TxnRecord& record) const;

  const TxnContext& context_;
  TxnStore& txns_;
  const ListRecord& payer_;
  std::string accountId_;
  Currency total_;
  Currency used_;
  std::vector<Application> steps_;
  std::map<std::string, TxnRecord, std::less<>> touched_;
};

// Records that a transaction's open amount has changed.
void MarkChanged(TxnRecord& record, const ClockReading& clock);

}  // namespace twqb::company
