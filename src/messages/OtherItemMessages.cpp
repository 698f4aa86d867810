#include "messages/Rows.h"
#include "messages/Tables.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr Element kItemInventoryAdd[] = {
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Ref<0>("ParentRef").Opt(),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeForPurchaseRef").Opt().Since(3, 0).In(kCanada | kBritain),
    Ref<3>("TaxCodeForSaleRef").Opt().Since(3, 0).In(kCanada | kBritain),
    Text("SalesDesc", 4095).Opt(),
    Leaf("SalesPrice", Type::Price).Opt(),
    Ref<159>("IncomeAccountRef"),
    Text("PurchaseDesc", 4095).Opt(),
    Leaf("PurchaseCost", Type::Price).Opt(),
    Ref<159>("COGSAccountRef"),
    Ref<41>("PrefVendorRef").Opt(),
    Ref<159>("AssetAccountRef"),
    Leaf("ReorderPoint", Type::Quan).Opt(),
    Leaf("QuantityOnHand", Type::Quan).Opt(),
    Leaf("TotalValue", Type::Amt).Opt(),
    Leaf("InventoryDate", Type::Date).Opt(),
    Leaf("ForeignPrice", Type::Price).Opt().Since(2, 0).In(kCanada),
};

constexpr Element kItemInventoryAddRequest[] = {
    Aggregate("ItemInventoryAdd", kItemInventoryAdd),
};

constexpr Element kItemInventoryMod[] = {
    Leaf("ListID", Type::Id),
    Text("EditSequence", 16),
    Text("Name", 31).Opt(),
    Leaf("IsActive", Type::Bool).Opt(),
    Ref<0>("ParentRef").Opt(),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeForPurchaseRef").Opt().Since(3, 0).In(kCanada | kBritain),
    Ref<3>("TaxCodeForSaleRef").Opt().Since(3, 0).In(kCanada | kBritain),
    Text("SalesDesc", 4095).Opt(),
    Leaf("SalesPrice", Type::Price).Opt(),
    Text("PurchaseDesc", 4095).Opt(),
    Leaf("PurchaseCost", Type::Price).Opt(),
    Ref<159>("COGSAccountRef").Opt(),
    Ref<41>("PrefVendorRef").Opt(),
    Ref<159>("AssetAccountRef").Opt(),
    Leaf("ReorderPoint", Type::Quan).Opt(),
    Leaf("ForeignPrice", Type::Price).Opt().Since(2, 0).In(kCanada),
};

constexpr Element kItemInventoryModRequest[] = {
    Aggregate("ItemInventoryMod", kItemInventoryMod),
};

constexpr Element kItemInventoryRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 31),
    Text("FullName", 159),
    Leaf("IsActive", Type::Bool).Opt(),
    Ref<0>("ParentRef").Opt(),
    Leaf("Sublevel", Type::Int),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeForPurchaseRef").Opt().Since(3, 0).In(kCanada | kBritain),
    Ref<3>("TaxCodeForSaleRef").Opt().Since(3, 0).In(kCanada | kBritain),
    Text("SalesDesc", 4095).Opt(),
    Leaf("SalesPrice", Type::Price).Opt(),
    Ref<159>("IncomeAccountRef"),
    Text("PurchaseDesc", 4095).Opt(),
    Leaf("PurchaseCost", Type::Price).Opt(),
    Ref<159>("COGSAccountRef"),
    Ref<41>("PrefVendorRef").Opt(),
    Ref<159>("AssetAccountRef"),
    Leaf("ReorderPoint", Type::Quan).Opt(),
    Leaf("QuantityOnHand", Type::Quan).Opt(),
    Leaf("AverageCost", Type::Price).Opt(),
    Leaf("QuantityOnOrder", Type::Quan).Opt(),
    Leaf("QuantityOnSalesOrder", Type::Quan).Opt().Since(2, 0),
    Leaf("ForeignPrice", Type::Price).Opt().Since(2, 0).In(kCanada),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().Since(2, 0),
};

constexpr Element kItemInventoryQueryResponse[] = {
    Aggregate("ItemInventoryRet", kItemInventoryRet).Opt().Rep(),
};

constexpr Element kItemGroupLine[] = {
    Ref<0>("ItemRef").Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
};

