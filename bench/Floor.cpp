#include "bench/Floor.h"

#include "platform/Forwarding.h"

namespace twqb {

namespace {

using CallLog = std::vector<FloorCall>;

class RecordedRecordset : public ado::ForwardingRecordset {
 public:
  RecordedRecordset(std::unique_ptr<ado::Recordset> inner, CallLog& calls, std::size_t index)
      : ForwardingRecordset(std::move(inner)), calls_(calls), index_(index) {}

  void Close() override {
    ForwardingRecordset::Close();
    Record([](ado::Recordset& rs) { rs.Close(); });
  }
  void Find(std::string_view criterion) override {
    ForwardingRecordset::Find(criterion);
    Record([text = std::string(criterion)](ado::Recordset& rs) { rs.Find(text); });
  }
  void MoveFirst() override {
    ForwardingRecordset::MoveFirst();
    Record([](ado::Recordset& rs) { rs.MoveFirst(); });
  }
  void AddNew() override {
    ForwardingRecordset::AddNew();
    Record([](ado::Recordset& rs) { rs.AddNew(); });
  }
  void SetField(std::string_view name, Value value) override {
    ForwardingRecordset::SetField(name, value);
    Record([field = std::string(name), value](ado::Recordset& rs) { rs.SetField(field, value); });
  }
  void Update() override {
    ForwardingRecordset::Update();
    Record([](ado::Recordset& rs) { rs.Update(); });
  }

 private:
  template <typename Call>
  void Record(Call call) {
    calls_.push_back([index = index_, call](FloorState& state) { call(*state.recordsets.at(index)); });
  }

  CallLog& calls_;
  std::size_t index_;
};

struct Counters {
  std::size_t connections = 0;
  std::size_t recordsets = 0;
};

class RecordedConnection : public ado::ForwardingConnection {
 public:
  RecordedConnection(std::unique_ptr<ado::Connection> inner, CallLog& calls, Counters& counters)
      : ForwardingConnection(std::move(inner)), calls_(calls), counters_(counters), index_(counters.connections++) {}

  void Open() override {
    ForwardingConnection::Open();
    Record([](FloorState&, ado::Connection& cn) { cn.Open(); });
  }
  void Close() override {
    ForwardingConnection::Close();
    Record([](FloorState&, ado::Connection& cn) { cn.Close(); });
  }
  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    auto rows = ForwardingConnection::Execute(statement, rowsAffected);
    Record([text = std::string(statement)](FloorState&, ado::Connection& cn) { cn.Execute(text, nullptr); });
    return rows;
  }
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    auto rows = ForwardingConnection::OpenRecordset(statement, cursor, lock);
    Record([text = std::string(statement), cursor, lock](FloorState& state, ado::Connection& cn) {
      state.recordsets.push_back(cn.OpenRecordset(text, cursor, lock));
    });
    return std::make_unique<RecordedRecordset>(std::move(rows), calls_, counters_.recordsets++);
  }

 private:
  template <typename Call>
  void Record(Call call) {
    calls_.push_back([index = index_, call](FloorState& state) { call(state, *state.connections.at(index)); });
  }

  CallLog& calls_;
  Counters& counters_;
  std::size_t index_;
};

class RecordedProvider : public ado::Provider {
 public:
  RecordedProvider(ado::Provider& inner, CallLog& calls) : inner_(inner), calls_(calls) {}
  std::unique_ptr<ado::Connection> CreateConnection() override {
    return std::make_unique<RecordedConnection>(inner_.CreateConnection(), calls_, counters_);
  }
  [[nodiscard]] std::size_t Connections() const { return counters_.connections; }

 private:
  ado::Provider& inner_;
  CallLog& calls_;
  Counters counters_;
};

class RecordedTransport : public ForwardingTransport {
 public:
  RecordedTransport(std::unique_ptr<Transport> inner, CallLog& calls)
      : ForwardingTransport(std::move(inner)), calls_(calls) {}
  std::string ProcessDocument(std::string_view document) override {
    calls_.push_back(
        [text = std::string(document)](FloorState& state) { (void)state.transport->ProcessDocument(text); });
    return ForwardingTransport::ProcessDocument(document);
  }

 private:
  CallLog& calls_;
};

class RecordedTransports : public TransportFactory {
 public:
  RecordedTransports(TransportFactory& inner, CallLog& calls) : inner_(inner), calls_(calls) {}
  std::unique_ptr<Transport> CreateTransport() override {
    return std::make_unique<RecordedTransport>(inner_.CreateTransport(), calls_);
  }

 private:
  TransportFactory& inner_;
  CallLog& calls_;
};

}  // namespace

struct FloorRecorder::Parts {
  explicit Parts(const Platform& inner)
      : platform(inner), database(*inner.database, calls), quickbooks(*inner.quickbooks, calls) {
    platform.database = &database;
    platform.quickbooks = &quickbooks;
  }
  CallLog calls;
  Platform platform;
  RecordedProvider database;
  RecordedTransports quickbooks;
};

FloorRecorder::FloorRecorder(const Platform& inner) : parts_(std::make_unique<Parts>(inner)) {}
FloorRecorder::~FloorRecorder() = default;
Platform FloorRecorder::Decorated() const { return parts_->platform; }
const std::vector<FloorCall>& FloorRecorder::Calls() const { return parts_->calls; }
std::size_t FloorRecorder::Connections() const { return parts_->database.Connections(); }

void ReplayFloor(const std::vector<FloorCall>& calls, FloorState& state) {
  for (const auto& call : calls) call(state);
}

}  // namespace twqb
