// The walk of a get over the records that came from QuickBooks: opening, progress, the end of a record, the error box
// and its question, cancel, closing, and what is told on the way. Knows no field: what is done with a record is the
// work of whoever walks.
//
// All gets go through here, of lists and of transactions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/RowWalk.h"
#include "engine/Table.h"
#include "platform/ado.h"
#include "platform/desk.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/RecordInHand.h"

namespace twqb {

// What follows an error in a record, once it has been told. Asked, a user who says No has cancelled; where that leaves
// the routine on the spot, the wish stays for whatever runs next.
enum class AfterError : std::uint8_t { Asks, AsksAndLeaves, EndsTheRun };

// The texts of a get. The name of the record in hand follows the log line.
struct GetTexts {
  std::string_view routine;   // errors are told under this name
  std::string_view shown;     // on the progress form
  std::string_view log = {};  // left out: an error leaves no line
  LackingBox lacking = {};
  ErrorReport errors = ErrorReport::ErrorHandler;
  AfterError afterError = AfterError::Asks;
  BoxIcon askedWith = BoxIcon::None;
  FormToo form = FormToo::Leave;  // at the end; a form that stays is for the dispatcher to take down
  // Of a dependent call without a connection; left out: such a call opens one of its own.
  std::string_view missingConnection = {};
};

// What became of a record.
enum class RecordEnd : std::uint8_t {
  Done,       // taken over or passed over
  Lacking,    // passed over for lack of what it belongs to, which the end of the run tells
  LeaveTable  // no further record; the outcome is set
};

class RecordWalk;

// What is done with the records.
class RecordWork {
 public:
  virtual ~RecordWork() = default;

  // Ahead of the form, once there are records; the table is open.
  virtual void Secure(RecordWalk& /*walk*/) {}
  // Behind the form, ahead of the records.
  virtual void Prepare(RecordWalk& /*walk*/) {}
  // What the form shows of a record; nothing leaves the text of the record before.
  [[nodiscard]] virtual std::optional<std::string> ShownOf(const Record& record) const = 0;
  virtual RecordEnd TakeRecord(RecordWalk& walk, const Record& record) = 0;
  // Lets go of what the record in hand held open. A half-written row has been dropped already.
  virtual void Abandon() {}
  // The last word, when all is closed; not behind an error that ended the run.
  virtual void Summarise() {}
};

class RecordWalk {
 public:
  // `tableName` is opened for writing. A dependent call works on the caller's connection, shows no progress and does
  // not act on Cancel.
  RecordWalk(const GetTexts& texts, std::string_view tableName, const GetCall& call)
      : texts_(texts), tableName_(tableName), call_(call), run_(call.run), connection_(call.connection) {}

  // Walks over the records of the call; fewer than `progressFrom` show no progress. Afterwards the outcome is set, and
  // all that was opened here is closed.
  void Walk(std::size_t progressFrom, RecordWork& work);

  // --- For the work in hand ---
  [[nodiscard]] ado::Connection& Connection() { return *connection_; }
  [[nodiscard]] Run& TheRun() { return run_; }
  [[nodiscard]] Dependent IsDependent() const { return call_.dependent; }
  // The table's recordset; raises 91 when it could not be opened, so that each record is told and asked about.
  [[nodiscard]] ado::Recordset& Rows() const;
  // What the log calls the record in hand.
  void Name(std::string name) { name_ = std::move(name); }
  [[nodiscard]] const std::string& Name() const { return name_; }

 private:
  void TakeAll(std::size_t progressFrom, RecordWork& work);
  RecordEnd TakeRecord(RecordWork& work, const Record& record);
  RecordEnd TakeRecordInHand(RecordWork& work, const Record& record);
  void Tell(const PlatformError& raised) const;
  [[nodiscard]] RecordEnd AskAfterError(RecordWork& work, const PlatformError& raised);
  [[nodiscard]] bool EndRecord() const;

  const GetTexts& texts_;
  const std::string_view tableName_;
  const GetCall& call_;
  Run& run_;
  ado::Connection* connection_;
  std::unique_ptr<ado::Connection> ownConnection_;
  std::unique_ptr<ado::Recordset> rows_;
  std::string name_;
  std::int64_t counter_ = 0;
  bool showsProgress_ = false;
  std::optional<RecordInHand> inHand_;  // where the run is observed
};

}  // namespace twqb
