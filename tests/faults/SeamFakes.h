// One small fake of each seam: it notes every call that has an effect, and answers from public members.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Platform.h"
#include "platform/PlatformError.h"

namespace twqb::fakes {

// What the fakes of one test share.
struct Notes {
  std::vector<std::string> calls;
  std::optional<PlatformError> raiseNext;  // by the next noted call, which then has no effect

  void Add(std::string call) {
    if (raiseNext) throw PlatformError(*std::exchange(raiseNext, std::nullopt));
    calls.push_back(std::move(call));
  }
};

class FakeRecordset : public ado::Recordset {
 public:
  FakeRecordset(Notes& notes, std::int64_t rows, ado::ObjectState state) : notes_(notes), rows_(rows), state_(state) {}
  ado::ObjectState State() const override { return state_; }
  void Close() override { notes_.Add("Close recordset"); }
  bool Eof() const override { return rows_ == 0; }
  void MoveFirst() override {}
  void MoveNext() override {}
  std::int64_t RecordCount() const override { return rows_; }
  void Find(std::string_view criterion) override { notes_.Add("Find " + std::string(criterion)); }
  int FieldCount() const override { return 1; }
  std::string FieldName(int /*index*/) const override { return "ClientID"; }
  Value Field(std::string_view name) const override { return "value of " + std::string(name); }
  Value FieldAt(int /*index*/) const override { return std::string("value"); }
  int DefinedSize(std::string_view /*name*/) const override { return 65; }
  ado::EditMode EditState() const override { return ado::EditMode::None; }
  void AddNew() override { notes_.Add("AddNew"); }
  void SetField(std::string_view name, Value /*value*/) override { notes_.Add("SetField " + std::string(name)); }
  void Update() override { notes_.Add("Update"); }
  void CancelUpdate() override { notes_.Add("CancelUpdate"); }

 private:
  Notes& notes_;
  std::int64_t rows_;
  ado::ObjectState state_;
};

struct FakeDatabase : ado::Provider {
  explicit FakeDatabase(Notes& n) : notes(n) {}
  std::unique_ptr<ado::Connection> CreateConnection() override;
  Notes& notes;
  std::int64_t rows = 3;  // fetched by every SELECT, affected by every other statement
};

class FakeConnection : public ado::Connection {
 public:
  explicit FakeConnection(FakeDatabase& database) : database_(database) {}
  ado::ObjectState State() const override { return ado::ObjectState::Open; }
  void SetMode(ado::ConnectMode /*mode*/) override {}
  void SetCursorLocation(ado::CursorLocation /*location*/) override {}
  void SetConnectionTimeout(int /*seconds*/) override {}
  std::string ConnectionString() const override { return text_; }
  void SetConnectionString(std::string text) override { text_ = std::move(text); }
  std::string Provider() const override { return "SQLITE"; }
  void Open() override { database_.notes.Add("Open"); }
  void Close() override { database_.notes.Add("Close"); }
  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    database_.notes.Add("Execute " + std::string(statement));
    if (rowsAffected != nullptr) *rowsAffected = database_.rows;
    const bool select = statement.starts_with("SELECT");
    return std::make_unique<FakeRecordset>(database_.notes, database_.rows,
                                           select ? ado::ObjectState::Open : ado::ObjectState::Closed);
  }
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType /*cursor*/,
                                                ado::LockType /*lock*/) override {
    database_.notes.Add("OpenRecordset " + std::string(statement));
    return std::make_unique<FakeRecordset>(database_.notes, database_.rows, ado::ObjectState::Open);
  }

 private:
  FakeDatabase& database_;
  std::string text_;
};

inline std::unique_ptr<ado::Connection> FakeDatabase::CreateConnection() {
  notes.Add("CreateConnection");
  return std::make_unique<FakeConnection>(*this);
}

struct FakeQuickBooks : TransportFactory {
  explicit FakeQuickBooks(Notes& n) : notes(n) {}
  std::unique_ptr<Transport> CreateTransport() override;
  Notes& notes;
  std::string answer;                  // to every document
  std::vector<std::string> documents;  // that came
};

class FakeTransport : public Transport {
 public:
  explicit FakeTransport(FakeQuickBooks& quickbooks) : quickbooks_(quickbooks) {}
  InterfaceVersion GetVersion() override {
    quickbooks_.notes.Add("GetVersion");
    return {.major = 5, .minor = 0, .releaseLevel = 2, .releaseNumber = 7};
  }
  void OpenConnection(std::string_view /*id*/, std::string_view /*name*/) override {
    quickbooks_.notes.Add("OpenConnection");
  }
  void BeginSession(std::string_view fileName, OpenMode /*mode*/) override {
    quickbooks_.notes.Add("BeginSession " + std::string(fileName));
  }
  std::string GetCurrentCompanyFileName() override {
    quickbooks_.notes.Add("GetCurrentCompanyFileName");
    return "/firm/company.twq";
  }
  std::string ProcessDocument(std::string_view document) override { return Process("ProcessDocument", document); }
  std::string ProcessSubscription(std::string_view document) override {
    return Process("ProcessSubscription", document);
  }
  void EndSession() override { quickbooks_.notes.Add("EndSession"); }
  void CloseConnection() override { quickbooks_.notes.Add("CloseConnection"); }

