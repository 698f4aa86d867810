#include "adapters/faults/FaultDatabase.h"

#include <string>
#include <utility>

#include "platform/Forwarding.h"

namespace twqb::faults {

namespace {

using ado::ForwardingConnection;
using ado::ForwardingRecordset;

class FaultRecordset : public ForwardingRecordset {
 public:
  FaultRecordset(std::unique_ptr<Recordset> inner, std::string table, FaultGate& gate)
      : ForwardingRecordset(std::move(inner)), table_(std::move(table)), gate_(gate) {}

  ado::ObjectState State() const override {
    return gate_.Run({"Recordset.State"}, [&] { return ForwardingRecordset::State(); });
  }
  void Close() override {
    gate_.Run({"Recordset.Close"}, [&] { ForwardingRecordset::Close(); });
  }
  bool Eof() const override {
    return gate_.Run({"Recordset.Eof"}, [&] { return ForwardingRecordset::Eof(); });
  }
  void MoveFirst() override {
    gate_.Run({"Recordset.MoveFirst"}, [&] { ForwardingRecordset::MoveFirst(); });
  }
  void MoveNext() override {
    gate_.Run({"Recordset.MoveNext"}, [&] { ForwardingRecordset::MoveNext(); });
  }
  std::int64_t RecordCount() const override {
    return gate_.Run({"Recordset.RecordCount"}, [&] { return ForwardingRecordset::RecordCount(); });
  }
  void Find(std::string_view criterion) override {
    gate_.Run({"Recordset.Find"}, [&] { ForwardingRecordset::Find(criterion); });
  }
  int FieldCount() const override {
    return gate_.Run({"Recordset.FieldCount"}, [&] { return ForwardingRecordset::FieldCount(); });
  }
  std::string FieldName(int index) const override {
    return gate_.Run({"Recordset.FieldName"}, [&] { return ForwardingRecordset::FieldName(index); });
  }
  Value Field(std::string_view name) const override {
    return gate_.Run({"Recordset.Field"}, [&] { return ForwardingRecordset::Field(name); });
  }
  Value FieldAt(int index) const override {
    return gate_.Run({"Recordset.FieldAt"}, [&] { return ForwardingRecordset::FieldAt(index); });
  }
  int DefinedSize(std::string_view name) const override {
    return gate_.Run({"Recordset.DefinedSize"}, [&] { return ForwardingRecordset::DefinedSize(name); });
  }
  ado::EditMode EditState() const override {
    return gate_.Run({"Recordset.EditState"}, [&] { return ForwardingRecordset::EditState(); });
  }
  void AddNew() override {
    gate_.Run({"Recordset.AddNew"}, [&] { ForwardingRecordset::AddNew(); });
  }
  void SetField(std::string_view name, Value value) override {
    gate_.Run({"Recordset.SetField"}, [&] { ForwardingRecordset::SetField(name, std::move(value)); });
  }
  void Update() override {
    gate_.Run({"Recordset.Update", FaultPoint::Row, table_}, [&] { ForwardingRecordset::Update(); });
  }
  void CancelUpdate() override {
    gate_.Run({"Recordset.CancelUpdate"}, [&] { ForwardingRecordset::CancelUpdate(); });
  }

 private:
  std::string table_;
  FaultGate& gate_;
};

class FaultConnection : public ForwardingConnection {
 public:
  FaultConnection(std::unique_ptr<Connection> inner, FaultGate& gate)
      : ForwardingConnection(std::move(inner)), gate_(gate) {}

  ado::ObjectState State() const override {
    return gate_.Run({"Connection.State"}, [&] { return ForwardingConnection::State(); });
  }
  void SetMode(ado::ConnectMode mode) override {
    gate_.Run({"Connection.SetMode"}, [&] { ForwardingConnection::SetMode(mode); });
  }
  void SetCursorLocation(ado::CursorLocation location) override {
    gate_.Run({"Connection.SetCursorLocation"}, [&] { ForwardingConnection::SetCursorLocation(location); });
  }
  void SetConnectionTimeout(int seconds) override {
    gate_.Run({"Connection.SetConnectionTimeout"}, [&] { ForwardingConnection::SetConnectionTimeout(seconds); });
  }
  std::string ConnectionString() const override {
    return gate_.Run({"Connection.ConnectionString"}, [&] { return ForwardingConnection::ConnectionString(); });
  }
  void SetConnectionString(std::string text) override {
    gate_.Run({"Connection.SetConnectionString"}, [&] { ForwardingConnection::SetConnectionString(std::move(text)); });
  }
  std::string Provider() const override {
    return gate_.Run({"Connection.Provider"}, [&] { return ForwardingConnection::Provider(); });
  }
  void Open() override {
    gate_.Run({"Connection.Open", FaultPoint::Connect}, [&] { ForwardingConnection::Open(); });
  }
  void Close() override {
    gate_.Run({"Connection.Close"}, [&] { ForwardingConnection::Close(); });
  }
  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    return Opened(statement, gate_.Run({"Connection.Execute", FaultPoint::Sql, statement},
                                       [&] { return ForwardingConnection::Execute(statement, rowsAffected); }));
  }
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    return Opened(statement, gate_.Run({"Connection.OpenRecordset", FaultPoint::Sql, statement},
                                       [&] { return ForwardingConnection::OpenRecordset(statement, cursor, lock); }));
  }

 private:
  std::unique_ptr<ado::Recordset> Opened(std::string_view statement, std::unique_ptr<ado::Recordset> inner) {
    return std::make_unique<FaultRecordset>(std::move(inner), ado::TableOfSelect(statement), gate_);
  }

  FaultGate& gate_;
};

}  // namespace

std::unique_ptr<ado::Connection> FaultProvider::CreateConnection() {
  auto inner = gate_.Run({"Provider.CreateConnection"}, [&] { return inner_.CreateConnection(); });
  return std::make_unique<FaultConnection>(std::move(inner), gate_);
}

}  // namespace twqb::faults
