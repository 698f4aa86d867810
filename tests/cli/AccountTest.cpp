// What a transfer tells of itself at its end: a line for each table, the report record by record, errors counted, and
// what both come to against the rows of the two sides.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "Events.h"
#include "Firm.h"
#include "HeldTransfer.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::StartsWith;
using testing::UnorderedElementsAre;

// How many of a table's records, or of their lines ("vendorbill, lines"), came to each end.
using Sums = std::map<std::string, std::map<std::string, int>>;

Sums SumsOf(const std::string& report) {
  Sums sums;
  for (const auto& line : LinesOf(report)) {
    if (line.at("twqb") == "error") continue;
    ++sums[line.at("table") + (line.at("twqb") == "line" ? ", lines" : "")][line.at("done")];
  }
  return sums;
}

// The same as the lines of the tables print it.
Sums SumsPrinted(const std::string& out) {
  Sums sums;
  std::istringstream lines(out);
  const std::regex count("([0-9]+) ([a-z ]+)");
  for (std::string line; std::getline(lines, line);) {
    const auto colon = line.find(':');
    if (line.starts_with("send ") || line.starts_with("get ") || line.starts_with(' ')) continue;
    const auto behind = line.find("; lines: ");
    const auto read = [&](const std::string& table, const std::string& text) {
      for (std::sregex_iterator found(text.begin(), text.end(), count), end; found != end; ++found) {
        const auto words = (*found)[2].str();
        sums[table][words == "left as they were" ? "left as it was" : words] += std::stoi((*found)[1].str());
      }
    };
    const auto name = line.substr(0, colon);
    read(name, line.substr(colon, behind == std::string::npos ? behind : behind - colon));
    if (behind != std::string::npos) read(name + ", lines", line.substr(behind));
  }
  return sums;
}

class Account : public Firm {
 protected:
  std::string Report() const { return folder_.Read("report.jsonl"); }
  Ended Reported(const std::string& verb, const std::string& table, int hour,
                 const std::vector<std::string>& options = {}) const {
    std::vector<std::string> all = {"--report", "report.jsonl"};
    all.insert(all.end(), options.begin(), options.end());
    return Run(verb, table, hour, all);
  }

  using Links = std::map<std::string, std::string>;
  Links LinksOf(const std::string& table, const std::string& key) const {
    Links links;
    for (const auto& row : Rows("SELECT " + key + ", COALESCE(QBLinkID, '') FROM " + table))
      links[row.at(0)] = row.at(1);
    return links;
  }
  int CountThere(const std::string& kind) const {
    int count = 0;
    ForEachRecord(kind, "", [&](const pugi::xml_node&) { ++count; });
    return count;
  }
  // What the report says of each record of the table with that end: key to identifier.
  Links Told(const std::string& table, const std::string& done, const std::string& what = "record") const {
    Links told;
    for (const auto& line : LinesOf(Report())) {
      if (line.at("twqb") != what || line.at("table") != table || line.at("done") != done) continue;
      told[line.at("key")] = line.at("identifier");
    }
    return told;
  }
  // Hours and expenses get the link of a line of a bill, too, whatever they had.
  Links WithLinesOfBills(Links told, const std::string& table) const {
    if (table != "timeentries" && table != "expenselog") return told;
    const auto here = table == "timeentries" ? LinksOf("TimeEntry", "TEID") : LinksOf("ExpenseLog", "ELID");
    for (const auto& [key, link] : Told("vendorbill", "added", "line")) {
      if (here.contains(key)) told[key] = link;
    }
    return told;
  }
  // Faults that let every row that is written fail, as a full disk does.
  void FillDisk() const {
    std::string faults;
    for (int nth = 1; nth <= 400; ++nth) {
      faults += "row " + std::to_string(nth) + " raise 0x80004005 \"The disk is full.\"\n";
    }
    folder_.Write("faults.txt", faults);
  }
};

// The rows whose link changed, with what it is now.
std::map<std::string, std::string> Changed(const std::map<std::string, std::string>& before,
                                           std::map<std::string, std::string> after) {
  std::erase_if(after, [&](const auto& row) {
    const auto found = before.find(row.first);
    return found != before.end() && found->second == row.second;
  });
  return after;
}

std::set<std::string> IdentifiersOf(const std::map<std::string, std::string>& links) {
  std::set<std::string> identifiers;
  for (const auto& [key, link] : links) identifiers.insert(link);
  return identifiers;
}

// --- What it comes to ------------------------------------------------------------------------------------------------

