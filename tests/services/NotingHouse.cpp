#include "tests/services/NotingHouse.h"

#include <fmt/core.h>

#include <utility>

#include "platform/Forwarding.h"
#include "platform/MsgFormTexts.h"
#include "tests/support/Decorating.h"

namespace twqb {

namespace {

class NotingDesk : public ForwardingDesk {
 public:
  NotingDesk(Desk& inner, Notes& notes) : ForwardingDesk(inner), notes_(notes) {}
  BoxAnswer ShowMessageBox(const MessageBox& box) override {
    notes_.push_back("box " + box.title);
    return ForwardingDesk::ShowMessageBox(box);
  }
  void ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) override {
    notes_.push_back("show " + state.action);
    ForwardingDesk::ShowMsgForm(state, std::move(onCancel));
  }
  void UpdateMsgForm(const MsgFormState& state) override {
    notes_.push_back("refresh " + TextsOf(state).txtProg);
    ForwardingDesk::UpdateMsgForm(state);
  }
  void UnloadMsgForm() override {
    notes_.emplace_back("unload");
    ForwardingDesk::UnloadMsgForm();
  }
  std::string OpenFileDialog(const FileDialog& dialog) override {
    notes_.push_back("dialog " + dialog.folder);
    return ForwardingDesk::OpenFileDialog(dialog);
  }
  void SetPointer(Pointer pointer) override {
    notes_.emplace_back(pointer == Pointer::Wait ? "pointer wait" : "pointer default");
    ForwardingDesk::SetPointer(pointer);
  }
  void Beep() override {
    notes_.emplace_back("beep");
    ForwardingDesk::Beep();
  }
  void PumpMessages() override {
    notes_.emplace_back("pump");
    ForwardingDesk::PumpMessages();
  }

 private:
  Notes& notes_;
};

class NotingMachine : public ForwardingMachine {
 public:
  NotingMachine(Machine& inner, Notes& notes) : ForwardingMachine(inner), notes_(notes) {}
  bool WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                                 std::string_view path) override {
    notes_.push_back(fmt::format("write {}/{}={}", section, key, value));
    return ForwardingMachine::WritePrivateProfileString(section, key, value, path);
  }
  void CopyFile(const std::string& from, const std::string& to) override {
    notes_.push_back(fmt::format("copy {} to {}", from, to));
    ForwardingMachine::CopyFile(from, to);
  }

 private:
  Notes& notes_;
};

class NotingConnection : public ado::ForwardingConnection {
 public:
  NotingConnection(std::unique_ptr<ado::Connection> inner, Notes& notes)
      : ForwardingConnection(std::move(inner)), notes_(notes) {}
  void SetMode(ado::ConnectMode mode) override {
    notes_.push_back(fmt::format("mode {}", static_cast<int>(mode)));
    ForwardingConnection::SetMode(mode);
  }
  void SetCursorLocation(ado::CursorLocation location) override {
    notes_.push_back(fmt::format("cursor {}", static_cast<int>(location)));
    ForwardingConnection::SetCursorLocation(location);
  }
  void SetConnectionTimeout(int seconds) override {
    notes_.push_back(fmt::format("timeout {}", seconds));
    ForwardingConnection::SetConnectionTimeout(seconds);
  }
  void Open() override {
    notes_.emplace_back("open");
    ForwardingConnection::Open();
  }
  void Close() override {
    notes_.emplace_back("close");
    ForwardingConnection::Close();
  }
  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    notes_.push_back("execute " + std::string(statement));
    return ForwardingConnection::Execute(statement, rowsAffected);
  }
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    notes_.push_back(fmt::format("recordset {} {} {}", static_cast<int>(cursor), static_cast<int>(lock), statement));
    return ForwardingConnection::OpenRecordset(statement, cursor, lock);
  }

 private:
  Notes& notes_;
};

class NotingTransport : public ForwardingTransport {
 public:
  NotingTransport(std::unique_ptr<Transport> inner, Notes& notes)
      : ForwardingTransport(std::move(inner)), notes_(notes) {}
  void OpenConnection(std::string_view applicationId, std::string_view applicationName) override {
    notes_.push_back(fmt::format("OpenConnection {}, {}", applicationId, applicationName));
    ForwardingTransport::OpenConnection(applicationId, applicationName);
  }
  void BeginSession(std::string_view fileName, OpenMode mode) override {
    notes_.push_back(fmt::format("BeginSession \"{}\" {}", fileName, static_cast<int>(mode)));
    ForwardingTransport::BeginSession(fileName, mode);
  }
  std::string GetCurrentCompanyFileName() override {
    notes_.emplace_back("GetCurrentCompanyFileName");
    return ForwardingTransport::GetCurrentCompanyFileName();
  }
  std::string ProcessDocument(std::string_view document) override {
    notes_.push_back("document " + std::string(document));
    return ForwardingTransport::ProcessDocument(document);
  }
  std::string ProcessSubscription(std::string_view document) override {
    notes_.push_back("subscription " + std::string(document));
    return ForwardingTransport::ProcessSubscription(document);
  }
  void EndSession() override {
    notes_.emplace_back("EndSession");
    ForwardingTransport::EndSession();
  }
  void CloseConnection() override {
    notes_.emplace_back("CloseConnection");
    ForwardingTransport::CloseConnection();
  }

 private:
  Notes& notes_;
};

class NotingTransportFactory : public TransportFactory {
 public:
  NotingTransportFactory(TransportFactory& inner, Notes& notes) : inner_(inner), notes_(notes) {}
  std::unique_ptr<Transport> CreateTransport() override {
    notes_.emplace_back("CreateTransport");
    return std::make_unique<NotingTransport>(inner_.CreateTransport(), notes_);
  }

 private:
  TransportFactory& inner_;
  Notes& notes_;
};

}  // namespace

struct NotingHouse::Noting {
  Noting(const Platform& seams, std::string_view script, Notes& notes)
      : faults(seams, ParseFaults(script)),
        desk(*faults.Decorated().desk, notes),
        machine(*faults.Decorated().machine, notes),
        database(*faults.Decorated().database, notes),
        quickbooks(*faults.Decorated().quickbooks, notes) {}

  FaultPlatform faults;
  NotingDesk desk;
  NotingMachine machine;
  DecoratingProvider<NotingConnection, Notes> database;
  NotingTransportFactory quickbooks;
};

NotingHouse::NotingHouse(HouseOptions options, std::string_view faults,
                         std::unique_ptr<TransportFactory> otherQuickBooks)
    : TestHouse(std::move(options)) {
  if (otherQuickBooks) quickbooks = std::move(otherQuickBooks);
  noting_ = std::make_unique<Noting>(Seams(), faults, notes);
  Enter({.database = &noting_->database,
         .quickbooks = &noting_->quickbooks,
         .desk = &noting_->desk,
         .machine = &noting_->machine,
         .callback = noting_->faults.Decorated().callback});
}

NotingHouse::~NotingHouse() { Vars() = ModuleVariables{}; }

Notes NotingHouse::NotesOf(std::string_view beginning) const {
  Notes found;
  for (const auto& note : notes) {
    if (note.starts_with(beginning)) found.push_back(note);
  }
  return found;
}

Notes NotingHouse::NotesWithoutPumps() const {
  Notes found;
  for (const auto& note : notes) {
    if (note != "pump") found.push_back(note);
  }
  return found;
}

FaultPlatform& NotingHouse::Faults() { return noting_->faults; }

}  // namespace twqb
