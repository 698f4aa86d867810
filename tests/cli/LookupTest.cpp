// The lookup commands: lists, accounts, whether a customer is a job.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class Lookup : public testing::Test {
 protected:
  Lookup() {
    folder_.Done({"init"});
    folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "False"});
  }
  void QuickBooks(const std::string& requests) const {
    folder_.Write("requests.xml",
                  "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">" +
                      requests + "</QBXMLMsgsRq></QBXML>");
    EXPECT_THAT(folder_.Done({"company", "run", "requests.xml"}), Not(HasSubstr("\"Error\"")));
  }
  void AddCustomers() const {
    QuickBooks(
        "<CustomerAddRq><CustomerAdd><Name>Acme</Name><CompanyName>Acme &amp; Co</CompanyName></CustomerAdd>"
        "</CustomerAddRq><CustomerAddRq><CustomerAdd><Name>Barn</Name><ParentRef><FullName>Acme</FullName></ParentRef>"
        "</CustomerAdd></CustomerAddRq>"
        "<CustomerAddRq><CustomerAdd><Name>Zeta</Name><IsActive>false</IsActive></CustomerAdd></CustomerAddRq>");
  }
  // The first column of a line of `list customers`.
  [[nodiscard]] std::string IdOf(const std::string& fullName) const {
    const auto out = folder_.Done({"list", "customers", "--all"});
    const auto end = out.find("\t" + fullName + "\t");
    const auto begin = out.rfind('\n', end) + 1;
    return out.substr(begin, end - begin);
  }

  WorkFolder folder_;
};

TEST_F(Lookup, A_list_is_tab_separated_in_a_pipe_and_holds_the_active_records) {
  AddCustomers();
  const auto out = folder_.Done({"list", "customers"});
  EXPECT_THAT(out, StartsWith("ListID\tFullName\tCompanyName\tSublevel\tIsActive\n"));
  EXPECT_THAT(out, AllOf(HasSubstr("\tAcme\tAcme & Co\t0\ttrue\n"), HasSubstr("\tAcme:Barn\t\\N\t1\ttrue\n"),
                         Not(HasSubstr("Zeta"))));
}

TEST_F(Lookup, All_takes_inactive_records_in) {
  AddCustomers();
  EXPECT_THAT(folder_.Done({"list", "customers", "--all"}), HasSubstr("\tZeta\t\\N\t0\tfalse\n"));
}

TEST_F(Lookup, Json_is_one_object_a_line) {
  AddCustomers();
  EXPECT_THAT(folder_.Done({"list", "customers", "--json"}),
              HasSubstr("\"FullName\":\"Acme:Barn\",\"CompanyName\":null,\"Sublevel\":\"1\",\"IsActive\":\"true\"}\n"));
}

TEST_F(Lookup, On_a_terminal_the_rows_are_a_table) {
  AddCustomers();
  const auto out = folder_.OnTerminal({"list", "customers"});
  EXPECT_THAT(out, AllOf(ContainsRegex("ListID +FullName +CompanyName +Sublevel +IsActive\x1b\\[0m\n"),
                         ContainsRegex("  Acme       Acme & Co    0         true\n"),
                         ContainsRegex("  Acme:Barn               1         true\n"), Not(HasSubstr("\t"))));
  EXPECT_THAT(folder_.OnTerminal({"list", "employees"}), HasSubstr("QuickBooks has none."));
}

TEST_F(Lookup, Of_a_transaction_the_full_names_of_what_it_refers_to_are_shown) {
  AddCustomers();
  QuickBooks(
      "<EmployeeAddRq><EmployeeAdd><FirstName>Ann</FirstName></EmployeeAdd></EmployeeAddRq>"
      "<TimeTrackingAddRq><TimeTrackingAdd><TxnDate>2008-03-05</TxnDate><EntityRef><FullName>Ann</FullName></EntityRef>"
      "<CustomerRef><FullName>Acme:Barn</FullName></CustomerRef><Duration>PT1H30M0S</Duration></TimeTrackingAdd>"
      "</TimeTrackingAddRq>");
  EXPECT_THAT(folder_.Done({"list", "timeentries"}),
              AllOf(StartsWith("TxnID\tTxnDate\tEntityRef\tCustomerRef\tItemServiceRef\tDuration\n"),
                    HasSubstr("\t2008-03-05\tAnn\tAcme:Barn\t\\N\tPT1H30M0S\n")));
}

class ListOfKind : public Lookup, public testing::WithParamInterface<std::string> {};

// Those that a new company file may leave empty.
INSTANTIATE_TEST_SUITE_P(Kinds, ListOfKind,
                         testing::Values("employees", "customers", "vendors", "invoices", "payments", "expcodes",
                                         "activities", "timeentries", "checks", "bills", "classitems", "payrollitems"));

TEST_P(ListOfKind, Empty_is_a_header_alone_and_status_0) {
  const auto ended = folder_.Twqb({"list", GetParam()});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.out, ContainsRegex("^(ListID|TxnID)\t"));
  EXPECT_EQ(std::ranges::count(ended.out, '\n'), 1);
  EXPECT_THAT(folder_.Done({"list", GetParam(), "--json"}), IsEmpty());
}