struct Moved {
  std::string table;
  std::string rows;
  std::string key;
  std::string kind;  // in QuickBooks
};
const Moved kMoved[] = {{"clients", "Client", "ClientID", ""},
                        {"timeentries", "TimeEntry", "TEID", "TimeTracking"},
                        {"invoices", "TransactionTable WHERE PayID IS NULL", "TransactionID", ""},
                        {"payments", "Payment", "PayID", ""},
                        {"vendorbill", "VendorBill", "VendorBillID", "Bill"}};

TEST_F(Account, Of_a_send_report_and_lines_and_links_and_QuickBooks_agree) {
  std::map<std::string, Links> links;
  std::map<std::string, int> there;
  for (const auto& moved : kMoved) {
    links[moved.table] = LinksOf(moved.rows, moved.key);
    if (!moved.kind.empty()) there[moved.table] = CountThere(moved.kind);
  }
  const auto ended = Reported("send", "all", 11);
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(SumsOf(Report()), SumsPrinted(ended.out));
  for (const auto& moved : kMoved) {
    const auto told = Told(moved.table, "added");
    EXPECT_THAT(told, Not(IsEmpty())) << moved.table;
    EXPECT_EQ(WithLinesOfBills(told, moved.table), Changed(links[moved.table], LinksOf(moved.rows, moved.key)))
        << moved.table;
    if (moved.kind.empty()) continue;
    EXPECT_EQ(static_cast<int>(told.size()), CountThere(moved.kind) - there[moved.table]) << moved.table;
  }
}

TEST_F(Account, Of_a_get_report_and_lines_and_rows_agree) {
  Transfer("send", 11);
  std::map<std::string, Links> links;
  for (const auto& moved : kMoved) links[moved.table] = LinksOf(moved.rows, moved.key);
  const auto estimates = LinksOf("Budget", "BudgetID");
  const auto expenses = LinksOf("ExpenseLog", "ELID");
  const auto ended = Reported("get", "all", 12);
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(SumsOf(Report()), SumsPrinted(ended.out));
  for (const auto& moved : kMoved) {
    // The discount of a payment is a second row with the link of the first.
    EXPECT_EQ(IdentifiersOf(WithLinesOfBills(Told(moved.table, "added"), moved.table)),
              IdentifiersOf(Changed(links[moved.table], LinksOf(moved.rows, moved.key))))
        << moved.table;
  }
  EXPECT_EQ(Told("estimates", "added"), Changed(estimates, LinksOf("Budget", "BudgetID")));
  EXPECT_EQ(WithLinesOfBills(Told("expenselog", "added"), "expenselog"),
            Changed(expenses, LinksOf("ExpenseLog", "ELID")));
}

TEST_F(Account, Expenses_are_told_row_by_row_when_their_bill_goes) {
  Transfer("send", 11);
  const auto linked = [](const std::string& table, const std::string& key) {
    return "(SELECT MIN(" + key + ") FROM " + table + " WHERE QBLinkID <> '')";
  };
  for (const std::string key : {"{E1}", "{E2}"}) {
    Sql("INSERT INTO ExpenseLog (ELID, ELDate, EmployeeID, ProjectID, ExpID, ELUnits, ELCost, ELBillable, ELPosted, "
        "isSub) VALUES ('" +
        key + "', '2008-02-10', (SELECT MIN(EmployeeID) FROM Employee WHERE IsSub = -1 AND QBLinkID <> ''), " +
        linked("Project", "ProjectID") + ", " + linked("Expense", "ExpID") + ", 2, 10, -1, -1, -1)");
  }
  const auto before = CountThere("Bill");
  const auto ended = Reported("send", "expenselog", 12, {"--id", "'{E1}','{E2}'"});
  EXPECT_EQ(ended.out, "expenselog: 2 added\nsend expenselog: done\n") << ended.err;
  EXPECT_EQ(Told("expenselog", "added"), LinksOf("ExpenseLog WHERE ELID IN ('{E1}', '{E2}')", "ELID"));
  EXPECT_EQ(CountThere("Bill"), before + 1);
}

