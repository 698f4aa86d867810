#include <fmt/core.h>

#include "services/Conversions.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

class TxnGetWork final : public RecordWork {
 public:
  explicit TxnGetWork(const TxnTable& txn) : txn_(txn), get_(txn.get) {}

  [[nodiscard]] std::optional<std::string> ShownOf(const Record& record) const override {
    if (get_.shown == nullptr) return std::nullopt;
    const auto shown = get_.shown(record);
    return shown.IsNothing() ? std::nullopt : std::optional(shown.GetValue());
  }

  RecordEnd TakeRecord(RecordWalk& walk, const Record& record) override {
    if (get_.name != nullptr) walk.Name(get_.name(record));
    auto& connection = walk.Connection();
    if (get_.pull != nullptr) get_.pull(record, connection);
    const auto txnId = record["TxnID"].GetValue();
    if (IsHere(connection, txnId)) return RecordEnd::Done;
    const auto values = ValuesOf(record, connection);
    if (!values) return RecordEnd::Done;
    auto& rows = walk.Rows();
    rows.AddNew();
    rows.SetField("QBLinkID", txnId);
    get_.writeRow(rows, record, *values, connection);
    rows.SetField(txn_.keyColumn, GenerateGUID());
    rows.SetField("LastUpdated", LocalToUTC(TheMachine().Now()));
    rows.Update();
    return RecordEnd::Done;
  }

 private:
  // Identifiers hold no quote.
  [[nodiscard]] bool IsHere(ado::Connection& connection, std::string_view txnId) const {
    const auto found =
        connection.OpenRecordset(fmt::format("SELECT QBLinkID from {} WHERE QBLinkID = '{}';", txn_.tableName, txnId),
                                 ado::CursorType::Static, ado::LockType::ReadOnly);
    return !found->Eof();
  }

  // The keys of what the record refers to, as the links' look-ups give them; nothing where one is missing or can't be
  // looked up.
  [[nodiscard]] std::optional<std::vector<std::string>> ValuesOf(const Record& record,
                                                                 ado::Connection& connection) const {
    std::vector<std::string> values;
    for (const auto& link : get_.links) {
      if (link.optional && record[link.reference].IsNothing()) {
        values.resize(values.size() + link.values);
        continue;
      }
      std::vector<std::string> found;
      IgnoreErrors([&] {
        const auto rows =
            connection.OpenRecordset(fmt::format("{}{}';", link.keySelect, record[link.reference]["ListID"].GetValue()),
                                     ado::CursorType::Static, ado::LockType::ReadOnly);
        if (rows->Eof()) return;
        for (std::size_t i = 0; i < link.values; ++i) found.push_back(ToText(rows->FieldAt(static_cast<int>(i))));
      });
      if (found.size() < link.values || found.front().empty()) return std::nullopt;
      for (auto& value : found) values.push_back(std::move(value));
    }
    return values;
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

}  // namespace twqb
