#include "messages/Rows.h"
#include "messages/Tables.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr EnumValue kListDelTypes[] = {{.name = "Account", .number = 0},
                                       {.name = "Customer", .number = 2},
                                       {.name = "Employee", .number = 6},
                                       {.name = "OtherName", .number = 20},
                                       {.name = "Vendor", .number = 30},
                                       {.name = "StandardTerms", .number = 28},
                                       {.name = "DateDrivenTerms", .number = 5},
                                       {.name = "Class", .number = 1},
                                       {.name = "SalesRep", .number = 25},
                                       {.name = "CustomerType", .number = 4},
                                       {.name = "VendorType", .number = 31},
                                       {.name = "JobType", .number = 19},
                                       {.name = "CustomerMsg", .number = 3},
                                       {.name = "PaymentMethod", .number = 21},
                                       {.name = "ShipMethod", .number = 27},
                                       {.name = "SalesTaxCode", .number = 26, .countries = kUnitedStates | kBritain},
                                       {.name = "ToDo", .number = 29},
                                       {.name = "ItemService", .number = 17},
                                       {.name = "ItemNonInventory", .number = 12},
                                       {.name = "ItemOtherCharge", .number = 13},
                                       {.name = "ItemInventory", .number = 10},
                                       {.name = "ItemInventoryAssembly", .number = 11},
                                       {.name = "ItemFixedAsset", .number = 8},
                                       {.name = "ItemSubtotal", .number = 18},
                                       {.name = "ItemDiscount", .number = 7},
                                       {.name = "ItemPayment", .number = 14},
                                       {.name = "ItemSalesTax", .number = 15},
                                       {.name = "ItemSalesTaxGroup", .number = 16},
                                       {.name = "ItemGroup", .number = 9},
                                       {.name = "Currency", .number = 32, .countries = kCanada},
                                       {.name = "TaxCode", .number = 33, .countries = kCanada}};
constexpr EnumValue kTxnDelTypes[] = {
    {.name = "Bill", .number = 1},
    {.name = "BillPaymentCheck", .number = 2},
    {.name = "BillPaymentCreditCard", .number = 3},
    {.name = "Charge", .number = 5},
    {.name = "Check", .number = 6},
    {.name = "CreditCardCharge", .number = 7},
    {.name = "CreditCardCredit", .number = 8},
    {.name = "CreditMemo", .number = 9},
    {.name = "Deposit", .number = 10},
    {.name = "Estimate", .number = 11},
    {.name = "Invoice", .number = 13},
    {.name = "InventoryAdjustment", .number = 12},
    {.name = "ItemReceipt", .number = 14},
    {.name = "JournalEntry", .number = 15},
    {.name = "PurchaseOrder", .number = 16},
    {.name = "ReceivePayment", .number = 17},
    {.name = "SalesOrder", .number = 18},
    {.name = "SalesReceipt", .number = 19},
    {.name = "SalesTaxPaymentCheck", .number = 20, .countries = kUnitedStates | kBritain},
    {.name = "TimeTracking", .number = 21},
    {.name = "VendorCredit", .number = 22}};
constexpr EnumValue kTxnDisplayModTypes[] = {
    {"Bill", 0},         {"BillPaymentCheck", 1}, {"BillPaymentCreditCard", 2}, {"Charge", 3},
    {"Check", 4},        {"CreditCardCharge", 5}, {"CreditCardCredit", 6},      {"CreditMemo", 7},
    {"Deposit", 8},      {"Estimate", 9},         {"InventoryAdjustment", 10},  {"Invoice", 11},
    {"ItemReceipt", 12}, {"JournalEntry", 13},    {"PurchaseOrder", 14},        {"ReceivePayment", 15},
    {"SalesOrder", 16},  {"SalesReceipt", 17},    {"SalesTaxPaymentCheck", 18}, {"VendorCredit", 19}};

constexpr Element kListDelRequest[] = {
    Enumeration("ListDelType", kListDelTypes),
    Leaf("ListID", Type::Id),
};

constexpr Element kListDelResponse[] = {
    Enumeration("ListDelType", kListDelTypes).Opt(),
    Leaf("ListID", Type::Id).Opt(),
    Leaf("TimeDeleted", Type::DateTime).Opt(),
    Text("FullName").Opt(),
};

constexpr Element kTxnDelRequest[] = {
    Enumeration("TxnDelType", kTxnDelTypes),
    Leaf("TxnID", Type::Id),
};

constexpr Element kTxnDelResponse[] = {
    Enumeration("TxnDelType", kTxnDelTypes).Opt(),
    Leaf("TxnID", Type::Id).Opt(),
    Leaf("TimeDeleted", Type::DateTime).Opt(),
    Text("RefNumber").Opt(),
};

constexpr Element kTxnDisplayModRequest[] = {
    Enumeration("TxnDisplayModType", kTxnDisplayModTypes),
    Leaf("TxnID", Type::Id),
};

constexpr Message kMessages[] = {
    {.name = "ListDel", .request = kListDelRequest, .response = kListDelResponse},
    {.name = "TxnDel", .request = kTxnDelRequest, .response = kTxnDelResponse},
    {.name = "TxnDisplayMod", .request = kTxnDisplayModRequest, .response = {}},
};

}  // namespace

std::span<const Message> DeletionMessages() { return kMessages; }

}  // namespace twqb::messages
