#include "adapters/transcript/TranscriptDatabase.h"

#include <optional>
#include <string>
#include <utility>

#include "adapters/transcript/Recorded.h"
#include "platform/Forwarding.h"

namespace twqb::transcript {

namespace {

using ado::ForwardingConnection;
using ado::ForwardingRecordset;

// A table opened for writing. The row in hand is kept by name as it was first assigned.
class TranscriptRecordset : public ForwardingRecordset {
 public:
  TranscriptRecordset(std::unique_ptr<Recordset> inner, std::string table, TranscriptWriter& writer)
      : ForwardingRecordset(std::move(inner)), table_(std::move(table)), writer_(writer) {}

  void AddNew() override {
    ForwardingRecordset::AddNew();
    action_ = "insert";
    values_ = {};
  }
  void SetField(std::string_view name, Value value) override {
    EventValue shown(value);
    ForwardingRecordset::SetField(name, std::move(value));
    if (action_.empty()) action_ = "update";
    Slot(name) = std::move(shown);
  }
  void Update() override {
    if (action_.empty()) return ForwardingRecordset::Update();
    Record(writer_, "row", {{"table", table_}, {"action", action_}, {"values", values_}},
           [&] { ForwardingRecordset::Update(); });
    Forget();
  }
  void CancelUpdate() override {
    ForwardingRecordset::CancelUpdate();
    Forget();
  }

 private:
  EventValue& Slot(std::string_view name) {
    for (auto& [column, value] : values_.All()) {
      if (SameName(column, name)) return value;
    }
    return values_[name];
  }
  void Forget() {
    action_.clear();
    values_ = {};
  }

  std::string table_;
  TranscriptWriter& writer_;
  std::string action_;  // empty: no edit pending
  EventFields values_;
};

// How many rows a fetched recordset holds. The count serves the record alone, so its failure is none of the call's.
EventValue FetchedRows(const ado::Recordset& rows) {
  try {
    return rows.RecordCount();
  } catch (const PlatformError&) {
    return nullptr;
  }
}

class TranscriptConnection : public ForwardingConnection {
 public:
  TranscriptConnection(std::unique_ptr<Connection> inner, TranscriptWriter& writer)
      : ForwardingConnection(std::move(inner)), writer_(writer) {}

  void SetConnectionString(std::string text) override {
    auto copy = text;
    ForwardingConnection::SetConnectionString(std::move(text));
    connectionString_ = std::move(copy);
  }
  void Open() override {
    Record(writer_, "connect", {{"connectionString", connectionString_}}, [&] { ForwardingConnection::Open(); });
  }
  void Close() override {
    Record(writer_, "disconnect", {}, [&] { ForwardingConnection::Close(); });
  }

  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    std::int64_t affected = 0;
    auto answer = Record(
        writer_, "sql", {{"text", statement}}, [&] { return ForwardingConnection::Execute(statement, &affected); },
        [&](EventFields& event, const auto& recordset) {
          const bool fetched = recordset && recordset->State() == ado::ObjectState::Open;
          event["rows"] = fetched ? FetchedRows(*recordset) : EventValue(affected);
        });
    if (rowsAffected != nullptr) *rowsAffected = affected;
    return answer;
  }

  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    const bool forWriting = lock == ado::LockType::Optimistic;
    auto recordset = Record(
        writer_, "sql", {{"text", statement}},
        [&] { return ForwardingConnection::OpenRecordset(statement, cursor, lock); },
        [&](EventFields& event, const auto& rows) {
          event["rows"] = forWriting ? EventValue(nullptr) : FetchedRows(*rows);
        });
    if (!forWriting) return recordset;
    return std::make_unique<TranscriptRecordset>(std::move(recordset), ado::TableOfSelect(statement), writer_);
  }

 private:
  TranscriptWriter& writer_;
  std::string connectionString_;
};

}  // namespace

std::unique_ptr<ado::Connection> TranscriptProvider::CreateConnection() {
  auto connection =
      RecordFailure(writer_, "connect", {{"connectionString", nullptr}}, [&] { return inner_.CreateConnection(); });
  return std::make_unique<TranscriptConnection>(std::move(connection), writer_);
}

}  // namespace twqb::transcript
