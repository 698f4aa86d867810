#include "messages/Rows.h"
#include "messages/Tables.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr Element kVendorAdd[] = {
    Text("Name", 41),
    Leaf("IsActive", Type::Bool).Opt(),
    Text("CompanyName", 41).Opt(),
    Text("Salutation", 15).Opt(),
    Text("FirstName", 25).Opt(),
    Text("MiddleName", 5).Opt(),
    Text("LastName", 25).Opt(),
    Aggregate("VendorAddress", kAddress).Opt(),
    Text("Phone", 21).Opt(),
    Text("Mobile", 21).Opt().In(kNowhere),
    Text("AltPhone", 21).Opt(),
    Text("Fax", 21).Opt(),
    Text("Email", 99).Opt(),
    Text("Contact", 41).Opt(),
    Text("AltContact", 41).Opt(),
    Text("NameOnCheck", 41).Opt(),
    Text("AccountNumber", 99).Opt(),
    Text("Notes", 4095).Opt().Since(3, 0),
    Ref<159>("VendorTypeRef").Opt(),
    Ref<31>("TermsRef").Opt(),
    Leaf("CreditLimit", Type::Amt).Opt(),
    Text("VendorTaxIdent", 15).Opt(),
    Leaf("IsVendorEligibleFor1099", Type::Bool).Opt().In(kUnitedStates | kBritain),
    Leaf("IsVendorEligibleForT4A", Type::Bool).Opt().Since(2, 0).In(kCanada),
    Leaf("OpenBalance", Type::Amt).Opt(),
    Leaf("OpenBalanceDate", Type::Date).Opt(),
    Ref<100>("CurrencyRef").Opt().Since(2, 0).In(kCanada),
};

constexpr Element kVendorAddRequest[] = {
    Aggregate("VendorAdd", kVendorAdd),
};

constexpr Element kVendorMod[] = {
    Leaf("ListID", Type::Id),
    Text("EditSequence", 16),
    Text("Name", 41).Opt(),
    Leaf("IsActive", Type::Bool).Opt().Since(3, 0),
    Text("CompanyName", 41).Opt(),
    Text("Salutation", 15).Opt(),
    Text("FirstName", 25).Opt(),
    Text("MiddleName", 5).Opt(),
    Text("LastName", 25).Opt(),
    Aggregate("VendorAddress", kAddress).Opt(),
    Text("Phone", 21).Opt(),
    Text("Mobile", 21).Opt().In(kNowhere),
    Text("AltPhone", 21).Opt(),
    Text("Fax", 21).Opt(),
    Text("Email", 99).Opt(),
    Text("Contact", 41).Opt(),
    Text("AltContact", 41).Opt(),
    Text("NameOnCheck", 41).Opt(),
    Text("AccountNumber", 99).Opt(),
    Text("Notes", 4095).Opt().Since(3, 0),
    Ref<159>("VendorTypeRef").Opt().Since(3, 0),
    Ref<31>("TermsRef").Opt().Since(3, 0),
    Leaf("CreditLimit", Type::Amt).Opt().Since(3, 0),
    Text("VendorTaxIdent", 15).Opt().Since(3, 0),
    Leaf("IsVendorEligibleFor1099", Type::Bool).Opt().Since(3, 0).In(kUnitedStates | kBritain),
    Leaf("IsVendorEligibleForT4A", Type::Bool).Opt().Since(3, 0).In(kCanada),
    Ref<100>("CurrencyRef").Opt().Since(2, 0).In(kCanada),
};

constexpr Element kVendorModRequest[] = {
    Aggregate("VendorMod", kVendorMod),
};

constexpr Element kVendorQueryRequest[] = {
    Choice("ORVendorListQuery", kBalanceListQueryBranches).Opt(),
    Leaf("OwnerID", Type::Guid).Opt().Rep().Since(2, 0),
};

constexpr Element kVendorRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 41),
    Leaf("IsActive", Type::Bool).Opt(),
    Text("CompanyName", 41).Opt(),
    Text("Salutation", 15).Opt(),
    Text("FirstName", 25).Opt(),
    Text("MiddleName", 5).Opt(),
    Text("LastName", 25).Opt(),
    Aggregate("VendorAddress", kAddress).Opt(),
    Text("Phone", 21).Opt(),
    Text("Mobile", 21).Opt().In(kNowhere),
    Text("AltPhone", 21).Opt(),
    Text("Fax", 21).Opt(),
    Text("Email", 99).Opt(),
    Text("Contact", 41).Opt(),
    Text("AltContact", 41).Opt(),
    Text("NameOnCheck", 41).Opt(),
    Text("AccountNumber", 99).Opt(),
    Text("Notes", 4095).Opt(),
    Ref<159>("VendorTypeRef").Opt(),
    Ref<31>("TermsRef").Opt(),
    Leaf("CreditLimit", Type::Amt).Opt(),
    Text("VendorTaxIdent", 15).Opt(),
    Leaf("IsVendorEligibleFor1099", Type::Bool).Opt().In(kUnitedStates | kBritain),
    Leaf("IsVendorEligibleForT4A", Type::Bool).Opt().Since(2, 0).In(kCanada),
    Leaf("Balance", Type::Amt).Opt(),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().Since(2, 0),
    Ref<100>("CurrencyRef").Opt().Since(2, 0).In(kCanada),
};

constexpr Element kVendorQueryResponse[] = {
    Aggregate("VendorRet", kVendorRet).Opt().Rep(),
};

constexpr Element kOneVendor[] = {Aggregate("VendorRet", kVendorRet).Opt()};

constexpr Message kMessages[] = {
    {.name = "VendorAdd", .request = kVendorAddRequest, .response = kOneVendor},
    {.name = "VendorMod", .request = kVendorModRequest, .response = kOneVendor},
    {.name = "VendorQuery", .request = kVendorQueryRequest, .response = kVendorQueryResponse},
};

}  // namespace

std::span<const Message> VendorMessages() { return kMessages; }

}  // namespace twqb::messages