TEST_F(Account, A_report_says_who_was_newer_and_what_kept_a_record_here) {
  Transfer("send", 11);
  EXPECT_THAT(Reported("send", "clients", 12).out, StartsWith("clients: 33 left as they were\n"));
  for (const auto& line : LinesOf(Report())) {
    EXPECT_EQ(line.at("twqb"), "record");
    EXPECT_EQ(line.at("direction"), "send");
    EXPECT_THAT(line.at("why"), testing::AnyOf(StartsWith("QuickBooks is newer by "), "its row has no date"));
    EXPECT_THAT(line.at("identifier"), Not(IsEmpty()));
  }
  Sql("INSERT INTO TimeEntry (TEID, TEDate, ProjectID, EmployeeID, ActivityID, TEHours, TEPosted) SELECT '{NEW}', "
      "'2008-03-05', ProjectID, EmployeeID, ActivityID, -1, -1 FROM TimeEntry WHERE QBLinkID <> '' LIMIT 1");
  Reported("send", "timeentries", 13, {"--id", "NEW"});
  const auto lines = LinesOf(Report());
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_THAT(lines[0], AllOf(Contains(Pair("key", "{NEW}")), Contains(Pair("done", "passed over")),
                              Contains(Pair("why", "QuickBooks does not support negative time"))));
}

TEST_F(Account, A_client_that_is_pulled_for_an_invoice_is_told_with_the_clients) {
  EXPECT_EQ(Reported("get", "invoices", 11).status, 0);
  const auto sums = SumsOf(Report());
  EXPECT_TRUE(sums.contains("invoices"));
  EXPECT_GT(sums.at("clients").at("added"), 0);
}

TEST_F(Account, Lines_of_several_tables_stand_below_each_other) {
  std::istringstream lines(Run("get", "invoices", 11).out);
  std::string first;
  std::string second;
  std::getline(lines, first);
  std::getline(lines, second);
  const std::regex column("^[a-z]+: +[0-9]");
  std::smatch one;
  std::smatch other;
  ASSERT_TRUE(std::regex_search(first, one, column)) << first;
  ASSERT_TRUE(std::regex_search(second, other, column)) << second;
  EXPECT_EQ(one.length(), other.length());
}

// --- Nothing to do ---------------------------------------------------------------------------------------------------

TEST_F(Account, A_key_that_is_not_there_selects_nothing) {
  EXPECT_EQ(Run("send", "clients", 11, {"--id", "NOBODY"}).out,
            "clients: nothing was selected; there is no record NOBODY\nsend clients: done\n");
  const auto ended = Run("get", "clients", 12, {"--id", "80000999-1204729200"});
  EXPECT_THAT(ended.out, HasSubstr("clients: nothing was selected; there is no record 80000999-1204729200\n"));
}

TEST_F(Account, Nothing_selected_says_what_was_left_out) {
  Transfer("send", 11);
  Sql("UPDATE Client SET LastUpdated = '2008-03-05 08:00:00'");
  EXPECT_EQ(Run("send", "clients", 12).out,
            "clients: nothing was selected; left out is what has not changed since the last send, 3/5/2008 11:00:00 "
            "AM (UTC)\nsend clients: done\n");
  folder_.Done({"settings", "set", "QBSEND_", "Clients_ChkSkip", "True"});
  EXPECT_EQ(Run("send", "clients", 13).out, "clients: the settings skip this table\nsend clients: done\n");
}

TEST_F(Account, Of_all_tables_those_that_the_settings_skip_and_those_that_were_not_reached_have_a_line) {
  folder_.Done({"settings", "set", "QBSEND_", "Employees_ChkSkip", "True"});
  folder_.Write("faults.txt", "sql 1 raise 0x80004005 \"Broken.\" UPDATE Client SET QBLinkID\n");
  const auto ended = Run("send", "all", 11, {"--faults", "faults.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out,
              AllOf(HasSubstr("employees:    the settings skip this table\n"), HasSubstr("vendorbill:   not reached\n"),
                    Not(HasSubstr("clients:      not reached")), Not(HasSubstr("expenselog:"))));
}

TEST_F(Account, Expenses_without_an_id_are_told_to_need_one) {
  EXPECT_THAT(Run("send", "expenselog", 11).out,
              StartsWith("expenselog: nothing was selected; it goes by --id alone\n"));
}

TEST_F(Account, A_table_that_can_not_be_read_is_not_told_as_one_without_records) {
  folder_.Write("faults.txt", "CustomerQueryRq 1 status 3180 Error \"No.\"\n");
  EXPECT_THAT(Run("get", "clients", 11, {"--faults", "faults.txt"}).out,
              StartsWith("clients: nothing of it could be read or begun: see the log\n"));
}

TEST_F(Account, A_run_that_gives_up_at_a_question_says_what_it_had_done) {
  folder_.Write("faults.txt", "CustomerAddRq 3 status 3180 Error \"No.\"\n");
  // To the offer of a backup.
  folder_.Write("none.txt", "no\n");
  const auto ended = folder_.Twqb({"send", "clients", "--no-progress", "--answers", "none.txt", "--faults",
                                   "faults.txt", "--clock", "2008-03-05T11:00:00"},
                                  {.unanswered = Unanswered::Expected});
  EXPECT_EQ(ended.status, 3);
  EXPECT_EQ(ended.out, "clients: 2 added, 1 refused\nsend clients: ended at a question without an answer\n");
}

// --- What went wrong -------------------------------------------------------------------------------------------------

TEST_F(Account, A_read_only_database_is_told_record_by_record) {
  // Without an estimate, an error at which ends the run.
  const auto ended = Reported("get", "clients", 11, {"--billing", "Provider=SQLITE;Data Source=billing.db;Mode=Read"});
  const auto sums = SumsOf(Report());
  const auto failed = sums.at("clients").at("failed");
  EXPECT_GT(failed, 10);
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.out, "clients: " + std::to_string(failed) + " failed\nget clients: done, but " +
                           std::to_string(failed) + " errors were told: see the log\n");
  EXPECT_THAT(folder_.Read("TWQBLog20083.txt"), HasSubstr(" in MoveClientsToTW: "));
}

