#include "adapters/preview/CopiedDatabase.h"

#include <fmt/core.h>

#include <utility>

#include "adapters/sqlite/ConnectionText.h"
#include "platform/Forwarding.h"
#include "platform/Text.h"

namespace twqb::preview {

namespace {

// Its rows are written to the copy where the connection's statements are.
class CopiedRecordset : public ado::ForwardingRecordset {
 public:
  CopiedRecordset(std::unique_ptr<ado::Recordset> inner, ScratchFiles& files)
      : ForwardingRecordset(std::move(inner)), files_(files) {}

  void Update() override {
    files_.Translated([&] { ForwardingRecordset::Update(); });
  }

 private:
  ScratchFiles& files_;
};

class CopiedConnection : public ado::ForwardingConnection {
 public:
  CopiedConnection(std::unique_ptr<ado::Connection> inner, ScratchFiles& files, const std::string& otherProvider)
      : ForwardingConnection(std::move(inner)), files_(files), otherProvider_(otherProvider) {}

  [[nodiscard]] std::string Provider() const override {
    return IsOther() ? otherProvider_ : ForwardingConnection::Provider();
  }

  [[nodiscard]] std::string ConnectionString() const override { return text_; }
  void SetConnectionString(std::string text) override {
    text_ = std::move(text);
    ForwardingConnection::SetConnectionString(text_);
  }

  void Open() override {
    const auto file = IsOther() ? kOtherDatabase : sqlite::ParseConnectionText(text_).dataSource;
    if (!file.empty()) ForwardingConnection::SetConnectionString(ConnectionTo(text_, files_.Of(file).worked));
    files_.Translated([&] { ForwardingConnection::Open(); });
  }

  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    return files_.Translated([&] { return ForwardingConnection::Execute(statement, rowsAffected); });
  }
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    auto rows = files_.Translated([&] { return ForwardingConnection::OpenRecordset(statement, cursor, lock); });
    return std::make_unique<CopiedRecordset>(std::move(rows), files_);
  }

 private:
  [[nodiscard]] bool IsOther() const { return !otherProvider_.empty() && !sqlite::NamesEmbeddedEngine(text_); }

  ScratchFiles& files_;
  const std::string& otherProvider_;
  std::string text_;
};

}  // namespace

std::unique_ptr<ado::Connection> CopiedProvider::CreateConnection() {
  return std::make_unique<CopiedConnection>(inner_.CreateConnection(), files_, otherProvider_);
}

// Of two parts with one key the last one counts.
std::string ConnectionTo(const std::string& connection, const std::string& file) {
  const std::string_view beside =
      sqlite::NamesEmbeddedEngine(connection) ? std::string_view(connection) : "Provider=SQLITE";
  return fmt::format("{};Data Source=\"{}\"", beside, ReplaceAll(file, "\"", "\"\""));
}

}  // namespace twqb::preview
