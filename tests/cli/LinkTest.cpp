// What the program links by name, what it asks, and what it leaves.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Links : public testing::Test {
 protected:
  Links() {
    folder_.Done({"init", "--clock", "2008-03-05T10:00:00"});
    folder_.Write("yes.txt", "default yes\n");
    folder_.Write("no.txt", "default no\n");
    // The question of the first run is answered for.
    folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "False"});
  }

  void Client(const std::string& key, const std::string& company, const std::string& city = "") const {
    folder_.Done({"billing", "run", "-e",
                  "INSERT INTO Client (ClientID, ClientCompany, ClientCity, LastUpdated) VALUES ('" + key + "', '" +
                      company + "', '" + city + "', '2008-03-01 10:00:00')"});
  }
  // Its identifier.
  std::string Customer(const std::string& name, const std::string& more = "") const {
    folder_.Write("add.xml",
                  "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq "
                  "onError=\"stopOnError\"><CustomerAddRq><CustomerAdd><Name>" +
                      name + "</Name>" + more + "</CustomerAdd></CustomerAddRq></QBXMLMsgsRq></QBXML>");
    const auto answer = folder_.Done({"company", "run", "add.xml", "--clock", "2008-03-04T10:00:00"});
    const auto from = answer.find("<ListID>") + 8;
    return answer.substr(from, answer.find("</ListID>") - from);
  }
  [[nodiscard]] std::string LinkOf(const std::string& key) const {
    return folder_.Scalar("SELECT COALESCE(QBLinkID, '') FROM Client WHERE ClientID = '" + key + "'");
  }
  [[nodiscard]] Ended Link(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "link");
    arguments.insert(arguments.end(), {"--clock", "2008-03-05T12:00:00"});
    return folder_.Twqb(arguments);
  }

  WorkFolder folder_;
};

