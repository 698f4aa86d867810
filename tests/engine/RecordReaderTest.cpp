// Reading customers: what goes out on the wire, what each answer means, and what the progress form shows meanwhile.

#include <gtest/gtest.h>

#include "platform/MsgFormTexts.h"
#include "tests/engine/ReaderHouse.h"
#include "tests/support/TablesByNumber.h"

namespace twqb {
namespace {

constexpr std::string_view kAll = "<ActiveStatus>All</ActiveStatus>";

class CustomersHouse : public ReaderHouse {
 public:
  explicit CustomersHouse(std::string_view faults = {}) : ReaderHouse(enClients, faults) {}

  // The query as it went out last.
  [[nodiscard]] std::string Query() const { return Requests("CustomerQueryRq").back(); }
  void AnswerCustomers(std::string customers) {
    AnswerWith({{.message = "CustomerQuery", .records = std::move(customers)}});
  }
  void AddCustomers(int count) {
    for (int i = 1; i <= count; ++i) AddCustomer("<Name>C" + std::to_string(i) + "</Name>");
  }
};

std::string CustomerRet(std::string_view listId, std::string_view name, std::string_view sublevel) {
  return "<CustomerRet><ListID>" + std::string(listId) + "</ListID><Name>" + std::string(name) + "</Name>" +
         std::string(sublevel) + "</CustomerRet>";
}

// --- The query -------------------------------------------------------------------------------------------------------

TEST(ClientReader, Without_filters_all_customers_are_asked_for_inactive_ones_too) {
  CustomersHouse house;
  house.AddCustomer("<Name>Idle</Name><IsActive>false</IsActive>");
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.Query(), kAll);
  EXPECT_EQ(house.Names(), "Idle ");
}

TEST(ClientReader, Active_records_alone_are_asked_for_on_demand) {
  CustomersHouse house;
  house.AddCustomer("<Name>Busy</Name>");
  house.AddCustomer("<Name>Idle</Name><IsActive>false</IsActive>");
  EXPECT_TRUE(house.Read({.activeOnly = ActiveOnly::True}));
  EXPECT_EQ(house.Query(), "<ActiveStatus>ActiveOnly</ActiveStatus>");
  EXPECT_EQ(house.Names(), "Busy ");
}

TEST(ClientReader, LookUp_takes_the_saved_setting_of_the_get_name) {
  CustomersHouse house;
  house.AddCustomers(1);
  EXPECT_TRUE(house.Read({.activeOnly = ActiveOnly::LookUp}));
  EXPECT_EQ(house.Query(), kAll);
  house.Setting("QBGET_", "Customers_chkActiveOnly", "1");
  EXPECT_TRUE(house.Read({.activeOnly = ActiveOnly::LookUp}));
  EXPECT_EQ(house.Query(), "<ActiveStatus>ActiveOnly</ActiveStatus>");
  EXPECT_TRUE(house.Read({.activeOnly = ActiveOnly::False}));
  EXPECT_EQ(house.Query(), kAll);
}

TEST(ClientReader, Both_dates_are_sent_as_local_times) {
  CustomersHouse house;
  EXPECT_FALSE(house.Read({.strFromDate = "3/4/2008 1:02:03 PM", .strToDate = "3/5/2008"}));
  EXPECT_EQ(house.Query(), std::string(kAll) +
                               "<FromModifiedDate>2008-03-04T13:02:03</FromModifiedDate>"
                               "<ToModifiedDate>2008-03-05T00:00:00</ToModifiedDate>");
}

TEST(ClientReader, One_date_alone_is_ignored) {
  CustomersHouse house;
  house.AddCustomers(1);
  EXPECT_TRUE(house.Read({.strFromDate = "3/4/2030"}));
  EXPECT_EQ(house.Query(), kAll);
  EXPECT_TRUE(house.Read({.strToDate = "3/4/1990"}));
  EXPECT_EQ(house.Query(), kAll);
}

TEST(ClientReader, A_range_of_names_is_sent_and_half_of_one_is_not) {
  CustomersHouse house;
  house.AddCustomers(3);
  EXPECT_TRUE(house.Read({.strNameFrom = "C2", .strNameTo = "C3"}));
  EXPECT_EQ(house.Query(),
            std::string(kAll) + "<NameRangeFilter><FromName>C2</FromName><ToName>C3</ToName></NameRangeFilter>");
  EXPECT_EQ(house.Names(), "C2 C3 ");
  EXPECT_TRUE(house.Read({.strNameFrom = "C2"}));
  EXPECT_EQ(house.Query(), kAll);
  EXPECT_TRUE(house.Read({.strNameTo = "C2"}));
  EXPECT_EQ(house.Query(), kAll);
}

TEST(ClientReader, An_identifier_wins_over_every_filter_and_finds_an_inactive_record) {
  CustomersHouse house;
  const auto id = house.AddCustomer("<Name>Idle</Name><IsActive>false</IsActive>");
  EXPECT_TRUE(house.Read({.strID = id,
                          .strFromDate = "1/1/2030",
                          .strToDate = "1/1/2031",
                          .strNameFrom = "X",
                          .strNameTo = "Y",
                          .activeOnly = ActiveOnly::True}));
  EXPECT_EQ(house.Query(), "<ListID>" + id + "</ListID>");
  EXPECT_EQ(house.Names(), "Idle ");
}

TEST(ClientReader, The_set_goes_out_in_the_countrys_form) {
  CustomersHouse house;
  (void)house.Read();
  EXPECT_NE(house.traffic.documents.back().find("<?qbxml version=\"3.0\"?>"), std::string::npos);
  EXPECT_NE(house.traffic.documents.back().find("onError=\"continueOnError\""), std::string::npos);
  Vars().g_QBCountry = "ca";
  house.AnswerCustomers("");
  (void)house.Read();
  EXPECT_NE(house.traffic.documents.back().find("<?qbxml version=\"CA3.0\"?>"), std::string::npos);
}

// --- The answer ------------------------------------------------------------------------------------------------------

TEST(ClientReader, An_empty_company_is_no_records_without_a_box) {
  CustomersHouse house;
  EXPECT_FALSE(house.Read());
  EXPECT_TRUE(Vars().g_NoQBRecords);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ClientReader, No_records_is_forgotten_by_the_next_read) {
  CustomersHouse house;
  Vars().g_NoQBRecords = true;
  house.AddCustomers(1);
  EXPECT_TRUE(house.Read());
  EXPECT_FALSE(Vars().g_NoQBRecords);
}

TEST(ClientReader, An_identifier_that_is_gone_is_False_in_silence) {
  CustomersHouse house;
  EXPECT_FALSE(house.Read({.strID = "80000001-1"}));  // status 500
  EXPECT_FALSE(Vars().g_NoQBRecords);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(ClientReader, An_identifier_that_is_answered_as_found_nothing_is_False_in_silence_too) {
  CustomersHouse house("CustomerQueryRq 1 status 1 Info \"Nothing.\"");
  EXPECT_FALSE(house.Read({.strID = "80000001-1"}));
  EXPECT_TRUE(Vars().g_NoQBRecords);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(ClientReader, Another_status_is_told_and_is_False) {
  CustomersHouse house("CustomerQueryRq 1 status 3000 Error \"The given object ID is invalid.\"");
  house.AddCustomers(1);
  EXPECT_FALSE(house.Read());
  EXPECT_FALSE(Vars().g_NoQBRecords);
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text, RefusalText("The given object ID is invalid.", 3000, "Error"));
  EXPECT_EQ(box.title, "Error");
  EXPECT_EQ(box.icon, BoxIcon::Information);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
}

TEST(ClientReader, Jobs_are_left_out) {
  CustomersHouse house;
  const auto parent = house.AddCustomer("<Name>Parent</Name>");
  const auto job = house.AddJob("Roof", parent);
  house.AddJob("Tiles", job);
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.Names(), "Parent ");
  EXPECT_TRUE(house.Read({.strID = job}));
  EXPECT_EQ(house.records.Count(), 0U);
}

TEST(ClientReader, A_record_whose_level_cannot_be_told_is_told_and_left_out) {
  CustomersHouse house;
  house.AnswerCustomers(CustomerRet("1-1", "A", "") + CustomerRet("1-2", "B", "<Sublevel>0</Sublevel>"));
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.Names(), "B ");
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("IsCustomer")));
}

