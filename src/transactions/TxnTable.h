// How transactions move that are never modified: a send adds what QuickBooks lacks, a get inserts what BillingDb lacks,
// and there is no conflict rule.
//
// A module is a description: the links of its rows, fields, what is done about refusals, and hooks for what rows can't
// say. The walks of the engine own the loops; this owns the stale link, the look-ups of links in either direction, the
// write-back and the insertion.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/RecordWalk.h"
#include "engine/RowWalk.h"
#include "engine/StatusRules.h"
#include "engine/Table.h"
#include "platform/ado.h"

namespace twqb {

// What a get makes of a key that it does not find, and of a look-up that fails.
enum class Unknown : std::uint8_t { PassesOver, StaysEmpty };
enum class FailedLook : std::uint8_t { FindsNothing, IsTold };

// A key column of the row that must have a twin: read forwards on a send (key to link), backwards on a get (link to
// key).
struct TxnLink {
  std::string_view kind = {};       // of GetQBLinkIDOf
  std::string_view column = {};     // of the row: "ProjectID"
  std::string_view reference;       // of request and record: "CustomerRef"
  std::string_view keySelect;       // of the backward look-up, ahead of the link: "SELECT ... WHERE QBLINKID = '"
  std::string_view otherwise = {};  // the same where the link before this one found nothing; left out: no other
  std::size_t values = 1;           // how many columns that selects
  bool optional = false;            // a record without the reference has nothing to look up
  bool required = false;            // a record without the reference is an error, even where a failed look-up is none
  Unknown unknown = Unknown::PassesOver;
  FailedLook failed = FailedLook::FindsNothing;
};

struct TxnSend {
  SendTexts texts;
  std::string_view addRequest;
  std::span<const TxnLink> links;     // in the order of their look-ups; each only if the one before was found
  std::span<const StatusRule> rules;  // the last one is about any status; no question is asked but in a box of theirs

  // Ahead of the first row: what must exist in QuickBooks. False: it does not, which has been told, and no row goes.
  bool (*prepare)(QBSessionManager& session) = nullptr;
  // Which rows go; left out: all. What an observer hears of the others is `stays`.
  bool (*admit)(const ado::Recordset& row) = nullptr;
  std::string_view stays = {};
  // What the form shows of a row; left out: its key.
  std::string (*shown)(const ado::Recordset& row) = nullptr;
  // What the log tells of a row; ahead of the first one there is none.
  std::string (*told)(const ado::Recordset* row);
  // Fills the request; `links` are the identifiers of the description's. False: the row is not to go.
  bool (*fill)(const RequestField& request, const ado::Recordset& row, std::span<const std::string> links) = nullptr;
};

// A record on its way to BillingDb, where it is not yet.
struct TxnArrival {
  const Record& record;
  const std::string& txnId;
  std::span<const std::string> values;  // of the description's links, in the order of their columns
  ado::Recordset& rows;                 // the table's
  ado::Connection& connection;
};

// What is pulled ahead of a record whose customer is no job.
enum class CustomerPull : std::uint8_t { Nothing, Client, ClientAndProject };

// What comes first: whether the record is here already, or the look-ups of its links.
enum class LooksFirst : std::uint8_t { ForTheRecord, ForTheLinks };

struct TxnGet {
  GetTexts texts;
  std::span<const TxnLink> links;  // in the order of their look-ups; the first that is missing passes the record over
  std::string_view hereIn = {};    // the table whose rows say that a record is here; left out: the description's own
  LooksFirst looks = LooksFirst::ForTheRecord;
  CustomerPull pull = CustomerPull::Nothing;  // for records that are here, too

  // What the form shows of a record; left out, or nothing: the text stays.
  std::optional<std::string> (*shown)(const Record& record) = nullptr;
  // What the log calls a record.
  std::string (*name)(const Record& record) = nullptr;
  // Which records come; left out: all. Asked ahead of everything. What an observer hears of the others is `stays`.
  bool (*admit)(const Record& record) = nullptr;
  std::string_view stays = {};
  // Makes the rows of the record, one or several.
  void (*write)(const TxnArrival& arrival) = nullptr;
};

struct TxnTable {
  std::string_view tableName;
  std::string_view keyColumn;  // a GUID of our own making
  TxnSend send;
  TxnGet get;
};

// Adds the rows of the call; `table` is the one that the description moves. What went wrong has been told.
void SendTransactions(const Table& table, const TxnTable& txn, const SendCall& call);

// Gives the row of an addition the link and the date that the send did not get to write.
[[nodiscard]] TakenUp TakeUpTransactionLink(const Table& table, const TxnTable& txn, const LostAddition& lost);

// Inserts the records of the call that have no row.
void GetTransactions(const TxnTable& txn, const GetCall& call);

// Refers to what the row is linked to; `identifiers` are those of `links`.
void SetLinks(const RequestField& request, std::span<const TxnLink> links, std::span<const std::string> identifiers);

// The full name of the record's customer; "" without one.
[[nodiscard]] std::string CustomerName(const Record& record);

// The first field of what a statement finds; "" when that is nothing. Raises any error.
[[nodiscard]] std::string LookUp(ado::Connection& connection, const Sql& statement);

// Whether a row of the table is linked to that identifier, which holds no quote. Raises any error.
[[nodiscard]] bool IsLinkedTo(ado::Connection& connection, std::string_view table, std::string_view link);

// Whether a column of flags says True, which BillingDb stores as -1.
[[nodiscard]] bool IsTrueFlag(const ado::Recordset& row, std::string_view column);

}  // namespace twqb
