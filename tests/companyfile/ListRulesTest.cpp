// What is special to single kinds of lists.

#include <gmock/gmock.h>

#include "ListTest.h"

namespace twqb::company {

namespace {

using messages::Country;
using testing::ElementsAre;

std::string Named(const std::string& name) { return "<Name>" + name + "</Name>"; }
std::string Under(const std::string& parent) { return RefTo("ParentRef", parent); }

class Names : public ListTest {
 protected:
  std::string Employee(const std::string& first, const std::string& last) {
    return "<FirstName>" + first + "</FirstName><LastName>" + last + "</LastName>";
  }
};

TEST_F(Names, Customers_vendors_and_employees_share_one_name_space) {
  AddId("Customer", Named("Ann Lee"));
  EXPECT_EQ(AddTo("Vendor", Named("ann lee")).code, 3100);
  const auto employee = AddTo("Employee", Employee("ANN", "Lee"));
  EXPECT_EQ(employee.code, 3100);
  EXPECT_EQ(employee.message, "The name \"ANN Lee\" of the list element is already in use.");
  AddId("Vendor", Named("Bo Ek"));
  EXPECT_EQ(AddTo("Customer", Named("Bo Ek")).code, 3100);
  EXPECT_EQ(AddTo("Customer", Named("Bo Ek") + Under("Ann Lee")).code, 0) << "a job";
  EXPECT_EQ(AddTo("Class", Named("Bo Ek")).code, 0) << "another name space";
}

TEST_F(Names, Items_of_every_kind_share_one_list) {
  AddAccount("Fees", "Income");
  const auto item = Named("Item") + "<SalesOrPurchase>" + RefTo("AccountRef", "Fees") + "</SalesOrPurchase>";
  AddId("ItemService", item);
  EXPECT_EQ(AddTo("ItemOtherCharge", item).code, 3100);
  EXPECT_EQ(AddTo("ItemNonInventory", item).code, 3100);
  for (const char* kind : {"ItemSalesTax", "ItemPayment", "ItemGroup"}) {
    EXPECT_EQ(AddTo(kind, Named("ITEM")).code, 3100) << kind;
  }
}

TEST_F(Names, A_payment_item_that_exists_can_not_be_saved_again) {
  AddId("ItemPayment", Named("Paid"));
  const auto answer = AddTo("ItemPayment", Named("paid"));
  EXPECT_EQ(answer.code, 3180);
  EXPECT_EQ(answer.message,
            "There was an error when saving an ItemPayment.  QuickBooks error message: The name of the list element is "
            "already in use.");
}

TEST_F(Names, An_employee_is_called_by_first_middle_and_last_name) {
  const auto full = AddTo("Employee", "<FirstName>Ann</FirstName><MiddleName>Q.</MiddleName><LastName>Lee</LastName>");
  EXPECT_EQ(full.Value("Name"), "Ann Q. Lee");
  EXPECT_EQ(AddTo("Employee", "<LastName>Lee</LastName>").Value("Name"), "Lee");
  EXPECT_EQ(AddTo("Employee", "<FirstName></FirstName><Phone>1</Phone>").code, 3150);
  EXPECT_EQ(QueryOf("Employee", "<FullName>ann q. LEE</FullName>").Value("LastName"), "Lee");
}

TEST_F(Names, A_change_of_one_part_renames_the_employee_and_a_change_of_none_does_not) {
  const auto id = AddId("Employee", Employee("Ann", "Lee"));
  EXPECT_EQ(ModifyIn("Employee", id, "<LastName>Roy</LastName>").Value("Name"), "Ann Roy");
  EXPECT_EQ(ModifyIn("Employee", id, "<Phone>1</Phone>").Value("Name"), "Ann Roy");
  EXPECT_EQ(ModifyIn("Employee", id, "<FirstName></FirstName>").Value("Name"), "Roy");
}

TEST_F(Names, In_older_forms_an_employee_has_the_name_that_is_given) {
  tag_ = "2.1";
  const auto answer = AddTo("Employee", Named("AL1") + Employee("Ann", "Lee"));
  EXPECT_EQ(answer.Value("Name"), "AL1");
  const auto id = answer.Value("ListID");
  EXPECT_EQ(ModifyIn("Employee", id, "<LastName>Roy</LastName>").Value("Name"), "AL1");
  EXPECT_EQ(AddTo("Employee", Employee("Bo", "Ek")).Value("Name"), "Bo Ek");
  EXPECT_EQ(AddTo("Employee", "<Phone>1</Phone>").code, 3150);
  EXPECT_EQ(RefusalOfRequest(AddText("Employee", Named("AL2")), "3.0"), kRefused);
}

class Accounts : public ListTest {
 protected:
  static std::string Account(const std::string& name, const std::string& type, const std::string& more = {},
                             const std::string& parent = {}) {
    return Named(name) + (parent.empty() ? "" : Under(parent)) + "<AccountType>" + type + "</AccountType>" + more;
  }
};

TEST_F(Accounts, A_sub_account_has_the_type_of_its_parent) {
  AddId("Account", Account("Costs", "Expense"));
  EXPECT_EQ(AddTo("Account", Account("Rent", "Expense", {}, "Costs")).Value("FullName"), "Costs:Rent");
  const auto answer = AddTo("Account", Account("Sales", "Income", {}, "Costs"));
  EXPECT_EQ(answer.code, 3130);
  EXPECT_EQ(
      answer.message,
      "There is an invalid reference to a parent \"Costs\" in the Account list.  QuickBooks error message: A record "
      "has the type of its parent.");
}

TEST_F(Accounts, A_number_belongs_to_one_account) {
  AddId("Account", Account("Costs", "Expense", "<AccountNumber>600</AccountNumber>"));
  const auto answer = AddTo("Account", Account("Rent", "Expense", "<AccountNumber>600</AccountNumber>"));
  EXPECT_EQ(answer.code, 3180);
  EXPECT_EQ(
      answer.message,
      "There was an error when saving an Account.  QuickBooks error message: The number \"600\" is already in use.");
  EXPECT_EQ(AddTo("Account", Account("Rent", "Expense", "<AccountNumber></AccountNumber>")).code, 0);
  EXPECT_EQ(AddTo("Account", Account("Fuel", "Expense", "<AccountNumber></AccountNumber>")).code, 0);
}

TEST_F(Accounts, A_query_chooses_by_types_and_answers_parents_first) {
  AddId("Account", Account("Zeta", "Bank", "<OpenBalance>5.00</OpenBalance>"));
  AddId("Account", Account("Alpha", "Bank", "<OpenBalance>1.00</OpenBalance>", "Zeta"));
  AddId("Account", Account("Beta", "Expense"));
  AddId("Account", Account("Gamma", "Income"));
  const auto all = QueryOf("Account");
  EXPECT_THAT(all.All("FullName"), ElementsAre("Beta", "Gamma", "Zeta", "Zeta:Alpha"));
  EXPECT_THAT(all.All("Balance"), ElementsAre("0.00", "0.00", "5.00", "1.00"));
  EXPECT_THAT(all.All("TotalBalance"), ElementsAre("0.00", "0.00", "6.00", "1.00"));
  const auto some = QueryOf("Account", "<AccountType>Bank</AccountType><AccountType>Income</AccountType>");
  EXPECT_THAT(some.All("FullName"), ElementsAre("Gamma", "Zeta", "Zeta:Alpha"));
  EXPECT_EQ(QueryOf("Account", "<AccountType>Equity</AccountType>").code, 1);
}

class Vendors : public ListTest {};

TEST_F(Vendors, Are_chosen_by_their_balance) {
  AddId("Vendor", Named("Low"));
  AddId("Vendor", Named("High") + "<OpenBalance>9.00</OpenBalance>");
  EXPECT_THAT(QueryOf("Vendor",
                      "<TotalBalanceFilter><Operator>GreaterThan</Operator><Amount>1.00</Amount>"
                      "</TotalBalanceFilter>")
                  .All("Name"),
              ElementsAre("High"));
}

class Items : public ListTest {
 protected:
  void SetUp() override {
    ListTest::SetUp();
    AddAccount("Fees", "Income");
    AddAccount("Wages", "Expense");
  }
  static std::string OneSided(const std::string& name, const std::string& price, const std::string& parent = {}) {
    return Named(name) + (parent.empty() ? "" : Under(parent)) + "<SalesOrPurchase><Desc>d</Desc>" + price +
           RefTo("AccountRef", "Fees") + "</SalesOrPurchase>";
  }
  static std::string TwoSided(const std::string& name) {
    return Named(name) + "<SalesAndPurchase><SalesDesc>s</SalesDesc><SalesPrice>75</SalesPrice>" +
           RefTo("IncomeAccountRef", "Fees") + "<PurchaseCost>+040.5</PurchaseCost>" +
           RefTo("ExpenseAccountRef", "Wages") + "</SalesAndPurchase>";
  }
};

TEST_F(Items, A_price_has_at_least_two_decimals_in_the_answer) {
  const auto answer = AddTo("ItemService", TwoSided("Item"));
  EXPECT_EQ(answer.Value("SalesAndPurchase/SalesPrice"), "75.00");
  EXPECT_EQ(answer.Value("SalesAndPurchase/PurchaseCost"), "40.50");
  EXPECT_EQ(AddTo("ItemService", OneSided("Other", "<Price>-0.12500</Price>")).Value("SalesOrPurchase/Price"),
            "-0.125");
}

TEST_F(Items, A_change_of_one_side_keeps_the_fields_that_it_does_not_give) {
  const auto id = AddId("ItemService", TwoSided("Item"));
  const auto vendor = AddId("Vendor", Named("Supplier"));
  const auto answer = ModifyIn("ItemService", id,
                               "<SalesAndPurchaseMod><SalesDesc></SalesDesc><PurchaseDesc>p</PurchaseDesc>" +
                                   RefTo("PrefVendorRef", "supplier") + "</SalesAndPurchaseMod>");
  ASSERT_EQ(answer.code, 0) << answer.message;
  EXPECT_FALSE(answer.Has("SalesAndPurchase/SalesDesc"));
  EXPECT_EQ(answer.Value("SalesAndPurchase/SalesPrice"), "75.00");
  EXPECT_EQ(answer.Value("SalesAndPurchase/IncomeAccountRef/FullName"), "Fees");
  EXPECT_EQ(answer.Value("SalesAndPurchase/PurchaseDesc"), "p");
  EXPECT_EQ(answer.Value("SalesAndPurchase/ExpenseAccountRef/FullName"), "Wages");
  EXPECT_EQ(answer.Value("SalesAndPurchase/PrefVendorRef/ListID"), vendor);
  EXPECT_EQ(Delete("Vendor", vendor).code, 3160) << "what a change names is in use";
}

TEST_F(Items, A_price_takes_the_place_of_a_percentage) {
  const auto id = AddId("ItemOtherCharge", OneSided("Item", "<PricePercent>5.5</PricePercent>"));
  EXPECT_EQ(QueryOf("ItemOtherCharge", Id(id)).Value("SalesOrPurchase/PricePercent"), "5.5");
  const auto kept = ModifyIn("ItemOtherCharge", id, "<SalesOrPurchaseMod><Desc>e</Desc></SalesOrPurchaseMod>");
  EXPECT_EQ(kept.Value("SalesOrPurchase/PricePercent"), "5.5");
  const auto changed = ModifyIn("ItemOtherCharge", id, "<SalesOrPurchaseMod><Price>7.00</Price></SalesOrPurchaseMod>");
  EXPECT_EQ(changed.Value("SalesOrPurchase/Price"), "7.00");
  EXPECT_FALSE(changed.Has("SalesOrPurchase/PricePercent"));
  EXPECT_EQ(changed.Value("SalesOrPurchase/Desc"), "e");
  EXPECT_EQ(changed.Value("SalesOrPurchase/AccountRef/FullName"), "Fees");
}

TEST_F(Items, An_item_of_one_form_refuses_a_change_of_the_other) {
  const auto one = AddId("ItemService", OneSided("One", {}));
  const auto two = AddId("ItemService", TwoSided("Two"));
  const auto refused =
      ModifyIn("ItemService", one, "<SalesAndPurchaseMod><SalesDesc>x</SalesDesc></SalesAndPurchaseMod>");
  EXPECT_EQ(refused.code, 3170);
  EXPECT_EQ(
      refused.message,
      "There was an error when modifying an ItemService.  QuickBooks error message: It has SalesOrPurchase and cannot "
      "take SalesAndPurchaseMod.");
  EXPECT_EQ(ModifyIn("ItemService", two, "<SalesOrPurchaseMod><Desc>x</Desc></SalesOrPurchaseMod>").code, 3170);
  EXPECT_EQ(QueryOf("ItemService", Id(two)).Value("SalesAndPurchase/SalesDesc"), "s");
}

TEST_F(Items, Come_in_the_order_of_names_whatever_stands_above_them) {
  AddId("ItemService", OneSided("Zeta", {}));
  AddId("ItemService", OneSided("Alpha", {}, "Zeta"));
  AddId("ItemService", OneSided("Mu", {}));
  EXPECT_THAT(QueryOf("ItemService").All("FullName"), ElementsAre("Zeta:Alpha", "Mu", "Zeta"));
  EXPECT_THAT(QueryOf("ItemService", "<FullName>Zeta</FullName><FullName>Zeta:Alpha</FullName>").All("FullName"),
              ElementsAre("Zeta:Alpha", "Zeta"));
}

TEST_F(Items, An_item_does_not_stand_under_one_of_another_kind) {
  AddId("ItemService", OneSided("Base", {}));
  EXPECT_EQ(AddTo("ItemOtherCharge", OneSided("Sub", {}, "Base")).code, 3130);
}

TEST_F(Items, A_group_has_lines_of_items_but_not_of_groups) {
  AddId("ItemService", OneSided("Base", {}));
  const auto line = [](const std::string& item) {
    return "<ItemGroupLine>" + RefTo("ItemRef", item) + "<Quantity>2</Quantity></ItemGroupLine>";
  };
  const auto group = AddTo("ItemGroup", Named("Set") + line("Base") + line("BASE"));
  ASSERT_EQ(group.code, 0) << group.message;
  EXPECT_EQ(group.Value("IsPrintItemsInGroup"), "false");
  EXPECT_THAT(text_, testing::ContainsRegex("<ItemGroupLine>.*Base.*<ItemGroupLine>.*Base.*</ItemGroupLine>"));
  EXPECT_EQ(AddTo("ItemGroup", Named("Other") + line("Set")).code, 3140);
}

class Payroll : public ListTest {
 protected:
  void SetUp() override {
    ListTest::SetUp();
    AddAccount("Wages", "Expense");
    for (const char* name : {"Regular", "Extra"}) {
      AddId("PayrollItemWage",
            Named(name) + "<WageType>HourlyRegular</WageType>" + RefTo("ExpenseAccountRef", "Wages"));
    }
    id_ = AddId("Employee", "<LastName>Lee</LastName><EmployeePayrollInfo><PayPeriod>Weekly</PayPeriod>" +
                                Earnings("Regular", "20") + Earnings("Extra", "30") + "</EmployeePayrollInfo>");
  }
  static std::string Earnings(const std::string& item, const std::string& rate) {
    return "<Earnings>" + RefTo("PayrollItemWageRef", item) + "<Rate>" + rate + "</Rate></Earnings>";
  }
  Answer Change(const std::string& fields) {
    return ModifyIn("Employee", id_, "<EmployeePayrollInfoMod>" + fields + "</EmployeePayrollInfoMod>");
  }
  static std::vector<std::string> RatesOf(const Answer& answer) {
    std::vector<std::string> rates;
    for (const auto line : answer.node.first_child().child("EmployeePayrollInfo").children("Earnings")) {
      rates.emplace_back(line.child("Rate").text().get());
    }
    return rates;
  }

