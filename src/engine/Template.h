// The one way in which a table moves: a send loop and a get loop, told what a table is by its description.
//
// The engine owns opening, counting, progress, twin lookup, link and conflict rules, the retry of names in use,
// write-back, boxes and their questions, cancel, log and closing. A table module is a description and the hooks in it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/ConflictRule.h"
#include "engine/Mapping.h"
#include "platform/PlatformError.h"
#include "platform/ado.h"
#include "quickbooks/QBSessionManager.h"
#include "services/Errors.h"

namespace twqb {

// The row in hand of a send.
struct SendRecord {
  std::string key;
  std::string linkId;  // empty: no twin
  bool lastUpdatedIsNull = false;
  std::string qbName;       // as built; the request cuts it
  std::string parentLink;   // what it hangs under in QuickBooks, where a hook looked for it
  Record twin;              // nothing where there is none
  bool passedOver = false;  // a hook wants no more of the row than its progress
};

enum class Dependent : bool { No, Yes };

// The record in hand of a get.
struct GetRecord {
  const Record& record;
  Dependent dependent;
  ado::Connection& connection;  // of the run
  std::string ownerKey;         // of the row that it hangs under in BillingDb, where a hook looked for it
};

// Whether a row or a record takes part in a run.
enum class Admission : std::uint8_t {
  Admitted,
  PassedOver,
  Lacking,  // passed over for lack of what it belongs to, which the end of the run tells
};

enum class RequestKind : std::uint8_t { Add, Mod };

// What came of filling a request. A failure has been told.
enum class Filling : std::uint8_t {
  Filled,
  EndRow,    // it is not sent; the next row
  EndTable,  // it is not sent; the table ends at once, unfinished
};

inline constexpr std::int32_t kStatusNameInUse = 3100;

// A request that QuickBooks refused.
struct RefusedRequest {
  const RequestField& request;
  const Response& response;
  RequestKind kind;
  const SendRecord& record;
  const ado::Recordset& row;
  int resends = 0;          // how often this request was sent again already
  bool namesSpent = false;  // there is no next name: each further one would be cut to one that was refused
};

// What a table does about it.
enum class Refusal : std::uint8_t {
  AskUser,      // the error box and its question
  AskToGoOn,    // it has been told; the question alone, in a box of its own
  TryNextName,  // the name is in use: one more Add in the same set, with the next counter behind the name. AskUser
                // where names are spent
  SendAgain,    // the request was mended: the same set goes out again
  PassOver,     // it has been told; the next row
  EndTable,     // it has been told; the table ends as after a cancel
  LeaveTable,   // it has been told; the table ends at once, unfinished
};

// When a send works out the date of a row: where the rule asks for it, or of every row ahead of the twin lookup.
enum class RowDate : std::uint8_t { ForTheRule, AheadOfTheTwin };

// Where the conflict rule of a send stands: behind the call-back's news and the request's identity, or ahead of both.
enum class RulePlace : std::uint8_t { BehindIdentity, AheadOfRequest };

// What a send makes of a row with a twin in a QuickBooks of version 1, which can't modify every kind of record.
enum class InVersion1 : std::uint8_t { Modify, AddAnew, LeaveAlone };

// How the user is asked about a refused Add: in the box that tells it, or as about a Mod, in a box behind it.
enum class AddQuestion : std::uint8_t { InTheBox, InItsOwnBox };

// What a get reads ahead of its records and needs with each of them; a table derives its own.
struct GetState {
  GetState() = default;
  GetState(const GetState&) = delete;
  GetState& operator=(const GetState&) = delete;
  virtual ~GetState() = default;
};

// What a table is. Only the names and texts are required: a hook that is left out does what its comment says, so a
// table whose fields are all rows is a description and nothing else.
struct TableDescription {
  std::int32_t table;  // of enTables
  std::string_view tableName;
  std::string_view keyColumn;
  std::string_view fallbackDateColumn;               // compared when LastUpdated is NULL
  std::string_view selectedLinkColumn = "QBLinkID";  // the link's name in the selection

  // QuickBooks' side.
  std::string_view addRequest;
  std::string_view modRequest;

  // Texts.
  std::string_view sendRoutine;
  std::string_view getRoutine;
  std::string_view sendingText;
  std::string_view gettingText;
  std::string_view recordLabel = {};  // of the error box: "Client ID"; left out: no line tells the record
  std::string_view sendLogText = {};  // the key follows; left out: a send that ended by an error leaves no line
  std::string_view getLogText;        // the QuickBooks name follows
  // Of a dependent call without a connection; left out: such a call opens one of its own.
  std::string_view missingConnectionText = {};
  std::string_view progressColumn = {};         // of the row in hand, shown while it is sent; left out: its key
  std::string_view progressField = "FullName";  // of the record in hand, shown while it is taken over
  std::string_view nameField = "Name";          // of the record in hand, for the log
  std::size_t progressFrom = 2;                 // a get of fewer records shows no progress
  std::string_view sendLackingText = {};        // shown at the end of a run that had to pass a row over, or a record
  std::string_view getLackingText = {};

  // The statement that gives a new pair its date; left out: LastUpdated = 'mm/dd/yyyy hh:mm:ss'.
  std::string (*lastUpdatedStatement)(std::string_view key, Date utc) = nullptr;

