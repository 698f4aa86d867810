// What an observer hears of lists on their way: each record with its fate and why, each error, how far a walk came.

#include <gtest/gtest.h>

#include "services/RunObserver.h"
#include "tests/engine/KeptAccount.h"
#include "tests/lists/ClientsHouse.h"
#include "tests/lists/PeopleHouse.h"
#include "tests/lists/ProjectsHouse.h"

namespace twqb {
namespace {

using Lines = std::vector<std::string>;

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

TEST(RunObserver, Hears_of_each_client_that_is_sent_with_its_key_identifier_and_direction) {
  ClientsHouse house;
  house.Client("ClientID", "'ACME'");
  const KeptAccount kept;
  house.Send();
  ASSERT_EQ(kept.Lines(), Lines{"ACME added"});
  EXPECT_EQ(kept.records[0].identifier, house.ColumnOf("ACME", "QBLinkID"));
  EXPECT_EQ(kept.records[0].standing, Standing::Record);
  EXPECT_TRUE(kept.errors.empty());
  EXPECT_EQ(kept.walks, Lines{"1 of 1"});
}

TEST(RunObserver, Hears_which_side_of_a_pair_is_newer_and_by_how_much) {
  struct Case {
    std::string_view lastUpdated;
    std::string_view told;
  };
  // QuickBooks' time is 3 PM in UTC.
  const Case cases[] = {{"'2008-03-05 17:05:00'", "ACME changed: BillingDb is newer by 2 h 5 min"},
                        {"'2008-03-05 15:00:00'", "ACME changed: both sides are of the same time"},
                        {"'2008-03-05 14:59:18'", "ACME left: QuickBooks is newer by 42 s"},
                        {"'2008-03-02 15:00:00'", "ACME left: QuickBooks is newer by 3 d"},
                        {"NULL", "ACME left: its row has no date"}};
  for (const auto& c : cases) {
    ClientsHouse house;
    const auto id = house.AddCustomer("<Name>Acme</Name>");
    house.Client("ClientID, QBLinkID, LastUpdated", "'ACME', " + Quoted(id) + ", " + std::string(c.lastUpdated));
    const KeptAccount kept;
    house.Send({.mostRecent = true});
    EXPECT_EQ(kept.Lines(), Lines{std::string(c.told)});
    EXPECT_EQ(kept.records.at(0).identifier, id);
  }
}

TEST(RunObserver, Hears_what_the_settings_decide_about_a_pair) {
  ClientsHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.Client("ClientID, QBLinkID", "'ACME', " + Quoted(id));
  const KeptAccount kept;
  house.Send({.never = true});
  house.Send();
  house.Get({.never = true});
  EXPECT_EQ(kept.Lines(), (Lines{"ACME left: the settings never change a linked record",
                                 "ACME changed: it goes, whichever side is newer",
                                 " left: the settings never change a linked record"}));
}

TEST(RunObserver, Hears_of_a_refusal_with_its_status_and_of_what_becomes_of_it_in_the_end) {
  ClientsHouse house({.answers = "yes"}, "CustomerAddRq 1 status 3180 Error \"No.\"");
  house.AddCustomer("<Name>B</Name>");
  house.Client("ClientID", "'A'");
  house.Client("ClientID", "'B'");
  const KeptAccount kept;
  house.Send();
  EXPECT_EQ(kept.Lines(), (Lines{"A refused: status 3180: No.", "B added: its name is in use; it is \"B1\" there"}));
  ASSERT_TRUE(kept.records.at(0).refusal);
  EXPECT_EQ(kept.records.at(0).refusal->status, 3180);
  EXPECT_EQ(kept.records.at(0).refusal->message, "No.");
  // The name was refused at first.
  EXPECT_FALSE(kept.records.at(1).refusal);
}

TEST(RunObserver, Hears_that_a_link_led_to_nothing) {
  ClientsHouse house;
  house.Client("ClientID, QBLinkID", "'ACME', '80000999-1204729200'");
  const KeptAccount kept;
  house.Send();
  EXPECT_EQ(kept.Lines(), Lines{"ACME added: its link led to nothing any more"});
}

TEST(RunObserver, Hears_that_a_link_could_not_be_looked_up_with_the_twin_that_may_be_there) {
  ClientsHouse house({}, "CustomerQueryRq 1 status 3180 Error \"No.\"");
  const auto id = house.AddCustomer("<Name>Old</Name>");
  house.Client("ClientID, QBLinkID", "'ACME', " + Quoted(id));
  const KeptAccount kept;
  house.Send();
  ASSERT_EQ(kept.Lines(), Lines{"ACME added: its link " + id + " could not be looked up"});
  EXPECT_EQ(kept.records[0].former, id);
  EXPECT_EQ(kept.records[0].parting, Parting::LinkUnread);
}

TEST(RunObserver, Hears_of_an_error_behind_what_was_known_of_a_record_that_is_there) {
  ClientsHouse house({}, "sql 1 raise 0x80004005 \"Broken.\" UPDATE");
  house.AddCustomer("<Name>A</Name>");
  house.Client("ClientID", "'A'");
  const KeptAccount kept;
  house.Send();
  EXPECT_EQ(kept.Lines(), Lines{"A added: its name is in use; it is \"A1\" there; then error -2147467259: Broken."});
}

TEST(RunObserver, Hears_of_an_error_with_the_record_in_hand_and_how_far_the_table_came) {
  ClientsHouse house({}, "DoRequests 1 raise 0x80004005 \"Broken.\"");
  house.Client("ClientID", "'A'");
  house.Client("ClientID", "'B'");
  const KeptAccount kept;
  house.Send();
  EXPECT_EQ(kept.Lines(), Lines{"A failed: error -2147467259: Broken."});
  EXPECT_EQ(kept.errors, Lines{"MoveClientsToQB -2147467259 Broken. [A]"});
  EXPECT_EQ(kept.walks, Lines{"1 of 2"});
}

TEST(RunObserver, Hears_that_a_record_was_added_though_its_link_could_not_be_written) {
  ClientsHouse house({}, "sql 1 raise 0x80004005 \"Broken.\" UPDATE");
  house.Client("ClientID", "'A'");
  const KeptAccount kept;
  house.Send();
  ASSERT_EQ(kept.Lines(), Lines{"A added: error -2147467259: Broken."});
  EXPECT_FALSE(kept.records[0].identifier.empty());
  EXPECT_EQ(kept.errors.size(), 1U);
}

TEST(RunObserver, Hears_of_a_write_back_that_reached_no_row_though_only_the_log_tells_it) {
  ClientsHouse house;
  house.Client("ClientID", "'ACME'");
  house.Sql("CREATE TRIGGER Swallow BEFORE UPDATE ON Client BEGIN SELECT RAISE(IGNORE); END");
  const KeptAccount kept;
  house.Send();
  ASSERT_EQ(kept.Lines().size(), 1U);
  EXPECT_TRUE(kept.Lines()[0].starts_with("ACME added: error: The link ")) << kept.Lines()[0];
  ASSERT_EQ(kept.errors.size(), 1U);
  EXPECT_TRUE(kept.errors[0].starts_with("WriteLink 0 The link ")) << kept.errors[0];
  EXPECT_TRUE(kept.errors[0].ends_with("was written to 0 rows of Client in the place of one: ClientID = 'ACME' [ACME]"))
      << kept.errors[0];
}

TEST(RunObserver, Hears_of_each_record_of_a_get) {
  ClientsHouse house({.answers = "yes"}, "row 2 raise 0x80004005 \"Broken.\"");
  const auto known = house.AddCustomer("<Name>Acme</Name>");
  house.AddCustomer("<Name>Beta</Name>");
  house.AddCustomer("<Name>Gamma</Name>");
  house.Client("ClientID, QBLinkID, LastUpdated", "'ACME', " + Quoted(known) + ", '2009-01-01'");
  const KeptAccount kept;
  house.Get({.mostRecent = true});
  ASSERT_EQ(kept.Lines().size(), 3U);
  EXPECT_TRUE(kept.Lines()[0].starts_with("ACME left: BillingDb is newer by 30")) << kept.Lines()[0];
  EXPECT_EQ(kept.Lines()[1], "Beta added");
  EXPECT_EQ(kept.Lines()[2], "Gamma failed: error -2147467259: Broken.");
  EXPECT_EQ(kept.errors.size(), 1U);
  EXPECT_EQ(kept.walks, Lines{"3 of 3"});
}

TEST(RunObserver, Hears_that_a_project_has_no_client_with_a_link) {
  ProjectsHouse house;
  house.Sql("UPDATE Client SET QBLinkID = NULL");
  house.Project("ROOF:");
  const KeptAccount kept;
  house.Send();
  EXPECT_EQ(kept.Lines(), Lines{"ROOF: passed over: its client has no link"});
}

TEST(RunObserver, Hears_of_the_twin_that_an_employee_leaves_for_a_name_in_use_and_so_does_the_log) {
  PeopleHouse house(IsVendor::No);
  const auto left = house.Add("<FirstName>Beau</FirstName><LastName>Birch</LastName>");
  house.AddCustomer("<Name>Bo Birch</Name>");
  house.Person({{"EmployeeID", "'BO'"}, {"EmpFName", "'Bo'"}, {"EmpLName", "'Birch'"}, {"QBLinkID", Quoted(left)}});
  const KeptAccount kept;
  EXPECT_TRUE(house.Send());
  const auto first = house.ColumnOf("BO", "QBLinkID");
  EXPECT_NE(first, left);
  // And so at each change: the name goes without its counter.
  EXPECT_TRUE(house.Send());
  const auto second = house.ColumnOf("BO", "QBLinkID");
  EXPECT_NE(second, first);
  EXPECT_EQ(kept.Lines(), (Lines{"BO added: its name is in use; it is \"Bo1\" there",
                                 "BO added: its name is in use; it is \"Bo2\" there"}));
  EXPECT_EQ(kept.records.at(0).former, left);
  EXPECT_EQ(kept.records.at(1).former, first);
  ASSERT_EQ(house.Log().size(), 2U);
  EXPECT_EQ(house.Log()[0], "The name of Employee BO is in use in QuickBooks. It was added once more: " + first +
                                " is its link now, in the place of " + left + ", which stays in QuickBooks.");
}

TEST(RunObserver, Nobody_observing_leaves_no_record_in_hand) {
  ClientsHouse house;
  house.Client("ClientID", "'ACME'");
  house.Send();
  EXPECT_EQ(Vars().inHand, nullptr);
  EXPECT_EQ(Vars().tableInHand, nullptr);
  EXPECT_EQ(Outcome(), TableOk::True);
}

}  // namespace
}  // namespace twqb
