#include "bench/Floor.h"

#include <chrono>
#include <utility>

#include "platform/Forwarding.h"
#include "tests/support/Decorating.h"

namespace twqb {

namespace {

using Clock = std::chrono::steady_clock;

double Between(Clock::time_point begin, Clock::time_point end) {
  return std::chrono::duration<double>(end - begin).count();
}

// The calls so far, and where their time went.
class CallLog {
 public:
  void Begin() {
    calls_.clear();
    tables_.clear();
    BeginTable();
  }

  // Carries `forward` out and keeps `call`, which does the same in a replay.
  template <typename Forward, typename Call>
  void Take(double TableShare::*seam, Forward forward, Call call) {
    const auto begin = Clock::now();
    forward();
    const auto done = Clock::now();
    calls_.emplace_back(std::move(call));
    inHand_.*seam += Between(begin, done);
    recording_ += Between(done, Clock::now());
  }

  void EndTable(std::string name) {
    inHand_.name = std::move(name);
    inHand_.whole = Between(tableBegan_, Clock::now()) - recording_;
    tables_.push_back(std::move(inHand_));
    BeginTable();
  }

  [[nodiscard]] const std::vector<FloorCall>& Calls() const { return calls_; }
  [[nodiscard]] const std::vector<TableShare>& Tables() const { return tables_; }

 private:
  void BeginTable() {
    inHand_ = {};
    recording_ = 0;
    tableBegan_ = Clock::now();
  }

  std::vector<FloorCall> calls_;
  std::vector<TableShare> tables_;
  TableShare inHand_;
  double recording_ = 0;
  Clock::time_point tableBegan_ = Clock::now();
};

class RecordedRecordset : public ado::ForwardingRecordset {
 public:
  RecordedRecordset(std::unique_ptr<ado::Recordset> inner, CallLog& calls, std::size_t index)
      : ForwardingRecordset(std::move(inner)), calls_(calls), index_(index) {}

  void Close() override {
    Take([&] { ForwardingRecordset::Close(); }, [](ado::Recordset& rs) { rs.Close(); });
  }
  void Find(std::string_view criterion) override {
    Take([&] { ForwardingRecordset::Find(criterion); },
         [text = std::string(criterion)](ado::Recordset& rs) { rs.Find(text); });
  }
  void MoveFirst() override {
    Take([&] { ForwardingRecordset::MoveFirst(); }, [](ado::Recordset& rs) { rs.MoveFirst(); });
  }
  void AddNew() override {
    Take([&] { ForwardingRecordset::AddNew(); }, [](ado::Recordset& rs) { rs.AddNew(); });
  }
  void SetField(std::string_view name, Value value) override {
    Take([&] { ForwardingRecordset::SetField(name, value); },
         [field = std::string(name), value](ado::Recordset& rs) { rs.SetField(field, value); });
  }
  void Update() override {
    Take([&] { ForwardingRecordset::Update(); }, [](ado::Recordset& rs) { rs.Update(); });
  }

 private:
  template <typename Forward, typename Call>
  void Take(Forward forward, Call call) {
    calls_.Take(&TableShare::database, forward,
                [index = index_, call](FloorState& state) { call(*state.recordsets.at(index)); });
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
    Take([&] { ForwardingConnection::Open(); }, [](FloorState&, ado::Connection& cn) { cn.Open(); });
  }
  void Close() override {
    Take([&] { ForwardingConnection::Close(); }, [](FloorState&, ado::Connection& cn) { cn.Close(); });
  }
  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    std::unique_ptr<ado::Recordset> rows;
    Take([&] { rows = ForwardingConnection::Execute(statement, rowsAffected); },
         [text = std::string(statement)](FloorState&, ado::Connection& cn) { cn.Execute(text, nullptr); });
    return rows;
  }
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    std::unique_ptr<ado::Recordset> rows;
    Take([&] { rows = ForwardingConnection::OpenRecordset(statement, cursor, lock); },
         [text = std::string(statement), cursor, lock](FloorState& state, ado::Connection& cn) {
           state.recordsets.push_back(cn.OpenRecordset(text, cursor, lock));
         });
    return std::make_unique<RecordedRecordset>(std::move(rows), calls_, counters_.recordsets++);
  }

 private:
  template <typename Forward, typename Call>
  void Take(Forward forward, Call call) {
    calls_.Take(&TableShare::database, forward,
                [index = index_, call](FloorState& state) { call(state, *state.connections.at(index)); });
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
  // Replays count the recordsets of the run alone.
  void Begin() { counters_.recordsets = 0; }

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
    std::string answer;
    calls_.Take(
        &TableShare::quickBooks, [&] { answer = ForwardingTransport::ProcessDocument(document); },
        [text = std::string(document)](FloorState& state) { (void)state.transport->ProcessDocument(text); });
    return answer;
  }

 private:
  CallLog& calls_;
};

// Sees the tables end, too.
class RecordedMachine : public ForwardingMachine {
 public:
  RecordedMachine(Machine& inner, CallLog& calls) : ForwardingMachine(inner), calls_(calls) {}
  bool WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                                 std::string_view path) override {
    bool written = false;
    calls_.Take(
        &TableShare::settings,
        [&] { written = ForwardingMachine::WritePrivateProfileString(section, key, value, path); },
        [section = std::string(section), key = std::string(key), value = std::string(value)](FloorState& state) {
          state.machine->WritePrivateProfileString(section, key, value, state.settings);
        });
    constexpr std::string_view kStamp = "_LastSendAt";
    if (key.ends_with(kStamp)) calls_.EndTable(std::string(key.substr(0, key.size() - kStamp.size())));
    return written;
  }

 private:
  CallLog& calls_;
};

}  // namespace

struct FloorRecorder::Parts {
  explicit Parts(const Platform& inner)
      : platform(inner),
        database(*inner.database, calls),
        quickbooks(*inner.quickbooks, calls),
        machine(*inner.machine, calls) {
    platform.database = &database;
    platform.quickbooks = &quickbooks;
    platform.machine = &machine;
  }
  CallLog calls;
  Platform platform;
  RecordedProvider database;
  DecoratingTransportFactory<RecordedTransport, CallLog> quickbooks;
  RecordedMachine machine;
};

FloorRecorder::FloorRecorder(const Platform& inner) : parts_(std::make_unique<Parts>(inner)) {}
FloorRecorder::~FloorRecorder() = default;
Platform FloorRecorder::Decorated() const { return parts_->platform; }
void FloorRecorder::Begin() {
  parts_->calls.Begin();
  parts_->database.Begin();
}
const std::vector<FloorCall>& FloorRecorder::Calls() const { return parts_->calls.Calls(); }
std::size_t FloorRecorder::Connections() const { return parts_->database.Connections(); }
const std::vector<TableShare>& FloorRecorder::Tables() const { return parts_->calls.Tables(); }

void ReplayFloor(const std::vector<FloorCall>& calls, FloorState& state) {
  for (const auto& call : calls) call(state);
}

}  // namespace twqb
