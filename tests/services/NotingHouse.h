// A test house that notes, in one list and in their order, the calls that the library makes through its seams, and that
// can make chosen calls fail.
//
// The notes stand in front of the faults: a call that fails is noted too. Reads of settings and of the clock are not
// noted. Each note is one line: "box Warning", "write GENERAL/QBDBPath=C:\a.qbw", "execute SELECT ...".
#pragma once

#include <fmt/format.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/faults/Faults.h"
#include "platform/Forwarding.h"
#include "platform/MsgFormTexts.h"
#include "services/ModuleVariables.h"
#include "tests/support/TestHouse.h"

namespace twqb {

using Notes = std::vector<std::string>;

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

class NotingProvider : public ado::Provider {
 public:
  NotingProvider(ado::Provider& inner, Notes& notes) : inner_(inner), notes_(notes) {}
  std::unique_ptr<ado::Connection> CreateConnection() override {
    return std::make_unique<NotingConnection>(inner_.CreateConnection(), notes_);
  }

 private:
  ado::Provider& inner_;
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

class NotingHouse : public TestHouse {
 public:
  // `faults` is a text of scripted faults. The library is composed with the house at once; `quickbooks`, where it is
  // given, takes the place of the company file.
  explicit NotingHouse(HouseOptions options = {}, std::string_view faults = {},
                       std::unique_ptr<TransportFactory> otherQuickBooks = nullptr)
      : TestHouse(std::move(options)) {
    if (otherQuickBooks) quickbooks = std::move(otherQuickBooks);
    faults_ = std::make_unique<FaultPlatform>(Seams(), ParseFaults(faults));
    const auto failing = faults_->Decorated();
    desk_ = std::make_unique<NotingDesk>(*failing.desk, notes);
    machine_ = std::make_unique<NotingMachine>(*failing.machine, notes);
    database_ = std::make_unique<NotingProvider>(*failing.database, notes);
    quickbooks_ = std::make_unique<NotingTransportFactory>(*failing.quickbooks, notes);
    Enter({.database = database_.get(),
           .quickbooks = quickbooks_.get(),
           .desk = desk_.get(),
           .machine = machine_.get(),
           .callback = failing.callback});
  }
  // The library lets go of the seams before they go.
  ~NotingHouse() { Vars() = ModuleVariables{}; }
  NotingHouse(const NotingHouse&) = delete;
  NotingHouse& operator=(const NotingHouse&) = delete;

  // The notes that begin so, in order.
  [[nodiscard]] Notes NotesOf(std::string_view beginning) const {
    Notes found;
    for (const auto& note : notes) {
      if (note.starts_with(beginning)) found.push_back(note);
    }
    return found;
  }
  // The notes without the pumps of the message queue.
  [[nodiscard]] Notes NotesWithoutPumps() const {
    Notes found;
    for (const auto& note : notes) {
      if (note != "pump") found.push_back(note);
    }
    return found;
  }
  [[nodiscard]] FaultPlatform& Faults() { return *faults_; }

  Notes notes;

 private:
  std::unique_ptr<FaultPlatform> faults_;
  std::unique_ptr<NotingDesk> desk_;
  std::unique_ptr<NotingMachine> machine_;
  std::unique_ptr<NotingProvider> database_;
  std::unique_ptr<NotingTransportFactory> quickbooks_;
};

}  // namespace twqb
