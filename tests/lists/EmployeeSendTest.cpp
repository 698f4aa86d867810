// Employees and vendors on their way to QuickBooks: what is the same for both, and what differs from other tables.

#include <gtest/gtest.h>

#include "tests/lists/PeopleHouse.h"

namespace twqb {
namespace {

class PersonSend : public testing::TestWithParam<IsVendor> {
 protected:
  static std::string AddTwin(PeopleHouse& house) {
    return house.Add(GetParam() == IsVendor::Yes ? "<Name>Ann</Name><FirstName>Ann</FirstName>"
                                                 : "<FirstName>Ann</FirstName>");
  }
};

INSTANTIATE_TEST_SUITE_P(People, PersonSend, testing::Values(IsVendor::No, IsVendor::Yes), [](const auto& test) {
  return std::string(test.param == IsVendor::Yes ? "Vendor" : "Employee");
});

TEST_P(PersonSend, A_new_row_is_added_and_its_link_and_date_written_back) {
  PeopleHouse house(GetParam());
  house.Person({{"EmployeeID", "'ANN'"}, {"EmpFName", "'Ann'"}, {"EmpLName", "'Hill'"}});
  EXPECT_TRUE(house.Send());
  const auto id = house.IdOf("Ann Hill");
  EXPECT_EQ(house.ColumnOf("ANN", "QBLinkID"), id);
  EXPECT_EQ(Vars().g_NewQBLinkID, id);
  ASSERT_EQ(house.traffic.statements.size(), 3U);
  EXPECT_EQ(house.traffic.statements[1], "UPDATE Employee SET QBLinkID = '" + id + "' WHERE EmployeeID = 'ANN';");
  EXPECT_EQ(house.traffic.statements[2],
            "UPDATE Employee SET LastUpdated = '03/05/2008 15:00:00' WHERE EmployeeID = 'ANN';");
  EXPECT_EQ(house.FormTexts(), Texts{GetParam() == IsVendor::Yes ? "Sending Vendors to QuickBooks..."
                                                                 : "Sending Employees to QuickBooks..."});
}

TEST_P(PersonSend, Rows_of_the_other_kind_stay_here) {
  PeopleHouse house(GetParam());
  house.Sql(fmt::format("INSERT INTO Employee (EmployeeID, IsSub, EmpFName) VALUES ('OTHER', {}, 'Otto')",
                        GetParam() == IsVendor::Yes ? 0 : -1));
  EXPECT_TRUE(house.Send());
  EXPECT_TRUE(house.traffic.documents.empty());
  EXPECT_EQ(Vars().g_TableOk, TableOk::True);
}

TEST_P(PersonSend, A_twin_that_is_gone_is_added_again_under_a_new_link) {
  PeopleHouse house(GetParam());
  house.Person({{"EmployeeID", "'ANN'"}, {"EmpFName", "'Ann'"}, {"QBLinkID", "'80000001-1'"}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.ColumnOf("ANN", "QBLinkID"), house.IdOf("Ann"));
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(PersonSend, The_flags_and_the_later_side_decide_on_a_twin) {
  struct Case {
    bool never;
    bool mostRecent;
    std::string_view lastUpdated;
    std::string_view hired;
    std::string_view first;
  };
  const Case cases[] = {
      {false, false, "NULL", "NULL", "Bill"},
      {true, false, "NULL", "NULL", "Ann"},
      {true, true, "'2009-01-01'", "NULL", "Ann"},
      {false, true, "'2008-03-05 15:00:00'", "NULL", "Bill"},
      {false, true, "'2008-03-05 14:59:59'", "NULL", "Ann"},
      {false, true, "NULL", "'2008-03-05 10:00:00'", "Bill"},
      {false, true, "NULL", "'2008-03-05 09:59:59'", "Ann"},
      {false, true, "NULL", "NULL", "Ann"},
  };
  for (const auto& c : cases) {
    PeopleHouse house(GetParam());
    const auto id = AddTwin(house);
    house.Person({{"EmployeeID", "'A'"},
                  {"EmpFName", "'Bill'"},
                  {"QBLinkID", Quoted(id)},
                  {"LastUpdated", std::string(c.lastUpdated)},
                  {"EmpDateHired", std::string(c.hired)}});
    EXPECT_TRUE(house.Send(c.never, c.mostRecent));
    EXPECT_EQ(house.FieldOf(id, "FirstName"), c.first) << c.lastUpdated << c.hired;
  }
}

TEST_P(PersonSend, A_date_that_can_not_be_read_is_told_ahead_of_the_twin_and_of_a_new_row_too) {
  PeopleHouse house(GetParam());
  const auto id = AddTwin(house);
  house.Person({{"EmployeeID", "'ANN'"}, {"EmpFName", "'Bill'"}, {"QBLinkID", Quoted(id)}});
  house.Person({{"EmployeeID", "'NEW'"}, {"EmpFName", "'Nell'"}});
  house.traffic.documents.clear();
  Vars().g_TableOk = TableOk::False;
  const auto sql = Sql::Own(ReplaceAll(BuildSelectSQL(house.Table(), {.IgnoreLastSync = true}), "LastUpdated, QBLinkID",
                                       "'some day' AS LastUpdated, QBLinkID"));
  EXPECT_TRUE(MoveEmployeesToQB(
      {.sql = sql, .rule = TwinRule::NewerWins, .session = SpiedHouse::Session(), .run = Vars()}, GetParam()));
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  for (const auto& box : house.BoxTexts()) EXPECT_TRUE(box.ends_with(ErrorBoxEnd("GetTWDateOfUpdation"))) << box;
  // The pair stays as it is.
  EXPECT_EQ(house.FieldOf(id, "FirstName"), "Ann");
}

TEST_P(PersonSend, An_apostrophe_in_the_key_fails_the_write_back_and_ends_the_table) {
  PeopleHouse house(GetParam());
  house.Person({{"EmployeeID", "'O''NEIL'"}, {"EmpFName", "'Ann'"}});
  EXPECT_FALSE(house.Send());
  EXPECT_EQ(house.Log(), Texts{"Error transfering data to QB. Employee ID = O'NEIL"});
}

TEST_P(PersonSend, A_cancel_finishes_the_record_in_hand) {
  PeopleHouse house(GetParam(), {.answers = "cancel after 1\nyes"});
  house.Person({{"EmployeeID", "'A'"}, {"EmpFName", "'Ann'"}});
  house.Person({{"EmployeeID", "'B'"}, {"EmpFName", "'Bob'"}});
  EXPECT_FALSE(house.Send());
  EXPECT_NE(house.ColumnOf("A", "QBLinkID"), "NULL");
  EXPECT_EQ(house.ColumnOf("B", "QBLinkID"), "NULL");
}

TEST(EmployeeSend, A_salutation_that_is_taken_away_here_stays_in_QuickBooks) {
  PeopleHouse house(IsVendor::No);
  const auto id = house.Add("<Salutation>Dr.</Salutation><FirstName>Ann</FirstName>");
  house.Person({{"EmployeeID", "'A'"}, {"EmpFName", "'Ann'"}, {"EmpSalt", "' '"}, {"QBLinkID", Quoted(id)}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.FieldOf(id, "Salutation"), "Dr.");
}

TEST(EmployeeSend, An_employee_goes_in_the_forms_before_version_3) {
  PeopleHouse house(IsVendor::No, {}, {}, {.version = 2});
  Vars().g_QBMinorVer = 1;
  house.Person({{"EmployeeID", "'AHILL'"}, {"EmpFName", "'Ann'"}, {"EmpLName", "'Hill'"}});
  EXPECT_TRUE(house.Send());
  const auto adds = house.Requests("EmployeeAddRq");
  ASSERT_EQ(adds.size(), 1U);
  EXPECT_EQ(SpiedHouse::TextOf(adds[0], "Name"), "AHILL");
  EXPECT_NE(house.ColumnOf("AHILL", "QBLinkID"), "NULL");
  EXPECT_TRUE(house.BoxTexts().empty());
}

}  // namespace
}  // namespace twqb
