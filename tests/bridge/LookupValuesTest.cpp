// The lookups that answer no list: the accounts as an array, and whether a customer is a job.

#include <gtest/gtest.h>

#include "quickbooks/LookupLists.h"
#include "tests/bridge/LookupHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

const AccountArray kBefore = {{"x", "x", "x", "x"}};

std::string AccountsAnswer(std::string_view status, std::string_view records) {
  return CannedAnswer("AccountQueryRs", status, records);
}

constexpr std::string_view kTwoAccounts =
    "<AccountRet><ListID>1</ListID><Name>Travel</Name><FullName>Costs:Travel</FullName>"
    "<AccountType>Expense</AccountType></AccountRet>"
    "<AccountRet><ListID>2</ListID><Name>Tax</Name><FullName>Tax</FullName>"
    "<AccountType>OtherCurrentLiability</AccountType></AccountRet>";

std::string Status(int code) {
  return fmt::format("statusCode=\"{}\" statusSeverity=\"Error\" statusMessage=\"No.\"", code);
}

// --- Accounts --------------------------------------------------------------------------------------------------------

TEST(GetQBAccounts, Fills_identifier_full_name_and_name_and_leaves_the_type_empty) {
  LookupHouse house;
  house.traffic.canned.push_back(AccountsAnswer(kStatusOk, kTwoAccounts));
  auto accounts = kBefore;
  EXPECT_TRUE(house.bridge.GetQBAccounts(accounts));
  EXPECT_EQ(accounts, (AccountArray{{"1", "Costs:Travel", "Travel", ""}, {"2", "Tax", "Tax", ""}}));
  EXPECT_EQ(accounts[0][enAccountListID], "1");
  EXPECT_EQ(accounts[0][enAccountFullName], "Costs:Travel");
  EXPECT_EQ(accounts[0][enAccountName], "Travel");
  EXPECT_EQ(accounts[0][enAccountType], "");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(GetQBAccounts, Connects_by_itself_and_reads_the_accounts_of_the_company_file) {
  BridgeHouse house;
  house.Company(
      "<AccountAddRq><AccountAdd><Name>Costs</Name><AccountType>Expense</AccountType></AccountAdd></AccountAddRq>"
      "<AccountAddRq><AccountAdd><Name>Travel</Name><ParentRef><FullName>Costs</FullName></ParentRef>"
      "<AccountType>Expense</AccountType></AccountAdd></AccountAddRq>");
  Bridge bridge(house);
  AccountArray accounts;
  EXPECT_TRUE(bridge.GetQBAccounts(accounts));
  ASSERT_EQ(accounts.size(), 2U);
  EXPECT_EQ(accounts[0][enAccountFullName], "Costs");
  EXPECT_EQ(accounts[1][enAccountFullName], "Costs:Travel");
  EXPECT_EQ(accounts[1][enAccountName], "Travel");
  EXPECT_EQ(accounts[1][enAccountListID],
            SpiedHouse::TextOf(house.Company("<AccountQueryRq><FullName>Costs:Travel</FullName></AccountQueryRq>"),
                               "ListID"));
}

TEST(GetQBAccounts, Is_False_without_a_box_for_a_refusal_and_leaves_the_array) {
  for (const int code : {2, 500, 3120, 3260}) {
    SCOPED_TRACE(code);
    LookupHouse house;
    house.traffic.canned.push_back(AccountsAnswer(Status(code), ""));
    auto accounts = kBefore;
    EXPECT_FALSE(house.bridge.GetQBAccounts(accounts));
    EXPECT_EQ(accounts, kBefore);
    EXPECT_TRUE(house.BoxTexts().empty());
  }
}

TEST(GetQBAccounts, Ends_in_the_error_box_where_there_is_no_account) {
  LookupHouse house;
  house.FindNoEmployee();
  house.traffic.canned.push_back(AccountsAnswer(kNone, ""));
  auto accounts = kBefore;
  EXPECT_FALSE(house.bridge.GetQBAccounts(accounts));
  EXPECT_EQ(accounts, kBefore);
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].starts_with("Error #: 91(5B) -- ")) << house.BoxTexts()[0];
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("GetQBAccounts")));
  EXPECT_TRUE(house.bridge.NoRecsInQBTable()) << "the lists' own";
}

TEST(GetQBAccounts, Reports_a_call_that_fails) {
  LookupHouse house("DoRequests 1 raise 0x80040400 \"Broken.\"");
  AccountArray accounts;
  EXPECT_FALSE(house.bridge.GetQBAccounts(accounts));
  EXPECT_EQ(house.BoxTexts(),
            Texts{"Error #: -2147220480(80040400) -- \r\n\r\nBroken." + ErrorBoxEnd("GetQBAccounts")});
}

TEST(GetQBAccounts, Is_False_without_a_further_word_when_no_session_can_be_had) {
  BridgeHouse house({}, "OpenConnection 1 raise 0x80040408 \"Not running\"");
  Bridge bridge(house);
  auto accounts = kBefore;
  EXPECT_FALSE(bridge.GetQBAccounts(accounts));
  EXPECT_EQ(accounts, kBefore);
  EXPECT_EQ(house.BoxTexts().size(), 1U);
}

struct TypeCase {
  std::string_view country;
  bool hasType;
};

class AccountTypesOf : public testing::TestWithParam<TypeCase> {};
INSTANTIATE_TEST_SUITE_P(FillAccountArray, AccountTypesOf,
                         testing::Values(TypeCase{"US", true}, TypeCase{"AU", true}, TypeCase{"", true},
                                         TypeCase{"CA", false}, TypeCase{"UK", false}, TypeCase{"ca", false},
                                         TypeCase{"uk", false}));