  std::string id_;
};

TEST_F(Payroll, Earnings_stay_are_replaced_or_cleared) {
  const auto kept = Change("<PayPeriod>Monthly</PayPeriod>");
  ASSERT_EQ(kept.code, 0) << kept.message;
  EXPECT_THAT(RatesOf(kept), ElementsAre("20.00", "30.00"));
  EXPECT_EQ(kept.Value("EmployeePayrollInfo/PayPeriod"), "Monthly");

  const auto replaced = Change(Earnings("Extra", "35"));
  EXPECT_THAT(RatesOf(replaced), ElementsAre("35.00"));
  EXPECT_EQ(replaced.Value("EmployeePayrollInfo/PayPeriod"), "Monthly");

  EXPECT_THAT(RatesOf(Change("<ClearEarnings>false</ClearEarnings>")), ElementsAre("35.00"));
  const auto cleared = Change("<ClearEarnings>true</ClearEarnings>");
  EXPECT_THAT(RatesOf(cleared), ElementsAre());
  EXPECT_EQ(cleared.Value("EmployeePayrollInfo/PayPeriod"), "Monthly");
}

TEST_F(Payroll, A_change_may_bring_the_first_payroll_information) {
  id_ = AddId("Employee", "<LastName>Roy</LastName>");
  EXPECT_THAT(RatesOf(Change(Earnings("regular", "20"))), ElementsAre("20.00"));
}

TEST_F(Payroll, A_dead_wage_item_in_a_change_is_refused) { EXPECT_EQ(Change(Earnings("None", "20")).code, 3140); }

}  // namespace

}  // namespace twqb::company