TEST(ClientReader, An_error_in_the_copy_keeps_what_was_copied_and_unloads_the_form) {
  CustomersHouse house;
  const std::string top = "<Sublevel>0</Sublevel>";
  house.AnswerCustomers(CustomerRet("1-1", "A", top) + CustomerRet("1-1", "Twice", top) + CustomerRet("1-3", "C", top));
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.Names(), "A ");
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].starts_with("Error #: 457(1C9) -- \r\n\r\n"));
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("GetQBClientRecordsInCollectionObject")));
  EXPECT_FALSE(house.desk.Form());
}

TEST(ClientReader, The_list_of_an_earlier_read_is_replaced) {
  CustomersHouse house;
  house.AddCustomers(2);
  EXPECT_TRUE(house.Read());
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.Names(), "C1 C2 ");
}

TEST(ClientReader, An_error_in_the_filter_routine_sends_the_query_with_what_was_set) {
  CustomersHouse house;
  house.AddCustomers(1);
  EXPECT_TRUE(house.Read({.strFromDate = "soon", .strToDate = "3/5/2008", .strNameFrom = "A", .strNameTo = "B"}));
  EXPECT_EQ(house.Query(), kAll);
  EXPECT_EQ(house.Names(), "C1 ");
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].starts_with("Error #: 13(D) -- "));
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("ApplyQBClientFilters")));
}

