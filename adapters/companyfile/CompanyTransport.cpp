#include "adapters/companyfile/CompanyTransport.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "adapters/companyfile/CompanyErrors.h"
#include "adapters/companyfile/CompanyFile.h"
#include "adapters/companyfile/FileLock.h"

namespace twqb::company {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kLockSuffix = ".lock";

bool Exists(const std::string& path) {
  std::error_code ignored;
  return !path.empty() && fs::exists(path, ignored);
}

std::string FullPath(const std::string& path) { return fs::absolute(path).lexically_normal().string(); }

bool AreSameFile(const std::string& a, const std::string& b) {
  std::error_code failed;
  return fs::equivalent(a, b, failed) && !failed;
}

// How QuickBooks stands to the file that is asked for.
enum class OpenState { OpenAlready, ToBeOpened };

void RequireReadiness(const CompanyConditions& conditions, OpenState state) {
  if (conditions.dialog == DialogState::Open) Raise(kDialogOpen);
  if (conditions.application == Permission::Withheld) Raise(kNoPermission);
  // In a file that is open somebody has logged on already.
  if (state == OpenState::ToBeOpened && conditions.automaticLogon == Permission::Withheld) Raise(kNoAutoLogon);
}

class CompanyTransport : public Transport {
 public:
  CompanyTransport(std::string openFile, Machine& machine) : openFile_(std::move(openFile)), machine_(machine) {}

  InterfaceVersion GetVersion() override {
    if (!Exists(openFile_)) return CompanyConditions{}.interfaceVersion;
    try {
      return CompanyFile(openFile_, machine_).GetConditions().interfaceVersion;
    } catch (const PlatformError&) {
      return CompanyConditions{}.interfaceVersion;  // what is wrong with the file, the session will tell
    }
  }

  void OpenConnection(std::string_view, std::string_view applicationName) override {
    if (connected_) Raise(kCallOutOfOrder, "A connection is open already.");
    application_ = applicationName;
    connected_ = true;
  }

  void BeginSession(std::string_view fileName, OpenMode mode) override {
    RequireConnection();
    if (session_) Raise(kCallOutOfOrder, "A session has begun already.");
    const std::string requested(fileName);
    const bool isOpen = Exists(openFile_);
    if (requested.empty() && !isOpen) Raise(kFileNameRequired);
    const bool openIsMeant = isOpen && (requested.empty() || AreSameFile(requested, openFile_));
    const auto path = FullPath(openIsMeant ? openFile_ : requested);
    const bool alone = mode == OpenMode::SingleUser;
    auto file = Open(path, requested, alone ? FileMode::SingleUser : FileMode::MultiUser);
    if (isOpen && !openIsMeant) Raise(kOtherFileOpen, "Requested: \"" + requested + "\".");
    RequireReadiness(file.GetConditions(), openIsMeant ? OpenState::OpenAlready : OpenState::ToBeOpened);
    auto lock = FileLock::TryTake(path + std::string(kLockSuffix), alone ? LockKind::Exclusive : LockKind::Shared);
    if (!lock) Raise(kOpenInOtherMode);
    session_.emplace(Session{.path = path, .lock = std::move(*lock), .file = std::move(file)});
  }

  std::string GetCurrentCompanyFileName() override { return CurrentSession().path; }

  std::string ProcessDocument(std::string_view document) override { return CurrentSession().file.Process(document); }

  std::string ProcessSubscription(std::string_view document) override {
    return CurrentSession().file.ProcessSubscription(document);
  }

  void EndSession() override {
    static_cast<void>(CurrentSession());
    session_.reset();
  }

  // A session that is still there ends with its connection. Without a connection there is nothing to do: programs close
  // on their way out of a failure, however far they got.
  void CloseConnection() override {
    session_.reset();
    connected_ = false;
  }

 private:
  struct Session {
    std::string path;
    FileLock lock;
    CompanyFile file;
  };

  void RequireConnection() const {
    if (!connected_) Raise(kCallOutOfOrder, "No connection is open.");
  }

  Session& CurrentSession() {
    RequireConnection();
    if (!session_) Raise(kCallOutOfOrder, "No session has begun.");
    return *session_;
  }

  [[nodiscard]] CompanyFile Open(const std::string& path, const std::string& requested, FileMode mode) const {
    try {
      return {path, machine_, mode, application_};
    } catch (const PlatformError& raised) {
      if (raised.number() != kCannotOpenFile || requested.empty()) throw;
      Raise(kCannotOpenNamed, DetailOf(raised));
    }
  }

  std::string openFile_;
  Machine& machine_;
  bool connected_ = false;
  std::string application_;
  std::optional<Session> session_;
};

}  // namespace

std::unique_ptr<Transport> CompanyTransportFactory::CreateTransport() {
  return std::make_unique<CompanyTransport>(openFile_, machine_);
}

}  // namespace twqb::company
