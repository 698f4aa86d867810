// The bases that transfers are timed on: per table, how many rows and records stand on the two sides, and which of them
// are each other's twins. A base of several tables is made of the same rows.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/Callbacks.h"
#include "adapters/system/FrozenMachine.h"
#include "platform/Platform.h"
#include "twqb/enTables.h"

namespace twqb {

// Answers "yes" and keeps the boxes. What a form shows is drawn by a host: no part of a transfer's own time, and none
// of its floor.
class BenchDesk final : public ScriptedDesk {
 public:
  BenchDesk() : ScriptedDesk(ParseAnswers("default yes")) {}
  void UpdateMsgForm(const MsgFormState& /*state*/) override {}
};

// The seams on the files of one folder. A sleep takes no time.
struct Seams {
  explicit Seams(const std::string& folder)
      : machine({.libraryFolder = folder, .registryFile = folder + "/registry.ini"},
                {.now = TextToDate("2008-03-05T12:00:00"), .zone = {.bias = 300, .state = TimeZoneState::Standard}}),
        quickbooks(folder + "/company.twq", machine),
        connectString("Provider=SQLITE;Data Source=" + folder + "/billing.db"),
        settings(folder + "/twqb.ini") {}

  Platform All() {
    return {
        .database = &database, .quickbooks = &quickbooks, .desk = &desk, .machine = &machine, .callback = &callback};
  }

  FrozenMachine machine;
  BenchDesk desk;
  SqliteProvider database;
  company::CompanyTransportFactory quickbooks;
  NoCallbackFactory callback;
  std::string connectString;
  std::string settings;
};

// An open connection to the BillingDb of the seams.
[[nodiscard]] std::unique_ptr<ado::Connection> OpenBilling(Seams& seams);

// How a base is made: which records stand on which side, and which of the rows are the ones to be timed.
struct Base {
  int rows = 0;             // of the table
  int records = 0;          // of the company file
  int linked = 0;           // the first of both, each other's twins
  std::string lastUpdated;  // of the rows behind `stamped`
  int stamped = 0;          // so many rows are older than their twins
};

// Records that the company file of a table needs ahead of the table's own.
struct RecordsAhead {
  int count = 0;
  std::string (*text)() = nullptr;  // the requests that add them
};

// Transactions that are each other's twins already: one ahead of each record of the table, and for it.
struct TwinsAhead {
  int lines = 0;
  std::string (*record)(int number) = nullptr;
  std::string (*row)(int number, std::string_view link, std::string_view lastUpdated) = nullptr;
};

// Whether a table sends what has changed, or new records alone; and if so, whether linked rows are selected at all.
enum class Sends : std::uint8_t { Changes, NewRecordsAlone, UnlinkedRowsAlone, Nothing };

// What the sizes of a table are numbers of.
enum class Counted : bool { Records, Lines };

// Which counter of the company file its records take their identifiers from.
enum class Identifiers : bool { Lists, Transactions };

// A table of the benchmark. Numbers begin at 1.
struct BenchTable {
  enTables table;
  std::string_view name;
  Sends sends = Sends::Changes;
  RecordsAhead recordsAhead = {};
  Identifiers identifiers = Identifiers::Lists;
  int lines = 0;  // of a transaction, which have identifiers of their own
  Counted counted = Counted::Records;
  void (*rowsAhead)(ado::Connection& cn) = nullptr;
  TwinsAhead twinsAhead = {};
  std::string (*record)(int number) = nullptr;  // the request that adds it
  // The statement that adds the row; link and date as SQL.
  std::string (*row)(int number, std::string_view link, std::string_view lastUpdated) = nullptr;
  // Those that add the rows of other tables that its lines are made of, or that say where it goes; link as SQL.
  std::vector<std::string> (*rowsOfLines)(int number, std::string_view link) = nullptr;
  // The quoted keys of its rows, of a table whose rows go when a host names them.
  std::string (*named)(int number) = nullptr;
};

// In the order in which all tables in a row go.
extern const std::span<const BenchTable> kBenchTables;
[[nodiscard]] const BenchTable& BenchTableOf(enTables table);

// The identifiers that the company file of a base gives out, by turns.
[[nodiscard]] std::string ListId(int number);
[[nodiscard]] std::string TxnId(int number);

// The accounts that the items of these bases are booked to; the first records of a company file.
[[nodiscard]] RecordsAhead ItemAccounts();

// One in ten is a project, the others are its phases. The row of a project under that client and manager.
[[nodiscard]] std::string ProjectRowOf(int number, std::string_view client, std::string_view manager,
                                       std::string_view link, std::string_view lastUpdated);
// The project that a number is, or is a phase of, counted from 0.
[[nodiscard]] int ProjectIndex(int number);

// Dates before and after the twins of a base were made.
inline constexpr std::string_view kEarlier = "2008-03-05 06:00:00";
inline constexpr std::string_view kLater = "2008-03-05 16:30:00";

// Makes `billing.db`, `company.twq` and `twqb.ini` in the folder.
void MakeBase(const std::string& folder, const BenchTable& table, const Base& base);
// The same of requests to the company file, each text a document that lacks its frame, and of what adds the rows, in
// one transaction.
void MakeBase(const std::string& folder, const std::vector<std::string>& requests,
              const std::function<void(ado::Connection& cn)>& addRows);

// The settings of a base: the question of the first run is behind it.
inline constexpr std::string_view kBaseSettings = "[GENERAL]\r\nFIRST_TIME=False\r\n";

// Runs requests against the company file of a folder, and raises std::runtime_error when one is refused.
void RunRequests(const std::string& folder, Machine& machine, const std::string& requests);

}  // namespace twqb
