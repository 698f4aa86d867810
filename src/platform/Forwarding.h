// Pass-through implementations of the seams: every call goes to the object inside, unchanged.
//
// A decorator (transcript, faults) derives from one of these and overrides only the calls that it changes. What a call
// does, and how it fails, is told at the seam; nothing here adds to that. The makers (providers and factories) have one
// function each and need no base.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Platform.h"
#include "platform/Text.h"

namespace twqb {

namespace ado {

// The table of a statement of the form "SELECT * FROM table;", as it is spelled there: the word behind the first FROM,
// without brackets or quotes. Empty when the statement has none.
[[nodiscard]] inline std::string TableOfSelect(std::string_view statement) {
  constexpr std::string_view kBlanks = " \t\r\n";
  bool behindFrom = false;
  for (auto from = statement.find_first_not_of(kBlanks); from != std::string_view::npos;
       from = statement.find_first_not_of(kBlanks)) {
    statement.remove_prefix(from);
    const bool enclosed = behindFrom && (statement.front() == '[' || statement.front() == '"');
    if (enclosed) {
      const auto end = statement.find(statement.front() == '[' ? ']' : '"', 1);
      return std::string(statement.substr(1, end == std::string_view::npos ? end : end - 1));
    }
    const auto word = statement.substr(0, statement.find_first_of(behindFrom ? " \t\r\n;" : kBlanks));
    if (behindFrom) return std::string(word);
    behindFrom = SameName(word, "FROM");
    statement.remove_prefix(word.size());
  }
  return {};
}

class ForwardingRecordset : public Recordset {
 public:
  explicit ForwardingRecordset(std::unique_ptr<Recordset> inner) : inner_(std::move(inner)) {}

  [[nodiscard]] ObjectState State() const override { return inner_->State(); }
  void Close() override { inner_->Close(); }
  [[nodiscard]] bool Eof() const override { return inner_->Eof(); }
  void MoveFirst() override { inner_->MoveFirst(); }
  void MoveNext() override { inner_->MoveNext(); }
  [[nodiscard]] std::int64_t RecordCount() const override { return inner_->RecordCount(); }
  void Find(std::string_view criterion) override { inner_->Find(criterion); }
  [[nodiscard]] int FieldCount() const override { return inner_->FieldCount(); }
  [[nodiscard]] std::string FieldName(int index) const override { return inner_->FieldName(index); }
  [[nodiscard]] Value Field(std::string_view name) const override { return inner_->Field(name); }
  [[nodiscard]] Value FieldAt(int index) const override { return inner_->FieldAt(index); }
  [[nodiscard]] int DefinedSize(std::string_view name) const override { return inner_->DefinedSize(name); }
  [[nodiscard]] EditMode EditState() const override { return inner_->EditState(); }
  void AddNew() override { inner_->AddNew(); }
  void SetField(std::string_view name, Value value) override { inner_->SetField(name, std::move(value)); }
  void Update() override { inner_->Update(); }
  void CancelUpdate() override { inner_->CancelUpdate(); }

 private:
  std::unique_ptr<Recordset> inner_;
};

class ForwardingConnection : public Connection {
 public:
  explicit ForwardingConnection(std::unique_ptr<Connection> inner) : inner_(std::move(inner)) {}

  [[nodiscard]] ObjectState State() const override { return inner_->State(); }
  void SetMode(ConnectMode mode) override { inner_->SetMode(mode); }
  void SetCursorLocation(CursorLocation location) override { inner_->SetCursorLocation(location); }
  void SetConnectionTimeout(int seconds) override { inner_->SetConnectionTimeout(seconds); }
  [[nodiscard]] std::string ConnectionString() const override { return inner_->ConnectionString(); }
  void SetConnectionString(std::string text) override { inner_->SetConnectionString(std::move(text)); }
  [[nodiscard]] std::string Provider() const override { return inner_->Provider(); }
  void Open() override { inner_->Open(); }
  void Close() override { inner_->Close(); }
  std::unique_ptr<Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    return inner_->Execute(statement, rowsAffected);
  }
  std::unique_ptr<Recordset> OpenRecordset(std::string_view statement, CursorType cursor, LockType lock) override {
    return inner_->OpenRecordset(statement, cursor, lock);
  }

 private:
  std::unique_ptr<Connection> inner_;
};

}  // namespace ado

