// The one way in which a table moves: a send loop and a get loop, told what a table is by its description.
//
// The engine owns opening, counting, progress, twin lookup, link and conflict rules, the retry of names in use,
// write-back, boxes and their questions, cancel, log and closing. A table module is a description and the hooks in it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/ConflictRule.h"
#include "engine/Mapping.h"
#include "platform/PlatformError.h"
#include "platform/ado.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

// The row in hand of a send.
struct SendRecord {
  std::string key;
  std::string linkId;  // empty: no twin
  bool lastUpdatedIsNull = false;
  std::string qbName;  // as built; the request cuts it
  // What the table's own hook read besides, for its assign routine.
  std::string firstName;
  std::string lastName;
  std::string middleName;
};

enum class RequestKind : std::uint8_t { Add, Mod };

struct TableDescription {
  std::int32_t table;  // of enTables
  std::string_view tableName;
  std::string_view keyColumn;
  std::string_view fallbackDateColumn;  // compared when LastUpdated is NULL

  // QuickBooks' side.
  std::string_view addRequest;
  std::string_view modRequest;

  // Texts.
  std::string_view sendRoutine;
  std::string_view getRoutine;
  std::string_view sendingText;
  std::string_view gettingText;
  std::string_view recordLabel;  // of the error box: "Client ID"
  std::string_view sendLogText;  // the key follows
  std::string_view getLogText;   // the QuickBooks name follows
  std::string_view missingConnectionText;

  // Statements.
  std::string (*lastUpdatedStatement)(std::string_view key, Date utc);

  // A send goes on with the next row after this error number instead of ending.
  std::optional<ErrorNumber> sendPassesOver = {};

  // Hooks of the send: what is read of the row beforehand, and the fields of the request.
  void (*readRow)(const ado::Recordset& row, SendRecord& record);
  void (*assign)(const RequestField& request, const ado::Recordset& row, RequestKind kind, const SendRecord& record);

  // Hooks of the get: which records belong to the table, and the columns but for link, date and a new row's key.
  bool (*belongs)(const Record& record);
  void (*writeFields)(ado::Recordset& row, const Record& record);
};

// Sends the rows that `strSQL` selects. The outcome is `g_TableOk`; what went wrong has been told.
void SendTable(const TableDescription& table, const std::string& strSQL, bool optNever, bool optMostRecent,
               QBSessionManager& session);

enum class Dependent : bool { No, Yes };

// Takes the records over. A dependent call (the pull of one record that another table's record needs) works on the
// caller's connection, shows no progress and does not act on Cancel.
void GetTable(const TableDescription& table, const RecordList& records, bool optNever, bool optMostRecent,
              Dependent dependent, ado::Connection* connection);

// Whether the record of a pair goes, by the conflict rule: `twin` is QuickBooks' side, `row` the billing side. A pair
// whose dates can't be read, which has been told, stays as it is.
[[nodiscard]] bool PairMoves(const TableDescription& table, Direction direction, TwinRule rule, const Record& twin,
                             const ado::Recordset& row);

// The end of a table that the user stopped: the wish is forgotten, told, and the outcome is False.
void EndCancelled();

// The record line of the error box: [Client ID = "ACME"].
[[nodiscard]] std::string RecordLine(const TableDescription& table, std::string_view key);

}  // namespace twqb
