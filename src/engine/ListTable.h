// How a list table moves: rows of BillingDb against records of a QuickBooks list, each with at most one twin.
//
// The engine owns the twin lookup, link and conflict rules, the retry of names in use, and write-back; the walks of
// RowWalk and RecordWalk own what every table shares beyond that. A table module is a description and the hooks in it.
// A hook that is left out does what its comment says, so a table whose fields are all rows is a description and nothing
// else.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/ConflictRule.h"
#include "engine/Mapping.h"
#include "engine/RecordWalk.h"
#include "engine/RowWalk.h"
#include "engine/SendRecord.h"
#include "engine/StatusRules.h"
#include "engine/Table.h"
#include "platform/PlatformError.h"
#include "platform/ado.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

// --- What the hooks are handed ---------------------------------------------------------------------------------------

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

// What came of filling a request. A failure has been told.
enum class Filling : std::uint8_t {
  Filled,
  EndRow,    // it is not sent; the next row
  EndTable,  // it is not sent; the table ends at once, unfinished
};

// What a get reads ahead of its records and needs with each of them; a table derives its own.
struct GetState {
  GetState() = default;
  GetState(const GetState&) = delete;
  GetState& operator=(const GetState&) = delete;
  virtual ~GetState() = default;
};

// --- Decisions -------------------------------------------------------------------------------------------------------

// Which pairs the call-back object hears of: every one, or those alone that the conflict rule lets go.
enum class Announces : std::uint8_t { EveryPair, PairsThatGo };

// What a send makes of a row with a twin in a QuickBooks of version 1, which can't modify every kind of record.
enum class InVersion1 : std::uint8_t { Modify, AddAnew, LeaveAlone };

// --- The description -------------------------------------------------------------------------------------------------

struct ListSend {
  SendTexts texts;
  std::string_view recordLabel = {};  // of the error box: "Client ID"; left out: no line tells the record
  std::string_view addRequest;
  std::string_view modRequest = {};
  std::string_view linkColumn = "QBLinkID";  // the link's name in the selection
  std::string_view progressColumn = {};      // of the row in hand, shown while it is sent; left out: its key
  Announces announces = Announces::EveryPair;
  InVersion1 inVersion1 = InVersion1::Modify;
  std::span<const SendField> fields = {};  // but for the name
  std::span<const StatusRule> rules = {};  // ahead of the common ones

  // Which rows go, asked before anything is done for the row; left out: all.
  Admission (*admit)(const ado::Recordset& row) = nullptr;
  // What is read of the row beforehand, with its progress shown; left out: its QuickBooks name is its key.
  void (*readRow)(const ado::Recordset& row, SendRecord& record) = nullptr;
  // The request that modifies the twin; left out: `modRequest`.
  std::string_view (*modRequestOf)(const Record& twin) = nullptr;
  // What `fields` can't say, behind them and the name of an Add; left out: nothing.
  void (*fillMore)(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                   const SendRecord& record) = nullptr;
  // The whole request in the place of all that.
  Filling (*assign)(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                    const SendRecord& record) = nullptr;
  // The name under which QuickBooks will keep what the request is about, as the request has it; left out: its Name.
  std::string (*nameOf)(const RequestField& request) = nullptr;
  // The record line of the error box; left out: [Client ID = "ACME"].
  std::string (*recordLine)(const ado::Recordset& row, const SendRecord& record) = nullptr;
  // The statement that gives a new pair its date; left out: LastUpdated = 'mm/dd/yyyy hh:mm:ss'.
  Sql (*lastUpdatedStatement)(std::string_view key, Date utc) = nullptr;
  // Whether a send goes on with the next row after that error; left out: it ends.
  bool (*passesOver)(const PlatformError& raised) = nullptr;
};

struct ListGet {
  GetTexts texts;
  std::string_view linkCondition = {};          // ahead of the link in its lookup ("IsSub = 0 AND ")
  std::string_view progressField = "FullName";  // of the record in hand, shown while it is taken over
  std::string_view nameField = "Name";          // of the record in hand, for the log
  std::size_t progressFrom = 2;                 // a get of fewer records shows no progress
  // But for link, date and a new row's key. The columns are blanked first, so that what QuickBooks leaves out blanks
  // its column.
  std::span<const std::string_view> blankedColumns = {};
  std::span<const GetField> fields = {};

  // Which records take part, with a look at what they hang under; left out: all.
  Admission (*admit)(GetRecord& record) = nullptr;
  // Adds the row of a record without one: key, and what new rows alone are given; left out: the key is the name, with a
  // counter behind it where it is taken.
  void (*addRow)(ado::Recordset& rows, GetRecord& record) = nullptr;
  // What rows can't say, ahead of the columns that are blanked and behind the fields; left out: nothing.
  void (*writeFirst)(ado::Recordset& row, const Record& record) = nullptr;
  void (*writeLast)(ado::Recordset& row, const Record& record) = nullptr;
  // Ahead of the records, once there are some; what it answers goes to `startRow`.
  std::unique_ptr<GetState> (*begin)() = nullptr;
  // A new row that has its key, ahead of its columns; left out: nothing. The state is `begin`'s, or nothing.
  void (*startRow)(ado::Recordset& row, const Record& record, const GetState* state) = nullptr;
  // What follows once the row is written.
  void (*afterUpdate)() = nullptr;
};

struct ListTable {
  std::string_view tableName;
  std::string_view keyColumn;
  std::string_view fallbackDateColumn;  // compared when LastUpdated is NULL
  ListSend send;
  ListGet get;
};

// Sends the rows of the call; `table` is the one that the description moves. What went wrong has been told.
void SendList(const Table& table, const ListTable& list, const SendCall& call);

// Gives the row of an addition the link and the date that the send did not get to write.
[[nodiscard]] TakenUp TakeUpListLink(const Table& table, const ListTable& list, const LostAddition& lost);

// Takes the records of the call over. A dependent call (the pull of one record that another table's record needs) works
// on the caller's connection, shows no progress and does not act on Cancel.
void GetList(const ListTable& list, const GetCall& call);

// Fills an Add or a Mod from the row, as the description says.
Filling FillRequest(const ListSend& send, const RequestField& request, const ado::Recordset& row, RequestKind kind,
                    const SendRecord& record);
// Writes the columns of a row from the record, as the description says.
void WriteColumns(const ListGet& get, ado::Recordset& row, const Record& record);

// The hook `admit` of a table that asks no more than the record.
template <bool (*belongs)(const Record&)>
Admission AdmitThose(GetRecord& record) {
  return belongs(record.record) ? Admission::Admitted : Admission::PassedOver;
}

// When the row of a pair changed last; nothing: the date can't be read, which has been told.
[[nodiscard]] std::optional<Date> RowDate(const ListTable& list, const ado::Recordset& row);

}  // namespace twqb
