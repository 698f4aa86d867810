// What happens when QuickBooks refuses an employee or a vendor. What holds for both is told of both.

#include <gtest/gtest.h>

#include "tests/lists/PeopleHouse.h"

namespace twqb {
namespace {

constexpr std::string_view kBadState = "The field has an invalid state value.";

class PersonRefused : public testing::TestWithParam<IsVendor> {
 protected:
  static std::string Fault(int number, std::string_view kind, int status, std::string_view message) {
    return fmt::format("{}{}Rq {} status {} Error \"{}\"\n", Table(), kind, number, status, message);
  }
  static std::string Table() { return GetParam() == IsVendor::Yes ? "Vendor" : "Employee"; }
  static std::string Address() { return Table() + "Address"; }
  // A person with a twin: John Smith of BadLand, whose key is JS.
  static void Link(PeopleHouse& house) {
    const auto name = GetParam() == IsVendor::Yes ? "<Name>John Smith</Name>" : "";
    const auto id = house.Add(std::string(name) + "<FirstName>John</FirstName><LastName>Smith</LastName>");
    house.Person(John("'" + id + "'"));
  }
  static Columns John(const std::string& link = "NULL") {
    return {{"EmployeeID", "'JS'"},    {"EmpFName", "'John'"}, {"EmpLName", "'Smith'"},
            {"EmpState", "'BadLand'"}, {"QBLinkID", link},     {"LastUpdated", "'2008-03-05 16:00:00'"}};
  }
  // The state fields of the requests of that kind that went out, in order; "-" for none.
  static std::string States(const PeopleHouse& house, std::string_view kind) {
    std::string states;
    for (const auto& request : house.Requests(Table() + std::string(kind) + "Rq")) {
      std::string state = "-";
      for (const std::string_view field : {"State", "Province", "County"}) {
        if (const auto text = SpiedHouse::TextOf(request, field); text != "(none)") state = text;
      }
      states += state + " ";
    }
    return states;
  }
};

INSTANTIATE_TEST_SUITE_P(People, PersonRefused, testing::Values(IsVendor::No, IsVendor::Yes), [](const auto& test) {
  return std::string(test.param == IsVendor::Yes ? "Vendor" : "Employee");
});

// --- State or province -----------------------------------------------------------------------------------------------

TEST_P(PersonRefused, A_state_that_is_not_known_becomes_None_on_an_Add) {
  PeopleHouse house(GetParam(), {}, Fault(1, "Add", 3110, kBadState));
  house.Person(John());
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(States(house, "Add"), "BadLand None ");
  EXPECT_EQ(house.ColumnOf("JS", "QBLinkID"), house.IdOf("John Smith"));
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST_P(PersonRefused, A_state_that_is_not_known_becomes_None_on_a_Mod) {
  PeopleHouse house(GetParam(), {}, Fault(1, "Mod", 3110, kBadState));
  Link(house);
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(States(house, "Mod"), "BadLand None ");
  EXPECT_EQ(house.FieldOf(house.IdOf("John Smith"), "State"), "None");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(PersonRefused, A_province_that_is_not_known_becomes_None_in_a_Canadian_file) {
  PeopleHouse house(GetParam(), {}, Fault(1, "Add", 3110, "No such province."), kCanadian);
  house.Person(John());
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(States(house, "Add"), "BadLand None ");
  EXPECT_EQ(house.FieldOf(house.IdOf("John Smith"), "Province"), "None");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(PersonRefused, A_state_of_a_Canadian_company_under_another_edition_is_taken_away) {
  for (const std::string_view kind : {"Add", "Mod"}) {
    PeopleHouse house(GetParam(), {}, Fault(1, kind, 3110, "No such Province or State."), {.hostCountry = "ca"});
    kind == "Mod" ? Link(house) : house.Person(John());
    EXPECT_TRUE(house.Send());
    EXPECT_EQ(States(house, kind), "BadLand - ");
    EXPECT_TRUE(house.BoxTexts().empty());
    EXPECT_TRUE(house.Log().empty());
  }
}

TEST_P(PersonRefused, Twice_under_another_edition_it_is_logged_and_the_next_row_goes) {
  for (const std::string_view kind : {"Add", "Mod"}) {
    PeopleHouse house(GetParam(), {}, Fault(1, kind, 3110, kBadState) + Fault(2, kind, 3110, kBadState),
                      {.hostCountry = "CA"});
    kind == "Mod" ? Link(house) : house.Person(John());
    house.Person({{"EmployeeID", "'NEXT'"}, {"EmpFName", "'Nell'"}});
    EXPECT_TRUE(house.Send());
    EXPECT_EQ(house.Log(), Texts{"The QB Record of the employee or vendor, ''John...'' Could not be modified. The "
                                 "State or Province field value is incorrect or blank."});
    EXPECT_TRUE(house.BoxTexts().empty());
    EXPECT_EQ(house.ColumnOf("NEXT", "QBLinkID"), house.IdOf("Nell"));
    EXPECT_EQ(house.ColumnOf("JS", "QBLinkID") == "NULL", kind == "Add");
  }
}

TEST_P(PersonRefused, A_state_that_is_refused_as_None_too_is_the_users_to_decide) {
  PeopleHouse added(GetParam(), {.answers = "yes"},
                    Fault(1, "Add", 3110, kBadState) + Fault(2, "Add", 3110, kBadState));
  added.Person(John());
  EXPECT_TRUE(added.Send());
  EXPECT_EQ(added.BoxTexts(), Texts{RefusedAdd(kBadState, 3110, "JS")});
  EXPECT_EQ(added.ColumnOf("JS", "QBLinkID"), "NULL");

  PeopleHouse canadian(GetParam(), {.answers = "no"},
                       Fault(1, "Mod", 3110, kBadState) + Fault(2, "Mod", 3110, kBadState), kCanadian);
  Link(canadian);
  EXPECT_FALSE(canadian.Send());
  EXPECT_EQ(canadian.BoxTexts(), (Texts{RefusedMod(kBadState, 3110, "JS"),
                                        "Do you want to transfer rest of the records?", "Operation cancelled!"}));
}

TEST_P(PersonRefused, The_same_status_about_something_else_is_the_users_to_decide) {
  PeopleHouse house(GetParam(), {.answers = "yes"}, Fault(1, "Add", 3110, "The phone number is odd."));
  house.Person(John());
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(States(house, "Add"), "BadLand ");
  EXPECT_EQ(house.BoxTexts(), Texts{RefusedAdd("The phone number is odd.", 3110, "JS")});
}

TEST_P(PersonRefused, A_counted_name_has_its_state_mended_as_well) {
  PeopleHouse house(GetParam(), {},
                    Fault(1, "Add", 3110, kBadState) + Fault(2, "Add", 3100, "In use.") +
                        Fault(3, "Add", 3100, "In use.") + Fault(4, "Add", 3110, kBadState));
  house.Person(John());
  EXPECT_TRUE(house.Send());
  // The first Add, again without its state, with a second one behind it, and both with no state.
  EXPECT_EQ(States(house, "Add"), "BadLand None None BadLand None None ");
  EXPECT_EQ(house.ColumnOf("JS", "QBLinkID"), house.IdOf("John1 Smith"));
}

// --- Permission ------------------------------------------------------------------------------------------------------

TEST_P(PersonRefused, Without_access_to_personal_data_a_box_tells_what_to_do_and_the_table_ends) {
  for (const std::string_view kind : {"Add", "Mod"}) {
    PeopleHouse house(GetParam(), {}, Fault(1, kind, 3261, "No access."));
    kind == "Mod" ? Link(house) : house.Person(John());
    house.Person({{"EmployeeID", "'NEXT'"}, {"EmpFName", "'Nell'"}});
    EXPECT_FALSE(house.Send());
    EXPECT_EQ(house.BoxTexts(),
              (Texts{"QuickBooks has reported the following error: -\r\nNo access.\r\n\r\n"
                     "Please open the company file in QuickBooks and using the \"Integrated Applications\"\r\n"
                     "option [Company|Modify Service Access...]\r\n"
                     "Allow this application to automatically logon and access Social Security Numbers",
                     "Operation cancelled!"}));
    EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
    EXPECT_EQ(house.ColumnOf("NEXT", "QBLinkID"), "NULL");
    EXPECT_EQ(Vars().g_TableOk, TableOk::False);
    EXPECT_FALSE(Vars().g_Cancelled);
    EXPECT_TRUE(house.Log().empty());
  }
}

// --- Names in use ----------------------------------------------------------------------------------------------------

TEST_P(PersonRefused, A_name_in_use_gets_its_counter_behind_the_first_name) {
  PeopleHouse house(GetParam());
  for (const std::string_view name : {"John Smith", "John1 Smith"})
    house.AddCustomer("<Name>" + std::string(name) + "</Name>");
  house.Person(John());
  EXPECT_TRUE(house.Send());
  const auto id = house.IdOf("John2 Smith");
  EXPECT_NE(id, "(none)");
  EXPECT_EQ(house.ColumnOf("JS", "QBLinkID"), id);
  EXPECT_EQ(house.FieldOf(id, "FirstName"), "John2");
  EXPECT_EQ(house.FieldOf(id, "LastName"), "Smith");
  EXPECT_EQ(house.ColumnOf("JS", "EmpFName"), "John");
  EXPECT_EQ(house.Requests(Table() + "AddRq").size(), 1U + 2U + 3U);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(PersonRefused, A_Mod_whose_name_is_in_use_is_added_anew_in_the_same_set) {
  PeopleHouse house(GetParam(), {}, Fault(1, "Mod", 3100, "In use.") + Fault(2, "Mod", 3100, "In use."));
  Link(house);
  const auto old = house.ColumnOf("JS", "QBLinkID");
  EXPECT_TRUE(house.Send());
  const auto id = house.IdOf("John1 Smith");
  EXPECT_NE(id, "(none)");
  EXPECT_NE(id, old);
  EXPECT_EQ(house.ColumnOf("JS", "QBLinkID"), id);
  EXPECT_EQ(Vars().g_NewQBLinkID, id);
  EXPECT_TRUE(house.BoxTexts().empty());
  // The twin's query, the Mod, and the Mod with the Add behind it.
  ASSERT_EQ(house.traffic.documents.size(), 3U);
  EXPECT_EQ(SpiedHouse::RequestsOf(house.traffic.documents[2], Table() + "ModRq").size(), 1U);
  EXPECT_EQ(SpiedHouse::RequestsOf(house.traffic.documents[2], Table() + "AddRq").size(), 1U);
  // Its date was not NULL, and stays.
  EXPECT_EQ(house.ColumnOf("JS", "LastUpdated"), "3/5/2008 4:00:00 PM");
}

TEST_P(PersonRefused, A_Mod_whose_name_is_in_use_counts_on_where_the_Add_meets_another_one) {
  PeopleHouse house(
      GetParam(), {},
      Fault(1, "Mod", 3100, "In use.") + Fault(2, "Mod", 3100, "In use.") + Fault(3, "Mod", 3100, "In use."));
  Link(house);
  house.AddCustomer("<Name>John1 Smith</Name>");
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.ColumnOf("JS", "QBLinkID"), house.IdOf("John2 Smith"));
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(PersonRefused, An_unknown_first_name_gives_way_to_the_counter) {
  PeopleHouse house(GetParam());
  house.AddCustomer("<Name>Smith</Name>");
  house.Person({{"EmployeeID", "'S'"}, {"EmpFName", "'Missing Data'"}, {"EmpLName", "'Smith'"}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.ColumnOf("S", "QBLinkID"), house.IdOf("1 Smith"));
  for (const auto& document : house.traffic.documents) EXPECT_EQ(document.find("Missing Data"), std::string::npos);
}

// --- Other refusals --------------------------------------------------------------------------------------------------

TEST_P(PersonRefused, Any_other_status_is_the_users_to_decide) {
  PeopleHouse house(GetParam(), {.answers = "yes\nyes"},
                    Fault(1, "Mod", 3260, "No.") + Fault(1, "Add", 3090, "Colon."));
  Link(house);
  house.Person({{"EmployeeID", "'NEXT'"}, {"EmpFName", "'Nell'"}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.BoxTexts(), (Texts{RefusedMod("No.", 3260, "JS"), "Do you want to transfer rest of the records?",
                                     RefusedAdd("Colon.", 3090, "NEXT")}));
}

TEST_P(PersonRefused, A_call_that_fails_is_logged_with_the_key_and_ends_the_table) {
  PeopleHouse house(GetParam(), {}, "DoRequests 1 raise 0x80040408");
  house.Person(John());
  EXPECT_FALSE(house.Send());
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("MoveEmployeesToQB")));
  EXPECT_EQ(house.Log(), Texts{"Error transfering data to QB. Employee ID = JS"});
}

TEST_P(PersonRefused, A_set_that_is_incomplete_ends_the_table_unlike_that_of_a_client) {
  PeopleHouse house(GetParam(), {}, "DoRequests 1 raise 0x80040307");
  house.Person(John());
  house.Person({{"EmployeeID", "'NEXT'"}, {"EmpFName", "'Nell'"}});
  EXPECT_FALSE(house.Send());
  EXPECT_EQ(house.ColumnOf("NEXT", "QBLinkID"), "NULL");
}

// --- What one of the two has -----------------------------------------------------------------------------------------

TEST(VendorRefused, A_vendor_with_unsent_payments_is_logged_and_passed_over) {
  PeopleHouse house(IsVendor::Yes, {}, "VendorModRq 1 status 3170 Error \"Unsent.\"");
  const auto id = house.Add("<Name>John Smith</Name>");
  house.Person({{"EmployeeID", "'JS'"}, {"EmpFName", "'John'"}, {"QBLinkID", Quoted(id)}});
  house.Person({{"EmployeeID", "'NEXT'"}, {"EmpFName", "'Nell'"}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(
      house.Log(),
      (Texts{"The QB Record of the vendor, ''John...'' Could not be modified.",
             "There may be unsent online banking payments for this vendor. The information of this vendor can't be "
             "modified while you have unsent transactions"}));
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.ColumnOf("NEXT", "QBLinkID"), house.IdOf("Nell"));
}

TEST(VendorRefused, The_same_status_on_an_Add_is_the_users_to_decide) {
  PeopleHouse house(IsVendor::Yes, {.answers = "yes"}, "VendorAddRq 1 status 3170 Error \"Unsent.\"");
  house.Person({{"EmployeeID", "'JS'"}, {"EmpFName", "'John'"}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.BoxTexts(), Texts{RefusedAdd("Unsent.", 3170, "JS")});
  EXPECT_TRUE(house.Log().empty());
}

TEST(EmployeeRefused, The_same_status_for_an_employee_is_the_users_to_decide) {
  PeopleHouse house(IsVendor::No, {.answers = "yes"}, "EmployeeModRq 1 status 3170 Error \"Unsent.\"");
  const auto id = house.Add("<FirstName>John</FirstName>");
  house.Person({{"EmployeeID", "'JS'"}, {"EmpFName", "'John'"}, {"QBLinkID", Quoted(id)}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.BoxTexts()[0], RefusedMod("Unsent.", 3170, "JS"));
  EXPECT_TRUE(house.Log().empty());
}

TEST(EmployeeRefused, A_rename_that_collides_with_another_record_adds_the_employee_anew) {
  PeopleHouse house(IsVendor::No);
  const auto id = house.Add("<FirstName>Joan</FirstName><LastName>Smith</LastName>");
  house.AddCustomer("<Name>John Smith</Name>");
  house.Person({{"EmployeeID", "'JS'"}, {"EmpFName", "'John'"}, {"EmpLName", "'Smith'"}, {"QBLinkID", Quoted(id)}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.FieldOf(id, "Name"), "Joan Smith");
  EXPECT_EQ(house.ColumnOf("JS", "QBLinkID"), house.IdOf("John1 Smith"));
  // It had no date of its last change: it has one now.
  EXPECT_EQ(house.ColumnOf("JS", "LastUpdated"), "3/5/2008 3:00:00 PM");
}

TEST(EmployeeRefused, A_first_name_so_long_that_its_counter_is_cut_off_is_the_users_to_decide) {
  PeopleHouse house(IsVendor::No, {.answers = "yes"});
  const auto name = Letters(25);
  house.AddCustomer("<Name>" + name + "</Name>");
  house.Person({{"EmployeeID", "'X'"}, {"EmpFName", Quoted(name)}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.BoxTexts(),
            Texts{RefusedAdd("The name \"" + name + "\" of the list element is already in use.", 3100, "X")});
  EXPECT_EQ(house.traffic.documents.size(), 1U);
}

TEST(EmployeeRefused, A_Mod_that_can_not_be_counted_on_is_the_users_to_decide) {
  PeopleHouse house(IsVendor::No, {.answers = "yes"}, "EmployeeModRq 1 status 3100 Error \"In use.\"");
  const auto name = Letters(25);
  const auto id = house.Add("<FirstName>" + name + "</FirstName>");
  house.Person({{"EmployeeID", "'X'"}, {"EmpFName", Quoted(name)}, {"QBLinkID", Quoted(id)}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.BoxTexts(),
            (Texts{RefusedMod("In use.", 3100, "X"), "Do you want to transfer rest of the records?"}));
  EXPECT_EQ(house.ColumnOf("X", "QBLinkID"), id);
}

TEST(VendorRefused, A_vendor_of_that_length_has_room_for_its_counter_in_the_name) {
  PeopleHouse house(IsVendor::Yes);
  const auto name = Letters(30);
  house.AddCustomer("<Name>" + name + "</Name>");
  house.Person({{"EmployeeID", "'X'"}, {"EmpFName", Quoted(name)}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.ColumnOf("X", "QBLinkID"), house.IdOf(name + "1"));
  EXPECT_EQ(house.FieldOf(house.IdOf(name + "1"), "FirstName"), Letters(25));
}

TEST(EmployeeRefused, Below_version_3_the_key_is_the_name_and_takes_no_counter) {
  PeopleHouse house(IsVendor::No, {.answers = "yes"}, "EmployeeAddRq 1 status 3100 Error \"In use.\"", {.version = 1});
  house.Person({{"EmployeeID", "'AHILL'"}, {"EmpFName", "'Ann'"}});
  Vars().g_QBMinorVer = 1;
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.BoxTexts(), Texts{RefusedAdd("In use.", 3100, "AHILL")});
  EXPECT_EQ(house.traffic.documents.size(), 1U);
}

}  // namespace
}  // namespace twqb
