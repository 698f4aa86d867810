#include "adapters/windows/ado/BillingProvider.h"

#include <string>
#include <utility>

namespace twqb::windows {

namespace {

class BillingConnection : public ado::Connection {
 public:
  BillingConnection(ado::Provider& embedded, ado::Provider& other, const BillingProvider::IsEmbedded& isEmbedded)
      : embedded_(embedded), other_(other), isEmbedded_(isEmbedded) {}

  ado::ObjectState State() const override { return chosen_ ? chosen_->State() : ado::ObjectState::Closed; }
  void SetMode(ado::ConnectMode mode) override {
    mode_ = mode;
    if (chosen_) chosen_->SetMode(mode);
  }
  void SetCursorLocation(ado::CursorLocation location) override {
    location_ = location;
    if (chosen_) chosen_->SetCursorLocation(location);
  }
  void SetConnectionTimeout(int seconds) override {
    timeout_ = seconds;
    if (chosen_) chosen_->SetConnectionTimeout(seconds);
  }
  std::string ConnectionString() const override { return chosen_ ? chosen_->ConnectionString() : std::string(); }
  void SetConnectionString(std::string text) override {
    const bool wantsEmbedded = isEmbedded_(text);
    // A connection that is open refuses another string itself.
    if (!chosen_ || (wantsEmbedded != isOfEmbedded_ && State() == ado::ObjectState::Closed)) Choose(wantsEmbedded);
    chosen_->SetConnectionString(std::move(text));
  }
  std::string Provider() const override { return chosen_ ? chosen_->Provider() : std::string(); }

  void Open() override { Chosen().Open(); }
  void Close() override { Chosen().Close(); }
  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    return Chosen().Execute(statement, rowsAffected);
  }
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    return Chosen().OpenRecordset(statement, cursor, lock);
  }

 private:
  void Choose(bool embedded) {
    chosen_ = (embedded ? embedded_ : other_).CreateConnection();
    isOfEmbedded_ = embedded;
    if (mode_ != ado::ConnectMode::Unknown) chosen_->SetMode(mode_);
    chosen_->SetCursorLocation(location_);
    chosen_->SetConnectionTimeout(timeout_);
  }
  // Without a string it is ADO that says what is missing.
  ado::Connection& Chosen() {
    if (!chosen_) Choose(false);
    return *chosen_;
  }

  ado::Provider& embedded_;
  ado::Provider& other_;
  const BillingProvider::IsEmbedded& isEmbedded_;
  ado::ConnectMode mode_ = ado::ConnectMode::Unknown;
  ado::CursorLocation location_ = ado::CursorLocation::Server;
  int timeout_ = ado::kDefaultConnectionTimeout;
  bool isOfEmbedded_ = false;
  std::unique_ptr<ado::Connection> chosen_;
};

}  // namespace

BillingProvider::BillingProvider(ado::Provider& embedded, ado::Provider& other, IsEmbedded isEmbedded)
    : embedded_(embedded), other_(other), isEmbedded_(std::move(isEmbedded)) {}

std::unique_ptr<ado::Connection> BillingProvider::CreateConnection() {
  return std::make_unique<BillingConnection>(embedded_, other_, isEmbedded_);
}

}  // namespace twqb::windows
