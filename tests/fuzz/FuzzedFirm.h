// The sample firm with the library on top of it, for targets that go through a whole transfer.
//
// Both files are made once and put back as they were every so often, so that finds can be told from leftovers.
#pragma once

#include <fmt/core.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/Callbacks.h"
#include "adapters/system/FrozenMachine.h"
#include "cli/options/Options.h"
#include "cli/workplace/FolderMaker.h"
#include "platform/Forwarding.h"
#include "twqb/CTWQBBridge.h"
#include "twqb/enTables.h"

namespace twqb::fuzz {

inline void Require(bool holds) {
  if (!holds) std::abort();
}

// Hands out transports that answer the documents that `answer` has an answer for, and the company file's else.
class AnsweringFactory : public TransportFactory {
 public:
  using Answer = std::function<bool(std::string_view document, std::string& answer)>;
  explicit AnsweringFactory(TransportFactory& inner) : inner_(inner) {}

  std::unique_ptr<Transport> CreateTransport() override {
    class Answering : public ForwardingTransport {
     public:
      Answering(std::unique_ptr<Transport> inner, AnsweringFactory& factory)
          : ForwardingTransport(std::move(inner)), factory_(factory) {}
      std::string ProcessDocument(std::string_view document) override {
        std::string given;
        if (factory_.answer && factory_.answer(document, given)) return given;
        return ForwardingTransport::ProcessDocument(document);
      }

     private:
      AnsweringFactory& factory_;
    };
    return std::make_unique<Answering>(inner_.CreateTransport(), *this);
  }

  Answer answer;

 private:
  TransportFactory& inner_;
};

inline std::string Scalar(ado::Connection& connection, std::string_view statement) {
  return ToText(connection.Execute(statement, nullptr)->FieldAt(0));
}

// How many links of a table more than one row has.
inline std::string SharedLinks(ado::Connection& connection, std::string_view table) {
  return Scalar(connection, fmt::format("SELECT COUNT(*) FROM (SELECT QBLinkID FROM {} WHERE QBLinkID <> '' GROUP BY "
                                        "QBLinkID HAVING COUNT(*) > 1)",
                                        table));
}

class FuzzedFirm {
 public:
  FuzzedFirm() {
    cli::MakeFolder(folder_, {.content = cli::Content::Sample}, machine_);
    ComposeAll();
    Transfer([](CTWQBBridge& bridge) { (void)bridge.SendDataToQB(enAll); });
    End();
    for (const auto* file : kFiles) std::filesystem::copy_file(Path(file), Path(file) + ".kept");
    ComposeAll();
  }
  ~FuzzedFirm() {
    End();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  FuzzedFirm(const FuzzedFirm&) = delete;
  FuzzedFirm& operator=(const FuzzedFirm&) = delete;

  // To be called ahead of each input: the one of `tables` that its first byte chooses.
  template <typename Tables>
  [[nodiscard]] const auto& Begin(const Tables& tables, std::uint8_t choice) {
    Refresh();
    return tables[choice % tables.size()];
  }

  void Refresh() {
    constexpr int kInputsPerFirm = 100;
    if (++inputs_ % kInputsPerFirm != 0) return;
    End();
    for (const auto* file : kFiles) {
      std::filesystem::copy_file(Path(file) + ".kept", Path(file), std::filesystem::copy_options::overwrite_existing);
    }
    ComposeAll();
  }

  // No error may leave an operation. Every question is answered with Yes; one that has no such answer ends it.
  template <typename Operation>
  void Transfer(Operation operation) {
    CTWQBBridge bridge;
    bridge.SetConnectString("Provider=SQLITE;Data Source=" + Path(cli::kBillingFile));
    bridge.SetTWSettingsPath(Path(cli::kSettingsFile));
    bridge.SetNoProgressBar(true);
    try {
      operation(bridge);
    } catch (const DeskGaveUp&) {
    }
  }

  std::unique_ptr<ado::Connection> Billing() {
    auto connection = database_.CreateConnection();
    connection->SetConnectionString("Provider=SQLITE;Data Source=" + Path(cli::kBillingFile));
    connection->Open();
    return connection;
  }

  AnsweringFactory& QuickBooks() { return quickbooks_; }

 private:
  static constexpr const char* kFiles[] = {cli::kBillingFile, cli::kCompanyFile};

  [[nodiscard]] std::string Path(const std::string& file) const { return folder_ + "/" + file; }
  static std::string MakeTemporaryFolder() {
    // Memory when there is some: nothing here is about durability.
    std::string folder = std::filesystem::exists("/dev/shm") ? "/dev/shm/twqb-fuzz-XXXXXX" : "/tmp/twqb-fuzz-XXXXXX";
    Require(mkdtemp(folder.data()) != nullptr);
    return folder;
  }
  void ComposeAll() {
    desk_ = std::make_unique<ScriptedDesk>(ParseAnswers("default yes\ndefault skip\n"));
    Compose({.database = &database_,
             .quickbooks = &quickbooks_,
             .desk = desk_.get(),
             .machine = &machine_,
             .callback = &callback_});
  }
  static void End() { Compose({}); }

  FrozenMachine machine_{{.libraryFolder = "/dev/null", .registryFile = ""},
                         {.now = Date::FromUnixSeconds(1204729200), .zone = {.bias = 300}}};
  std::string folder_ = MakeTemporaryFolder();
  SqliteProvider database_;
  company::CompanyTransportFactory embedded_{Path(cli::kCompanyFile), machine_};
  AnsweringFactory quickbooks_{embedded_};
  RecordingCallbackFactory callback_;
  std::unique_ptr<ScriptedDesk> desk_;
  int inputs_ = 0;
};

}  // namespace twqb::fuzz