class ForwardingTransport : public Transport {
 public:
  explicit ForwardingTransport(std::unique_ptr<Transport> inner) : inner_(std::move(inner)) {}

  [[nodiscard]] InterfaceVersion GetVersion() override { return inner_->GetVersion(); }
  void OpenConnection(std::string_view applicationId, std::string_view applicationName) override {
    inner_->OpenConnection(applicationId, applicationName);
  }
  void BeginSession(std::string_view fileName, OpenMode mode) override { inner_->BeginSession(fileName, mode); }
  [[nodiscard]] std::string GetCurrentCompanyFileName() override { return inner_->GetCurrentCompanyFileName(); }
  [[nodiscard]] std::string ProcessDocument(std::string_view document) override {
    return inner_->ProcessDocument(document);
  }
  [[nodiscard]] std::string ProcessSubscription(std::string_view document) override {
    return inner_->ProcessSubscription(document);
  }
  void EndSession() override { inner_->EndSession(); }
  void CloseConnection() override { inner_->CloseConnection(); }

 private:
  std::unique_ptr<Transport> inner_;
};

// The desk and the machine are not owned: they must outlive the decorator.
class ForwardingDesk : public Desk {
 public:
  explicit ForwardingDesk(Desk& inner) : inner_(inner) {}

  BoxAnswer ShowMessageBox(const MessageBox& box) override { return inner_.ShowMessageBox(box); }
  void ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) override {
    inner_.ShowMsgForm(state, std::move(onCancel));
  }
  void UpdateMsgForm(const MsgFormState& state) override { inner_.UpdateMsgForm(state); }
  void UnloadMsgForm() override { inner_.UnloadMsgForm(); }
  std::optional<std::string> PickVendor(const std::string& message, const std::vector<std::string>& choices) override {
    return inner_.PickVendor(message, choices);
  }
  std::string OpenFileDialog(const FileDialog& dialog) override { return inner_.OpenFileDialog(dialog); }
  void SetPointer(Pointer pointer) override { inner_.SetPointer(pointer); }
  void Beep() override { inner_.Beep(); }
  void PumpMessages() override { inner_.PumpMessages(); }

 private:
  Desk& inner_;
};

class ForwardingMachine : public Machine {
 public:
  explicit ForwardingMachine(Machine& inner) : inner_(inner) {}

  [[nodiscard]] Date Now() override { return inner_.Now(); }
  [[nodiscard]] TimeZoneInformation GetTimeZoneInformation() override { return inner_.GetTimeZoneInformation(); }
  [[nodiscard]] int DaylightMinutes(Date standardTime) override { return inner_.DaylightMinutes(standardTime); }
  void Sleep(std::int64_t milliseconds) override { inner_.Sleep(milliseconds); }
  [[nodiscard]] std::optional<GuidBytes> CreateGuid() override { return inner_.CreateGuid(); }
  [[nodiscard]] double Random() override { return inner_.Random(); }
  [[nodiscard]] std::string GetPrivateProfileString(std::string_view section, std::string_view key,
                                                    std::string_view fallback, int size,
                                                    std::string_view path) override {
    return inner_.GetPrivateProfileString(section, key, fallback, size, path);
  }
  bool WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                                 std::string_view path) override {
    return inner_.WritePrivateProfileString(section, key, value, path);
  }
  [[nodiscard]] std::optional<std::string> ReadRegistry(std::string_view key, std::string_view name) override {
    return inner_.ReadRegistry(key, name);
  }
  void CopyFile(const std::string& from, const std::string& to) override { inner_.CopyFile(from, to); }
  [[nodiscard]] std::string ComputerName() override { return inner_.ComputerName(); }
  [[nodiscard]] std::string LibraryFolder() override { return inner_.LibraryFolder(); }
  void AppendLine(const std::string& path, std::string_view line) override { inner_.AppendLine(path, line); }

 private:
  Machine& inner_;
};

class ForwardingCallback : public Callback {
 public:
  explicit ForwardingCallback(std::unique_ptr<Callback> inner) : inner_(std::move(inner)) {}

  [[nodiscard]] int Mode() override { return inner_->Mode(); }
  void SetMode(int mode) override { inner_->SetMode(mode); }
  void SetText(std::string_view text) override { inner_->SetText(text); }

 private:
  std::unique_ptr<Callback> inner_;
};

}  // namespace twqb
