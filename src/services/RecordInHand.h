// The record in hand of a run, as its observer will hear of it.
//
// The walks put one up for each record; whatever decides over the record notes what became of it. All of it does
// nothing while nobody observes the run, and a text is only made where somebody does.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/PlatformError.h"
#include "platform/ado.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RunObserver.h"

namespace twqb {

[[nodiscard]] inline bool IsObserved() { return Vars().observer != nullptr; }

// The record in hand for as long as this stands; the one before it is in hand again then. It is told at its end. Of one
// on which nobody noted anything, an error that was told meanwhile is what became of it, or else that it was passed
// over.
class RecordInHand {
 public:
  using KeySource = std::function<std::string()>;

  // `key` is asked where the key is needed; its errors are ignored.
  explicit RecordInHand(Standing standing, KeySource key = {});
  ~RecordInHand();
  RecordInHand(const RecordInHand&) = delete;
  RecordInHand& operator=(const RecordInHand&) = delete;

  void NoteFate(Fate fate) {
    fate_ = fate;
    account_.isOfItsLines = false;
  }
  void NoteWhy(std::string why) {
    account_.why = std::move(why);
    account_.refusal.reset();
  }
  void NoteRefusal(RefusalAccount refusal);
  void NoteKey(std::string_view key) { account_.key = key; }
  void NoteIdentifier(std::string_view identifier) { account_.identifier = identifier; }
  void NoteFormer(std::string_view identifier, Parting parting) {
    account_.former = identifier;
    account_.parting = parting;
  }
  // One that was told.
  void NoteError(ErrorNumber number, std::string_view text);
  // It broke. What had become of it by then stays true.
  void NoteFailure(const PlatformError& raised);
  // Nobody hears of it: it is told later, or in parts.
  void Drop() { dropped_ = true; }

  [[nodiscard]] bool HasFate() const { return fate_.has_value() || !error_.empty(); }
  [[nodiscard]] bool HasError() const { return !error_.empty(); }
  [[nodiscard]] bool HasKey() const { return !account_.key.empty(); }
  // What is known by now.
  [[nodiscard]] RecordAccount Account() const;

 private:
  void NoteThen(std::string_view error);
  [[nodiscard]] bool IsThere() const { return fate_ == Fate::Added || fate_ == Fate::Changed; }
  // A record of which nothing else is known fares as its lines did, and best where one of them went.
  void TakeOver(const RecordAccount& line);

  RecordAccount account_;
  KeySource key_;
  std::optional<Fate> fate_;
  std::string error_;
  std::string staying_;  // why the first of its lines stays that does
  bool dropped_ = false;
  const int exceptions_;  // on their way when it was begun
  RecordInHand* before_;
};

// --- Notes on the record in hand; nothing where there is none --------------------------------------------------------

void NoteFate(Fate fate);
void NoteIdentifier(std::string_view identifier);
void NoteKey(std::string_view key);
// The twin that it left.
void NoteFormer(std::string_view identifier, Parting parting);
// Its link leads to no twin that could be read: it has none any more, or, where an error was told about that, nobody
// knows.
void NoteLinkWithoutTwin(std::string_view identifier);
// The key of the current row, read where nothing is known of it yet; errors are ignored.
void NoteKeyOf(const ado::Recordset& row, std::string_view column);
// Nobody hears of it.
void DropRecordInHand();

// `why` makes the text. What it raises is ignored: nothing of a run may hang on who observes it.
template <typename Why>
void NoteWhy(Why&& why) {
  auto* record = Vars().inHand;
  if (record == nullptr) return;
  std::string text;
  IgnoreErrors([&] { text = std::forward<Why>(why)(); });
  record->NoteWhy(std::move(text));
}
template <typename Why>
requires std::is_invocable_v<Why>
void NoteFate(Fate fate, Why&& why) {
  NoteFate(fate);
  NoteWhy(std::forward<Why>(why));
}
inline void NoteFate(Fate fate, std::string_view why) {
  NoteFate(fate, [why] { return why; });
}
// QuickBooks has refused it. `answer` makes the account of that, as `why` makes its text.
template <typename Answer>
void NoteRefusal(Answer&& answer) {
  auto* record = Vars().inHand;
  if (record == nullptr) return;
  record->NoteFate(Fate::Refused);
  IgnoreErrors([&] { record->NoteRefusal(std::forward<Answer>(answer)()); });
}
// The same as a fate where nobody said anything yet: a table's own word goes before that of a walk.
void NoteFateAtLast(Fate fate, std::string_view why);

// --- Beside the record in hand ---------------------------------------------------------------------------------------

// Tells of what `body` does as of a record or a line of its own, inside of the one in hand; an error goes on to the
// caller.
template <typename Body>
void AsPart(Standing standing, std::string_view identifier, Body&& body) {
  if (!IsObserved()) return std::forward<Body>(body)();
  RecordInHand part(standing);
  part.NoteIdentifier(identifier);
  try {
    std::forward<Body>(body)();
  } catch (const PlatformError& raised) {
    part.NoteFailure(raised);
    throw;
  }
}

// Tells of a record of the table in hand that is not in hand any more.
void TellRecord(RecordAccount record);

void TellExtent(const Extent& extent);
void TellSkipped(const TableInHand& table);

void TellErrorToObserver(std::string_view routine, ErrorNumber number, std::string_view text,
                         ToldBy toldBy = ToldBy::Box);

// A table in hand for as long as this stands. A table that is pulled stands inside of another.
class TableScope {
 public:
  explicit TableScope(const TableInHand& table);
  ~TableScope();
  TableScope(const TableScope&) = delete;
  TableScope& operator=(const TableScope&) = delete;

  // What the end of the table tells.
  template <typename Words>
  void NoteNarrowed(Words&& words) {
    if (IsObserved()) narrowed_ = std::forward<Words>(words)();
  }

 private:
  TableInHand table_;
  std::string narrowed_;
  const TableInHand* before_;
};

}  // namespace twqb