TEST_F(Account, A_full_disk_is_told_and_strict_gives_1) {
  FillDisk();
  const std::vector<std::string> full = {"--faults", "faults.txt"};
  const auto ended = Reported("get", "clients", 11, full);
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.out, testing::ContainsRegex("get clients: done, but [0-9]+ errors were told: see the log\n$"));
  const auto strict = Reported("get", "clients", 12, {"--faults", "faults.txt", "--strict"});
  EXPECT_EQ(strict.status, 1);
  EXPECT_EQ(strict.out, ended.out);
  int errors = 0;
  for (const auto& line : LinesOf(Report())) {
    if (line.at("twqb") != "error") continue;
    ++errors;
    EXPECT_THAT(line, AllOf(Contains(Pair("table", "clients")), Contains(Pair("routine", "MoveClientsToTW")),
                            Contains(Pair("text", "The disk is full."))));
    EXPECT_THAT(line.at("identifier"), Not(IsEmpty()));
  }
  EXPECT_GT(errors, 10);
}

TEST_F(Account, The_box_of_an_error_names_the_record_to_the_person_and_not_to_the_transcript) {
  FillDisk();
  const auto ended = Reported("get", "clients", 11, {"--faults", "faults.txt"});
  std::size_t boxes = 0;
  for (const auto& line : LinesOf(Report())) {
    if (line.at("twqb") != "error") continue;
    ++boxes;
    const auto key = line.find("key");
    const auto name = key == line.end() || key->second.empty() ? line.at("identifier") : key->second;
    EXPECT_THAT(ended.err, HasSubstr("In clients " + name + "."));
  }
  EXPECT_GT(boxes, 10U);
  EXPECT_THAT(Transcript("get", 11), Not(HasSubstr("In clients ")));
}

TEST_F(Account, Of_all_tables_on_a_full_disk_the_errors_are_counted_too) {
  FillDisk();
  const auto ended = Reported("get", "all", 11, {"--faults", "faults.txt"});
  int errors = 0;
  for (const auto& line : LinesOf(Report())) errors += line.at("twqb") == "error" ? 1 : 0;
  EXPECT_GT(errors, 100);
  EXPECT_THAT(ended.out, HasSubstr(std::to_string(errors) + " errors were told: see the log\n"));
}

TEST_F(Account, Strict_leaves_a_clean_run_alone) { EXPECT_EQ(Run("send", "vendors", 11, {"--strict"}).status, 0); }

