// The storage of a company file: one SQLite file with its options, its counters and its list records.
//
// It keeps what it is told: the rules of names, references and statuses stand with the requests. Every change belongs
// to a transaction that the caller opens. Failures raise `kUnexpected`. No call takes longer because a list is long.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/companyfile/CompanyConditions.h"
#include "adapters/companyfile/CompanyOptions.h"
#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/ListRecord.h"
#include "adapters/companyfile/RecordFilter.h"
#include "adapters/companyfile/Sqlite.h"
#include "adapters/companyfile/Status.h"

namespace twqb::company {

class CompanyStore {
 public:
  // Makes the file, with the presets of its country in it or without a record. Raises, and leaves no file behind, when
  // it is there already or can't be made. `now` is kept as the time of making, in Unix seconds.
  enum class Content : std::uint8_t { Presets, Nothing };
  static void Create(const std::string& path, const CompanyOptions& options, std::int64_t now,
                     Content content = Content::Presets);
  // Opens a file that Create made; one of an earlier format is brought to today's. Raises `kCannotOpenFile` for
  // anything else.
  explicit CompanyStore(const std::string& path);

  [[nodiscard]] const CompanyOptions& Options() const { return options_; }
  [[nodiscard]] std::int64_t Created() const { return created_; }
  // For the tables of other storage in the same file.
  [[nodiscard]] SqliteDatabase& Database() { return database_; }
  [[nodiscard]] SqliteTransaction Begin(SqliteTransaction::Purpose purpose) { return {database_, purpose}; }

  // As they stand in the file now. One that is not stored, or whose value is unknown, is as in a new file.
  [[nodiscard]] CompanyConditions ReadConditions();
  void WriteConditions(const CompanyConditions& conditions);

  // What every request about records of the kind is answered; nothing where they are carried out, as in every file that
  // was not read from another QuickBooks.
  [[nodiscard]] std::optional<Status> FindRefusal(std::string_view kind) const;
  void WriteRefusal(std::string_view kind, const Status& refusal);

  // Transactions that were entered here, of which it is not known what QuickBooks would make them come to.
  void NoteUnknownAmounts(std::string_view txnId);
  [[nodiscard]] std::vector<std::string> UnknownAmounts();

  // Identifiers that were never given out before: of a list record; of a transaction or a line of one.
  [[nodiscard]] std::string NewListId(std::int64_t now) { return NewId("list", now); }
  [[nodiscard]] std::string NewTxnId(std::int64_t now) { return NewId("txn", now); }

  [[nodiscard]] std::optional<ListRecord> FindById(const ListKind& kind, std::string_view listId);
  [[nodiscard]] std::optional<FoundRecord> FindById(std::string_view listId);  // of any kind
  [[nodiscard]] std::optional<ListRecord> FindByFullKey(const ListKind& kind, std::string_view fullKey);
  // The first record of that type in the order of full names, inactive ones too.
  [[nodiscard]] std::optional<ListRecord> FindFirstOfType(const ListKind& kind, std::string_view type);
  // Empty when there is no such record.
  [[nodiscard]] std::string FullNameOf(std::string_view listId);
  // The name of the kind of the record beside `exceptId` that has that name among the children of `parentId` (empty: in
  // the name space); nothing when the name is free.
  [[nodiscard]] std::optional<std::string> KindUsingName(const ListKind& kind, std::string_view parentId,
                                                         std::string_view nameKey, std::string_view exceptId);
  [[nodiscard]] bool IsNumberInUse(const ListKind& kind, std::string_view number, std::string_view exceptId);
  // The greatest sublevel among the record and everything below it.
  [[nodiscard]] int DeepestSublevel(const ListKind& kind, const ListRecord& record);
  // Calls `visit` with each record that `filter` means, in the order of the list.
  void ForEach(const ListKind& kind, const RecordFilter& filter, const std::function<void(const ListRecord&)>& visit);
  // The records of a kind and their own balances, by type in the order of the alphabet; one row for a kind without
  // types.
  struct TypeTotal {
    std::string type;
    std::int64_t records = 0;
    Currency balance;
  };
  [[nodiscard]] std::vector<TypeTotal> Totals(const ListKind& kind);

  // Adds the record; its balance counts for the parents too.
  void Insert(const ListKind& kind, const ListRecord& record);
  // Adds a record as another QuickBooks has it: its balances count for no parent, and where its name or number belongs
  // to another one here, no record will be found to have it.
  void Lay(std::string_view kind, std::string_view nameSpace, ListRecord record);
  // From now on no identifier or number is given out that is not above the ones given.
  struct Highest {
    std::int64_t list = 0;
    std::int64_t txn = 0;
    std::int64_t txnNumber = 0;
  };
  void RaiseCounters(const Highest& highest);
  // Writes `after` in place of `before`. Everything below the record gets its new full names and levels, and the
  // balance counts for the parents that it has now.
  void Update(const ListKind& kind, const ListRecord& before, const ListRecord& after);

  // Takes the record out, with its balance and its uses of others. What it was is remembered under its identifier.
  void Remove(const ListKind& kind, const ListRecord& record, std::int64_t now);
  // Whether a list record or a transaction of that identifier was there once.
  [[nodiscard]] bool WasDeleted(std::string_view id);
  // Remembers what was deleted; Remove does it for list records.
  void NoteDeletion(std::string_view id, std::string_view kind, std::string_view name, std::int64_t now);

  // Adds to the balance of a record and to the totals of everything above it. No edit sequence changes by it.
  void AddToBalance(std::string_view listId, Currency amount);

  // What refers to what: the owner is a list record or a transaction, a target a record that it names. The targets
  // replace those that were set before; none takes the owner out.
  void SetUses(std::string_view ownerId, std::span<const std::string> targetIds);
  // Whether any owner has the record as a target.
  [[nodiscard]] bool IsUsed(std::string_view targetId);
  [[nodiscard]] bool HasChildren(std::string_view listId);

  // A text that belongs to the file as a whole; nothing when it was never written.
  [[nodiscard]] std::optional<std::string> ReadSetting(std::string_view key);
  void WriteSetting(std::string_view key, std::string_view value);

 private:
  void Upgrade();
  void ReadOptions();
  void ReadRefusals();
  [[nodiscard]] std::string RequireSetting(std::string_view key);
  [[nodiscard]] std::string NewId(std::string_view counter, std::int64_t now);
  void AddToTotals(std::string parentId, Currency amount);

  SqliteDatabase database_;
  CompanyOptions options_;
  std::int64_t created_ = 0;
  std::map<std::string, Status, std::less<>> refusals_;  // by kind; a file in use gets none
};

}  // namespace twqb::company
