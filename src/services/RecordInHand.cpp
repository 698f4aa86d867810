#include "services/RecordInHand.h"

#include <fmt/format.h>

#include <exception>

#include "platform/Value.h"
#include "services/Errors.h"

namespace twqb {

namespace {

// An error that nobody raised has no number.
std::string Words(ErrorNumber number, std::string_view text) {
  return number == 0 ? fmt::format("error: {}", text) : fmt::format("error {}: {}", SignedNumber(number), text);
}

void Append(std::string& why, std::string_view joint, std::string_view more) {
  why = why.empty() ? std::string(more) : fmt::format("{}; {}{}", why, joint, more);
}

}  // namespace

RecordInHand::RecordInHand(Standing standing, KeySource key)
    : key_(std::move(key)), exceptions_(std::uncaught_exceptions()), before_(Vars().inHand) {
  account_.standing = standing;
  if (const auto* table = Vars().tableInHand) account_.table = *table;
  Vars().inHand = this;
}

RecordInHand::~RecordInHand() {
  Vars().inHand = before_;
  if (dropped_ || !IsObserved()) return;
  const auto account = Account();
  Vars().observer->RecordTold(account);
  if (account.standing == Standing::Line && before_ != nullptr) before_->TakeOver(account);
}

void RecordInHand::TakeOver(const RecordAccount& line) {
  const bool went = line.fate == Fate::Added || line.fate == Fate::Changed;
  if (!went && line.fate != Fate::LeftAsItWas && staying_.empty()) staying_ = line.why;
  if (fate_ && !account_.isOfItsLines) return;
  if (IsThere() && !went) return;
  fate_ = line.fate;
  account_.why = line.why;
  account_.refusal = line.refusal;
  account_.isOfItsLines = true;
  // Of several the last one's is the record's.
  if (went) account_.identifier = line.identifier;
}

void RecordInHand::NoteFailure(const PlatformError& raised) {
  const auto words = Words(raised.number(), raised.description());
  if (IsThere()) {
    NoteThen(words);
    return;
  }
  fate_ = Fate::Failed;
  NoteWhy(words);
}

void RecordInHand::NoteRefusal(RefusalAccount refusal) {
  NoteWhy(fmt::format("status {}: {}", refusal.status, refusal.message));
  account_.refusal = std::move(refusal);
}

void RecordInHand::NoteError(ErrorNumber number, std::string_view text) {
  error_ = Words(number, text);
  if (IsThere()) NoteThen(error_);
}

// An error that ends a record is told behind it once more.
void RecordInHand::NoteThen(std::string_view error) {
  if (!account_.why.ends_with(error)) Append(account_.why, "then ", error);
}

RecordAccount RecordInHand::Account() const {
  auto account = account_;
  account.fate = fate_.value_or(Fate::PassedOver);
  const bool isGivenUp = std::uncaught_exceptions() > exceptions_;
  if (!fate_ && (isGivenUp || !error_.empty())) {
    account.fate = Fate::Failed;
    account.why = error_.empty() ? "the run was given up" : error_;
    account.refusal.reset();
  }
  if (IsThere() && !staying_.empty()) Append(account.why, "", "in part: " + staying_);
  if (account.key.empty() && key_) IgnoreErrors([&] { account.key = key_(); });
  return account;
}

void NoteFate(Fate fate) {
  if (auto* record = Vars().inHand) record->NoteFate(fate);
}

void NoteIdentifier(std::string_view identifier) {
  if (auto* record = Vars().inHand) record->NoteIdentifier(identifier);
}

void NoteKey(std::string_view key) {
  if (auto* record = Vars().inHand) record->NoteKey(key);
}

void NoteKeyOf(const ado::Recordset& row, std::string_view column) {
  auto* record = Vars().inHand;
  if (record == nullptr || record->HasKey()) return;
  IgnoreErrors([&] { record->NoteKey(ToText(row.Field(column))); });
}

void NoteFormer(std::string_view identifier, Parting parting) {
  if (auto* record = Vars().inHand) record->NoteFormer(identifier, parting);
}

void NoteLinkWithoutTwin(std::string_view identifier) {
  const auto* record = Vars().inHand;
  if (record == nullptr) return;
  if (!record->HasError()) return NoteWhy([] { return "its link led to nothing any more"; });
  NoteFormer(identifier, Parting::LinkUnread);
  NoteWhy([&] { return fmt::format("its link {} could not be looked up", identifier); });
}

void DropRecordInHand() {
  if (auto* record = Vars().inHand) record->Drop();
}

void NoteFateAtLast(Fate fate, std::string_view why) {
  if (const auto* record = Vars().inHand; record != nullptr && !record->HasFate()) NoteFate(fate, why);
}

void TellRecord(RecordAccount record) {
  if (!IsObserved()) return;
  if (const auto* table = Vars().tableInHand) record.table = *table;
  Vars().observer->RecordTold(record);
}

void TellExtent(const Extent& extent) {
  if (const auto* table = Vars().tableInHand; table != nullptr && IsObserved()) {
    Vars().observer->WalkEnded(*table, extent);
  }
}

void TellSkipped(const TableInHand& table) {
  if (IsObserved()) Vars().observer->TableSkipped(table);
}

void TellErrorToObserver(std::string_view routine, ErrorNumber number, std::string_view text, ToldBy toldBy) {
  if (!IsObserved()) return;
  ErrorAccount error = {.routine = std::string(routine), .number = number, .text = std::string(text), .toldBy = toldBy};
  if (const auto* table = Vars().tableInHand) error.table = *table;
  if (auto* record = Vars().inHand) {
    record->NoteError(number, text);
    const auto account = record->Account();
    error.table = account.table;
    error.key = account.key;
    error.identifier = account.identifier;
  }
  Vars().observer->ErrorTold(error);
}

TableScope::TableScope(const TableInHand& table) : table_(table), before_(Vars().tableInHand) {
  Vars().tableInHand = &table_;
}

TableScope::~TableScope() {
  Vars().tableInHand = before_;
  if (IsObserved()) Vars().observer->TableEnded(table_, narrowed_);
}

}  // namespace twqb
