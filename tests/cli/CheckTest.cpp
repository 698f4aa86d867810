// What the program finds of rows that a send would refuse, cut or leave behind, before it is sent.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Checks : public testing::Test {
 protected:
  Checks() {
    folder_.Done({"init", "--clock", "2008-03-05T10:00:00"});
    folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "False"});
  }

  void Sql(const std::string& statements) const { folder_.Done({"billing", "run", "-e", statements}); }
  void Company(const std::string& requests) const {
    folder_.Write("add.xml",
                  "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">" +
                      requests + "</QBXMLMsgsRq></QBXML>");
    folder_.Done({"company", "run", "add.xml"});
  }
  [[nodiscard]] std::string Check(const std::string& table) const { return folder_.Done({"check", table}); }

  WorkFolder folder_;
};

TEST_F(Checks, Of_sound_rows_find_nothing) {
  Sql("INSERT INTO Client (ClientID, ClientCompany, LastUpdated) VALUES ('ABBOTT', 'Abbott Roofing', '2008-03-01 "
      "10:00:00')");
  EXPECT_EQ(Check("clients"), "clients: 1 row looked at, nothing found\n");
}

TEST_F(Checks, Change_nothing_on_either_side) {
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('A''B', 'Abbott: Roofing')");
  // Whoever meets QuickBooks remembers its file.
  folder_.Done({"list", "customers"});
  const auto company = folder_.Read("company.twq");
  const auto rows = folder_.Done({"billing", "run", "-e", "SELECT * FROM Client", "--json"});
  const auto settings = folder_.Read("twqb.ini");
  static_cast<void>(Check("all"));
  EXPECT_EQ(folder_.Read("company.twq"), company);
  EXPECT_EQ(folder_.Done({"billing", "run", "-e", "SELECT * FROM Client", "--json"}), rows);
  EXPECT_EQ(folder_.Read("twqb.ini"), settings);
}

TEST_F(Checks, Of_an_empty_firm_say_so) { EXPECT_EQ(Check("all"), "check: there are no rows to look at\n"); }

TEST_F(Checks, And_what_else_changes_nothing_leave_the_question_of_the_first_run_to_the_first_send) {
  const WorkFolder firm;
  firm.Done({"init"});
  firm.Write("yes.txt", "default yes\n");
  firm.Done({"billing", "run", "-e", "INSERT INTO Client (ClientID, ClientCompany) VALUES ('ABBOTT', 'Abbott')"});
  const auto settings = firm.Read("twqb.ini");
  const auto rows = firm.Done({"billing", "run", "-e", "SELECT * FROM TWSTable", "--json"});
  for (const std::vector<std::string>& command :
       std::vector<std::vector<std::string>>{{"check"}, {"link"}, {"deletions", "--list"}, {"status", "--deep"}}) {
    for (const std::string store : {"--no-progress", "--settings-table"}) {
      auto words = command;
      words.push_back(store);
      const auto ended = firm.Twqb(words);
      EXPECT_EQ(ended.status, 0) << command.front() << ended.err;
      EXPECT_THAT(ended.err, Not(HasSubstr("backup your data files Now")));
    }
  }
  EXPECT_EQ(firm.Read("twqb.ini"), settings);
  EXPECT_EQ(firm.Done({"billing", "run", "-e", "SELECT * FROM TWSTable", "--json"}), rows);
  EXPECT_THAT(firm.Twqb({"send", "clients", "--answers", "yes.txt"}).err, HasSubstr("backup your data files Now"));
}

TEST_F(Checks, Find_a_key_with_a_quotation_mark) {
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('O''HARA', 'Hara')");
  EXPECT_THAT(Check("clients"), AllOf(HasSubstr("client O'HARA: Its key has a quotation mark in it"),
                                      HasSubstr("    Give the row a key without the mark.\n")));
}

