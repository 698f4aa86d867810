// The items and accounts that invoices and retainers are made of: what is asked for, and what is done about the
// answers.

#include <gtest/gtest.h>

#include "tests/transactions/InvoicesHouse.h"
#include "transactions/InvoiceItems.h"
#include "transactions/RetainerItems.h"

namespace twqb {
namespace {

std::string Account(std::string_view element, std::string_view inside) {
  return fmt::format("<{0}>{1}</{0}>", element, inside);
}
std::string ItemBody(std::string_view name, std::string_view description, std::string_view income,
                     std::string_view expense) {
  return fmt::format(
      "<ItemServiceAdd><Name>{}</Name><SalesAndPurchase><SalesDesc>{}</SalesDesc>{}{}</SalesAndPurchase>"
      "</ItemServiceAdd>",
      name, description, Account("IncomeAccountRef", income), Account("ExpenseAccountRef", expense));
}

class InvoiceItems : public testing::Test {
 protected:
  InvoicesHouse house;
};

struct Expected {
  std::string_view name;
  std::string_view description;
  bool service;  // falls back on the account of services
};
constexpr std::array kExpected = {Expected{"TWInvDiscount", "Tallywick Invoice Discount Amount", true},
                                  Expected{"TWInvRetainerAmtApplied", "Tallywick Retainer Amount Applied", true},
                                  Expected{"TWManInvMiscAmt", "Tallywick Misc Amount", true},
                                  Expected{"TWManInvPaidToday", "Tallywick Amount Paid", true},
                                  Expected{"TWServiceAmt", "Tallywick Service Amount", true},
                                  Expected{"TWServiceTaxAmt", "Tallywick Service Tax Amount", true},
                                  Expected{"TWExpenseAmt", "Tallywick Expense Amount", false},
                                  Expected{"TWExpenseTaxAmt", "Tallywick Expense Tax Amount", false},
                                  Expected{"TWMainServiceTaxAmt", "Tallywick Main Service Tax Amount", true},
                                  Expected{"TWMainExpenseTaxAmt", "Tallywick Main Expense Tax Amount", false},
                                  Expected{"GEN WUD", "Write Up / Down Adjustments", false},
                                  Expected{"From Tallywick", "Standard Services", false}};

TEST_F(InvoiceItems, Are_twelve_in_one_set_each_on_its_fallback_account) {
  house.Add("Account", "<Name>Fees</Name><AccountType>Income</AccountType>");
  house.Add("Account", "<Name>Costs</Name><AccountType>Expense</AccountType>");
  house.General("INVOICE_SERVICE_ACCOUNT", "Fees");
  house.General("INVOICE_EXP_ACCOUNT", "Costs");
  house.Clear();
  EXPECT_TRUE(ValidateInvRelatedItems(SpiedHouse::Session()));
  Texts expected;
  for (const auto& item : kExpected) {
    const auto account = fmt::format("<FullName>{}</FullName>", item.service ? "Fees" : "Costs");
    expected.push_back(ItemBody(item.name, item.description, account, account));
  }
  EXPECT_EQ(house.Requests("ItemServiceAddRq"), expected);
  // The accounts are asked for ahead of the set.
  EXPECT_EQ(house.traffic.documents.size(), 2U);
  EXPECT_NE(house.traffic.documents[1].find("onError=\"continueOnError\""), std::string::npos);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_F(InvoiceItems, Book_to_Other_Income_without_any_setting) {
  EXPECT_TRUE(ValidateInvRelatedItems(SpiedHouse::Session()));
  const std::string account = "<FullName>Other Income</FullName>";
  EXPECT_EQ(house.Requests("ItemServiceAddRq")[0],
            ItemBody("TWInvDiscount", "Tallywick Invoice Discount Amount", account, account));
}

TEST_F(InvoiceItems, Book_to_the_accounts_of_their_own_settings_and_the_last_two_to_those_of_services) {
  const auto income = house.Add("Account", "<Name>Fees</Name><AccountType>Income</AccountType>");
  const auto expense = house.Add("Account", "<Name>Costs</Name><AccountType>Expense</AccountType>");
  for (const int number : {1, 5}) {
    house.General(fmt::format("InvIncomeAcct_No{}", number), income);
    house.General(fmt::format("InvExpenseAcct_No{}", number), expense);
  }
  house.Clear();
  EXPECT_TRUE(ValidateInvRelatedItems(SpiedHouse::Session()));
  const auto items = house.Requests("ItemServiceAddRq");
  const auto byId = [](std::string_view id) { return fmt::format("<ListID>{}</ListID>", id); };
  EXPECT_EQ(items[0], ItemBody(kExpected[0].name, kExpected[0].description, byId(income), byId(expense)));
  EXPECT_EQ(items[4], ItemBody(kExpected[4].name, kExpected[4].description, byId(income), byId(expense)));
  for (const std::size_t i : {10U, 11U}) {
    EXPECT_EQ(items[i], ItemBody(kExpected[i].name, kExpected[i].description, byId(income),
                                 byId(expense) + fmt::format("<FullName>{}</FullName>", kExpected[i].name)));
  }
  // The identifier wins, so the items are there.
  const auto all = house.Company("<ItemServiceQueryRq></ItemServiceQueryRq>");
  EXPECT_NE(all.find("<Name>GEN WUD</Name>"), std::string::npos);
  EXPECT_NE(all.find("<Name>From Tallywick</Name>"), std::string::npos);
}

TEST(InvoiceItemsOfCanada, Have_prices_of_one) {
  InvoicesHouse house({}, {}, "CA");
  EXPECT_TRUE(ValidateInvRelatedItems(SpiedHouse::Session()));
  for (const auto& item : house.Requests("ItemServiceAddRq")) {
    EXPECT_EQ(SpiedHouse::TextOf(item, "SalesPrice"), "1");
    EXPECT_EQ(SpiedHouse::TextOf(item, "PurchaseCost"), "1");
  }
  EXPECT_EQ(house.Requests("ItemServiceAddRq").size(), 12U);
}

TEST(InvoiceItemsOfBritain, Have_no_prices) {
  InvoicesHouse house({}, {}, "UK");
  EXPECT_TRUE(ValidateInvRelatedItems(SpiedHouse::Session()));
  EXPECT_EQ(SpiedHouse::TextOf(house.Requests("ItemServiceAddRq")[0], "SalesPrice"), "(none)");
}

TEST_F(InvoiceItems, That_are_there_are_no_trouble_and_keep_their_accounts) {
  EXPECT_TRUE(ValidateInvRelatedItems(SpiedHouse::Session()));
  const auto before = house.Company("<ItemServiceQueryRq></ItemServiceQueryRq>");
  house.Add("Account", "<Name>Fees</Name><AccountType>Income</AccountType>");
  house.General("INVOICE_SERVICE_ACCOUNT", "Fees");
  EXPECT_TRUE(ValidateInvRelatedItems(SpiedHouse::Session()));
  EXPECT_EQ(house.Company("<ItemServiceQueryRq></ItemServiceQueryRq>"), before);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_F(InvoiceItems, On_an_account_that_is_not_there_fail_with_the_first_of_them) {
  house.General("InvExpenseAcct_No1", "FFF-1");
  EXPECT_FALSE(ValidateInvRelatedItems(SpiedHouse::Session()));
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(
      house.BoxTexts()[0].ends_with("\r\n(Error Code = 3140\r\nSeverity: Error)\r\n\r\nSuggestion: -\r\nIf this "
                                    "table needs an account, please choose a valid account from the\r\n\"Sync "
                                    "Settings \"  Screen."))
      << house.BoxTexts()[0];
  EXPECT_TRUE(
      house.BoxTexts()[0].starts_with("Invalid Reference.\r\n\r\nQuickBooks has reported the following error: "
                                      "-\r\n"));
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::None);
}

TEST_F(InvoiceItems, On_an_account_that_is_not_there_go_unseen_with_any_other) {
  house.General("InvExpenseAcct_No2", "FFF-1");
  EXPECT_TRUE(ValidateInvRelatedItems(SpiedHouse::Session()));
  EXPECT_TRUE(house.BoxTexts().empty());
  const auto all = house.Company("<ItemServiceQueryRq></ItemServiceQueryRq>");
  EXPECT_EQ(all.find("TWInvRetainerAmtApplied"), std::string::npos);
  EXPECT_NE(all.find("TWManInvMiscAmt"), std::string::npos);
}

// --- Sales taxes -----------------------------------------------------------------------------------------------------

class TaxItems : public InvoiceItems {
 protected:
  TaxItems() {
    liability = house.Add("Account", "<Name>Taxes</Name><AccountType>OtherCurrentLiability</AccountType>");
    income = house.Add("Account", "<Name>Fees</Name><AccountType>Income</AccountType>");
    vendor = house.Add("Vendor", "<Name>Agency</Name>");
    house.Clear();
  }
  // The names that went as sales taxes.
  Texts Taxes() {
    EXPECT_TRUE(ValidateInvRelatedItems(SpiedHouse::Session()));
    Texts names;
    for (const auto& item : house.Requests("ItemSalesTaxAddRq")) names.push_back(SpiedHouse::TextOf(item, "Name"));
    EXPECT_EQ(names.size() + house.Requests("ItemServiceAddRq").size(), 12U);
    return names;
  }
  std::string liability;
  std::string income;
  std::string vendor;
};

TEST_F(TaxItems, With_a_liability_and_somebody_to_pay_go_as_sales_taxes) {
  for (const int number : {6, 7, 8, 9, 10}) {
    house.General(fmt::format("InvIncomeAcct_No{}", number), liability);
    house.General(fmt::format("InvVendorID_No{}", number), vendor);
  }
  EXPECT_EQ(Taxes(), (Texts{"TWServiceTaxAmt", "TWExpenseTaxAmt", "TWMainServiceTaxAmt", "TWMainExpenseTaxAmt"}));
  EXPECT_EQ(house.Requests("ItemSalesTaxAddRq")[0],
            "<ItemSalesTaxAdd><Name>TWServiceTaxAmt</Name><ItemDesc>Tallywick Service Tax Amount</ItemDesc><TaxRate>0"
            "</TaxRate><TaxVendorRef><ListID>" +
                vendor + "</ListID></TaxVendorRef></ItemSalesTaxAdd>");
  // The set keeps its order.
  const auto& document = house.traffic.documents.back();
  EXPECT_LT(document.find("TWServiceTaxAmt"), document.find("TWExpenseAmt"));
  EXPECT_LT(document.find("TWExpenseAmt"), document.find("TWExpenseTaxAmt"));
}

TEST_F(TaxItems, With_nobody_to_pay_are_services) {
  house.General("InvIncomeAcct_No6", liability);
  EXPECT_TRUE(Taxes().empty());
}

TEST_F(TaxItems, On_an_account_of_another_kind_are_services) {
  house.General("InvIncomeAcct_No6", income);
  house.General("InvVendorID_No6", vendor);
  EXPECT_TRUE(Taxes().empty());
}

TEST_F(TaxItems, Are_each_decided_for_themselves) {
  house.General("InvIncomeAcct_No8", liability);
  house.General("InvVendorID_No8", vendor);
  house.General("InvIncomeAcct_No9", liability);
  EXPECT_EQ(Taxes(), Texts{"TWExpenseTaxAmt"});
}

TEST_F(TaxItems, Are_seen_by_the_invoice_that_follows) {
  house.General("InvIncomeAcct_No6", liability);
  house.General("InvVendorID_No6", vendor);
  house.Invoice("I1", {{"ServiceTaxAmt", "7"}});
  house.Send();
  EXPECT_EQ(house.Lines().at(1), ByName("TWServiceTaxAmt") + "<Amount>7.00</Amount>");
  EXPECT_TRUE(house.IsSent("I1"));
}

TEST(TaxItemsOfCanada, Are_services_whatever_the_settings_say) {
  InvoicesHouse house({}, {}, "CA");
  house.General("InvIncomeAcct_No6",
                house.Add("Account", "<Name>Taxes</Name><AccountType>OtherCurrentLiability</AccountType>"));
  house.General("InvVendorID_No6", house.Add("Vendor", "<Name>Agency</Name>"));
  EXPECT_TRUE(ValidateInvRelatedItems(SpiedHouse::Session()));
  EXPECT_EQ(house.Requests("ItemServiceAddRq").size(), 12U);
}

// --- Retainers -------------------------------------------------------------------------------------------------------

TEST(RetainerItems, Are_an_account_a_payment_item_and_a_charge_item) {
  InvoicesHouse house;
  EXPECT_TRUE(AddRetainerItems(SpiedHouse::Session()));
  EXPECT_EQ(house.Requests("AccountAddRq"),
            Texts{"<AccountAdd><Name>TWUnearnedRetAccount</Name><IsActive>true</IsActive><AccountType>"
                  "OtherCurrentLiability</AccountType><Desc>TWAppliedRetainerAcct</Desc><OpenBalance>0.00</OpenBalance>"
                  "</AccountAdd>"});
  EXPECT_EQ(house.Requests("ItemPaymentAddRq"),
            Texts{"<ItemPaymentAdd><Name>TWRetainerPayment</Name><IsActive>true</IsActive><ItemDesc>TW Applied Retainer"
                  "</ItemDesc><PaymentMethodRef><FullName>Check</FullName></PaymentMethodRef></ItemPaymentAdd>"});
  const std::string account = "<FullName>TWUnearnedRetAccount</FullName>";
  EXPECT_EQ(
      house.Requests("ItemOtherChargeAddRq"),
      Texts{"<ItemOtherChargeAdd><Name>TWRetainerChargeItem</Name><IsActive>true</IsActive><SalesTaxCodeRef>"
            "<FullName>NON</FullName></SalesTaxCodeRef><SalesAndPurchase><SalesDesc>Tallywick Retainer Charge Item"
            "</SalesDesc><SalesPrice>0</SalesPrice><IncomeAccountRef>" +
            account +
            "</IncomeAccountRef><PurchaseDesc>Tallywick Retainer Charge Item</PurchaseDesc><PurchaseCost>"
            "0</PurchaseCost><ExpenseAccountRef>" +
            account + "</ExpenseAccountRef></SalesAndPurchase></ItemOtherChargeAdd>"});
  EXPECT_EQ(house.traffic.documents.size(), 3U);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(RetainerItems, That_are_there_are_no_trouble) {
  InvoicesHouse house;
  EXPECT_TRUE(AddRetainerItems(SpiedHouse::Session()));
  EXPECT_TRUE(AddRetainerItems(SpiedHouse::Session()));
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.traffic.documents.size(), 6U);
}

struct Accepted {
  std::string request;
  int status;
  bool accepted;
};

class AcceptedStatuses : public testing::TestWithParam<Accepted> {};

TEST_P(AcceptedStatuses, Differ_from_routine_to_routine) {
  InvoicesHouse house({}, Refuses(GetParam().request, 2, GetParam().status));
  EXPECT_TRUE(AddRetainerItems(SpiedHouse::Session()));
  EXPECT_EQ(AddRetainerItems(SpiedHouse::Session()), GetParam().accepted);
  EXPECT_EQ(house.BoxTexts().size(), GetParam().accepted ? 0U : 1U);
}

INSTANTIATE_TEST_SUITE_P(RetainerItems, AcceptedStatuses,
                         testing::Values(Accepted{"AccountAddRq", 3100, true}, Accepted{"AccountAddRq", 3180, false},
                                         Accepted{"ItemPaymentAddRq", 3180, true},
                                         Accepted{"ItemPaymentAddRq", 3100, false},
                                         Accepted{"ItemOtherChargeAddRq", 3180, false}),
                         [](const auto& test) { return test.param.request + std::to_string(test.param.status); });

struct Method {
  std::string country;
  std::string host;
  std::string name;
};

class Methods : public testing::TestWithParam<Method> {};

TEST_P(Methods, Are_spelt_as_the_country_or_the_edition_has_them) {
  InvoicesHouse house({}, {}, GetParam().country);
  Vars().g_HostCountry = GetParam().host;
  static_cast<void>(AddPaymentItem(SpiedHouse::Session()));
  EXPECT_EQ(SpiedHouse::TextOf(house.Requests("ItemPaymentAddRq").at(0).substr(100), "FullName"), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(RetainerItems, Methods,
                         testing::Values(Method{"US", "US", "Check"}, Method{"US", "CA", "Cheque"},
                                         Method{"US", "UK", "Cheque"}, Method{"CA", "", "Cheque"},
                                         Method{"UK", "", "Cheque"}),
                         [](const auto& test) { return test.param.country + test.param.host; });

struct ChargeCode {
  std::string country;
  std::int16_t version;
  std::string code;  // of the element as it goes on the wire; "" for none
};

class ChargeCodes : public testing::TestWithParam<ChargeCode> {};

TEST_P(ChargeCodes, Stand_where_the_form_has_a_place_for_them) {
  InvoicesHouse house({}, {}, GetParam().country);
  EXPECT_TRUE(AddAccount(SpiedHouse::Session()));
  Vars().g_QBMajorVer = GetParam().version;
  EXPECT_TRUE(AddItemOtherCharge(SpiedHouse::Session()));
  const auto item = house.Requests("ItemOtherChargeAddRq").at(0);
  EXPECT_EQ(item.find("TaxCode") != std::string::npos, !GetParam().code.empty()) << item;
  EXPECT_NE(item.find(GetParam().code), std::string::npos) << item;
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(
    RetainerItems, ChargeCodes,
    testing::Values(ChargeCode{"US", 2, "<SalesTaxCodeRef><FullName>NON</FullName></SalesTaxCodeRef>"},
                    ChargeCode{"CA", 3, "<TaxCodeForSaleRef><FullName>E</FullName></TaxCodeForSaleRef>"},
                    ChargeCode{"UK", 3, "<TaxCodeForSaleRef><FullName>E</FullName></TaxCodeForSaleRef>"},
                    ChargeCode{"CA", 2, ""}, ChargeCode{"AU", 2, ""}, ChargeCode{"AU", 3, ""}),
    [](const auto& test) { return test.param.country + std::to_string(test.param.version); });

struct BrokenItem {
  std::size_t request;  // of those of two rounds
  std::string routine;
};
class BrokenRetainerItems : public testing::TestWithParam<BrokenItem> {};

TEST_P(BrokenRetainerItems, Are_told_under_the_name_of_the_routine_and_nothing_is_asked_behind_them) {
  const auto& [request, routine] = GetParam();
  constexpr std::size_t kItems = 3;
  InvoicesHouse house({}, fmt::format("DoRequests {} raise 0x80040404 \"Broken.\"\n", request));
  if (request > kItems) {
    EXPECT_TRUE(AddRetainerItems(SpiedHouse::Session()));
  }
  EXPECT_FALSE(AddRetainerItems(SpiedHouse::Session()));
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd(routine))) << house.BoxTexts()[0];
  EXPECT_EQ(house.traffic.documents.size(), request);
  EXPECT_EQ(house.desk.ShownPointer(), Pointer::Default);
}

INSTANTIATE_TEST_SUITE_P(RetainerItems, BrokenRetainerItems,
                         testing::Values(BrokenItem{1, "AddAccount"}, BrokenItem{2, "AddPaymentItem"},
                                         BrokenItem{3, "AddItemOtherCharge"}, BrokenItem{4, "AddAccount"},
                                         BrokenItem{5, "AddPaymentItem"}, BrokenItem{6, "AddItemOtherCharge"}),
                         [](const auto& test) { return test.param.routine + std::to_string(test.param.request); });

TEST(InvoiceItemsFailures, Are_told_under_the_name_of_the_routine) {
  InvoicesHouse house({}, "DoRequests 2 raise 0x80040404 \"Broken.\"\n");
  EXPECT_FALSE(ValidateInvRelatedItems(SpiedHouse::Session()));
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("ValidateInvRelatedItems"))) << house.BoxTexts()[0];
}

}  // namespace
}  // namespace twqb
