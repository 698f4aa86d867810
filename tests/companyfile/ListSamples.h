// A right Add of each kind of list record in each country form that has it, and the records that these Adds name.
//
// What one kind has otherwise than the others is a row of data here; the tests over all kinds are in
// ListMatrixTest.cpp.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "messages/Schema.h"

namespace twqb::company {

struct ListSample {
  std::string kind;
  messages::Country country;
  std::string fields;  // of the Add, the record's name first
  std::string change;  // fields of a Mod that say something new; empty: the kind has no Mod

  [[nodiscard]] std::string Tag() const { return messages::FormTag({.country = country, .version = {3, 0}}); }
  [[nodiscard]] std::string NameElement() const { return kind == "Employee" ? "FirstName" : "Name"; }
};

// For messages of the test framework.
inline void PrintTo(const ListSample& sample, std::ostream* out) { *out << sample.kind << " " << sample.Tag(); }

inline std::string RefTo(std::string_view field, std::string_view fullName) {
  std::string text = "<";
  text.append(field).append("><FullName>").append(fullName).append("</FullName></").append(field).append(">");
  return text;
}

// What the Adds name, as requests of the form.
inline std::string ListSampleTargets(messages::Country country) {
  const auto add = [](const std::string& kind, const std::string& fields) {
    return "<" + kind + "AddRq><" + kind + "Add>" + fields + "</" + kind + "Add></" + kind + "AddRq>";
  };
  const auto account = [&](const std::string& name, const std::string& type) {
    return add("Account", "<Name>" + name + "</Name><AccountType>" + type + "</AccountType>");
  };
  auto requests =
      account("Fees", "Income") + account("Wages", "Expense") + account("Goods", "CostOfGoodsSold") +
      account("Stock", "OtherCurrentAsset") + add("Vendor", "<Name>Supplier</Name>") +
      add("Class", "<Name>East</Name>") + add("JobType", "<Name>Roofing</Name>") +
      add("ItemService", "<Name>Base</Name><SalesOrPurchase>" + RefTo("AccountRef", "Fees") + "</SalesOrPurchase>") +
      add("PayrollItemWage",
          "<Name>Base Pay</Name><WageType>HourlyRegular</WageType>" + RefTo("ExpenseAccountRef", "Wages"));
  if (country == messages::Country::US) requests += add("ItemSalesTax", "<Name>County Tax</Name>");
  return requests;
}

inline std::vector<ListSample> ListSamples() {
  using messages::Country;
  std::vector<ListSample> samples;
  for (const auto country : {Country::US, Country::CA, Country::UK}) {
    const bool us = country == Country::US;
    const std::string region = us                       ? "<State>MA</State>"
                               : country == Country::CA ? "<Province>ON</Province>"
                                                        : "<County>Kent</County>";
    const std::string number = us                       ? "<SSN>987-65-4320</SSN>"
                               : country == Country::CA ? "<SIN>046 454 286</SIN>"
                                                        : "<NiNumber>AB 12 34 56 C</NiNumber>";
    const auto address = [&](const std::string& name) {
      return "<" + name + "><Addr1>1 Main St</Addr1><City>Hadley</City>" + region + "<PostalCode>01035</PostalCode></" +
             name + ">";
    };
    const std::string code = us ? RefTo("SalesTaxCodeRef", "Non") : RefTo("TaxCodeRef", "E");
    const std::string itemCode = us ? RefTo("SalesTaxCodeRef", "Non") : RefTo("TaxCodeForSaleRef", "E");
    const auto put = [&](std::string kind, std::string fields, std::string change = {}) {
      samples.push_back({std::move(kind), country, std::move(fields), std::move(change)});
    };
    put("Customer",
        "<Name>Sample</Name><IsActive>true</IsActive><CompanyName>Co</CompanyName>" + address("BillAddress") +
            "<Phone>1</Phone>" + RefTo("CustomerTypeRef", "Retail") + RefTo("TermsRef", "Net 30") +
            "<OpenBalance>97.50</OpenBalance>" + code + "<CreditLimit>1000.00</CreditLimit>" +
            RefTo("PreferredPaymentMethodRef", "Visa") + RefTo("JobTypeRef", "Roofing") + "<Notes>n</Notes>",
        "<Phone>2</Phone>");
    put("Vendor",
        "<Name>Sample</Name><IsActive>true</IsActive><CompanyName>Co</CompanyName>" + address("VendorAddress") +
            "<Notes>n</Notes>" + RefTo("VendorTypeRef", "Suppliers") + RefTo("TermsRef", "Net 15") +
            "<CreditLimit>50.00</CreditLimit><VendorTaxIdent>12-3</VendorTaxIdent>"
            "<OpenBalance>97.50</OpenBalance>",
        "<Phone>2</Phone>");
    put("Employee",
        "<IsActive>true</IsActive><FirstName>Sample</FirstName><MiddleName>Q.</MiddleName><LastName>Cho</LastName>" +
            address("EmployeeAddress") + "<Phone>1</Phone>" + number +
            "<EmployeeType>Officer</EmployeeType><HiredDate>2008-01-07</HiredDate><EmployeePayrollInfo>" +
            RefTo("ClassRef", "East") + "<Earnings>" + RefTo("PayrollItemWageRef", "Base Pay") +
            "<Rate>20.00</Rate></Earnings><UseTimeDataToCreatePaychecks>UseTimeData</UseTimeDataToCreatePaychecks>"
            "</EmployeePayrollInfo>",
        "<Phone>2</Phone>");
    put("Account",
        "<Name>Sample</Name><IsActive>true</IsActive><AccountType>Bank</AccountType><AccountNumber>1000</AccountNumber>"
        "<BankNumber>5</BankNumber><Desc>d</Desc><OpenBalance>97.50</OpenBalance>"
        "<OpenBalanceDate>2008-01-01</OpenBalanceDate>" +
            (us ? std::string{} : RefTo("TaxCodeRef", "E")));
    for (const char* kind : {"ItemService", "ItemOtherCharge", "ItemNonInventory"}) {
      put(kind,
          "<Name>Sample</Name><IsActive>true</IsActive>" + itemCode +
              "<SalesAndPurchase><SalesDesc>s</SalesDesc><SalesPrice>75.00</SalesPrice>" +
              RefTo("IncomeAccountRef", "Fees") + "<PurchaseDesc>p</PurchaseDesc><PurchaseCost>40.125</PurchaseCost>" +
              RefTo("ExpenseAccountRef", "Wages") + RefTo("PrefVendorRef", "Supplier") + "</SalesAndPurchase>",
          "<SalesAndPurchaseMod><SalesDesc>t</SalesDesc></SalesAndPurchaseMod>");
    }
    put("ItemInventory",
        "<Name>Sample</Name><IsActive>true</IsActive>" + itemCode + "<SalesDesc>s</SalesDesc>" +
            RefTo("IncomeAccountRef", "Fees") + RefTo("COGSAccountRef", "Goods") + RefTo("PrefVendorRef", "Supplier") +
            RefTo("AssetAccountRef", "Stock") + "<QuantityOnHand>5</QuantityOnHand><TotalValue>50.00</TotalValue>",
        "<SalesDesc>t</SalesDesc>");
    put("ItemGroup",
        "<Name>Sample</Name><IsActive>true</IsActive><ItemDesc>d</ItemDesc>"
        "<IsPrintItemsInGroup>true</IsPrintItemsInGroup><ItemGroupLine>" +
            RefTo("ItemRef", "Base") + "<Quantity>2</Quantity></ItemGroupLine>");
    put("ItemPayment", "<Name>Sample</Name><IsActive>true</IsActive><ItemDesc>d</ItemDesc>" +
                           RefTo("DepositToAccountRef", "Stock") + RefTo("PaymentMethodRef", "Visa"));
    put("Class", "<Name>Sample</Name><IsActive>true</IsActive>");
    put("JobType", "<Name>Sample</Name><IsActive>true</IsActive>");
    put("CustomerType", "<Name>Sample</Name><IsActive>true</IsActive>");
    put("VendorType", "<Name>Sample</Name><IsActive>true</IsActive>");
    put("StandardTerms",
        "<Name>Sample</Name><IsActive>true</IsActive><StdDueDays>45</StdDueDays><StdDiscountDays>5</StdDiscountDays>"
        "<DiscountPct>1.5</DiscountPct>");
    put("DateDrivenTerms",
        "<Name>Sample</Name><IsActive>true</IsActive><DayOfMonthDue>15</DayOfMonthDue>"
        "<DueNextMonthDays>5</DueNextMonthDays><DiscountDayOfMonth>1</DiscountDayOfMonth>"
        "<DiscountPct>2</DiscountPct>");
    put("PaymentMethod", "<Name>Sample</Name><IsActive>true</IsActive>");
    put("PayrollItemWage",
        "<Name>Sample</Name><IsActive>true</IsActive><WageType>Bonus</WageType>" + RefTo("ExpenseAccountRef", "Wages"));
    if (us) {
      put("ItemSalesTax", "<Name>Sample</Name><IsActive>true</IsActive><ItemDesc>d</ItemDesc><TaxRate>7.75</TaxRate>" +
                              RefTo("TaxVendorRef", "Supplier"));
      put("SalesTaxCode", "<Name>Smp</Name><IsActive>true</IsActive><IsTaxable>true</IsTaxable><Desc>d</Desc>");
    } else {
      put("TaxCode",
          "<Name>Smp</Name><IsActive>true</IsActive><Desc>d</Desc><Tax1Rate>7.5</Tax1Rate>"
          "<IsTax2Exempt>true</IsTax2Exempt>");
    }
  }
  return samples;
}

}  // namespace twqb::company