TEST_F(Checks, Find_a_project_whose_client_there_is_not) {
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ABBOTT', 'Abbott Roofing');"
      "INSERT INTO Project (ProjectID, ProjectCode, ProjectName, ClientID) VALUES ('ONE:', 'ONE', 'One', NULL), "
      "('TWO:', 'TWO', 'Two', 'NOSUCH'), ('THREE:', 'THREE', 'Three', 'abbott')");
  const auto out = Check("projects");
  EXPECT_THAT(out, AllOf(HasSubstr("project ONE:: It has no client, so that a send passes it over.\n"
                                   "    Give the row a client that there is.\n"),
                         HasSubstr("project TWO:: Its client NOSUCH is not in BillingDb, so that a send passes it "
                                   "over.\n"),
                         HasSubstr("project THREE: \"Three\": It can't go yet: ")));
  EXPECT_THAT(Check("all"), HasSubstr("project TWO:: Its client NOSUCH is not in BillingDb")) << "it waits for nothing";
  EXPECT_THAT(folder_.Done({"check", "projects", "--json"}), HasSubstr("\"key\":\"TWO:\",\"name\":null,\"check\":"
                                                                       "\"parentMissing\""));
}

TEST_F(Checks, Find_a_time_entry_whose_project_or_activity_there_is_not) {
  Sql("INSERT INTO Employee (EmployeeID, EmpFName, EmpLName, IsSub) VALUES ('LEE', 'Ann', 'Lee', 0);"
      "INSERT INTO TimeEntry (TEID, EmployeeID, ProjectID, ActivityID, TEHours) VALUES (7, 'LEE', 'GONE:', 'PLAN', 2)");
  EXPECT_THAT(Check("timeentries"),
              AllOf(HasSubstr("Its project GONE: is not in BillingDb"),
                    HasSubstr("Its activity PLAN is not in BillingDb"), Not(HasSubstr("employee LEE"))));
}

TEST_F(Checks, Find_a_name_with_a_colon) {
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ABBOTT', 'Abbott: Roofing')");
  EXPECT_THAT(Check("clients"),
              HasSubstr("QuickBooks takes no colon in a name, and \"Abbott: Roofing (ABBOTT)\" has one."));
}

TEST_F(Checks, Find_texts_that_would_be_cut_and_say_what_would_be_lost) {
  Sql("INSERT INTO Client (ClientID, ClientCompany, ClientCity) VALUES ('ABBOTT', 'Abbott', "
      "'Llanfairpwllgwyngyllgogerychwyrndro')");
  EXPECT_THAT(Check("clients"),
              HasSubstr("City takes 31 characters in QuickBooks: of \"Llanfairpwllgwyngyllgogerychwyrndro\" the "
                        "end \"ndro\" would be lost."));
}

TEST_F(Checks, Say_how_much_room_there_is_where_a_key_is_left_off_the_name) {
  Company("<CustomerAddRq><CustomerAdd><Name>Abbott</Name></CustomerAdd></CustomerAddRq>");
  const std::string key = "CONSORTIUM-OF-THE-UPPER-VALLEY-WATERSHEDS";
  Sql("INSERT INTO Client (ClientID, ClientCompany, QBLinkID) SELECT 'ABBOTT', 'Abbott', '1-1';"
      "INSERT INTO Project (ProjectID, ProjectCode, ProjectName, ClientID) VALUES ('" +
      key + ":', '" + key + "', 'Mill', 'ABBOTT')");
  EXPECT_THAT(Check("projects"), HasSubstr("Name takes 41 characters in QuickBooks: the key in front is left off \"" +
                                           key + "- Mill\", and \"Mill\" would arrive."));
}

// The name of a vendor's company is cut to more than QuickBooks takes.
TEST_F(Checks, Find_texts_that_are_not_cut_but_refused) {
  Sql("INSERT INTO Employee (EmployeeID, EmpFName, EmpLName, IsSub, EmpCompany) VALUES ('V', 'Ann', 'Lee', -1, "
      "'Harbor and Inland Ports Authority, Rotterdam')");
  EXPECT_THAT(Check("vendors"),
              HasSubstr("CompanyName takes 41 characters in QuickBooks, and \"Harbor and Inland Ports "
                        "Authority, Rotterdam\" has 44: the record would be refused."));
}

