#include "messages/Rows.h"
#include "messages/Tables.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr EnumValue kJobStatuses[] = {{"Awarded", 0}, {"Closed", 1},     {"InProgress", 2},
                                      {"None", 3},    {"NotAwarded", 4}, {"Pending", 5}};

constexpr Element kCustomerAdd[] = {
    Text("Name", 41),
    Leaf("IsActive", Type::Bool).Opt(),
    Ref<0>("ParentRef").Opt(),
    Text("CompanyName", 41).Opt(),
    Text("Salutation", 15).Opt(),
    Text("FirstName", 25).Opt(),
    Text("MiddleName", 5).Opt(),
    Text("LastName", 25).Opt(),
    Aggregate("BillAddress", kAddress).Opt(),
    Aggregate("ShipAddress", kAddress).Opt(),
    Text("Phone", 21).Opt(),
    Text("AltPhone", 21).Opt(),
    Text("Fax", 21).Opt(),
    Text("Email", 99).Opt(),
    Text("Contact", 41).Opt(),
    Text("AltContact", 41).Opt(),
    Ref<159>("CustomerTypeRef").Opt(),
    Ref<31>("TermsRef").Opt(),
    Ref<5>("SalesRepRef").Opt(),
    Leaf("OpenBalance", Type::Amt).Opt(),
    Leaf("OpenBalanceDate", Type::Date).Opt(),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<31>("ItemSalesTaxRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
    Text("ResaleNumber", 15).Opt(),
    Text("AccountNumber", 99).Opt(),
    Leaf("CreditLimit", Type::Amt).Opt(),
    Ref<31>("PreferredPaymentMethodRef").Opt().Since(3, 0),
    Aggregate("CreditCardInfo", kCreditCardInfo).Opt().Since(3, 0),
    Enumeration("JobStatus", kJobStatuses).Opt(),
    Leaf("JobStartDate", Type::Date).Opt(),
    Leaf("JobProjectedEndDate", Type::Date).Opt(),
    Leaf("JobEndDate", Type::Date).Opt(),
    Text("JobDesc", 99).Opt(),
    Ref<159>("JobTypeRef").Opt(),
    Text("Notes", 4095).Opt().Since(3, 0),
    Ref<100>("CurrencyRef").Opt().Since(2, 0).In(kCanada),
    Leaf("IsUsingCustomerTaxCode", Type::Bool).Opt().Since(3, 0).In(kCanada),
};

constexpr Element kCustomerMod[] = {
    Leaf("ListID", Type::Id),
    Text("EditSequence", 16),
    Text("Name", 41).Opt(),
    Leaf("IsActive", Type::Bool).Opt().Since(3, 0),
    Ref<0>("ParentRef").Opt().Since(3, 0),
    Text("CompanyName", 41).Opt(),
    Text("Salutation", 15).Opt(),
    Text("FirstName", 25).Opt(),
    Text("MiddleName", 5).Opt(),
    Text("LastName", 25).Opt(),
    Aggregate("BillAddress", kAddress).Opt(),
    Aggregate("ShipAddress", kAddress).Opt(),
    Text("Phone", 21).Opt(),
    Text("AltPhone", 21).Opt(),
    Text("Fax", 21).Opt(),
    Text("Email", 99).Opt(),
    Text("Contact", 41).Opt(),
    Text("AltContact", 41).Opt(),
    Ref<159>("CustomerTypeRef").Opt().Since(3, 0),
    Ref<31>("TermsRef").Opt().Since(3, 0),
    Ref<5>("SalesRepRef").Opt().Since(3, 0),
    Ref<3>("SalesTaxCodeRef").Opt().Since(3, 0).In(kUnitedStates),
    Ref<31>("ItemSalesTaxRef").Opt().Since(3, 0).In(kUnitedStates),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
    Text("ResaleNumber", 15).Opt().Since(3, 0),
    Text("AccountNumber", 99).Opt(),
    Leaf("CreditLimit", Type::Amt).Opt().Since(3, 0),
    Ref<31>("PreferredPaymentMethodRef").Opt().Since(3, 0),
    Aggregate("CreditCardInfo", kCreditCardInfo).Opt().Since(3, 0),
    Enumeration("JobStatus", kJobStatuses).Opt().Since(3, 0),
    Leaf("JobStartDate", Type::Date).Opt().Since(3, 0),
    Leaf("JobProjectedEndDate", Type::Date).Opt().Since(3, 0),
    Leaf("JobEndDate", Type::Date).Opt().Since(3, 0),
    Text("JobDesc", 99).Opt().Since(3, 0),
    Ref<159>("JobTypeRef").Opt().Since(3, 0),
    Text("Notes", 4095).Opt().Since(3, 0),
    Ref<100>("CurrencyRef").Opt().Since(2, 0).In(kCanada),
    Leaf("IsUsingCustomerTaxCode", Type::Bool).Opt().Since(3, 0).In(kCanada),
};

constexpr Element kCustomerRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 41),
    Text("FullName", 209),
    Leaf("IsActive", Type::Bool).Opt(),
    Ref<0>("ParentRef").Opt(),
    Leaf("Sublevel", Type::Int),
    Text("CompanyName", 41).Opt(),
    Text("Salutation", 15).Opt(),
    Text("FirstName", 25).Opt(),
    Text("MiddleName", 5).Opt(),
    Text("LastName", 25).Opt(),
    Aggregate("BillAddress", kAddress).Opt(),
    Aggregate("ShipAddress", kAddress).Opt(),
    Text("Phone", 21).Opt(),
    Text("AltPhone", 21).Opt(),
    Text("Fax", 21).Opt(),
    Text("Email", 99).Opt(),
    Text("Contact", 41).Opt(),
    Text("AltContact", 41).Opt(),
    Ref<159>("CustomerTypeRef").Opt(),
    Ref<31>("TermsRef").Opt(),
    Ref<5>("SalesRepRef").Opt(),
    Leaf("Balance", Type::Amt).Opt(),
    Leaf("TotalBalance", Type::Amt).Opt(),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<31>("ItemSalesTaxRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
    Text("ResaleNumber", 15).Opt(),
    Text("AccountNumber", 99).Opt(),
    Leaf("CreditLimit", Type::Amt).Opt(),
    Ref<31>("PreferredPaymentMethodRef").Opt().Since(3, 0),
    Aggregate("CreditCardInfo", kCreditCardInfo).Opt().Since(3, 0),
    Enumeration("JobStatus", kJobStatuses).Opt(),
    Leaf("JobStartDate", Type::Date).Opt(),
    Leaf("JobProjectedEndDate", Type::Date).Opt(),
    Leaf("JobEndDate", Type::Date).Opt(),
    Text("JobDesc", 99).Opt(),
    Ref<159>("JobTypeRef").Opt(),
    Text("Notes", 4095).Opt(),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().Since(2, 0),
    Ref<100>("CurrencyRef").Opt().Since(2, 0).In(kCanada),
    Leaf("IsUsingCustomerTaxCode", Type::Bool).Opt().Since(3, 0).In(kCanada),
};

constexpr Element kAddRequest[] = {Aggregate("CustomerAdd", kCustomerAdd)};
constexpr Element kModRequest[] = {Aggregate("CustomerMod", kCustomerMod)};
constexpr Element kQueryRequest[] = {
    Choice("ORCustomerListQuery", kBalanceListQueryBranches).Opt(),
    Leaf("OwnerID", Type::Guid).Opt().Rep().Since(2, 0),
};
constexpr Element kOneRecord[] = {Aggregate("CustomerRet", kCustomerRet).Opt()};
constexpr Element kRecordList[] = {Aggregate("CustomerRet", kCustomerRet).Opt().Rep()};

constexpr Message kMessages[] = {
    {.name = "CustomerAdd", .request = kAddRequest, .response = kOneRecord},
    {.name = "CustomerMod", .request = kModRequest, .response = kOneRecord},
    {.name = "CustomerQuery", .request = kQueryRequest, .response = kRecordList},
};

}  // namespace

std::span<const Message> CustomerMessages() { return kMessages; }

}  // namespace twqb::messages