  // A send goes on with the next row after this error number instead of ending.
  std::optional<ErrorNumber> sendPassesOver = {};
  ErrorReport sendErrors = ErrorReport::ErrorHandler;
  RowDate rowDate = RowDate::ForTheRule;
  RulePlace rulePlace = RulePlace::BehindIdentity;
  InVersion1 inVersion1 = InVersion1::Modify;
  AddQuestion addQuestion = AddQuestion::InTheBox;

  // Of the get: what stands ahead of the link in its lookup ("IsSub = 0 AND ").
  std::string_view linkCondition = {};

  // The fields of a request and of a row, but for name, link, date and a new row's key.
  std::span<const SendField> sendFields = {};
  std::span<const std::string_view> blankedColumns = {};  // first: a field that QuickBooks leaves out blanks its column
  std::span<const GetField> getFields = {};

  // Hooks of the send. Which rows go, asked before anything is done for the row; left out: all.
  Admission (*admitRow)(const ado::Recordset& row) = nullptr;
  // What is read of the row beforehand, with its progress shown; left out: its QuickBooks name is its key.
  void (*readRow)(const ado::Recordset& row, SendRecord& record) = nullptr;
  // The request that modifies the twin; left out: `modRequest`.
  std::string_view (*modRequestOf)(const Record& twin) = nullptr;
  // The fields of the request; left out: `sendFields`, and of an Add the name.
  Filling (*assign)(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                    const SendRecord& record) = nullptr;
  // The name under which QuickBooks will keep what the request is about, as the request has it; left out: its Name.
  std::string (*nameOf)(const RequestField& request) = nullptr;
  // What is done about a refusal; left out: an Add whose name is in use tries the next, all else goes to the user.
  Refusal (*onRefusal)(const RefusedRequest& refused) = nullptr;
  // The record line of the error box; left out: [Client ID = "ACME"].
  std::string (*recordLine)(const ado::Recordset& row, const SendRecord& record) = nullptr;
  // What a refused Add is told with in place of QuickBooks' message and the record line; left out, or empty: with
  // these.
  std::string (*refusedAddText)(std::int32_t statusCode, const SendRecord& record) = nullptr;

  // Hooks of the get. Which records belong to the table; left out: all.
  bool (*belongs)(const Record& record) = nullptr;
  // The same for a table that asks more than the record, or looks up what it hangs under; left out: all.
  Admission (*admit)(GetRecord& record) = nullptr;
  // Adds the row of a record without one: key, and what new rows alone are given; left out: the key is the name, with a
  // counter behind it where it is taken.
  void (*addRow)(ado::Recordset& rows, GetRecord& record) = nullptr;
  // The columns; left out: `blankedColumns` and `getFields`.
  void (*writeFields)(ado::Recordset& row, const Record& record) = nullptr;
  // Ahead of the records, once there are some; what it answers goes to `startRow`.
  std::unique_ptr<GetState> (*beginGet)() = nullptr;
  // A new row that has its key, ahead of its columns; left out: nothing. The state is `beginGet`'s, or nothing.
  void (*startRow)(ado::Recordset& row, const Record& record, const GetState* state) = nullptr;
  // What follows once the row is written.
  void (*afterUpdate)() = nullptr;
};

// The hook `assign` of a routine that fills the request or raises.
template <void (*routine)(const RequestField&, const ado::Recordset&, RequestKind, const SendRecord&)>
Filling Fill(const RequestField& request, const ado::Recordset& row, RequestKind kind, const SendRecord& record) {
  routine(request, row, kind, record);
  return Filling::Filled;
}

// Sends the rows that `strSQL` selects. The outcome is `g_TableOk`; what went wrong has been told.
void SendTable(const TableDescription& table, const std::string& strSQL, bool optNever, bool optMostRecent,
               QBSessionManager& session);

// Takes the records over. A dependent call (the pull of one record that another table's record needs) works on the
// caller's connection, shows no progress and does not act on Cancel.
void GetTable(const TableDescription& table, const RecordList& records, bool optNever, bool optMostRecent,
              Dependent dependent, ado::Connection* connection);

// Whether the record of a pair goes, by the conflict rule: `twin` is QuickBooks' side, `row` the billing side. A pair
// whose dates can't be read, which has been told, stays as it is.
[[nodiscard]] bool PairMoves(const TableDescription& table, Direction direction, TwinRule rule, const Record& twin,
                             const ado::Recordset& row);
// The same for a row whose date has been worked out; nothing: it could not be read.
[[nodiscard]] bool PairMoves(Direction direction, TwinRule rule, const Record& twin, std::optional<Date> rowDate);

// The end of a table that the user stopped: the wish is forgotten, told, and the outcome is False.
void EndCancelled();

// What a hook that is left out does.
[[nodiscard]] Filling AssignFields(const TableDescription& table, const RequestField& request,
                                   const ado::Recordset& row, RequestKind kind, const SendRecord& record);
void WriteFields(const TableDescription& table, ado::Recordset& row, const Record& record);
[[nodiscard]] std::string NameOf(const TableDescription& table, const RequestField& request);
[[nodiscard]] Refusal OnRefusal(const TableDescription& table, const RefusedRequest& refused);
[[nodiscard]] std::string LastUpdatedStatement(const TableDescription& table, std::string_view key, Date utc);

// "" where the table tells no record.
[[nodiscard]] std::string RecordLine(const TableDescription& table, const ado::Recordset& row,
                                     const SendRecord& record);

// The end of a run that passed something over: the text in a box of its own.
void TellLacking(std::string_view text);

}  // namespace twqb
