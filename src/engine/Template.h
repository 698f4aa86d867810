// The one way in which a table moves: a send loop and a get loop, told what a table is by its description.
//
// The engine owns opening, counting, progress, twin lookup, link and conflict rules, the retry of names in use,
// write-back, boxes and their questions, cancel, log and closing. A table module is a description and the hooks in it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
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
};

enum class RequestKind : std::uint8_t { Add, Mod };

// What a table is. Only the names and texts are required: a hook that is left out does what its comment says, so a
// table whose fields are all rows is a description and nothing else.
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
  std::string_view progressField = "FullName";  // of the record in hand, shown while it is taken over

  // The statement that gives a new pair its date; left out: LastUpdated = 'mm/dd/yyyy hh:mm:ss'.
  std::string (*lastUpdatedStatement)(std::string_view key, Date utc) = nullptr;

  // A send goes on with the next row after this error number instead of ending.
  std::optional<ErrorNumber> sendPassesOver = {};

  // The fields of a request and of a row, but for name, link, date and a new row's key.
  std::span<const SendField> sendFields = {};
  std::span<const std::string_view> blankedColumns = {};  // first: a field that QuickBooks leaves out blanks its column
  std::span<const GetField> getFields = {};

  // Hooks of the send. What is read of the row beforehand; left out: its QuickBooks name is its key.
  void (*readRow)(const ado::Recordset& row, SendRecord& record) = nullptr;
  // The fields of the request; left out: `sendFields`, and of an Add the name.
  void (*assign)(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                 const SendRecord& record) = nullptr;

  // Hooks of the get. Which records belong to the table; left out: all.
  bool (*belongs)(const Record& record) = nullptr;
  // The columns; left out: `blankedColumns` and `getFields`.
  void (*writeFields)(ado::Recordset& row, const Record& record) = nullptr;
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

// What a hook that is left out does.
void AssignFields(const TableDescription& table, const RequestField& request, const ado::Recordset& row,
                  RequestKind kind, const SendRecord& record);
void WriteFields(const TableDescription& table, ado::Recordset& row, const Record& record);
[[nodiscard]] std::string LastUpdatedStatement(const TableDescription& table, std::string_view key, Date utc);

// The record line of the error box: [Client ID = "ACME"].
[[nodiscard]] std::string RecordLine(const TableDescription& table, std::string_view key);

}  // namespace twqb