constexpr Element kItemGroupAdd[] = {
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Text("ItemDesc", 4095).Opt(),
    Leaf("IsPrintItemsInGroup", Type::Bool).Opt(),
    Aggregate("ItemGroupLine", kItemGroupLine).Opt().Rep(),
};

constexpr Element kItemGroupAddRequest[] = {
    Aggregate("ItemGroupAdd", kItemGroupAdd),
};

constexpr Element kItemGroupRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Text("ItemDesc", 4095).Opt(),
    Leaf("IsPrintItemsInGroup", Type::Bool).Opt(),
    Aggregate("ItemGroupLine", kItemGroupLine).Opt().Rep(),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().Since(2, 0),
};

constexpr Element kItemGroupQueryResponse[] = {
    Aggregate("ItemGroupRet", kItemGroupRet).Opt().Rep(),
};

constexpr Element kItemPaymentAdd[] = {
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Text("ItemDesc", 4095).Opt(),
    Ref<159>("DepositToAccountRef").Opt(),
    Ref<31>("PaymentMethodRef").Opt(),
};

constexpr Element kItemPaymentAddRequest[] = {
    Aggregate("ItemPaymentAdd", kItemPaymentAdd),
};

constexpr Element kItemPaymentRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Text("ItemDesc", 4095).Opt(),
    Ref<159>("DepositToAccountRef").Opt(),
    Ref<31>("PaymentMethodRef").Opt(),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kItemPaymentQueryResponse[] = {
    Aggregate("ItemPaymentRet", kItemPaymentRet).Opt().Rep(),
};

constexpr Element kItemSalesTaxAdd[] = {
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Text("ItemDesc", 4095).Opt(),
    Leaf("TaxRate", Type::Percent).Opt(),
    Ref<41>("TaxVendorRef").Opt(),
};

constexpr Element kItemSalesTaxAddRequest[] = {
    Aggregate("ItemSalesTaxAdd", kItemSalesTaxAdd),
};

constexpr Element kItemSalesTaxRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Text("ItemDesc", 4095).Opt(),
    Leaf("TaxRate", Type::Percent).Opt(),
    Ref<41>("TaxVendorRef").Opt(),
    Aggregate("DataExtRet", kDataExt).Opt().Rep(),
};

constexpr Element kItemSalesTaxQueryResponse[] = {
    Aggregate("ItemSalesTaxRet", kItemSalesTaxRet).Opt().Rep(),
};

constexpr Element kOneItemInventory[] = {Aggregate("ItemInventoryRet", kItemInventoryRet).Opt()};
constexpr Element kOneItemGroup[] = {Aggregate("ItemGroupRet", kItemGroupRet).Opt()};
constexpr Element kOneItemPayment[] = {Aggregate("ItemPaymentRet", kItemPaymentRet).Opt()};
constexpr Element kOneItemSalesTax[] = {Aggregate("ItemSalesTaxRet", kItemSalesTaxRet).Opt()};

constexpr Message kMessages[] = {
    {.name = "ItemInventoryAdd", .request = kItemInventoryAddRequest, .response = kOneItemInventory},
    {.name = "ItemInventoryMod", .request = kItemInventoryModRequest, .response = kOneItemInventory},
    {.name = "ItemInventoryQuery", .request = kOwnedListQuery, .response = kItemInventoryQueryResponse},
    {.name = "ItemGroupAdd", .request = kItemGroupAddRequest, .response = kOneItemGroup},
    {.name = "ItemGroupQuery", .request = kOwnedListQuery, .response = kItemGroupQueryResponse},
    {.name = "ItemPaymentAdd", .request = kItemPaymentAddRequest, .response = kOneItemPayment},
    {.name = "ItemPaymentQuery", .request = kOwnedListQuery, .response = kItemPaymentQueryResponse},
    {.name = "ItemSalesTaxAdd",
     .request = kItemSalesTaxAddRequest,
     .response = kOneItemSalesTax,
     .countries = kUnitedStates},
    {.name = "ItemSalesTaxQuery",
     .request = kOwnedListQuery,
     .response = kItemSalesTaxQueryResponse,
     .countries = kUnitedStates},
};

}  // namespace

std::span<const Message> OtherItemMessages() { return kMessages; }

}  // namespace twqb::messages