TEST_F(Checks, Find_characters_that_no_message_can_carry) {
  Sql("INSERT INTO Client (ClientID, ClientCompany, ClientStreet) VALUES ('ABBOTT', 'Abbott', 'Main' || char(7) || "
      "'Street')");
  EXPECT_THAT(Check("clients"), HasSubstr("BillAddress.Addr2 has characters that no message can carry: they would be "
                                          "left out of \"MainStreet\"."));
}

TEST_F(Checks, Find_dates_that_can_not_be_read) {
  Sql("INSERT INTO Client (ClientID, ClientCompany, LastUpdated) VALUES ('ABBOTT', 'Abbott Roofing', 'yesterday')");
  EXPECT_THAT(Check("clients"),
              HasSubstr("client ABBOTT \"Abbott Roofing (ABBOTT)\": When the row changed last can't be read"));
}

TEST_F(Checks, Find_rows_whose_parents_have_no_link) {
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ABBOTT', 'Abbott');"
      "INSERT INTO Project (ProjectID, ProjectCode, ProjectName, ClientID) VALUES ('A:', 'A', 'Survey', 'ABBOTT')");
  EXPECT_THAT(Check("projects"),
              AllOf(HasSubstr("project A: \"A- Survey\": It can't go yet: what it belongs to has no link yet."),
                    HasSubstr("a send of all tables does it in that order.")));
}

TEST_F(Checks, Find_names_that_another_list_of_the_same_names_has) {
  Sql("INSERT INTO Client (ClientID) VALUES ('HARBOR')");
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('BELL', 'Bell Bakery')");
  Sql("INSERT INTO Employee (EmployeeID, EmpFName, EmpLName, IsSub) VALUES ('B', 'Bell', 'Bakery (BELL)', -1)");
  Company("<VendorAddRq><VendorAdd><Name>Harbor</Name></VendorAdd></VendorAddRq>");
  EXPECT_THAT(Check("all"),
              AllOf(HasSubstr("QuickBooks has a record of the name \"HARBOR\" already: vendor 8"),
                    HasSubstr("The vendor B would have the name \"Bell Bakery (BELL)\" in QuickBooks, too.")));
  EXPECT_THAT(Check("vendors"),
              AllOf(HasSubstr("The client BELL would have the name \"Bell Bakery (BELL)\" in QuickBooks, too."),
                    HasSubstr("vendors: 1 row looked at, 1 finding\n")));
}

TEST_F(Checks, Find_names_below_one_parent_alone_though_it_has_no_link_yet) {
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ABBOTT', 'Abbott'), ('BELL', 'Bell');"
      "INSERT INTO Project (ProjectID, ProjectCode, ProjectName, ClientID) VALUES ('PI:', 'PI', 'Pier repairs', "
      "'ABBOTT'), ('PIE:', 'PIE', 'Pier repairs', 'BELL'), ('PIER:', 'PIER', 'Pier repairs', 'BELL')");
  const auto found = Check("projects");
  EXPECT_THAT(found, HasSubstr("The project PIE: would have the name \"Pier repairs\" in QuickBooks, too."));
  EXPECT_THAT(found, Not(HasSubstr("The project PI: would have")));
}

TEST_F(Checks, Find_names_that_inactive_records_have) {
  Company(
      "<CustomerAddRq><CustomerAdd><Name>Abbott Roofing (ABBOTT)</Name><IsActive>false</IsActive></CustomerAdd>"
      "</CustomerAddRq>");
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ABBOTT', 'Abbott Roofing')");
  EXPECT_THAT(Check("clients"), HasSubstr("QuickBooks has a record of the name \"Abbott Roofing (ABBOTT)\" already"));
}