TEST(ClientReader, A_call_that_fails_is_told_under_the_readers_name_and_unloads_the_form) {
  CustomersHouse house("DoRequests 1 raise 0x80040408 \"No QuickBooks.\"");
  house.AddCustomers(1);
  EXPECT_FALSE(house.Read());
  EXPECT_EQ(house.BoxTexts(), std::vector<std::string>{"Error #: -2147220472(80040408) -- \r\n\r\nNo QuickBooks." +
                                                       ErrorBoxEnd("ApplyQBFiltersAndReadRecords")});
  EXPECT_FALSE(house.desk.Form());
  EXPECT_EQ(house.desk.FormEvents().back().kind, FormEventKind::Unload);
}

TEST(ClientReader, A_call_that_fails_leaves_a_form_alone_without_progress_bar) {
  CustomersHouse house("DoRequests 1 raise 0x80040408");
  Vars().g_NoProgressBar = true;
  EXPECT_FALSE(house.Read());
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_EQ(house.BoxTexts().size(), 1U);
}

// --- The progress form -----------------------------------------------------------------------------------------------

TEST(ClientReader, A_whole_table_shows_that_it_may_take_a_while_at_eight_of_ten) {
  CustomersHouse house;
  house.AddCustomers(1);
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.FormTexts(), std::vector<std::string>{"Reading ...Customers(may take some time)"});
  EXPECT_EQ(house.desk.FormEvents().back().state.percent, 80);
  EXPECT_EQ(CountText(house.desk.FormEvents().back().state.position.value()), "8/10");
}

TEST(ClientReader, Two_records_show_no_reading_text) {
  CustomersHouse house;
  house.AddCustomers(2);
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.FormTexts().size(), 1U);
}

TEST(ClientReader, Three_records_show_the_reading_text_and_count_from_nothing_to_the_last_index) {
  CustomersHouse house;
  house.AddCustomers(3);
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.FormTexts(), (std::vector<std::string>{"Reading ...Customers(may take some time)",
                                                         "Reading Clients from QuickBooks..."}));
  EXPECT_EQ(house.PositionsUnder("Reading Clients from QuickBooks..."),
            (std::vector<std::string>{"0/2", "1/2", "2/2"}));
}

TEST(ClientReader, Jobs_count_for_the_reading_text) {
  CustomersHouse house;
  const auto parent = house.AddCustomer("<Name>Parent</Name>");
  house.AddJob("A", parent);
  house.AddJob("B", parent);
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.FormTexts().back(), "Reading Clients from QuickBooks...");
}

TEST(ClientReader, A_single_identifier_does_no_form_work) {
  CustomersHouse house;
  const auto id = house.AddCustomer("<Name>A</Name>");
  EXPECT_TRUE(house.Read({.strID = id}));
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(ClientReader, Without_progress_bar_nothing_is_shown) {
  CustomersHouse house;
  house.AddCustomers(4);
  Vars().g_NoProgressBar = true;
  EXPECT_TRUE(house.Read());
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_EQ(house.Names(), "C1 C2 C3 C4 ");
}

}  // namespace
}  // namespace twqb