 private:
  std::string Process(std::string_view call, std::string_view document) {
    quickbooks_.notes.Add(std::string(call));
    quickbooks_.documents.emplace_back(document);
    return quickbooks_.answer;
  }
  FakeQuickBooks& quickbooks_;
};

inline std::unique_ptr<Transport> FakeQuickBooks::CreateTransport() {
  notes.Add("CreateTransport");
  return std::make_unique<FakeTransport>(*this);
}

struct FakeDesk : Desk {
  explicit FakeDesk(Notes& n) : notes(n) {}
  BoxAnswer ShowMessageBox(const MessageBox& box) override {
    if (givesUp) throw DeskGaveUp(box.text);
    notes.Add("ShowMessageBox " + box.text);
    return answer;
  }
  void ShowMsgForm(const MsgFormState& /*state*/, std::function<void()> cancel) override {
    notes.Add("ShowMsgForm");
    onCancel = std::move(cancel);
  }
  void UpdateMsgForm(const MsgFormState& /*state*/) override { notes.Add("UpdateMsgForm"); }
  void UnloadMsgForm() override { notes.Add("UnloadMsgForm"); }
  std::optional<std::string> PickVendor(const std::string& /*message*/,
                                        const std::vector<std::string>& /*choices*/) override {
    notes.Add("PickVendor");
    return vendor;
  }
  std::string OpenFileDialog(const FileDialog& /*dialog*/) override {
    notes.Add("OpenFileDialog");
    return file;
  }
  void SetPointer(Pointer /*pointer*/) override { notes.Add("SetPointer"); }
  void Beep() override { notes.Add("Beep"); }
  void PumpMessages() override { notes.Add("PumpMessages"); }

  Notes& notes;
  bool givesUp = false;
  BoxAnswer answer = BoxAnswer::Ok;
  std::optional<std::string> vendor;
  std::string file;
  std::function<void()> onCancel;
};

struct FakeMachine : Machine {
  explicit FakeMachine(Notes& n) : notes(n) {}
  Date Now() override { return Date::FromCivil({.year = 2008, .month = 3, .day = 5, .hour = 10}); }
  TimeZoneInformation GetTimeZoneInformation() override { return {}; }
  int DaylightMinutes(Date /*standardTime*/) override { return 0; }
  void Sleep(std::int64_t /*milliseconds*/) override { notes.Add("Sleep"); }
  std::optional<GuidBytes> CreateGuid() override {
    notes.Add("CreateGuid");
    return GuidBytes{};
  }
  double Random() override { return 0.5; }
  std::string GetPrivateProfileString(std::string_view /*section*/, std::string_view key, std::string_view fallback,
                                      int /*size*/, std::string_view /*path*/) override {
    notes.Add("read " + std::string(key));
    const auto found = settings.find(key);
    return found == settings.end() ? std::string(fallback) : found->second;
  }
  bool WritePrivateProfileString(std::string_view /*section*/, std::string_view key, std::string_view value,
                                 std::string_view /*path*/) override {
    notes.Add("write " + std::string(key));
    if (writable) settings[std::string(key)] = value;
    return writable;
  }
  std::optional<std::string> ReadRegistry(std::string_view /*key*/, std::string_view /*name*/) override {
    notes.Add("ReadRegistry");
    return registry;
  }
  void CopyFile(const std::string& /*from*/, const std::string& /*to*/) override { notes.Add("CopyFile"); }
  std::string ComputerName() override { return "FRONTDESK"; }
  std::string LibraryFolder() override { return "/firm"; }
  void AppendLine(const std::string& /*path*/, std::string_view line) override {
    notes.Add("AppendLine " + std::string(line));
  }

  Notes& notes;
  bool writable = true;
  std::map<std::string, std::string, std::less<>> settings;
  std::optional<std::string> registry;
};

struct FakeCallbacks : CallbackFactory {
  explicit FakeCallbacks(Notes& n) : notes(n) {}
  std::unique_ptr<Callback> CreateCallback() override;
  Notes& notes;
};

class FakeCallback : public Callback {
 public:
  explicit FakeCallback(Notes& notes) : notes_(notes) {}
  int Mode() override {
    notes_.Add("Mode");
    return 7;
  }
  void SetMode(int /*mode*/) override { notes_.Add("SetMode"); }
  void SetText(std::string_view /*text*/) override { notes_.Add("SetText"); }

 private:
  Notes& notes_;
};

inline std::unique_ptr<Callback> FakeCallbacks::CreateCallback() {
  notes.Add("CreateCallback");
  return std::make_unique<FakeCallback>(notes);
}

struct FakePlatform {
  Notes notes;
  FakeDatabase database{notes};
  FakeQuickBooks quickbooks{notes};
  FakeDesk desk{notes};
  FakeMachine machine{notes};
  FakeCallbacks callback{notes};

  [[nodiscard]] Platform Seams() {
    return {
        .database = &database, .quickbooks = &quickbooks, .desk = &desk, .machine = &machine, .callback = &callback};
  }
};

}  // namespace twqb::fakes
