// How transactions move that are never modified: a send adds what QuickBooks lacks, a get inserts what BillingDb lacks,
// and there is no conflict rule.
//
// A module is a description: the links of its rows, fields, what is done about refusals, and hooks for what rows can't
// say. The walks of the engine own the loops; this owns the stale link, the look-ups of links in either direction, the
// write-back and the insertion.
#pragma once

#include <cstdint>
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

// A key column of the row that must have a twin: read forwards on a send (key to link), backwards on a get (link to
// key).
struct TxnLink {
  std::string_view kind;       // of GetQBLinkIDOf
  std::string_view column;     // of the row: "ProjectID"
  std::string_view reference;  // of request and record: "CustomerRef"
  std::string_view keySelect;  // of the backward look-up, ahead of the link: "SELECT ... WHERE QBLINKID = '"
  std::size_t values = 1;      // how many columns that selects
  bool optional = false;       // a record without the reference has nothing to look up
};

struct TxnSend {
  SendTexts texts;
  std::string_view addRequest;
  std::span<const TxnLink> links;     // in the order of their look-ups; each only if the one before was found
  std::span<const StatusRule> rules;  // the last one is about any status; no question is asked but in a box of theirs

  // Ahead of the first row: what must exist in QuickBooks. False: it does not, which has been told, and no row goes.
  bool (*prepare)(QBSessionManager& session) = nullptr;
  // Which rows go; left out: all.
  bool (*admit)(const ado::Recordset& row) = nullptr;
  // What the form shows of a row; left out: its key.
  std::string (*shown)(const ado::Recordset& row) = nullptr;
  // What the log tells of a row; ahead of the first one there is none.
  std::string (*told)(const ado::Recordset* row);
  // Fills the request; `links` are the identifiers of the description's. False: the row is not to go.
  bool (*fill)(const RequestField& request, const ado::Recordset& row, std::span<const std::string> links) = nullptr;
};

struct TxnGet {
  GetTexts texts;
  std::span<const TxnLink> links;  // in the order of their look-ups; the first that is missing passes the record over

  // What the form shows of a record; left out, or nothing: the text stays.
  Record (*shown)(const Record& record) = nullptr;
  // What the log calls a record.
  std::string (*name)(const Record& record) = nullptr;
  // Ahead of everything: pulls what the record needs and BillingDb may lack.
  void (*pull)(const Record& record, ado::Connection& connection) = nullptr;
  // The columns of the new row, but for link, key and date; `values` are those of the links, in the order of their
  // columns.
  void (*writeRow)(ado::Recordset& row, const Record& record, std::span<const std::string> values,
                   ado::Connection& connection) = nullptr;
};

struct TxnTable {
  std::string_view tableName;
  std::string_view keyColumn;  // a GUID of our own making
  TxnSend send;
  TxnGet get;
};

// Adds the rows of the call; `table` is the one that the description moves. What went wrong has been told.
void SendTransactions(const Table& table, const TxnTable& txn, const SendCall& call);

// Inserts the records of the call that have no row.
void GetTransactions(const TxnTable& txn, const GetCall& call);

// Refers to what the row is linked to; `identifiers` are those of `links`.
void SetLinks(const RequestField& request, std::span<const TxnLink> links, std::span<const std::string> identifiers);

// Whether a column of flags says True, which BillingDb stores as -1.
[[nodiscard]] bool IsTrueFlag(const ado::Recordset& row, std::string_view column);

}  // namespace twqb
