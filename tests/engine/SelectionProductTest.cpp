// The whole product of what a statement depends on: every filter pair with none, one or both of its values, every flag,
// both dialects, time zones and last sends, PassedID, notes. Each statement is compared with the sum of its parts, and
// each that differs runs on a database: all are taken, but those that ActiveOnly spoils.
//
// The parts stand here with the values filled in; what is compared beside their texts is their order, the connecting
// words, and that nothing else has an influence.

#include <ostream>
#include <set>
#include <tuple>
#include <vector>

#include "platform/Text.h"
#include "tests/engine/SelectionBases.h"
#include "tests/engine/SelectionHouse.h"

namespace twqb {
namespace {

// Where a table was last sent, and when that is in the statement; "" when it isn't.
struct LastSend {
  TimeZoneInformation zone;
  std::string_view sentAt;
  std::string_view literal;
};

constexpr LastSend kLastSends[] = {
    {kGreenwich, "01/01/1900", ""},
    {kNewYork, "01/01/1900", "01/01/1900 05:00:00"},
    {kHelsinki, "01/01/1900", "12/31/1899 22:00:00"},
    {kNewYork, "12/31/1899 7:00:00 PM", ""},
    {kNewYorkSummer, "3/4/2008 9:05:06 PM", "03/05/2008 01:05:06"},
    {kDelhi, "3/4/2008", "03/03/2008 18:30:00"},
    {kGreenwich, "3/4/2008 12:30:00 PM", "03/04/2008 12:30:00"},
};
constexpr std::size_t kDifferentLastSends = 6;  // literals, one of them none

enum class Part : std::uint8_t { LastSend, Range, Filter1, Filter2, Filter3, FromTo, FromToInRange, FromToOutOfRange };

// A clause behind its connecting word, with "~" for the delimiter of dates and "@" for the time of the last send.
struct Clause {
  Part part;
  std::string text;
};

// A form with PassedID, in which nothing but the first filter value has a say.
struct Named {
  std::string passed;
  std::string text;  // behind the base
  std::string filter1a = "A";
  bool needsFilter1a = false;      // else there is no statement
  std::string_view provider = {};  // empty: both
};

struct Table {
  std::string name;  // send name
  enTables table;
  std::string base;
  std::vector<Clause> clauses;
  std::string activeOnly = {};
  std::string tail = {};
  bool hasWhere = true;
  std::vector<Named> named = {};
};

void PrintTo(const Table& table, std::ostream* out) { *out << table.name; }

std::string LastSendOf(const std::string& p, const std::string& blank = " ") {
  return "((" + p + "LastUpdated > ~@~)" + blank + "OR " + p + "QBLinkID IS NULL OR " + p + "QBLinkID = '' OR " + p +
         "LastUpdated IS NULL) ";
}

std::string RangeOf(const std::string& p) {
  return "(" + p + "LastUpdated BETWEEN ~01/02/2008 00:00:00~ AND ~02/04/2008 00:00:00~)";
}

std::string FromToOf(const std::string& column) {
  return "(" + column + " BETWEEN ~03/01/2008 00:00:00~ AND ~03/31/2008 23:59:59~)";
}

std::string GroupsOf(const std::string& column, const std::string& in, const std::string& details,
                     const std::string& group, const std::string& values) {
  return "(" + column + in + "SELECT " + column.substr(column.find('.') + 1) + " FROM " + details + "  WHERE " + group +
         " BETWEEN " + values + ")) ";
}

const std::vector<Clause> kPeopleClauses = {
    {Part::LastSend, LastSendOf("")},
    {Part::Range, RangeOf("") + " "},
    {Part::Filter1, "(EmployeeID BETWEEN 'A' AND 'M') "},
    {Part::Filter2, GroupsOf("EmployeeID", " IN (", "EmployeeGroupDetail", "EGID", "'G' AND 'H'")}};
const std::string kActivePeople = " AND (Employee.Status IS NULL OR Employee.Status = 'Active') ";

const Table kTables[] = {
    {"Employees", enEmployees, kEmployeeBase, kPeopleClauses, kActivePeople},
    {"Vendors", enVendors, kVendorBase, kPeopleClauses, kActivePeople},
    {"Clients",
     enClients,
     kClientBase,
     {{Part::LastSend, LastSendOf("", "  ")},
      {Part::Range, RangeOf("")},
      {Part::Filter1, "ClientID BETWEEN 'A' AND 'M' "},
      {Part::Filter2, GroupsOf("ClientID", " IN(", "ClientGroupDetail", "CGID", "'G' AND 'H'")}},
     " AND (Client.Status IS NULL OR Client.Status = 'Active') ",
     "",
     false},
    {"Projects",
     enProjects,
     kProjectBase,
     {{Part::LastSend, LastSendOf("Project.")},
      {Part::Range, RangeOf("Project.")},
      {Part::Filter1, "Project.ProjectID BETWEEN 'A' AND 'M' "},
      {Part::Filter2, GroupsOf("Project.ProjectID", " IN(", "ProjectGroupDetail", "PGID", "'G' AND 'H'")},
      {Part::Filter3, "Project.EmployeeID BETWEEN 'P' AND 'Q' "}},
     " AND (Project.ProjectStatus IS NULL OR Project.ProjectStatus = 'Active' OR Project.ProjectStatus = 'Main') ",
     " ORDER BY Project.ProjectIsPhase DESC "},
    {"Activities",
     enActivities,
     kActivityBase,
     {{Part::LastSend, LastSendOf("Activity.")},
      {Part::Range, RangeOf("Activity.")},
      {Part::Filter1, "(Activity.ActivityID BETWEEN 'A' AND 'M') "},
      {Part::Filter2, GroupsOf("Activity.ActivityID", " IN(", "ActivityGroupDetail", "AGID", "'G' AND 'H'")}},
     " AND (Activity.IsInActive IS NULL OR Activity.IsInActive = 0) ",
     "",
     false},
    {"Expense Codes",
     enExpenseCodes,
     kExpenseCodeBase,
     {{Part::LastSend, LastSendOf("")},
      {Part::Range, RangeOf("")},
      {Part::Filter1, "(Expense.ExpID BETWEEN 'A' AND 'M') "},
      {Part::Filter2, GroupsOf("Expense.ExpID", " IN(", "ExpenseGroupDetail", "XGID", "'G' AND 'H'")}},
     " AND (Expense.IsInActive IS NULL OR Expense.IsInActive = 0) ",
     "",
     false},
    {"Accounts",
     enAccounts,
     kAccountBase,
     {{Part::LastSend, LastSendOf("")},
      {Part::Range, RangeOf("")},
      {Part::Filter1, "(AccountName BETWEEN 'A' AND 'M') "}},
     "",
     "",
     false},
    {"Expense Log",
     enExpenseLog,
     kExpenseLogBase,
     {},
     "",
     "",
     true,
     {{"E-1", "WHERE (ELID IN('{E-1}','{E-2}')) AND (ELPosted = -1) ORDER BY EmployeeID", "'{E-1}','{E-2}'", true}}},
    {"Time Entries",
     enTimeEntries,
     kTimeEntryBase,
     {{Part::FromTo, "(" + FromToOf("TimeEntry.TEDate") + ") "},
      {Part::LastSend,
       "((TimeEntry.LastUpdated > ~@~) OR (TimeEntry.QBLinkID IS NULL) OR (TimeEntry.QBLinkID = '') OR "
       "(TimeEntry.LastUpdated IS NULL)) "},
      {Part::Range, RangeOf("TimeEntry.")},
      {Part::Filter1, "((TimeEntry.EmployeeID BETWEEN 'A' AND 'M')) "},
      {Part::Filter2, "(TimeEntry.ProjectID BETWEEN 'G' AND 'H') "},
      {Part::Filter3, "(TimeEntry.ActivityID BETWEEN 'P' AND 'Q') "}},
     "",
     " AND ((TimeEntry.QBLinkID IS NULL) OR (TimeEntry.QBLinkID = '')) ",
     true,
     {{"E-1", " AND (TimeEntry.TEID IN ('{E-1}')) "}, {"E-1,E-2", " AND (TimeEntry.TEID IN ('{E-1}','{E-2}')) "}}},
    {"Invoices",
     enInvoices,
     kInvoiceBase,
     {{Part::FromTo, FromToOf("TransactionTable.InvoiceDate") + " "},
      {Part::LastSend, LastSendOf("TransactionTable.")},
      {Part::Range, RangeOf("TransactionTable.")},
      {Part::Filter1, "(TransactionTable.ProjectID BETWEEN 'A' AND 'M') "},
      {Part::Filter2, "(TransactionTable.ClientID BETWEEN 'G' AND 'H') "},
      {Part::Filter3, GroupsOf("Project.ProjectID", " IN(", "ProjectGroupDetail", "PGID", "'P' AND 'Q'")}},
     "",
     "",
     true,
     {{"E-1", ""},
      {"E-1,E-2", "AND (TransactionTable.ProjectID = 'E-1') AND (TransactionTable.TransactionInvNum = 'E-2')"}}},
    {"Payments",
     enPayments,
     kPaymentBase,
     {{Part::FromTo, FromToOf("Payment.PayDate") + " "},
      {Part::LastSend, LastSendOf("Payment.")},
      {Part::Range, RangeOf("Payment.")},
      {Part::Filter1, "(Payment.ClientID BETWEEN 'A' AND 'M') "},
      {Part::Filter2, GroupsOf("PAyment.ClientID", " IN(", "ClientGroupDetail", "CGID", "'G' AND 'H'")}}},
    {"Vendor Bill",
     enVendorBill,
     kVendorBillBase,
     {{Part::LastSend, LastSendOf("")},
      {Part::Range, RangeOf("")},
      {Part::Filter1, "(VendorID BETWEEN 'A' AND 'M') "},
      {Part::FromToInRange, "(BillDate BETWEEN ~01/02/2008 00:00:00~ AND ~02/04/2008 00:00:00~)"},
      {Part::FromToOutOfRange, "(BillDate BETWEEN ~12/30/1899 00:00:00~ AND ~12/30/1899 00:00:00~)"}},
     "",
     "",
     false,
     {{"E-1", "WHERE (VendorBillID IN('{B-1}')) ORDER BY BillNumber", "{B-1}", true, kSql},
      {"E-1", "WHERE (VendorBillID IN({guid {B-1}})) ORDER BY BillNumber", "{guid {B-1}}", true, kJet}}},
};

bool Both(const std::string& a, const std::string& b) { return !a.empty() && !b.empty(); }

bool IsOn(Part part, const SavedFilters& filters, const LastSend& lastSend) {
  const bool hasRange = Both(filters.Date1a, filters.Date1b);
  switch (part) {
    case Part::LastSend:
      return !hasRange && !filters.IgnoreLastSync && !lastSend.literal.empty();
    case Part::Range:
      return hasRange;
    case Part::Filter1:
      return Both(filters.Filter1a, filters.Filter1b);
    case Part::Filter2:
      return Both(filters.Filter2a, filters.Filter2b);
    case Part::Filter3:
      return Both(filters.Filter3a, filters.Filter3b);
    case Part::FromTo:
      return Both(filters.From, filters.To);
    case Part::FromToInRange:
      return Both(filters.From, filters.To) && hasRange;
    case Part::FromToOutOfRange:
      return Both(filters.From, filters.To) && !hasRange;
  }
  return false;
}

struct Expected {
  std::string statement;
  bool isTaken = true;  // by a database
};

// Without PassedID.
Expected SumOf(const Table& table, const std::string& base, const SavedFilters& filters, const LastSend& lastSend,
               std::string_view delimiter) {
  if (table.clauses.empty()) return {};
  auto text = base;
  bool hasWhere = table.hasWhere;
  for (const auto& clause : table.clauses) {
    if (!IsOn(clause.part, filters, lastSend)) continue;
    text += hasWhere ? " AND " : " WHERE ";
    text += ReplaceAll(ReplaceAll(clause.text, "@", lastSend.literal), "~", delimiter);
    hasWhere = true;
  }
  const bool isSpoiled = filters.ActiveOnly && !table.activeOnly.empty() && !hasWhere;
  if (filters.ActiveOnly) text += table.activeOnly;
  return {.statement = text + table.tail + ";", .isTaken = !isSpoiled};
}

Expected NamedOf(const Named& named, const std::string& base, const SavedFilters& filters) {
  if (named.needsFilter1a && filters.Filter1a.empty()) return {};
  return {.statement = base + named.text + ";"};
}

// Calls `visit` with every combination of filters and flags. Of a pair with one value it is the first and the second in
// turn.
template <typename Visit>
void ForEachFilters(const std::string& filter1a, Visit visit) {
  constexpr int kNone = 0;
  constexpr int kHalf = 1;
  constexpr int kStates = 3;
  constexpr int kCombinations = kStates * kStates * kStates * kStates * kStates;
  int halves = 0;
  for (int combination = 0; combination < kCombinations; ++combination) {
    for (int flags = 0; flags < 4; ++flags) {
      SavedFilters filters{.IgnoreLastSync = (flags & 1) != 0, .ActiveOnly = (flags & 2) != 0};
      int rest = combination;
      const auto pair = [&](std::string& a, std::string& b, const std::string& valueA, const std::string& valueB) {
        const int state = rest % kStates;
        rest /= kStates;
        if (state == kNone) return;
        const bool first = state != kHalf || ++halves % 2 == 0;
        const bool second = state != kHalf || !first;
        if (first) a = valueA;
        if (second) b = valueB;
      };
      pair(filters.Date1a, filters.Date1b, "1/2/2008", "2/3/2008");
      pair(filters.Filter1a, filters.Filter1b, filter1a, "M");
      pair(filters.Filter2a, filters.Filter2b, "G", "H");
      pair(filters.Filter3a, filters.Filter3b, "P", "Q");
      pair(filters.From, filters.To, "3/1/2008", "3/31/2008 11:59:59 PM");
      visit(filters);
    }
  }
}

class SelectionProduct : public testing::TestWithParam<std::tuple<Table, std::string_view>> {
 protected:
  // All of one form: compares each statement, and runs those that are new.
  void Walk(SelectionHouse& house, const std::string& base, const Named* named) {
    Vars().g_PassedID = named == nullptr ? "" : named->passed;
    for (const auto& lastSend : kLastSends) {
      house.settings.zone = lastSend.zone;
      house.SentAt(table_.name, lastSend.sentAt);
      ForEachFilters(named == nullptr ? "A" : named->filter1a, [&](const SavedFilters& filters) {
        const auto expected =
            named == nullptr ? SumOf(table_, base, filters, lastSend, delimiter_) : NamedOf(*named, base, filters);
        const auto statement = BuildSelectSQL(table_.table, filters);
        ASSERT_EQ(statement, expected.statement);
        if (statement.empty() || !statements_.insert(statement).second) return;
        if (expected.isTaken) {
          EXPECT_NO_THROW(house.Run(statement)) << statement;
        } else {
          EXPECT_THROW(house.Run(statement), PlatformError) << statement;
        }
      });
      if (HasFatalFailure()) return;
    }
  }