TEST_F(Links, Are_shown_with_score_and_fields_and_nothing_is_changed) {
  Client("ABBOTT", "Abbott Roofing", "Salem");
  const auto id = Customer("Abbott Roofing, Inc.", "<BillAddress><City>Lynn</City></BillAddress>");
  const auto company = folder_.Read("company.twq");
  const auto ended = Link({"clients"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.out,
              AllOf(HasSubstr("client ABBOTT \"Abbott Roofing (ABBOTT)\" - customer \"Abbott Roofing, Inc.\" (" + id +
                              "): 95 of 100, the same name but for the kind of company; near\n"),
                    HasSubstr("BillAddress.City: \"Salem\" in BillingDb, \"Lynn\" in QuickBooks.\n"),
                    HasSubstr("clients: 1 without a link; 1 with one that is like it\n"),
                    HasSubstr("link: nothing was changed\n")));
  EXPECT_THAT(LinkOf("ABBOTT"), IsEmpty());
  EXPECT_EQ(folder_.Read("company.twq"), company);
}

TEST_F(Links, A_telephone_number_agrees_however_it_is_written) {
  folder_.Done({"billing", "run", "-e",
                "INSERT INTO Client (ClientID, ClientCompany, ClientPhone) VALUES ('ABBOTT', 'Abbott Roofing', "
                "'4135550195')"});
  static_cast<void>(Customer("Abbott Roofing", "<Phone>413.555.0195</Phone>"));
  EXPECT_THAT(Link({"clients"}).out, HasSubstr("    The same in both: Phone.\n"));
}

TEST_F(Links, Exact_ones_are_written_without_a_question_and_near_ones_asked_for) {
  Client("ABBOTT", "Abbott Roofing");
  Client("BELL", "Bell Bakery");
  Client("CROSS", "Cross & Sons");
  const auto abbott = Customer("Abbott Roofing");
  const auto bell = Customer("BELL BAKERY");
  static_cast<void>(Customer("Dunn Paving"));
  const auto declined = Link({"clients", "--apply", "--answers", "no.txt"});
  EXPECT_EQ(declined.status, 0) << declined.err;
  EXPECT_THAT(declined.out, HasSubstr("clients: 3 without a link; 1 linked, 1 pair declined\n"));
  EXPECT_EQ(LinkOf("ABBOTT"), abbott);
  EXPECT_THAT(LinkOf("BELL"), IsEmpty());
  const auto asked = Link({"clients", "--apply", "--answers", "yes.txt"});
  EXPECT_THAT(asked.err, HasSubstr("The client BELL, \"Bell Bakery (BELL)\", looks like the customer \"BELL BAKERY\""));
  EXPECT_EQ(LinkOf("BELL"), bell);
  EXPECT_THAT(LinkOf("CROSS"), IsEmpty());
  EXPECT_THAT(folder_.Read("TWQBLog20083.txt"),
              HasSubstr("Linked: client BELL is customer " + bell + ", BELL BAKERY."));
}

TEST_F(Links, That_are_none_leave_no_set_for_undo_to_take_back) {
  Client("BELL", "Bell Bakery");
  static_cast<void>(Customer("BELL BAKERY"));
  folder_.Done({"send", "vendors", "--answers", "yes.txt", "--clock", "2008-03-05T11:00:00"});
  const auto sets = folder_.Done({"backup", "--list"});
  EXPECT_THAT(Link({"clients", "--apply", "--answers", "no.txt"}).out, HasSubstr("1 pair declined"));
  EXPECT_EQ(folder_.Done({"backup", "--list"}), sets);
  EXPECT_EQ(Link({"clients", "--apply", "--answers", "yes.txt"}).status, 0);
  EXPECT_NE(folder_.Done({"backup", "--list"}), sets);
}

TEST_F(Links, A_question_without_an_answer_ends_with_3_and_keeps_what_was_linked) {
  Client("ABBOTT", "Abbott Roofing");
  Client("BELL", "Bell Bakery");
  const auto abbott = Customer("Abbott Roofing");
  static_cast<void>(Customer("BELL BAKERY"));
  folder_.Write("none.txt", "# no answer\n");
  const auto ended =
      folder_.Twqb({"link", "clients", "--apply", "--answers", "none.txt"}, {.unanswered = Unanswered::Expected});
  EXPECT_EQ(ended.status, 3);
  EXPECT_EQ(LinkOf("ABBOTT"), abbott);
  EXPECT_THAT(LinkOf("BELL"), IsEmpty());
}

TEST_F(Links, A_key_that_is_the_name_of_another_company_is_asked_for) {
  Client("CEDAR", "Cedar Hill Retirement");
  Client("DUNN", "Dunn Paving");
  static_cast<void>(Customer("CEDAR", "<CompanyName>Cedar Point Amusements</CompanyName>"));
  const auto dunn = Customer("DUNN", "<CompanyName>Dunn Paving, Inc.</CompanyName>");
  EXPECT_THAT(Link({"clients"}).out, AllOf(HasSubstr("): 80 of 100, the same name, another company; near\n"),
                                           HasSubstr("    CompanyName: \"Cedar Hill Retirement\" in BillingDb, \"Cedar "
                                                     "Point Amusements\" in QuickBooks.\n")));
  EXPECT_EQ(Link({"clients", "--apply", "--answers", "no.txt"}).status, 0);
  EXPECT_THAT(LinkOf("CEDAR"), IsEmpty());
  EXPECT_EQ(LinkOf("DUNN"), dunn) << "of a company that is alike it is exact";
}

TEST_F(Links, A_company_under_the_name_of_another_one_is_asked_for) {
  Client("CEDAR", "Cedar Hill Retirement");
  static_cast<void>(Customer("Cedar Point", "<CompanyName>Cedar Hill Retirement</CompanyName>"));
  EXPECT_THAT(Link({"clients"}).out, HasSubstr("): 80 of 100, the same company, another name; near\n"));
}

TEST_F(Links, A_key_that_is_the_name_of_another_person_is_asked_for) {
  folder_.Done({"billing", "run", "-e",
                "INSERT INTO Client (ClientID, ClientFName, ClientLName) VALUES ('LEE', 'Mary', 'Lee')"});
  static_cast<void>(Customer("LEE", "<FirstName>Paul</FirstName><LastName>Leeds</LastName>"));
  EXPECT_THAT(Link({"clients"}).out, HasSubstr("): 80 of 100, the same name, another person; near\n"));
}

TEST_F(Links, One_record_goes_to_one_row_and_two_that_are_exact_are_asked_for) {
  Client("ABBOTT1", "Abbott Roofing");
  Client("ABBOTT2", "Abbott Roofing");
  const auto id = Customer("Abbott Roofing");
  const auto shown = Link({"clients"});
  EXPECT_THAT(shown.out, AllOf(HasSubstr("and so has another one; near"), Not(HasSubstr("; exact"))));
  const auto ended = Link({"clients", "--apply", "--answers", "yes.txt"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID = '" + id + "'"), "1");
}

TEST_F(Links, A_person_is_found_by_name_but_not_the_company_of_one) {
  folder_.Done(
      {"billing", "run", "-e",
       "INSERT INTO Client (ClientID, ClientFName, ClientLName) VALUES ('DUNN', 'Mary', 'Dunn');"
       "INSERT INTO Client (ClientID, ClientFName, ClientLName, ClientCompany) VALUES ('ELM', 'Paul', 'Ellis', "
       "'Elm Street Foods')"});
  const auto mary = Customer("Mary Dunn");
  static_cast<void>(Customer("Paul Ellis"));
  const auto ended = Link({"clients", "--apply", "--answers", "yes.txt"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(LinkOf("DUNN"), mary);
  EXPECT_THAT(LinkOf("ELM"), IsEmpty());
}

TEST_F(Links, A_person_with_an_initial_more_is_asked_for) {
  folder_.Done(
      {"billing", "run", "-e",
       "INSERT INTO Client (ClientID, ClientFName, ClientMI, ClientLName) VALUES ('LEE', 'Mary', 'A', 'Lee');"
       "INSERT INTO Client (ClientID, ClientFName, ClientMI, ClientLName) VALUES ('DUNN', 'Paul', 'B', 'Dunn')"});
  static_cast<void>(Customer("Mary Lee"));
  static_cast<void>(Customer("Paul B Dunn"));
  EXPECT_THAT(Link({"clients"}).out, AllOf(HasSubstr("78 of 100, the same name but for an initial; near\n"),
                                           HasSubstr("1 with an exact twin, 1 with one that is like it")));
}

TEST_F(Links, A_second_time_there_is_nothing_to_do) {
  Client("ABBOTT", "Abbott Roofing");
  static_cast<void>(Customer("Abbott Roofing"));
  static_cast<void>(Link({"--apply", "--answers", "no.txt"}));
  const auto again = Link({"--apply", "--answers", "no.txt"});
  EXPECT_EQ(again.status, 0);
  EXPECT_THAT(again.out, AllOf(HasSubstr("link: done"), Not(HasSubstr("linked"))));
}

TEST_F(Links, The_side_to_be_kept_is_the_newer_one_from_then_on) {
  for (const std::string side : {"billing", "quickbooks"}) {
    const auto key = "K" + side;
    Client(key, "Firm " + side, "Salem");
    static_cast<void>(Customer("Firm " + side, "<BillAddress><City>Lynn</City></BillAddress>"));
    ASSERT_EQ(Link({"clients", "--apply", "--keep", side, "--answers", "no.txt"}).status, 0);
    static_cast<void>(
        folder_.Twqb({"send", "clients", "--sync", "--answers", "no.txt", "--clock", "2008-03-05T13:00:00"}));
    static_cast<void>(
        folder_.Twqb({"get", "clients", "--sync", "--answers", "no.txt", "--clock", "2008-03-05T14:00:00"}));
    EXPECT_EQ(folder_.Scalar("SELECT ClientCity FROM Client WHERE ClientID = '" + key + "'"),
              side == "billing" ? "Salem" : "Lynn");
  }
}

// No later than it has to be: a date of the future would win over whatever QuickBooks is told next.
TEST_F(Links, The_date_of_a_side_that_is_kept_is_that_of_now_or_a_second_from_the_records) {
  const auto dateOf = [&](const std::string& key) {
    return folder_.Scalar("SELECT LastUpdated FROM Client WHERE ClientID = '" + key + "'");
  };
  const auto link = [&](const std::string& key, const std::string& side, const std::string& now) {
    Client(key, "Firm " + key);
    static_cast<void>(Customer("Firm " + key));
    ASSERT_EQ(
        folder_
            .Twqb({"link", "clients", "--apply", "--keep", side, "--answers", "no.txt", "--clock", now, "--bias", "0"})
            .status,
        0);
  };
  link("LATER", "billing", "2008-03-05T12:00:00");
  EXPECT_EQ(dateOf("LATER"), "2008-03-05T12:00:00");
  link("ATONCE", "billing", "2008-03-04T10:00:00");
  EXPECT_EQ(dateOf("ATONCE"), "2008-03-04T10:00:01");
  link("OLDER", "quickbooks", "2008-03-05T12:00:00");
  EXPECT_EQ(dateOf("OLDER"), "2008-03-04T09:59:59");
}

TEST_F(Links, Projects_are_found_below_their_clients) {
  Client("ABBOTT", "Abbott Roofing");
  Client("BELL", "Bell Bakery");
  folder_.Done(
      {"billing", "run", "-e",
       "INSERT INTO Project (ProjectID, ProjectCode, ProjectName, ClientID) VALUES ('A:', 'A', 'Survey', 'ABBOTT');"
       "INSERT INTO Project (ProjectID, ProjectCode, ProjectName, ClientID) VALUES ('B:', 'B', 'Survey', 'BELL')"});
  const auto parentOf = [](const std::string& id) { return "<ParentRef><ListID>" + id + "</ListID></ParentRef>"; };
  const auto abbott = Customer("Abbott Roofing");
  const auto bell = Customer("Bell Bakery");
  const auto ofAbbott = Customer("Survey", parentOf(abbott));
  const auto ofBell = Customer("Survey", parentOf(bell));
  EXPECT_THAT(Link({"projects"}).out, HasSubstr("2 can't go yet, for what they belong to has no link"));
  ASSERT_EQ(Link({"--apply", "--answers", "no.txt"}).status, 0);
  EXPECT_EQ(folder_.Scalar("SELECT QBLinkID FROM Project WHERE ProjectID = 'A:'"), ofAbbott);
  EXPECT_EQ(folder_.Scalar("SELECT QBLinkID FROM Project WHERE ProjectID = 'B:'"), ofBell);
}

TEST_F(Links, Of_rows_that_can_not_be_read_say_so_and_where_to_look) {
  folder_.Done({"billing", "run", "-e", "INSERT INTO Client (ClientID, ClientCompany) VALUES ('O''HARA', 'Hara')"});
  for (const auto& arguments : {std::vector<std::string>{"clients"}, {"clients", "--apply", "--answers", "no.txt"}}) {
    const auto ended = Link(arguments);
    EXPECT_THAT(ended.out, HasSubstr("clients: 1 without a link; nothing in QuickBooks looks like them, 1 can't be "
                                     "read: see \"twqb check clients\"\n"));
    EXPECT_THAT(ended.out, Not(HasSubstr("can't go yet")));
  }
}

// It is no fault of a row, and no reason to go on as if nothing were like it.
TEST_F(Links, End_where_QuickBooks_can_not_be_read) {
  Client("ABBOTT", "Abbott Roofing");
  Customer("Abbott Roofing");
  folder_.Write("faults.txt", "CustomerQueryRq 1 status 3180 Error \"No.\"\n");
  for (const auto& arguments : {std::vector<std::string>{"clients"}, {"clients", "--apply", "--answers", "yes.txt"}}) {
    auto broken = arguments;
    broken.insert(broken.end(), {"--faults", "faults.txt"});
    const auto ended = Link(broken);
    EXPECT_EQ(ended.status, 1) << ended.out;
    EXPECT_THAT(ended.out, AllOf(Not(HasSubstr("can't be read: see")), Not(HasSubstr("nothing in QuickBooks"))));
    EXPECT_THAT(ended.out + ended.err, HasSubstr("No. has occurred"));
  }
  EXPECT_EQ(LinkOf("ABBOTT"), "");
}

// Zeros ahead of a number or a zip code count.
TEST_F(Links, Numbers_that_are_names_are_texts) {
  const auto customer = Customer("Abbott Roofing", "<BillAddress><PostalCode>1234</PostalCode></BillAddress>");
  const auto job = Customer("Survey", "<ParentRef><ListID>" + customer + "</ListID></ParentRef>");
  folder_.Done({"billing", "run", "-e",
                "INSERT INTO Client (ClientID, ClientCompany, ClientZip) VALUES ('ABBOTT', 'Abbott Roofing', '01234');"
                "INSERT INTO Project (ProjectID, ProjectCode, ProjectName, ClientID, QBLinkID) VALUES ('A:', 'A', "
                "'Survey', 'ABBOTT', '" +
                    job +
                    "');"
                    "INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, InvoiceDate, "
                    "IsDraft, TransactionInvSendBillFlag, TransactionInvBillAmt) VALUES ('{1}', '12', 'ABBOTT', 'A:', "
                    "'2008-03-01', 0, 'P', 25), ('{2}', '7', 'ABBOTT', 'A:', '2008-03-02', 0, 'P', 25)"});
  folder_.Write("bills.xml", [&] {
    std::string requests;
    for (const auto& [day, number] : {std::pair("2008-03-01", "0012"), std::pair("2008-03-02", "7")}) {
      requests += "<InvoiceAddRq><InvoiceAdd><CustomerRef><ListID>" + job + "</ListID></CustomerRef><TxnDate>" + day +
                  "</TxnDate><RefNumber>" + number +
                  "</RefNumber><InvoiceLineAdd><Desc>Work</Desc></InvoiceLineAdd></InvoiceAdd></InvoiceAddRq>";
    }
    return "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">" + requests +
           "</QBXMLMsgsRq></QBXML>";
  }());
  folder_.Done({"company", "run", "bills.xml"});
  EXPECT_THAT(Link({"clients"}).out,
              HasSubstr("BillAddress.PostalCode: \"01234\" in BillingDb, \"1234\" in QuickBooks."));
  static_cast<void>(Link({"clients", "--apply", "--answers", "yes.txt"}));
  const auto invoices = Link({"invoices"}).out;
  EXPECT_THAT(invoices, AllOf(HasSubstr("invoice {1} \"12, 2008-03-01\" - invoice \"0012, 2008-03-01, Abbott "
                                        "Roofing:Survey\""),
                              HasSubstr("90 of 100, the same number but for zeros ahead of it"),
                              HasSubstr("100 of 100, the same number and date; exact"),
                              HasSubstr("invoices: 2 without a link; 1 with an exact twin, 1 with one that is like")));
}

TEST_F(Links, In_JSON_there_is_an_object_for_each_pair) {
  Client("ABBOTT", "Abbott Roofing", "Salem");
  const auto id = Customer("Abbott Roofing");
  const auto out = folder_.Done({"link", "clients", "--json"});
  EXPECT_THAT(out, AllOf(HasSubstr("{\"table\":\"clients\",\"key\":\"ABBOTT\",\"name\":\"Abbott Roofing (ABBOTT)\","
                                   "\"identifier\":\"" +
                                   id + "\",\"record\":\"Abbott Roofing\",\"score\":100,\"exact\":true,"),
                         HasSubstr("{\"field\":\"BillAddress.City\",\"billing\":\"Salem\",\"quickBooks\":null}"),
                         HasSubstr("\"outcome\":\"shown\",\"why\":null}\n")));
}

TEST_F(Links, What_makes_no_sense_is_refused_with_what_to_do) {
  EXPECT_THAT(Link({"clients", "--apply", "--keep", "billings"}).err, HasSubstr("Did you mean \"billing\"?"));
  EXPECT_EQ(Link({"clients", "--keep", "billing"}).status, 2);
  EXPECT_THAT(Link({"clients", "--apply", "--keep", ""}).err, HasSubstr("it can't be \"\"."));
  const auto estimates = Link({"estimates"});
  EXPECT_EQ(estimates.status, 2);
  EXPECT_THAT(estimates.err, HasSubstr("never go to QuickBooks"));
  EXPECT_EQ(Link({"client"}).status, 2);
}

TEST_F(Links, A_send_tells_of_rows_that_would_be_there_twice_and_goes_on) {
  Client("ABBOTT", "Abbott Roofing");
  static_cast<void>(Customer("ABBOTT ROOFING"));
  const auto ended = folder_.Twqb({"send", "clients", "--answers", "yes.txt", "--clock", "2008-03-05T12:00:00"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.err, HasSubstr("1 row of clients without a link looks like a record that QuickBooks has "
                                   "already. See \"twqb link clients\"."));
  EXPECT_THAT(ended.out, HasSubstr("1 added"));
}

TEST_F(Links, A_strict_send_stops_ahead_of_them) {
  Client("ABBOTT", "Abbott Roofing");
  static_cast<void>(Customer("ABBOTT ROOFING"));
  for (const std::string table : {"clients", "all"}) {
    const auto ended =
        folder_.Twqb({"send", table, "--strict", "--answers", "yes.txt", "--clock", "2008-03-05T12:00:00"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.err, HasSubstr("Nothing is sent. See \"twqb link clients\"."));
    EXPECT_THAT(LinkOf("ABBOTT"), IsEmpty());
  }
  static_cast<void>(Link({"clients", "--apply", "--answers", "yes.txt"}));
  EXPECT_EQ(
      folder_.Twqb({"send", "clients", "--strict", "--answers", "yes.txt", "--clock", "2008-03-05T13:00:00"}).status,
      0);
}

}  // namespace
}  // namespace twqb::cli
