// A table that the link knows, as one value: its names, which rows a send selects, what a get reads of QuickBooks, the
// routines that move it, and how its records are deleted.
//
// Each table's module defines its own; bridge/Tables.cpp lists them in the order of a run. Whatever goes over tables
// goes over that list, and a table that is not in it does not exist.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/ConflictRule.h"
#include "engine/QuickBooksRead.h"
#include "engine/SavedFilters.h"
#include "engine/Selection.h"
#include "platform/ado.h"
#include "quickbooks/QBSessionManager.h"
#include "services/Direction.h"
#include "services/Run.h"
#include "twqb/enTables.h"

namespace twqb {

// The stems of a table's filter keys, which stand in the texts of the progress form, too. The blanks before some
// brackets, and their absence before others, are those of the hosts' settings.
struct TableNames {
  std::string_view send;
  std::string_view get;

  [[nodiscard]] constexpr std::string_view Of(Direction direction) const {
    return direction == Direction::Send ? send : get;
  }
};

// What stands in their place where no single table is meant.
inline constexpr std::string_view kNoTableName = "All Tables";

// Where the rows of a table stand in BillingDb.
struct BillingRows {
  std::string_view table;
  std::string_view condition = "1 = 1";  // which of the table's rows
  std::string_view madeKey = {};         // the key's column, where new rows get a GUID there
};

// Whether a send comes to a row that is of nothing in BillingDb.
enum class Orphan : std::uint8_t { IsSelected, IsPassedOver };

// A row of another table, or of its own, that a row is of: an hour's project, a phase's project.
struct RowParent {
  std::string_view column;  // that names it
  std::string_view table;   // in which it stands
  std::string_view key;     // by which it is found there
  Orphan orphan = Orphan::IsSelected;
};

// What a table's send is called with.
struct SendCall {
  const Sql& sql;  // the selection
  TwinRule rule;
  QBSessionManager& session;
  Run& run;
};

enum class Dependent : bool { No, Yes };

// What a table's get is called with, once for each of its reads that found something.
struct GetCall {
  const RecordList& records;
  TwinRule rule;
  Run& run;
  Dependent dependent = Dependent::No;    // the pull of one record for another table's sake, on `connection`
  ado::Connection* connection = nullptr;  // the caller's; nothing: the routine opens its own
  std::int16_t part = 0;                  // which of the table's reads, from 0
};

// Which of its rows a table sends.
enum class SentRows : std::uint8_t {
  Selected,
  NamedAlone,  // those of PassedID, never in a run over all tables, and whatever comes of it is a good end
};

// How a table's record goes on either side.
struct BillingDeletion {
  std::string_view rows = {};      // the table of BillingDb; empty: an invalid statement, which nobody notices
  std::string_view alsoRows = {};  // a second one
  std::string_view instead = {};   // what the user is told in place of a deletion
};
enum class QuickBooksKind : std::uint8_t { None, List, Transaction };
struct QuickBooksDeletion {
  QuickBooksKind kind = QuickBooksKind::None;  // None: the set goes out empty
  int type = 0;                                // of ListDelType or TxnDelType
  std::int32_t accepted = 0;                   // a status that counts as success
};

class RowLook;

// An addition of which QuickBooks keeps the outcome, while the link of its row may be missing.
struct LostAddition {
  std::string_view key;      // as the addition named its row
  std::string_view request;  // "CustomerAdd"
  std::size_t attempt = 0;   // how often the row was tried before, in the same set
  Record record = {};        // as it was added; nothing: the outcome has its status alone
  bool isCertain = true;     // that it was added
  std::string replaces;      // the twin in the place of which it was added; "" for none
  ado::Connection& connection;
  QBSessionManager& session;
  RowLook* look = nullptr;  // not nothing: it is no addition, and nothing is written (engine/RowLook.h)
};

// What came of it.
struct TakenUp {
  enum class End : std::uint8_t {
    Linked,    // the row, to `identifier`
    KnewIt,    // it was linked to it already; what was missing behind that has been written
    Other,     // it has another link by now, `identifier`, which is left alone
    RowGone,   // there is no such row any more
    NotAdded,  // after all
    Open,      // what was added for the row can't be told: `why`
  };

  End end = End::Open;
  std::string identifier = {};
  std::string why = {};
  RestOfRow rest = RestOfRow::None;
};

// Where the keys stand by which additions name their rows.
struct KeyPlace {
  std::string_view table = {};
  std::string_view column = {};
  std::string_view adds = {};            // the request that adds such a row: "CustomerAdd"
  std::string_view condition = "1 = 1";  // which of the table's rows
};

// What people call a row and its twin, of a list: the name that the send gives the twin is one of them. Transactions go
// by number, date and person.
struct Called {
  std::span<const std::string_view> columns = {};   // of the selection: its key, and what else names it
  std::span<const std::string_view> person = {};    // names it as one, where nothing but the key does
  std::span<const std::string_view> elements = {};  // of the record
  std::span<const std::string_view> sharing = {};   // the queries whose records can't have the same name
  std::string_view number = {};                     // of request and record; nobody else has it: "AccountNumber"
};

// How a row gets a link that was lost.
struct LostLink {
  std::string_view row;     // what people call one: "client"
  std::string_view record;  // and its twin: "customer"
  KeyPlace keys;            //
  KeyPlace otherKeys = {};  // where a table names rows of two tables
  Called called = {};
  std::span<const KeyPlace> lines = {};  // where rows stand that are linked to lines of the record
  // Writes what the send would have written behind its answer. May raise.
  TakenUp (*takeUp)(const LostAddition& lost) = nullptr;
};

struct Table {
  enTables number;
  std::string_view name;  // of the member of enTables, without its prefix
  TableNames names;
  BillingRows rows;
  std::span<const RowParent> parents = {};

  // The send. Its outcome is `g_TableOk`. Nothing: this version does not include it.
  Selection selection = {};
  SentRows sends = SentRows::Selected;
  void (*send)(const SendCall& call) = nullptr;
  void (*afterSend)(QBSessionManager& session) = nullptr;  // of named rows
  std::vector<std::string> (*secures)() = nullptr;         // names of records that it adds ahead of its rows
  LostLink lostLink = {};                                  // of a table that adds

  // The get, likewise.
  std::span<const QuickBooksRead> reads = {};
  void (*beforeReads)() = nullptr;
  void (*get)(const GetCall& call) = nullptr;

  BillingDeletion billingDeletion = {};
  QuickBooksDeletion quickBooksDeletion = {};
};

}  // namespace twqb
