#include "engine/SelectionQueries.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

#include "services/Conversions.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"
#include "services/TableNames.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

constexpr std::string_view kNeverSent = "01/01/1900";

// One table's statement. In the clauses {K} is the connecting word, {a} and {b} the pair of filter values.
struct Selection {
  enTables table;
  std::string_view base;
  bool baseHasWhere = false;
  std::string_view prefix;      // of the columns in the clauses on LastUpdated and QBLinkID
  std::string_view lastSendOr;  // between the date and the tests for unlinked rows
  std::string_view rangeEnd;
  std::array<std::string_view, 3> between;  // for the first, second and third pair; empty: no such clause
  std::string_view activeOnly;              // begins with AND even behind a base without WHERE
};

constexpr std::array kSelections = {
    Selection{
        .table = enClients,
        .base = "SELECT ClientID, ClientFName, ClientLName, ClientMI, ClientCompany, ClientStreet, ClientStreet2, "
                "ClientCity, ClientState, ClientZip,ClientPhone, ClientMainPhone, ClientFax, ClientEmail, QBLinkID, "
                "LastUpdated, ClientSince, ClientMainSalt FROM Client ",
        .prefix = "",
        .lastSendOr = "  OR ",
        .rangeEnd = ")",
        .between = {"{K}ClientID BETWEEN '{a}' AND '{b}' ",
                    "{K}(ClientID IN(SELECT ClientID FROM ClientGroupDetail  WHERE CGID BETWEEN '{a}' AND '{b}')) ",
                    ""},
        .activeOnly = " AND (Client.Status IS NULL OR Client.Status = 'Active') ",
    },
};

const Selection* FindSelection(std::int32_t table) {
  for (const auto& selection : kSelections) {
    if (selection.table == table) return &selection;
  }
  return nullptr;
}

// A statement that grows by clauses.
class Statement {
 public:
  explicit Statement(const Selection& selection)
      : selection_(selection), text_(selection.base), hasWhere_(selection.baseHasWhere) {}

  // Changed since the last send, never linked, or without a date.
  void AddLastSend(Date lastSend) {
    const auto p = selection_.prefix;
    text_ += fmt::format("{}(({}LastUpdated > {}){}{}QBLinkID IS NULL OR {}QBLinkID = '' OR {}LastUpdated IS NULL) ",
                         Connect(), p, Literal(lastSend), selection_.lastSendOr, p, p, p);
  }

  void AddRange(Date from, Date to) {
    text_ += fmt::format("{}({}LastUpdated BETWEEN {} AND {}{}", Connect(), selection_.prefix, Literal(from),
                         Literal(to), selection_.rangeEnd);
  }

  // Only when both values of the pair are there. The values are not protected against quotes.
  void AddBetween(std::string_view clause, std::string_view a, std::string_view b) {
    if (clause.empty() || a.empty() || b.empty()) return;
    text_ += fmt::format(fmt::runtime(clause), fmt::arg("K", Connect()), fmt::arg("a", a), fmt::arg("b", b));
  }

  void AddActiveOnly() { text_ += selection_.activeOnly; }
  [[nodiscard]] std::string Finish() const { return text_ + ";"; }

 private:
  std::string_view Connect() {
    const std::string_view word = hasWhere_ ? " AND " : " WHERE ";
    hasWhere_ = true;
    return word;
  }
  static std::string Literal(Date date) {
    const char delimiter = Vars().g_DbKind == "SQL" ? '\'' : '#';
    return fmt::format("{0}{1}{0}", delimiter, FormatSQLDate(date, DateForm::WithTime));
  }

  const Selection& selection_;
  std::string text_;
  bool hasWhere_;
};

}  // namespace

std::string BuildSelectSQL(std::int32_t table, const SavedFilters& filters) {
  const auto* selection = FindSelection(table);
  if (selection == nullptr) return {};

  const auto key = std::string(GetTableName(Direction::Send, table)) + "_LastSendAt";
  const auto lastSend = LocalToUTC(TextToDate(gf_ReadSettings("QBSEND_", key, Vars().g_TWSettingsPath, kNeverSent)));

  Statement statement(*selection);
  if (!filters.Date1a.empty() && !filters.Date1b.empty()) {
    statement.AddRange(TextToDate(filters.Date1a), TextToDate(filters.Date1b).PlusDays(1));
  } else if (lastSend != TextToDate(kNeverSent) && !filters.IgnoreLastSync) {
    statement.AddLastSend(lastSend);
  }
  statement.AddBetween(selection->between[0], filters.Filter1a, filters.Filter1b);
  statement.AddBetween(selection->between[1], filters.Filter2a, filters.Filter2b);
  statement.AddBetween(selection->between[2], filters.Filter3a, filters.Filter3b);
  if (filters.ActiveOnly) statement.AddActiveOnly();
  return statement.Finish();
}

}  // namespace twqb