TEST_F(Checks, Find_accounts_that_QuickBooks_lacks) {
  Sql("INSERT INTO Activity (ActivityID, ActivityCode, QBAccountID1, QBAccountID2) VALUES ('GEN:', 'GEN', '', "
      "'NOWHERE-1')");
  EXPECT_THAT(
      Check("activities"),
      AllOf(HasSubstr("QuickBooks has no account \"NOWHERE-1\", which the row is to be booked on."),
            HasSubstr("    Add the account in QuickBooks, or choose another one for the row or in the settings.\n")));
}

TEST_F(Checks, Tell_an_account_that_a_row_names_twice_once) {
  Sql("INSERT INTO Activity (ActivityID, ActivityCode, QBAccountID1, QBAccountID2) VALUES ('GEN:', 'GEN', 'NOWHERE-1', "
      "'NOWHERE-1')");
  EXPECT_THAT(Check("activities"), HasSubstr("activities: 1 row looked at, 1 finding\n"));
}

TEST_F(Checks, Find_what_QuickBooks_alone_would_refuse) {
  Company(
      "<AccountAddRq><AccountAdd><Name>Tools</Name><AccountType>Expense</AccountType>"
      "<AccountNumber>7001</AccountNumber></AccountAdd></AccountAddRq>");
  Sql("INSERT INTO AccountList (AccountID, AccountName, AccountTypeID) VALUES ('7001', 'Machines', '7')");
  for (const std::string table : {"accounts", "all"}) {
    EXPECT_THAT(Check(table), AllOf(HasSubstr("account 7001: QuickBooks would refuse it: "),
                                    HasSubstr("The number \"7001\" is already in use."),
                                    HasSubstr("accounts: 1 row looked at, 1 finding\n")));
  }
  EXPECT_THAT(folder_.Done({"check", "accounts", "--json"}), HasSubstr("\"check\":\"refused\""));
}

TEST_F(Checks, Find_what_is_behind_a_row_that_would_end_a_send) {
  Company(
      "<AccountAddRq><AccountAdd><Name>Tools</Name><AccountType>Expense</AccountType>"
      "<AccountNumber>7001</AccountNumber></AccountAdd></AccountAddRq>");
  Sql("INSERT INTO AccountList (AccountID, AccountName, AccountTypeID) VALUES ('7001', 'Machines', '7');"
      "INSERT INTO Client (ClientID, ClientCompany) VALUES ('O''HARA', 'Hara'), ('O''HALE', 'Hale'), ('BELL', 'Bell')");
  EXPECT_THAT(Check("all"), AllOf(HasSubstr("account 7001: QuickBooks would refuse it: "),
                                  HasSubstr("clients: 3 rows looked at, 2 findings\n")));
}

TEST_F(Checks, Of_one_table_find_what_is_behind_a_row_that_would_end_its_send) {
  Company(
      "<AccountAddRq><AccountAdd><Name>Tools</Name><AccountType>Expense</AccountType>"
      "<AccountNumber>7001</AccountNumber></AccountAdd></AccountAddRq>");
  Sql("INSERT INTO AccountList (AccountID, AccountName, AccountTypeID) VALUES ('O''1', 'Hara', '7'), "
      "('7001', 'Machines', '7'), ('7002', 'Wheels', '7')");
  for (const std::string table : {"accounts", "all"}) {
    EXPECT_THAT(Check(table), AllOf(HasSubstr("account O'1: "), HasSubstr("account 7001: QuickBooks would refuse it: "),
                                    HasSubstr("accounts: 3 rows looked at, 2 findings\n")));
  }
}