TEST_F(Account, A_refused_record_is_counted_and_the_box_about_it_shown_with_its_answer_and_logged) {
  folder_.Write("faults.txt", "CustomerAddRq 1 status 3090 Error \"There was an error when storing.\"\n");
  const auto ended = Reported("send", "clients", 11, {"--faults", "faults.txt"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, AllOf(StartsWith("clients: 63 added, 1 refused\n"),
                               EndsWith("send clients: done, but 1 record was refused: see the log\n")));
  EXPECT_THAT(ended.err, AllOf(HasSubstr("Error Code: 3090"), HasSubstr("Answered from the file: Yes")));
  const auto log = folder_.Read("TWQBLog20083.txt");
  EXPECT_THAT(log, AllOf(HasSubstr("Answered Yes: QuickBooks has reported the following error: "),
                         HasSubstr("QuickBooks refused a record, status 3090: There was an error when storing.")));
  EXPECT_THAT(Told("clients", "refused"), testing::SizeIs(1));
  EXPECT_EQ(Run("send", "clients", 12, {"--id", "ABBOTT", "--faults", "faults.txt", "--strict"}).status, 1);
}

TEST_F(Account, Of_a_log_that_could_not_be_written_nobody_is_sent_to_it) {
  for (const auto* fault : {"sql 3 raise 0x80004005 \"Broken.\" UPDATE Client SET QBLinkID\n",
                            "CustomerAddRq 1 status 3090 Error \"There was an error when storing.\"\n"}) {
    folder_.Write("faults.txt", fault);
    std::filesystem::remove_all(folder_.Path() / "TWQBLog20083.txt");
    std::filesystem::create_directory(folder_.Path() / "TWQBLog20083.txt");
    const auto ended = Run("send", "clients", 11, {"--faults", "faults.txt"});
    EXPECT_THAT(ended.out, AllOf(HasSubstr("1 "), EndsWith(", and the log could not be written\n"))) << fault;
    EXPECT_THAT(ended.out, Not(HasSubstr("see the log"))) << fault;
  }
}

TEST_F(Account, A_failed_table_says_how_far_it_came) {
  folder_.Write("faults.txt", "sql 3 raise 0x80004005 \"Broken.\" UPDATE Client SET QBLinkID\n");
  const auto ended = Reported("send", "clients", 11, {"--faults", "faults.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "clients: 3 added, 61 not reached\nsend clients: failed; 1 error was told: see the log\n");
}

TEST_F(Account, An_employee_that_is_added_once_more_is_told_at_the_end_and_in_the_log) {
  Reported("send", "all", 11);
  std::string key;
  for (const auto& line : LinesOf(Report())) {
    if (line.at("table") == "employees" && line.at("why").starts_with("its name is in use")) key = line.at("key");
  }
  ASSERT_THAT(key, Not(IsEmpty()));
  Sql("UPDATE Employee SET EmpCity = 'Newport', LastUpdated = '2008-03-05 23:00:00' WHERE EmployeeID = '" + key + "'");
  const auto ended = Reported("send", "employees", 12, {"--id", key});
  EXPECT_THAT(ended.out, HasSubstr("1 of the added once more, for the name is in use in QuickBooks"));
  const auto lines = LinesOf(Report());
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_THAT(folder_.Read("TWQBLog20083.txt"),
              HasSubstr("The name of Employee " + key + " is in use in QuickBooks. It was added once more: " +
                        lines[0].at("identifier") + " is its link now, in the place of " + lines[0].at("former")));
}

// --- The file --------------------------------------------------------------------------------------------------------

TEST_F(Account, A_report_replaces_an_older_one_and_nothing_else) {
  EXPECT_EQ(Reported("send", "clients", 11).status, 0);
  EXPECT_EQ(Reported("send", "activities", 12, {"--id", "DESIGN:"}).status, 0);
  EXPECT_EQ(LinesOf(Report()).size(), 1U);
  folder_.Write("note.txt", "Mine.\n");
  for (const std::string file : {"note.txt", "billing.db", "company.twq", "twqb.ini", "yes.txt", "send13.jsonl", "."}) {
    const auto ended = Run("send", "clients", 13, {"--report", file});
    EXPECT_EQ(ended.status, 2) << file;
    EXPECT_THAT(ended.err, AllOf(HasSubstr("the report would overwrite it"), HasSubstr("--report"))) << file;
  }
  EXPECT_EQ(folder_.Read("note.txt"), "Mine.\n");
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "64");
}

TEST_F(Account, A_run_that_is_refused_leaves_an_older_report_alone) {
  Reported("send", "activities", 11, {"--id", "DESIGN:"});
  const auto report = Report();
  ASSERT_THAT(report, Not(IsEmpty()));
  EXPECT_EQ(folder_.Twqb({"send", "clients", "--answers", "none.txt", "--report", "report.jsonl"}).status, 2);
  EXPECT_EQ(Report(), report);
  HeldTransfer first(folder_, {"send", "clients", "--answers", "yes.txt", "--no-progress"}, "CustomerAddRq");
  EXPECT_EQ(Reported("send", "clients", 12).status, 1);
  EXPECT_EQ(Report(), report);
  EXPECT_EQ(first.Finish().exitStatus, 0);
}

}  // namespace
}  // namespace twqb::cli
