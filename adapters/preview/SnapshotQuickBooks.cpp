#include "adapters/preview/SnapshotQuickBooks.h"

#include <fmt/core.h>

#include <string>
#include <string_view>
#include <utility>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/snapshot/Snapshot.h"
#include "platform/PlatformError.h"

namespace twqb::preview {

namespace {

// Calls `call` as the last word to a session, whatever becomes of it.
template <typename Call>
void Quietly(const Call& call) {
  try {
    call();
  } catch (const PlatformError&) {
    return;
  }
}

}  // namespace

class SnapshotQuickBooks::SnapshotTransport : public Transport {
 public:
  SnapshotTransport(std::unique_ptr<Transport> itself, SnapshotQuickBooks& owner)
      : itself_(std::move(itself)), owner_(owner) {}

  InterfaceVersion GetVersion() override { return itself_->GetVersion(); }

  void OpenConnection(std::string_view applicationId, std::string_view applicationName) override {
    itself_->OpenConnection(applicationId, applicationName);
    applicationId_ = applicationId;
    applicationName_ = applicationName;
  }

  void BeginSession(std::string_view fileName, OpenMode mode) override {
    itself_->BeginSession(fileName, mode);
    Read();
    copy_ = company::CompanyTransportFactory(owner_.notes_.opened->worked, owner_.machine_).CreateTransport();
    copy_->OpenConnection(applicationId_, applicationName_);
    copy_->BeginSession("", mode);
  }

  std::string GetCurrentCompanyFileName() override {
    static_cast<void>(Copy());
    return name_;
  }

  std::string ProcessDocument(std::string_view document) override {
    auto answer = owner_.files_.Translated([&] { return Copy().ProcessDocument(document); });
    owner_.notes_.touched.Note(answer);
    return answer;
  }
  std::string ProcessSubscription(std::string_view document) override {
    return owner_.files_.Translated([&] { return Copy().ProcessSubscription(document); });
  }

  void EndSession() override { Copy().EndSession(); }
  void CloseConnection() override {
    copy_.reset();
    itself_->CloseConnection();
  }

 private:
  void Read() {
    try {
      name_ = itself_->GetCurrentCompanyFileName();
      owner_.notes_.opened = &owner_.files_.Put(name_, owner_.snapshots_.CompanyOf(*itself_, name_, owner_.machine_));
      itself_->EndSession();
    } catch (const PlatformError& raised) {
      TakeLeave();
      throw snapshot::SnapshotError(fmt::format("QuickBooks can't be read. {}", raised.description()));
    } catch (...) {
      TakeLeave();
      throw;
    }
  }

  void TakeLeave() {
    Quietly([&] { itself_->EndSession(); });
    Quietly([&] { itself_->CloseConnection(); });
  }

  [[nodiscard]] Transport& Copy() {
    constexpr ErrorNumber kCallOutOfOrder = 0x8004040D;
    if (!copy_) throw PlatformError(kCallOutOfOrder, "No session has begun.");
    return *copy_;
  }

  std::unique_ptr<Transport> itself_;
  SnapshotQuickBooks& owner_;
  std::string applicationId_;
  std::string applicationName_;
  std::string name_;
  std::unique_ptr<Transport> copy_;
};

std::unique_ptr<Transport> SnapshotQuickBooks::CreateTransport() {
  return std::make_unique<SnapshotTransport>(itself_.CreateTransport(), *this);
}

}  // namespace twqb::preview
