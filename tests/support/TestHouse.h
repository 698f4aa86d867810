// A whole house for a test: every seam with a real implementation in a temporary folder, a frozen clock, and answers
// written down beforehand. Not composed with the library until `Enter`.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/companyfile/CompanyOptions.h"
#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/Callbacks.h"
#include "adapters/system/FrozenMachine.h"
#include "platform/Platform.h"
#include "services/ModuleVariables.h"
#include "tests/support/Process.h"

namespace twqb {

struct HouseOptions {
  std::string provider = "SQLITE";
  std::string answers;  // as in an answers file
  company::CompanyOptions company;
  Date now = TextToDate("2008-03-05T10:00:00");
  TimeZoneInformation zone = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Standard};
  bool findsLostLinks = false;
  // An existing folder to stand in, with the files that an earlier house left there. Empty: a new one, removed with
  // the house.
  std::string folder = {};
};

class TestHouse {
  // First: the machine stands in it.
  std::optional<TemporaryFolder> ownFolder_;
  std::string folder_;

 public:
  // Makes an empty BillingDb and an empty company file, each unless it is in the folder already.
  explicit TestHouse(HouseOptions options = {});
  ~TestHouse();
  TestHouse(const TestHouse&) = delete;
  TestHouse& operator=(const TestHouse&) = delete;

  // What the library is composed with beside the seams, from the next `Enter` on.
  std::span<const Table* const> tables;  // none: the built-in ones
  GetTableRoutine pull = nullptr;        // the dispatch's, for houses that it stands in

  // Composes the library with this house: state of the process begins anew.
  void Enter();
  // The same with some seams replaced.
  void Enter(const Platform& platform);
  [[nodiscard]] Platform Seams();

  [[nodiscard]] const std::string& Folder() const { return folder_; }
  [[nodiscard]] std::string Path(std::string_view name) const { return folder_ + "/" + std::string(name); }
  [[nodiscard]] std::string ConnectString() const;

  // Runs one statement on BillingDb.
  void Sql(std::string_view statement);
  // The first field of the first row as text; "(no row)" when there is none, "NULL" for NULL.
  [[nodiscard]] std::string Scalar(std::string_view statement);
  // Runs requests ("<CustomerAddRq>...</CustomerAddRq>") against the company file; the answer.
  std::string Company(std::string_view requests, std::string_view tag = "3.0");
  // The ListID that QuickBooks gave a customer of that full name; "" when there is none.
  [[nodiscard]] std::string ListIdOf(std::string_view fullName);
  // The lines of the log.
  [[nodiscard]] std::vector<std::string> Log() const;
  // The texts of the boxes shown so far.
  [[nodiscard]] std::vector<std::string> BoxTexts() const;

  FrozenMachine machine;
  ScriptedDesk desk;
  SqliteProvider database;
  RecordingCallbackFactory callback;
  std::unique_ptr<TransportFactory> quickbooks;

 private:
  bool findsLostLinks_;
  std::string provider_;
  std::unique_ptr<ado::Connection> connection_;
};

}  // namespace twqb