TEST_F(Checks, Say_which_tables_QuickBooks_was_not_asked_about) {
  Company(
      "<AccountAddRq><AccountAdd><Name>Tools</Name><AccountType>Expense</AccountType>"
      "<AccountNumber>7001</AccountNumber></AccountAdd></AccountAddRq>");
  Sql("INSERT INTO AccountList (AccountID, AccountName, AccountTypeID) VALUES ('7001', 'Machines', '7')");
  const auto isSaid = HasSubstr(
      "QuickBooks was not asked about accounts, which the settings skip, nor about what saved filters leave out.\n");
  EXPECT_THAT(folder_.Twqb({"check"}).err, Not(isSaid));
  folder_.Done({"settings", "set", "QBSEND_", "Accounts_ChkSkip", "True"});
  folder_.Done({"settings", "set", "QBSEND_", "Clients_ChkSkip", "True"});
  for (const std::string table : {"accounts", "all"}) {
    const auto ended = folder_.Twqb({"check", table});
    EXPECT_THAT(ended.out, HasSubstr("accounts: 1 row looked at, nothing found\n"));
    EXPECT_THAT(ended.err, isSaid);
  }
}

// Hours without their links have no payroll item yet: QuickBooks tells of some, one after the other.
TEST_F(Checks, Find_payroll_items_that_QuickBooks_lacks_and_what_is_behind_such_hours) {
  const WorkFolder firm;
  firm.Done({"init", "--sample", "--clock", "2008-03-05T10:00:00"});
  firm.Write("yes.txt", "default yes\n");
  firm.Done({"billing", "run", "-e",
             "INSERT INTO QBPayroll (EmployeeID, EntryType, PayrollItem) SELECT 'TOBRIEN', n, 'Nowhere Pay' FROM "
             "(SELECT 1 AS n UNION SELECT 2 UNION SELECT 3 UNION SELECT 4)"});
  const auto unsent = firm.Twqb({"check"});
  EXPECT_EQ(unsent.status, 0);
  EXPECT_THAT(unsent.out, AllOf(HasSubstr("QuickBooks would refuse it: "),
                                HasSubstr("timeentries: 303 rows looked at, 4 findings")));
  EXPECT_THAT(unsent.err,
              HasSubstr("A send of all tables would end with timeentries: not each of its rows was foreseen."));
  static_cast<void>(firm.Twqb({"send", "all", "--answers", "yes.txt"}));
  const auto sent = firm.Twqb({"check"});
  EXPECT_THAT(sent.out,
              AllOf(HasSubstr("QuickBooks has no payroll item \"Nowhere Pay\", which the hours are to be paid by."),
                    Not(HasSubstr("QuickBooks would refuse it"))));
  EXPECT_THAT(sent.err, Not(HasSubstr("foreseen")));
}

// Hours of a client that can't go would end a send that was made without the client.
TEST_F(Checks, Leave_what_is_of_a_row_out_along_with_it) {
  const WorkFolder firm;
  firm.Done({"init", "--sample", "--clock", "2008-03-05T10:00:00"});
  firm.Done({"billing", "run", "-e",
             "INSERT INTO Client (ClientID, ClientCompany) VALUES ('O''HARA', 'Hara');"
             "UPDATE Project SET ClientID = 'O''HARA' WHERE ProjectID LIKE 'HARBOR:%'"});
  const auto ended = firm.Twqb({"check"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, HasSubstr("client O'HARA: Its key has a quotation mark in it"));
  EXPECT_THAT(ended.err, AllOf(Not(HasSubstr("foreseen")), Not(HasSubstr("no preview")),
                               HasSubstr("On copies: Sending Bills to QuickBooks")));
}

TEST_F(Checks, Say_the_same_of_a_row_once) {
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ABBOTT', 'Abbott: Roofing');"
      "INSERT INTO Employee (EmployeeID, EmpFName, EmpLName, IsSub, EmpCompany) VALUES ('V', 'Ann', 'Lee', -1, "
      "'Harbor and Inland Ports Authority, Rotterdam')");
  EXPECT_THAT(Check("all"), AllOf(HasSubstr("clients: 1 row looked at, 1 finding\n"), HasSubstr("would be refused"),
                                  Not(HasSubstr("QuickBooks would refuse it"))));
}