TEST_P(AccountTypesOf, Are_left_out_in_Canada_and_Britain_alone) {
  LookupHouse house({}, GetParam().country);
  house.traffic.canned.push_back(AccountsAnswer(kStatusOk, kTwoAccounts));
  AccountArray accounts;
  EXPECT_TRUE(FillAccountArray(accounts, AccountTypes::Filled));
  ASSERT_EQ(accounts.size(), 2U);
  EXPECT_EQ(accounts[0][enAccountType], GetParam().hasType ? "Expense" : "");
  EXPECT_EQ(accounts[1][enAccountType], GetParam().hasType ? "OtherCurrentLiability" : "");
}

TEST(FillAccountArray, Leaves_its_errors_to_its_caller) {
  LookupHouse house("DoRequests 1 raise 0x80040400 \"Broken.\"");
  AccountArray accounts;
  EXPECT_THROW((void)FillAccountArray(accounts, AccountTypes::Filled), PlatformError);
  house.traffic.canned.push_back(AccountsAnswer(kNone, ""));
  EXPECT_THROW((void)FillAccountArray(accounts, AccountTypes::Filled), PlatformError);
  EXPECT_TRUE(house.BoxTexts().empty());
}

// --- Customer or job -------------------------------------------------------------------------------------------------

TEST(IsJob, Is_True_for_a_job_at_any_level_and_False_for_a_customer) {
  BridgeHouse house;
  const auto customer = house.AddCustomer("<Name>Acme</Name>");
  const auto job = house.AddJob("Barn", customer);
  const auto phase = house.AddJob("Roof", job);
  Bridge bridge(house);
  EXPECT_FALSE(bridge.IsJob(customer));
  EXPECT_TRUE(bridge.IsJob(job));
  EXPECT_TRUE(bridge.IsJob(phase));
  EXPECT_EQ(house.Requests("CustomerQueryRq").back(), "<ListID>" + phase + "</ListID>");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(IsJob, Is_False_for_an_unknown_identifier_with_no_message) {
  BridgeHouse house;
  Bridge bridge(house);
  EXPECT_FALSE(bridge.IsJob("80000FFF-1111111111"));
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(IsJob, Takes_status_1_and_500_for_no_such_customer_and_tells_every_other) {
  for (const int code : {1, 500}) {
    LookupHouse house;
    house.traffic.canned.push_back(CannedAnswer("CustomerQueryRs", Status(code), ""));
    EXPECT_FALSE(house.bridge.IsJob("1"));
    EXPECT_TRUE(house.BoxTexts().empty());
  }
  for (const int code : {2, 3000, 3120, 3260}) {
    LookupHouse house;
    house.traffic.canned.push_back(CannedAnswer("CustomerQueryRs", Status(code), ""));
    EXPECT_FALSE(house.bridge.IsJob("1"));
    EXPECT_EQ(house.BoxTexts(), Texts{RefusalText("No.", code, "Error")});
    EXPECT_EQ(house.desk.Boxes().at(0).box.title, "Error");
    EXPECT_EQ(house.desk.Boxes().at(0).box.icon, BoxIcon::Information);
  }
}

TEST(IsJob, Looks_at_the_first_record_alone) {
  LookupHouse house;
  house.traffic.canned.push_back(CannedAnswer(
      "CustomerQueryRs", kStatusOk,
      "<CustomerRet><Sublevel>0</Sublevel></CustomerRet><CustomerRet><Sublevel>1</Sublevel></CustomerRet>"));
  EXPECT_FALSE(house.bridge.IsJob("1"));
}

TEST(IsJob, Reports_a_call_that_fails_an_answer_without_a_record_and_one_without_a_level) {
  LookupHouse house("DoRequests 1 raise 0x80040400 \"Broken.\"");
  EXPECT_FALSE(house.bridge.IsJob("1"));
  house.traffic.canned.push_back(CannedAnswer("CustomerQueryRs", kStatusOk, ""));
  EXPECT_FALSE(house.bridge.IsJob("1"));
  house.traffic.canned.push_back(CannedAnswer("CustomerQueryRs", kStatusOk, "<CustomerRet/>"));
  EXPECT_FALSE(house.bridge.IsJob("1"));
  const auto texts = house.BoxTexts();
  ASSERT_EQ(texts.size(), 3U);
  for (const auto& text : texts) EXPECT_TRUE(text.ends_with(ErrorBoxEnd("IsJob"))) << text;
}

TEST(IsJob, Opens_the_file_in_the_mode_of_the_object) {
  BridgeHouse house;
  Bridge bridge(house);
  bridge.SetIsQBSingleMode(true);
  (void)bridge.IsJob("1");
  auto other = house.quickbooks->CreateTransport();
  other->OpenConnection("OTHER", "other");
  EXPECT_THROW(other->BeginSession("", OpenMode::DoNotCare), PlatformError);
}

TEST(IsJob, Is_False_without_a_further_word_when_no_session_can_be_had) {
  BridgeHouse house({}, "OpenConnection 1 raise 0x80040408 \"Not running\"");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.IsJob("1"));
  EXPECT_EQ(house.BoxTexts().size(), 1U);
}

TEST(IsJob, Leaves_NoRecsInQBTable_as_the_last_list_put_it) {
  LookupHouse house;
  house.FindNoEmployee();
  EXPECT_FALSE(house.bridge.IsJob("80000FFF-1111111111"));
  EXPECT_TRUE(house.bridge.NoRecsInQBTable());
}

}  // namespace
}  // namespace twqb
