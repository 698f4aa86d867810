#include "engine/SelectionQueries.h"

#include <fmt/core.h>

#include <optional>
#include <string_view>

#include "platform/Text.h"
#include "platform/Value.h"
#include "services/Conversions.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"

namespace twqb {

namespace {

constexpr std::string_view kNeverSent = "01/01/1900";

Sql Literal(Date date) {
  const char delimiter = Vars().g_DbKind == "SQL" ? '\'' : '#';
  return Sql("{0}{1}{0}", delimiter, FormatSQLDate(date, DateForm::WithTime));
}

// What stands in a clause.
struct ClauseValues {
  Sql a;
  Sql b = {};
};

bool BothOf(std::string_view a, std::string_view b) { return !a.empty() && !b.empty(); }

// The filters of a run, with its dates read.
class Narrowing {
 public:
  Narrowing(const Table& table, const SavedFilters& filters)
      : filters_(filters), hasRange_(BothOf(filters.Date1a, filters.Date1b)) {
    const auto key = std::string(table.names.send) + "_LastSendAt";
    lastSendHere_ = TextToDate(gf_ReadSettings("QBSEND_", key, Vars().g_TWSettingsPath, kNeverSent));
    lastSend_ = LocalToUTC(lastSendHere_);
    if (!hasRange_) return;
    rangeFrom_ = TextToDate(filters.Date1a);
    rangeTo_ = TextToDate(filters.Date1b).PlusDays(1);
  }

  [[nodiscard]] Date LastSend() const { return lastSendHere_; }
  // Nothing when the clause is off.
  [[nodiscard]] std::optional<ClauseValues> ValuesOf(ClauseOn on) const {
    switch (on) {
      case ClauseOn::LastSend:
        if (hasRange_ || filters_.IgnoreLastSync || lastSend_ == TextToDate(kNeverSent)) return {};
        return ClauseValues{.a = Literal(lastSend_)};
      case ClauseOn::Range:
        if (!hasRange_) return {};
        return Range();
      case ClauseOn::Filter1:
        return Pair(filters_.Filter1a, filters_.Filter1b);
      case ClauseOn::Filter2:
        return Pair(filters_.Filter2a, filters_.Filter2b);
      case ClauseOn::Filter3:
        return Pair(filters_.Filter3a, filters_.Filter3b);
      case ClauseOn::FromTo:
        if (!BothOf(filters_.From, filters_.To)) return {};
        return ClauseValues{.a = Literal(TextToDate(filters_.From)), .b = Literal(TextToDate(filters_.To))};
      case ClauseOn::RangeOnFromTo:
        if (!BothOf(filters_.From, filters_.To)) return {};
        return Range();
    }
    return {};
  }

 private:
  [[nodiscard]] ClauseValues Range() const { return {.a = Literal(rangeFrom_), .b = Literal(rangeTo_)}; }
  static std::optional<ClauseValues> Pair(const std::string& a, const std::string& b) {
    if (!BothOf(a, b)) return {};
    return ClauseValues{.a = Sql("{}", a), .b = Sql("{}", b)};
  }

  const SavedFilters& filters_;
  bool hasRange_;
  Date lastSendHere_;  // local time
  Date lastSend_;
  Date rangeFrom_;  // zero dates without a range
  Date rangeTo_;
};

bool NotesAreMapped() {
  return LeadingNumber(gf_ReadSettings("QBSEND", "_Time Entries_MapTENotes", Vars().g_TWSettingsPath, "0")) > 0;
}

std::string BaseOf(const Selection& selection) {
  auto base = fmt::format("{}{}", selection.base, selection.where);
  if (selection.noteColumn.empty() || NotesAreMapped()) return base;
  return ReplaceAll(base, selection.noteColumn, "");
}

Sql WithClauses(const Selection& selection, std::string_view base, const SavedFilters& filters,
                const Narrowing& narrowing, std::optional<Date>& changedSince) {
  auto statement = Sql::Own(base);
  bool hasWhere = base.find(" WHERE ") != std::string::npos;
  for (const auto& clause : selection.clauses) {
    const auto values = narrowing.ValuesOf(clause.on);
    if (!values) continue;
    if (clause.on == ClauseOn::LastSend) changedSince = narrowing.LastSend();
    const auto filled =
        fmt::format(fmt::runtime(clause.text), fmt::arg("K", hasWhere ? " AND " : " WHERE "),
                    fmt::arg("P", selection.prefix), fmt::arg("a", values->a.Text()), fmt::arg("b", values->b.Text()));
    statement += Sql::Own(filled).HoldTo(values->a).HoldTo(values->b);
    hasWhere = true;
  }
  if (filters.ActiveOnly) statement += Sql::Own(selection.activeOnly);
  statement += Sql::Own(selection.tail);
  return statement;
}

}  // namespace

Sql BuildSelectSQL(const Table& table, const SavedFilters& filters) {
  std::optional<Date> ignored;
  return BuildSelectSQL(table, filters, ignored);
}

Sql SelectRows(const Table& table, std::string_view column, std::string_view value) {
  const auto& selection = table.selection;
  const auto base = BaseOf(selection);
  const bool hasWhere = base.find(" WHERE ") != std::string::npos;
  return Sql("{} {} ({}{} = '{}');", Sql::Own(base), Sql::Own(hasWhere ? "AND" : "WHERE"), Sql::Own(selection.prefix),
             Sql::Own(column), value);
}

Sql BuildSelectSQL(const Table& table, const SavedFilters& filters, std::optional<Date>& changedSince) {
  const auto& selection = table.selection;
  if (selection.base.empty()) return {};

  const Narrowing narrowing(table, filters);
  const bool isPassed = selection.passed != nullptr && !Vars().g_PassedID.empty();
  if (selection.onlyPassed && !isPassed) return {};
  const auto base = BaseOf(selection);
  auto statement =
      isPassed ? selection.passed(base, filters) : WithClauses(selection, base, filters, narrowing, changedSince);
  if (!statement.IsEmpty()) statement += ";";
  return statement;
}

}  // namespace twqb