TEST_F(Checks, Without_a_preview_say_so_and_go_on) {
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ABBOTT', 'Abbott: Roofing')");
  const auto ended = folder_.Shell("TMPDIR=/nowhere/at/all \"$0\" check clients");
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, HasSubstr("clients: 1 row looked at, 1 finding\n"));
  EXPECT_THAT(ended.err, HasSubstr("What QuickBooks itself would refuse is not known, for there is no preview: "));
  EXPECT_THAT(ended.err, HasSubstr("\"/nowhere/at/all\""));
}

// No file may grow beyond what the copies of the firm's have.
TEST_F(Checks, Without_room_for_the_copies_blame_no_row) {
  const WorkFolder firm;
  firm.Done({"init", "--sample", "--clock", "2008-03-05T10:00:00"});
  firm.Done({"settings", "set", "GENERAL", "FIRST_TIME", "False"});
  const auto sizeOf = [&](const char* name) { return std::filesystem::file_size(firm.Path() / name); };
  const auto blocks = std::max(sizeOf("company.twq"), sizeOf("billing.db")) / 512 + 8;
  const auto limit = "trap '' XFSZ; ulimit -f " + std::to_string(blocks) + "; \"$0\" ";
  const auto checked = firm.Shell(limit + "check clients --no-progress");
  EXPECT_EQ(checked.status, 0) << checked.err;
  EXPECT_THAT(checked.out, AllOf(Not(HasSubstr("disk")), HasSubstr("clients: ")));
  EXPECT_THAT(checked.err, HasSubstr("there is no preview: There is no room for the copies of a preview in \""));
  const auto previewed = firm.Shell(limit + "send all --preview --no-progress");
  EXPECT_EQ(previewed.status, 2);
  EXPECT_THAT(previewed.out, IsEmpty());
  EXPECT_THAT(previewed.err, HasSubstr("There is no room for the copies of a preview in \""));
}

TEST_F(Checks, Show_their_progress_unless_they_are_asked_not_to) {
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ABBOTT', 'Abbott')");
  EXPECT_THAT(folder_.Twqb({"check", "clients"}).err, HasSubstr("On copies: "));
  EXPECT_THAT(folder_.Twqb({"check", "clients", "--no-progress"}).err, IsEmpty());
}

TEST_F(Checks, Leave_the_name_of_a_linked_row_alone) {
  Company("<CustomerAddRq><CustomerAdd><Name>Abbott Roofing</Name></CustomerAdd></CustomerAddRq>");
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ABBOTT', 'Abbott Roofing')");
  folder_.Done({"link", "clients", "--apply"});
  Sql("UPDATE Client SET ClientCompany = 'Abbott: Roofing'");
  EXPECT_THAT(Check("clients"), Not(HasSubstr("colon")));
}

TEST_F(Checks, In_JSON_are_an_object_for_each_finding) {
  Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ABBOTT', 'Abbott: Roofing')");
  const auto out = folder_.Done({"check", "clients", "--json"});
  EXPECT_THAT(out,
              HasSubstr("{\"table\":\"clients\",\"key\":\"ABBOTT\",\"name\":\"Abbott: Roofing (ABBOTT)\",\"check\":"
                        "\"colonInName\",\"rule\":\"QuickBooks takes no colon in a name"));
  EXPECT_THAT(out, HasSubstr("\"advice\":\"Take the colon out of the name.\"}\n"));
}

TEST_F(Checks, Of_the_sample_firm_come_to_their_end_for_each_table) {
  WorkFolder firm;
  firm.Done({"init", "--sample", "--clock", "2008-03-05T10:00:00"});
  const auto ended = firm.Twqb({"check"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  for (const std::string table : {"employees", "vendors", "clients", "projects", "activities", "expensecodes",
                                  "accounts", "expenselog", "timeentries", "invoices", "payments", "vendorbill"}) {
    EXPECT_THAT(ended.out, HasSubstr("\n" + table + ": "));
  }
}

TEST_F(Checks, Of_a_table_that_never_goes_are_refused) {
  const auto ended = folder_.Twqb({"check", "estimates"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("never go to QuickBooks"));
  EXPECT_THAT(ended.out, IsEmpty());
}

}  // namespace
}  // namespace twqb::cli
