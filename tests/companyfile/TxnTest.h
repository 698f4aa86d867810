// The fixture of the tests of transactions: a firm with what transactions refer to, and short ways to write them.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

#include "CompanyTest.h"

namespace twqb::company {

inline std::string Tag(std::string_view name, std::string_view content) {
  return std::string("<").append(name).append(">").append(content).append("</").append(name).append(">");
}
inline std::string Named(std::string_view reference, std::string_view fullName) {
  return Tag(reference, Tag("FullName", fullName));
}
inline std::string AddOf(std::string_view kind, std::string_view fields) {
  return Tag(std::string(kind) + "AddRq", Tag(std::string(kind) + "Add", fields));
}
inline std::string QueryOf(std::string_view kind, std::string_view conditions) {
  return Tag(std::string(kind) + "QueryRq", conditions);
}

// Customers Acme with the job Roof, and Beta; vendor Vic; employees Ann Lee, whose time makes paychecks, and Bob Ray,
// of whom that is not known; accounts Checking, Visa, Sales, Rent; class East; service item Design at 100.00; other
// charge Print at a price of 12.00 and a cost of 8.00; payment item Paid; sales tax item County at 8.25%; group Kit of
// two Design and one Print; wage item Regular Pay.
class TxnTest : public CompanyTest {
 protected:
  void SetUp() override { MakeFirm({.country = messages::Country::US, .accepts = {messages::Country::US}}); }

  void MakeFirm(const CompanyOptions& options) {
    MakeFile(options);
    const auto country = options.country;
    std::string requests;
    const auto add = [&](std::string_view kind, std::string_view fields) { requests += AddOf(kind, fields); };
    const auto account = [&](std::string_view name, std::string_view type) {
      add("Account", Tag("Name", name) + Tag("AccountType", type));
    };
    account("Checking", "Bank");
    account("Visa", "CreditCard");
    account("Sales", "Income");
    account("Rent", "Expense");
    add("Customer", Tag("Name", "Acme") + Tag("BillAddress", Tag("Addr1", "1 Main St") + Tag("City", "Springfield")));
    add("Customer", Tag("Name", "Roof") + Named("ParentRef", "Acme"));
    add("Customer", Tag("Name", "Beta"));
    add("Vendor", Tag("Name", "Vic"));
    add("Employee", Tag("FirstName", "Ann") + Tag("LastName", "Lee") +
                        Tag("EmployeePayrollInfo", Tag("IsUsingTimeDataToCreatePaychecks", "true")));
    add("Employee", Tag("FirstName", "Bob") + Tag("LastName", "Ray"));
    add("Class", Tag("Name", "East"));
    add("ItemService",
        Tag("Name", "Design") +
            Tag("SalesOrPurchase", Tag("Desc", "Design work") + Tag("Price", "100.00") + Named("AccountRef", "Sales")));
    add("ItemOtherCharge",
        Tag("Name", "Print") +
            Tag("SalesAndPurchase", Tag("SalesDesc", "Prints") + Tag("SalesPrice", "12.00") +
                                        Named("IncomeAccountRef", "Sales") + Tag("PurchaseDesc", "Printing") +
                                        Tag("PurchaseCost", "8.00") + Named("ExpenseAccountRef", "Rent")));
    add("ItemPayment", Tag("Name", "Paid"));
    add("ItemGroup", Tag("Name", "Kit") + Tag("ItemDesc", "The kit") +
                         Tag("ItemGroupLine", Named("ItemRef", "Design") + Tag("Quantity", "2")) +
                         Tag("ItemGroupLine", Named("ItemRef", "Print")));
    if (country == messages::Country::US) {
      add("ItemSalesTax", Tag("Name", "County") + Tag("TaxRate", "8.25") + Named("TaxVendorRef", "Vic"));
    }
    add("PayrollItemWage",
        Tag("Name", "Regular Pay") + Tag("WageType", "HourlyRegular") + Named("ExpenseAccountRef", "Rent"));
    for (const auto& answer : SendAll(requests, messages::FormTag({country, {3, 0}}))) {
      ASSERT_EQ(answer.code, 0) << answer.node.name() << ": " << answer.message;
    }
  }

  Answer AddTxn(std::string_view kind, std::string_view fields, std::string_view tag = "3.0") {
    return Send(AddOf(kind, fields), tag);
  }
  Answer QueryTxn(std::string_view kind, std::string_view conditions, std::string_view tag = "3.0") {
    return Send(QueryOf(kind, conditions), tag);
  }
  // The answer's identifier; the answer is good.
  std::string IdOf(const Answer& answer) {
    EXPECT_EQ(answer.code, 0) << answer.message;
    return answer.Value("TxnID");
  }
  // An invoice of one line.
  std::string Invoice(std::string_view customer, std::string_view amount, std::string_view more = {}) {
    return IdOf(AddTxn("Invoice", Named("CustomerRef", customer) + std::string(more) +
                                      Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Tag("Amount", amount))));
  }
  std::string CreditMemo(std::string_view customer, std::string_view amount) {
    return IdOf(AddTxn("CreditMemo", Named("CustomerRef", customer) +
                                         Tag("CreditMemoLineAdd", Named("ItemRef", "Design") + Tag("Amount", amount))));
  }
  // A field of a transaction as a query finds it now.
  std::string Field(std::string_view kind, std::string_view txnId, const char* field) {
    return QueryTxn(kind, Tag("TxnID", txnId)).Value(field);
  }
  std::string CustomerField(std::string_view fullName, const char* field) {
    return Send(QueryOf("Customer", Tag("FullName", fullName))).Value(field);
  }
  std::string Balance(std::string_view list, std::string_view fullName) {
    return Send(QueryOf(list, Tag("FullName", fullName))).Value("Balance");
  }
  void Set(std::string_view name, std::string_view value) {
    auto conditions = file_->GetConditions();
    ASSERT_TRUE(FindCondition(name)->set(conditions, value));
    file_->SetConditions(conditions);
  }
  Answer Delete(std::string_view kind, std::string_view txnId) {
    return Send(Tag("TxnDelRq", Tag("TxnDelType", kind) + Tag("TxnID", txnId)));
  }
};

}  // namespace twqb::company
