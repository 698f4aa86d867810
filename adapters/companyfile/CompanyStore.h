// The storage of a company file: one SQLite file with its options, its counter, its list records and its subscriptions.
//
// It keeps what it is told: the rules of names, references and statuses stand with the requests. Every change belongs
// to a transaction that the caller opens. Failures raise `kUnexpected`.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/companyfile/CompanyConditions.h"
#include "adapters/companyfile/CompanyOptions.h"
#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/ListRecord.h"
#include "adapters/companyfile/Sqlite.h"

namespace twqb::company {

// The numbers of these are those of the enumerations in the message table.
enum class ActiveStatus : std::uint8_t { ActiveOnly = 0, InactiveOnly = 1, All = 2 };
enum class MatchCriterion : std::uint8_t { StartsWith = 0, Contains = 1, EndsWith = 2 };
enum class Comparison : std::uint8_t {
  LessThan = 0,
  LessThanEqual = 1,
  Equal = 2,
  GreaterThan = 3,
  GreaterThanEqual = 4
};

// Which records of a kind are meant; a condition that is not set holds for all.
struct RecordFilter {
  struct NameMatch {
    MatchCriterion criterion = MatchCriterion::StartsWith;
    std::string text;  // folded
  };
  struct BalanceMatch {
    Comparison comparison = Comparison::Equal;
    Currency amount;
  };
  ActiveStatus activeStatus = ActiveStatus::ActiveOnly;
  std::optional<std::int64_t> modifiedFrom;  // Unix seconds, inclusive, as the next
  std::optional<std::int64_t> modifiedTo;
  std::optional<NameMatch> nameMatch;
  std::optional<std::string> nameFrom;  // name keys, inclusive, as the next
  std::optional<std::string> nameTo;
  std::optional<BalanceMatch> totalBalance;
  std::optional<std::int64_t> maxReturned;
};

class CompanyStore {
 public:
  // Makes the file, with nothing in it. Raises, and leaves no file behind, when it is there already or can't be made.
  // `now` is kept as the time of making, in Unix seconds.
  static void Create(const std::string& path, const CompanyOptions& options, std::int64_t now);
  // Opens a file that Create made. Raises `kCannotOpenFile` for anything else.
  explicit CompanyStore(const std::string& path);

  [[nodiscard]] const CompanyOptions& Options() const { return options_; }
  [[nodiscard]] std::int64_t Created() const { return created_; }
  [[nodiscard]] SqliteTransaction Begin(SqliteTransaction::Purpose purpose) { return {database_, purpose}; }

  // As they stand in the file now. One that is not stored, or whose value is unknown, is as in a new file.
  [[nodiscard]] CompanyConditions ReadConditions();
  void WriteConditions(const CompanyConditions& conditions);

  // An identifier that was never given out before.
  [[nodiscard]] std::string NewListId(std::int64_t now);

  [[nodiscard]] std::optional<ListRecord> FindById(const ListKind& kind, std::string_view listId);
  [[nodiscard]] std::optional<ListRecord> FindByFullKey(const ListKind& kind, std::string_view fullKey);
  // Whether a record beside `exceptId` has that name among the children of `parentId` (empty: in the name space).
  [[nodiscard]] bool IsNameInUse(const ListKind& kind, std::string_view parentId, std::string_view nameKey,
                                 std::string_view exceptId);
  // The greatest sublevel among the record and everything below it.
  [[nodiscard]] int DeepestSublevel(const ListKind& kind, const ListRecord& record);
  // Calls `visit` with each record that `filter` means, in the order of full names.
  void ForEach(const ListKind& kind, const RecordFilter& filter, const std::function<void(const ListRecord&)>& visit);
  [[nodiscard]] std::int64_t Count(const ListKind& kind);

  // Adds the record; its balance counts for the parents too.
  void Insert(const ListKind& kind, const ListRecord& record);
  // Writes `after` in place of `before`. Everything below the record gets its new full names and levels, and the
  // balance counts for the parents that it has now.
  void Update(const ListKind& kind, const ListRecord& before, const ListRecord& after);

  // `subscriberId` in any case.
  [[nodiscard]] bool HasSubscription(std::string_view subscriberId);

 private:
  void ReadOptions();
  [[nodiscard]] std::string Setting(std::string_view key);
  void AddToTotals(std::string parentId, Currency amount);

  SqliteDatabase database_;
  CompanyOptions options_;
  std::int64_t created_ = 0;
};

}  // namespace twqb::company
