#include <fmt/core.h>

#include <algorithm>
#include <array>

#include "engine/DependentPull.h"
#include "engine/Mapping.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

void PullCustomer(CustomerPull pull, const Record& record, ado::Connection& connection) {
  if (pull == CustomerPull::Nothing) return;
  const auto customer = record["CustomerRef"];
  if (customer.IsNothing() || CustomerName(record).find(':') != std::string::npos) return;
  TransferCustomerOrJobFromQB(customer["ListID"].GetValue(), &connection, pull == CustomerPull::Client ? "Client" : "");
}

// What a reference of a transaction is to, for people.
std::string_view WordsFor(std::string_view reference) {
  struct Words {
    std::string_view reference;
    std::string_view words;
  };
  constexpr std::array kWords = {Words{"CustomerRef", "customer or job"}, Words{"EntityRef", "employee or vendor"},
                                 Words{"ItemServiceRef", "service item"}};
  const auto* found = std::ranges::find(kWords, reference, &Words::reference);
  return found == kWords.end() ? reference : found->words;
}

std::string WhyUnknown(const Record& record, std::string_view reference) {
  const auto referred = record[reference];
  const auto what = WordsFor(reference);
  if (referred.IsNothing()) return fmt::format("it has no {}", what);
  return fmt::format("{} {} is not here", what, referred["FullName"].GetValueOrEmpty());
}

class TxnGetWork final : public RecordWork {
 public:
  explicit TxnGetWork(const TxnTable& txn) : txn_(txn), get_(txn.get) {}

  [[nodiscard]] std::optional<std::string> ShownOf(const Record& record) const override {
    return get_.shown == nullptr ? std::nullopt : get_.shown(record);
  }

  RecordEnd TakeRecord(RecordWalk& walk, const Record& record) override {
    if (get_.name != nullptr) walk.Name(get_.name(record));
    if (get_.admit != nullptr && !get_.admit(record)) {
      if (IsObserved()) NoteIdentifier(record["TxnID"].GetValueOrEmpty());
      NoteFate(Fate::PassedOver, get_.stays);
      return RecordEnd::Done;
    }
    auto& connection = walk.Connection();
    PullCustomer(get_.pull, record, connection);
    const auto txnId = record["TxnID"].GetValue();
    NoteIdentifier(txnId);
    if (get_.looks == LooksFirst::ForTheRecord && IsHere(connection, txnId)) return RecordEnd::Done;
    const auto values = ValuesOf(record, connection);
    if (!values) return RecordEnd::Done;
    if (get_.looks == LooksFirst::ForTheLinks && IsHere(connection, txnId)) return RecordEnd::Done;
    get_.write({.record = record, .txnId = txnId, .values = *values, .rows = walk.Rows(), .connection = connection});
    NoteFate(Fate::Added);
    NoteKeyOf(walk.Rows(), txn_.keyColumn);
    return RecordEnd::Done;
  }

 private:
  [[nodiscard]] bool IsHere(ado::Connection& connection, std::string_view txnId) const {
    const bool isHere = IsLinkedTo(connection, get_.hereIn.empty() ? txn_.tableName : get_.hereIn, txnId);
    if (isHere) NoteFate(Fate::LeftAsItWas, "it is here, and never comes twice");
    return isHere;
  }

  // The keys of what the record refers to, as the links' look-ups give them; nothing where one is missing without which
  // the record does not come.
  [[nodiscard]] std::optional<std::vector<std::string>> ValuesOf(const Record& record,
                                                                 ado::Connection& connection) const {
    std::vector<std::string> values;
    for (const auto& link : get_.links) {
      if (link.optional && record[link.reference].IsNothing()) {
        values.resize(values.size() + link.values);
        continue;
      }
      const bool looksElsewhere = !link.otherwise.empty() && !values.empty() && values.back().empty();
      auto found = Find(link, looksElsewhere ? link.otherwise : link.keySelect, record, connection);
      if (found.size() < link.values || found.front().empty()) {
        if (link.unknown == Unknown::PassesOver) {
          NoteFate(Fate::PassedOver, [&] { return WhyUnknown(record, link.reference); });
          return std::nullopt;
        }
        found.assign(link.values, {});
      }
      for (auto& value : found) values.push_back(std::move(value));
    }
    return values;
  }

  // As many values as the link has, or fewer.
  [[nodiscard]] static std::vector<std::string> Find(const TxnLink& link, std::string_view select, const Record& record,
                                                     ado::Connection& connection) {
    std::vector<std::string> found;
    const auto listId = [&] { return record[link.reference]["ListID"].GetValue(); };
    if (link.required) static_cast<void>(listId());
    const auto look = [&] {
      const auto rows = connection.OpenRecordset(Sql("{}{}';", Sql::Own(select), listId()), ado::CursorType::Static,
                                                 ado::LockType::ReadOnly);
      if (rows->Eof()) return;
      for (std::size_t i = 0; i < link.values; ++i) found.push_back(ToText(rows->FieldAt(static_cast<int>(i))));
    };
    if (link.failed == FailedLook::IsTold) {
      look();
    } else {
      IgnoreErrors(look);
    }
    return found;
  }

  const TxnTable& txn_;
  const TxnGet& get_;
};

}  // namespace

void GetTransactions(const TxnTable& txn, const GetCall& call) {
  constexpr std::size_t kAlways = 1;
  TxnGetWork work(txn);
  RecordWalk(txn.get.texts, txn.tableName, call).Walk(kAlways, work);
}

std::string CustomerName(const Record& record) { return FieldAtPath(record, "CustomerRef.FullName").GetValueOrEmpty(); }

bool IsLinkedTo(ado::Connection& connection, std::string_view table, std::string_view link) {
  const auto found = connection.OpenRecordset(Sql("SELECT QBLinkID from {} WHERE QBLinkID = '{}';", table, link),
                                              ado::CursorType::Static, ado::LockType::ReadOnly);
  return !found->Eof();
}

std::string LookUp(ado::Connection& connection, const Sql& statement) {
  return FirstField(*connection.OpenRecordset(statement, ado::CursorType::Static, ado::LockType::ReadOnly));
}

}  // namespace twqb