  const Table& table_ = std::get<0>(GetParam());
  std::string_view provider_ = std::get<1>(GetParam());
  std::string_view delimiter_ = provider_ == kSql ? "'" : "#";
  std::set<std::string> statements_;  // different ones
};

TEST_P(SelectionProduct, Every_statement_is_the_sum_of_its_parts_and_a_database_takes_it) {
  SelectionHouse house(kGreenwich, provider_);
  Walk(house, table_.base, nullptr);
  ASSERT_FALSE(HasFatalFailure());

  // Every pair with a clause is there or not, and so is ActiveOnly, beside each last send or the range.
  std::set<Part> pairs;
  for (const auto& clause : table_.clauses) {
    if (clause.part != Part::LastSend && clause.part != Part::Range && clause.part != Part::FromToOutOfRange) {
      pairs.insert(clause.part);
    }
  }
  const std::size_t count =
      (kDifferentLastSends + 1) * (std::size_t{1} << pairs.size()) * (table_.activeOnly.empty() ? 1 : 2);
  EXPECT_EQ(statements_.size(), table_.clauses.empty() ? 0 : count);
}

TEST_P(SelectionProduct, PassedID_leaves_no_say_to_the_filters_where_the_table_has_a_form_for_it) {
  SelectionHouse house(kGreenwich, provider_);
  std::size_t forms = 0;
  for (const auto& named : table_.named) {
    if (!named.provider.empty() && named.provider != provider_) continue;
    Walk(house, table_.base, &named);
    ASSERT_FALSE(HasFatalFailure());
    ++forms;
  }
  EXPECT_EQ(statements_.size(), forms);
  if (!table_.named.empty()) return;

  for (const auto& passed : {"E-1", "E-1,E-2"}) {
    ForEachFilters("A", [&](const SavedFilters& filters) {
      Vars().g_PassedID.clear();
      const auto statement = BuildSelectSQL(table_.table, filters);
      Vars().g_PassedID = passed;
      ASSERT_EQ(BuildSelectSQL(table_.table, filters), statement);
    });
  }
}

TEST_P(SelectionProduct, Notes_change_the_base_of_time_entries_alone) {
  SelectionHouse house(kGreenwich, provider_);
  if (table_.table == enTimeEntries) {
    house.Setting("QBSEND", "_Time Entries_MapTENotes", "1");
    Walk(house, kNotedTimeEntryBase, nullptr);
    for (const auto& named : table_.named) Walk(house, kNotedTimeEntryBase, &named);
    return;
  }
  ForEachFilters("A", [&](const SavedFilters& filters) {
    house.Setting("QBSEND", "_Time Entries_MapTENotes", "0");
    const auto statement = BuildSelectSQL(table_.table, filters);
    house.Setting("QBSEND", "_Time Entries_MapTENotes", "1");
    ASSERT_EQ(BuildSelectSQL(table_.table, filters), statement);
  });
}

INSTANTIATE_TEST_SUITE_P(AllTables, SelectionProduct,
                         testing::Combine(testing::ValuesIn(kTables), testing::Values(kSql, kJet)),
                         [](const auto& parameter) {
                           return ReplaceAll(std::get<0>(parameter.param).name, " ", "") + "_" +
                                  std::string(std::get<1>(parameter.param));
                         });

}  // namespace
}  // namespace twqb
