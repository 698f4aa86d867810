#include "messages/Rows.h"
#include "messages/Tables.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr Element kPriceBranches[] = {
    Leaf("Price", Type::Price),
    Leaf("PricePercent", Type::Percent),
};

constexpr Element kSalesOrPurchase[] = {
    Text("Desc", 4095).Opt(),
    Choice("ORPrice", kPriceBranches).Opt(),
    Ref<159>("AccountRef"),
};

constexpr Element kSalesAndPurchase[] = {
    Text("SalesDesc", 4095).Opt(),    Leaf("SalesPrice", Type::Price).Opt(),   Ref<159>("IncomeAccountRef"),
    Text("PurchaseDesc", 4095).Opt(), Leaf("PurchaseCost", Type::Price).Opt(), Ref<159>("ExpenseAccountRef"),
    Ref<41>("PrefVendorRef").Opt(),
};

constexpr Element kSalesPurchaseBranches[] = {
    Aggregate("SalesOrPurchase", kSalesOrPurchase),
    Aggregate("SalesAndPurchase", kSalesAndPurchase),
};

constexpr Element kItemServiceAdd[] = {
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Ref<0>("ParentRef").Opt(),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeForPurchaseRef").Opt().Since(3, 0).In(kCanada | kBritain),
    Ref<3>("TaxCodeForSaleRef").Opt().Since(3, 0).In(kCanada | kBritain),
    Choice("ORSalesPurchase", kSalesPurchaseBranches),
    Leaf("ForeignPrice", Type::Price).Opt().Since(2, 0).In(kCanada),
};

constexpr Element kItemServiceAddRequest[] = {
    Aggregate("ItemServiceAdd", kItemServiceAdd),
};

constexpr Element kSalesOrPurchaseMod[] = {
    Text("Desc", 4095).Opt(),
    Choice("ORPrice", kPriceBranches).Opt(),
};

constexpr Element kSalesAndPurchaseMod[] = {
    Text("SalesDesc", 4095).Opt(),           Leaf("SalesPrice", Type::Price).Opt(), Text("PurchaseDesc", 4095).Opt(),
    Leaf("PurchaseCost", Type::Price).Opt(), Ref<41>("PrefVendorRef").Opt(),
};

constexpr Element kSalesPurchaseModBranches[] = {
    Aggregate("SalesOrPurchaseMod", kSalesOrPurchaseMod),
    Aggregate("SalesAndPurchaseMod", kSalesAndPurchaseMod),
};

constexpr Element kItemServiceMod[] = {
    Leaf("ListID", Type::Id),
    Text("EditSequence", 16),
    Text("Name", 31).Opt(),
    Leaf("IsActive", Type::Bool).Opt(),
    Ref<0>("ParentRef").Opt(),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeForPurchaseRef").Opt().Since(3, 0).In(kCanada | kBritain),
    Ref<3>("TaxCodeForSaleRef").Opt().Since(3, 0).In(kCanada | kBritain),
    Choice("ORSalesPurchaseMod", kSalesPurchaseModBranches).Opt(),
    Leaf("ForeignPrice", Type::Price).Opt().Since(2, 0).In(kCanada),
};

constexpr Element kItemServiceModRequest[] = {
    Aggregate("ItemServiceMod", kItemServiceMod),
};

constexpr Element kItemServiceRet[] = {
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
    Choice("ORSalesPurchase", kSalesPurchaseBranches),
    Leaf("ForeignPrice", Type::Price).Opt().Since(2, 0).In(kCanada),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().Since(2, 0),
};

constexpr Element kItemServiceQueryResponse[] = {
    Aggregate("ItemServiceRet", kItemServiceRet).Opt().Rep(),
};

constexpr Element kItemOtherChargeAddRequest[] = {
    Aggregate("ItemOtherChargeAdd", kItemServiceAdd),
};

constexpr Element kItemOtherChargeModRequest[] = {
    Aggregate("ItemOtherChargeMod", kItemServiceMod),
};

constexpr Element kItemOtherChargeRet[] = {
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
    Choice("ORSalesPurchase", kSalesPurchaseBranches),
    Leaf("ForeignPrice", Type::Price).Opt().Since(2, 0).In(kCanada),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kItemOtherChargeQueryResponse[] = {
    Aggregate("ItemOtherChargeRet", kItemOtherChargeRet).Opt().Rep(),
};

constexpr Element kItemNonInventoryAddRequest[] = {
    Aggregate("ItemNonInventoryAdd", kItemServiceAdd),
};

constexpr Element kItemNonInventoryModRequest[] = {
    Aggregate("ItemNonInventoryMod", kItemServiceMod),
};

constexpr Element kItemNonInventoryQueryResponse[] = {
    Aggregate("ItemNonInventoryRet", kItemServiceRet).Opt().Rep(),
};

constexpr Element kOneItemService[] = {Aggregate("ItemServiceRet", kItemServiceRet).Opt()};
constexpr Element kOneItemOtherCharge[] = {Aggregate("ItemOtherChargeRet", kItemOtherChargeRet).Opt()};
constexpr Element kOneItemNonInventory[] = {Aggregate("ItemNonInventoryRet", kItemServiceRet).Opt()};

constexpr Message kMessages[] = {
    {.name = "ItemServiceAdd", .request = kItemServiceAddRequest, .response = kOneItemService},
    {.name = "ItemServiceMod", .request = kItemServiceModRequest, .response = kOneItemService},
    {.name = "ItemServiceQuery", .request = kOwnedListQuery, .response = kItemServiceQueryResponse},
    {.name = "ItemOtherChargeAdd", .request = kItemOtherChargeAddRequest, .response = kOneItemOtherCharge},
    {.name = "ItemOtherChargeMod", .request = kItemOtherChargeModRequest, .response = kOneItemOtherCharge},
    {.name = "ItemOtherChargeQuery", .request = kOwnedListQuery, .response = kItemOtherChargeQueryResponse},
    {.name = "ItemNonInventoryAdd", .request = kItemNonInventoryAddRequest, .response = kOneItemNonInventory},
    {.name = "ItemNonInventoryMod", .request = kItemNonInventoryModRequest, .response = kOneItemNonInventory},
    {.name = "ItemNonInventoryQuery", .request = kOwnedListQuery, .response = kItemNonInventoryQueryResponse},
};

}  // namespace

std::span<const Message> SalesItemMessages() { return kMessages; }

}  // namespace twqb::messages
