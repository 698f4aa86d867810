// Which records of a list a query means, and the statement that reads them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/Sqlite.h"
#include "platform/Currency.h"

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

// A condition that is not set holds for all.
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
  std::vector<std::string> types;  // any of these; none: every type
  std::optional<std::int64_t> maxReturned;
};

// A statement put together from the conditions that are set.
class FilterStatement {
 public:
  // `select` reads from the table of records as `r`. The values are views into `kind` and `filter`, which must outlive
  // the statement.
  FilterStatement(std::string_view select, const ListKind& kind, const RecordFilter& filter);

  // The records, in the order in which the list answers.
  [[nodiscard]] SqliteRows Run(SqliteDatabase& database) const { return database.Query(sql_, values_); }

 private:
  void Add(std::string_view condition, SqlValue value);
  void AddNameMatch(const RecordFilter::NameMatch& match);
  void AddTypes(const std::vector<std::string>& types);

  std::string sql_;
  std::vector<SqlValue> values_;
};

}  // namespace twqb::company
