// The bases that transfers are timed on: per table, how many rows and records stand on the two sides, and which of them
// are each other's twins.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/Callbacks.h"
#include "adapters/system/FrozenMachine.h"
#include "platform/Platform.h"
#include "twqb/enTables.h"

namespace twqb {

// The seams on the files of one folder.
struct Seams {
  explicit Seams(const std::string& folder)
      : machine({.libraryFolder = folder, .registryFile = folder + "/registry.ini"},
                {.now = TextToDate("2008-03-05T12:00:00"), .zone = {.bias = 300, .state = TimeZoneState::Standard}}),
        desk(ParseAnswers("default yes")),
        quickbooks(folder + "/company.twq", machine),
        connectString("Provider=SQLITE;Data Source=" + folder + "/billing.db"),
        settings(folder + "/twqb.ini") {}

  Platform All() {
    return {
        .database = &database, .quickbooks = &quickbooks, .desk = &desk, .machine = &machine, .callback = &callback};
  }

  FrozenMachine machine;
  ScriptedDesk desk;
  SqliteProvider database;
  company::CompanyTransportFactory quickbooks;
  NoCallbackFactory callback;
  std::string connectString;
  std::string settings;
};

// How a base is made: which records stand on which side, and which of the rows are the ones to be timed.
struct Base {
  int rows = 0;             // of the table
  int records = 0;          // of the company file
  int linked = 0;           // the first of both, each other's twins
  std::string lastUpdated;  // of the rows behind `stamped`
  int stamped = 0;          // so many rows are as old as their twins
};

// A table of the benchmark. Numbers begin at 1.
struct BenchTable {
  enTables table;
  std::string_view name;
  std::string_view sendName;  // of its settings
  int recordsAhead = 0;       // records of the company file that the base has ahead of the table's own
  std::string (*recordsAheadText)() = nullptr;
  void (*rowsAhead)(ado::Connection& cn) = nullptr;
  std::string (*record)(int number) = nullptr;  // the request that adds it
  // The statement that adds the row; link and date as SQL.
  std::string (*row)(int number, std::string_view link, std::string_view lastUpdated) = nullptr;
};

extern const std::span<const BenchTable> kBenchTables;

// Makes `billing.db` and `company.twq` in the folder.
void MakeBase(const std::string& folder, const BenchTable& table, const Base& base);

}  // namespace twqb
