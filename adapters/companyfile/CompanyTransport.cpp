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

constexpr InterfaceVersion kInterfaceVersion = {.major = 5, .minor = 0};
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

class CompanyTransport : public Transport {
 public:
  CompanyTransport(std::string openFile, Machine& machine) : openFile_(std::move(openFile)), machine_(machine) {}

  InterfaceVersion GetVersion() override { return kInterfaceVersion; }

  void OpenConnection(std::string_view, std::string_view) override {
    if (connected_) Raise(kCallOutOfOrder, "A connection is open already.");
    connected_ = true;
  }

  void BeginSession(std::string_view fileName, OpenMode mode) override {
    RequireConnection();
    if (session_) Raise(kCallOutOfOrder, "A session has begun already.");
    const auto path = FullPath(ChooseFile(std::string(fileName)));
    if (!Exists(path)) Raise(kCannotOpenFile, "There is no file \"" + path + "\".");

    const bool alone = mode == OpenMode::SingleUser;
    auto lock = FileLock::TryTake(path + std::string(kLockSuffix), alone ? LockKind::Exclusive : LockKind::Shared);
    if (!lock) Raise(kOpenInOtherMode);
    CompanyFile file(path, machine_, alone ? FileMode::SingleUser : FileMode::MultiUser);
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

  // A session that is still there ends with its connection.
  void CloseConnection() override {
    RequireConnection();
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

  [[nodiscard]] std::string ChooseFile(const std::string& requested) const {
    const bool isOpen = Exists(openFile_);
    if (requested.empty()) {
      if (!isOpen) Raise(kFileNameRequired);
      return openFile_;
    }
    if (isOpen && !AreSameFile(requested, openFile_)) Raise(kOtherFileOpen, "Requested: \"" + requested + "\".");
    return isOpen ? openFile_ : requested;
  }

  std::string openFile_;
  Machine& machine_;
  bool connected_ = false;
  std::optional<Session> session_;
};

}  // namespace

std::unique_ptr<Transport> CompanyTransportFactory::CreateTransport() {
  return std::make_unique<CompanyTransport>(openFile_, machine_);
}

}  // namespace twqb::company
