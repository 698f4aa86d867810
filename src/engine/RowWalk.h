// The walk of a send over the rows of a selection: opening, counting, progress, the call-back, the end of a row,
// cancel, closing, and what is told on the way. Knows no request: what is done with a row is the work of whoever walks.
//
// All sends go through here, of lists and of transactions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/PlatformError.h"
#include "platform/ado.h"
#include "services/Errors.h"
#include "services/RecordInHand.h"
#include "services/Run.h"
#include "services/Sql.h"

namespace twqb {

// What the end of a run tells when something was passed over for lack of what it belongs to.
struct LackingBox {
  enum class When : std::uint8_t { AheadOfClosing, BehindClosing };

  std::string_view text = {};
  std::string_view title = "Error";
  bool failsTheTable = false;  // the outcome is False then
  When when = When::AheadOfClosing;
};

// The texts of a send. The key of the row in hand follows the log line.
struct SendTexts {
  std::string_view routine;   // errors are told under this name
  std::string_view shown;     // on the progress form
  std::string_view log = {};  // left out: a send that ended by an error leaves no line
  LackingBox lacking = {};    //
  ErrorReport errors = ErrorReport::ErrorHandler;
};

// What became of a row.
enum class RowEnd : std::uint8_t {
  Done,       // sent or passed over
  Lacking,    // passed over for lack of what it belongs to, which the end of the run tells
  LeaveTable  // no further row; the outcome is False
};

class RowWalk;

// What is done with the rows.
class RowWork {
 public:
  virtual ~RowWork() = default;

  // Ahead of the form, where there are rows. False: the run ends on the spot, the outcome and the form as they were.
  virtual bool Secure() { return true; }
  // Behind the form, ahead of the first row. False: the table ends at once, its outcome False.
  virtual bool Prepare(RowWalk& /*walk*/) { return true; }
  virtual RowEnd TakeRow(RowWalk& walk) = 0;
  // The walk is on the row behind, or behind the last one. What is left to do about the rows before it.
  virtual RowEnd BehindRow(RowWalk& /*walk*/) { return RowEnd::Done; }
  // Whether a form that an earlier run left open is taken down behind a selection without rows.
  [[nodiscard]] virtual bool ClosesWithoutRows() const { return true; }
  // Whether the walk goes on with the next row behind an error, which is told all the same.
  [[nodiscard]] virtual bool PassesOver(const PlatformError& /*raised*/) const { return false; }
  // The last word, when all is closed.
  virtual void Summarise(Run& /*run*/) {}
  // The same of a walk that an error ended.
  virtual void SummariseBroken(Run& /*run*/) {}
  // What follows the log line of a walk that an error ended.
  [[nodiscard]] virtual std::string RowInHand() const = 0;
  // The key of the row in hand, for whoever observes the run.
  [[nodiscard]] virtual std::string KeyInHand() const { return RowInHand(); }
};

class RowWalk {
 public:
  RowWalk(const SendTexts& texts, Run& run) : texts_(texts), run_(run) {}

  // Walks over the rows that `sql` selects, fetched whole. Afterwards the outcome is set, and all is closed.
  void Walk(const Sql& sql, RowWork& work);

  // --- For the work in hand ---
  [[nodiscard]] const ado::Recordset& Row() const { return *rows_; }
  [[nodiscard]] bool IsBehindLastRow() const { return rows_->Eof(); }
  [[nodiscard]] ado::Connection& Connection() { return *connection_; }
  [[nodiscard]] Run& TheRun() { return run_; }

  // The row begins: the call-back object hears of it, messages are pumped, the outcome is False until the row ends.
  void BeginRow(int callbackMode);
  // Counts the row, and shows it on the form: bar, position, and that text.
  template <typename Text>
  void CountRow(Text&& text) {
    ++counter_;
    if (run_.ShowsProgress()) ShowRow(std::forward<Text>(text)());
  }

 private:
  enum class Begun : std::uint8_t { Yes, WithoutRows, NotSecured };
  [[nodiscard]] Begun Begin(const Sql& sql, RowWork& work);
  void TakeAll(RowWork& work);
  void TellError(const PlatformError& raised, const RowWork& work);
  RowEnd TakeRow(RowWork& work);
  RowEnd TakeRowInHand(RowWork& work);
  void TellMended(const RowWork& work, const ado::Recordset* row) const;
  [[nodiscard]] bool EndRow(RowWork& work);
  void ShowRow(const std::string& text) const;

  const SendTexts& texts_;
  Run& run_;
  std::unique_ptr<ado::Connection> connection_;
  std::unique_ptr<ado::Recordset> rows_;
  std::int64_t total_ = 0;
  std::int64_t counter_ = 0;
  std::int64_t taken_ = 0;
  bool lacking_ = false;
  std::optional<RecordInHand> inHand_;  // where the run is observed
};

// Tells the call-back object the identifier of the record in hand.
void TellRecordId(std::string_view id);

// The end of a table that the user stopped: the wish is forgotten, told, and the outcome is False.
void EndCancelled(Run& run);

// The end of a run that passed something over: the text in a box of its own.
void TellLacking(const LackingBox& box, Run& run);

}  // namespace twqb