// Every kind, with an answer from a script: one that QuickBooks refuses, and one that is empty.
class ScriptedList : public Lookup, public testing::WithParamInterface<std::pair<std::string, std::string>> {};

using Kind = std::pair<std::string, std::string>;
INSTANTIATE_TEST_SUITE_P(Kinds, ScriptedList,
                         testing::Values(Kind{"accounts", "Account"}, Kind{"employees", "Employee"},
                                         Kind{"customers", "Customer"}, Kind{"vendors", "Vendor"},
                                         Kind{"invoices", "Invoice"}, Kind{"payments", "ReceivePayment"},
                                         Kind{"expcodes", "ItemOtherCharge"}, Kind{"activities", "ItemService"},
                                         Kind{"timeentries", "TimeTracking"}, Kind{"checks", "Check"},
                                         Kind{"bills", "Bill"}, Kind{"classitems", "Class"},
                                         Kind{"payrollitems", "PayrollItemWage"}),
                         [](const auto& test) { return test.param.first; });

TEST_P(ScriptedList, Refused_ends_with_1_and_the_refusal_on_standard_error) {
  folder_.Write("faults", GetParam().second + "QueryRq 1 status 3260 Error \"Not allowed.\"\n");
  const auto ended = folder_.Twqb({"list", GetParam().first, "--faults", "faults"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, IsEmpty());
  EXPECT_THAT(ended.err, AllOf(HasSubstr("Not allowed."), HasSubstr("Error Code: 3260")));
}

TEST_P(ScriptedList, Empty_ends_with_0) {
  folder_.Write("faults", GetParam().second + "QueryRq 1 status 1 Info \"None.\"\n");
  const auto ended = folder_.Twqb({"list", "Get" + GetParam().first, "--faults", "faults"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, ContainsRegex("^(ListID|TxnID)\t[^\n]*\n$"));
}

TEST_F(Lookup, A_connection_that_fails_ends_every_command_with_1) {
  folder_.Write("faults", "OpenConnection 1 raise 0x80040408 \"Not running.\"\n");
  for (const std::vector<std::string>& command :
       {std::vector<std::string>{"list", "classitems"}, {"list", "customers"}, {"accounts"}, {"is-job", "1"}}) {
    auto arguments = command;
    arguments.insert(arguments.end(), {"--faults", "faults"});
    const auto ended = folder_.Twqb(arguments);
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.err, HasSubstr("Not running."));
  }
}

TEST_F(Lookup, Accounts_are_their_identifier_full_name_and_name) {
  QuickBooks(
      "<AccountAddRq><AccountAdd><Name>Costs</Name><AccountType>Expense</AccountType></AccountAdd></AccountAddRq>"
      "<AccountAddRq><AccountAdd><Name>Travel</Name><ParentRef><FullName>Costs</FullName></ParentRef>"
      "<AccountType>Expense</AccountType></AccountAdd></AccountAddRq>");
  const auto out = folder_.Done({"accounts"});
  EXPECT_THAT(out, AllOf(StartsWith("ListID\tFullName\tName\n"), HasSubstr("\tCosts:Travel\tTravel\n")));
  EXPECT_THAT(folder_.Done({"accounts", "--json"}), HasSubstr("\"FullName\":\"Costs:Travel\",\"Name\":\"Travel\"}\n"));
}

TEST_F(Lookup, Accounts_that_QuickBooks_refuses_end_with_1_without_a_word) {
  folder_.Write("faults", "AccountQueryRq 1 status 3260 Error \"Not allowed.\"\n");
  const auto ended = folder_.Twqb({"accounts", "--faults", "faults"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, IsEmpty());
  EXPECT_THAT(ended.err, IsEmpty());
}

TEST_F(Lookup, A_job_gives_0_and_a_customer_and_an_unknown_one_1) {
  AddCustomers();
  EXPECT_EQ(folder_.Done({"is-job", IdOf("Acme:Barn")}), "true\n");
  for (const auto& id : {IdOf("Acme"), std::string("80000FFF-1111111111")}) {
    const auto ended = folder_.Twqb({"is-job", id});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "false\n");
    EXPECT_THAT(ended.err, IsEmpty());
  }
}

TEST_F(Lookup, The_transcript_tells_the_number_of_records) {
  AddCustomers();
  folder_.Done({"list", "customers", "--all", "--transcript", "run.jsonl"});
  EXPECT_THAT(folder_.Read("run.jsonl"),
              AllOf(HasSubstr("\"kind\":\"call\",\"operation\":\"GetCustomers\",\"arguments\":[true]}"),
                    HasSubstr("\"kind\":\"return\",\"operation\":\"GetCustomers\",\"value\":3}")));
  folder_.Done({"list", "employees", "--transcript", "run.jsonl"});
  EXPECT_THAT(folder_.Read("run.jsonl"),
              HasSubstr("\"kind\":\"return\",\"operation\":\"GetEmployees\",\"value\":null}"));
}

TEST_F(Lookup, Help_names_the_kinds_and_the_commands) {
  EXPECT_THAT(folder_.Done({"--help"}), AllOf(HasSubstr("list KIND"), HasSubstr("accounts"), HasSubstr("is-job ID")));
  EXPECT_THAT(folder_.Done({"list", "--help"}), AllOf(HasSubstr("payrollitems"), HasSubstr("--all")));
}

}  // namespace
}  // namespace twqb::cli
