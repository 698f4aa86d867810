#include "messages/Rows.h"
#include "messages/Tables.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr EnumValue kDeliveryPolicies[] = {{"DeliverAlways", 0}, {"DeliverOnlyIfRunning", 1}};
constexpr EnumValue kTrackLostEvents[] = {{"None", 0}, {"All", 1}};
constexpr EnumValue kListEventTypes[] = {
    {.name = "Account", .number = 0},
    {.name = "Customer", .number = 2},
    {.name = "Employee", .number = 6},
    {.name = "OtherName", .number = 20},
    {.name = "Vendor", .number = 28},
    {.name = "StandardTerms", .number = 26},
    {.name = "DateDrivenTerms", .number = 5},
    {.name = "Class", .number = 1},
    {.name = "SalesRep", .number = 23},
    {.name = "CustomerType", .number = 4},
    {.name = "VendorType", .number = 29},
    {.name = "JobType", .number = 19},
    {.name = "CustomerMsg", .number = 3},
    {.name = "PaymentMethod", .number = 21},
    {.name = "ShipMethod", .number = 25},
    {.name = "TaxCode", .number = 31, .countries = kCanada},
    {.name = "Currency", .number = 30, .countries = kCanada},
    {.name = "SalesTaxCode", .number = 24, .countries = kUnitedStates | kBritain},
    {.name = "ToDo", .number = 27},
    {.name = "ItemService", .number = 17},
    {.name = "ItemNonInventory", .number = 12},
    {.name = "ItemOtherCharge", .number = 13},
    {.name = "ItemInventory", .number = 10},
    {.name = "ItemInventoryAssembly", .number = 11},
    {.name = "ItemFixedAsset", .number = 8},
    {.name = "ItemSubtotal", .number = 18},
    {.name = "ItemDiscount", .number = 7},
    {.name = "ItemPayment", .number = 14},
    {.name = "ItemSalesTax", .number = 15, .countries = kUnitedStates | kBritain},
    {.name = "ItemSalesTaxGroup", .number = 16, .countries = kUnitedStates | kBritain},
    {.name = "ItemGroup", .number = 9}};
constexpr EnumValue kListEventOperations[] = {{"Add", 0}, {"Modify", 3}, {"Delete", 1}, {"Merge", 2}};
constexpr EnumValue kTxnEventTypes[] = {{"Bill", 1},
                                        {"BillPaymentCheck", 2},
                                        {"BillPaymentCreditCard", 3},
                                        {"Charge", 4},
                                        {"Check", 5},
                                        {"CreditCardCharge", 6},
                                        {"CreditCardCredit", 7},
                                        {"CreditMemo", 8},
                                        {"Deposit", 9},
                                        {"Estimate", 10},
                                        {"Invoice", 12},
                                        {"InventoryAdjustment", 11},
                                        {"ItemReceipt", 13},
                                        {"JournalEntry", 14},
                                        {"PurchaseOrder", 15},
                                        {"ReceivePayment", 16},
                                        {"SalesOrder", 17},
                                        {"SalesReceipt", 18},
                                        {"SalesTaxPaymentCheck", 19},
                                        {"TimeTracking", 20},
                                        {"VendorCredit", 21}};
constexpr EnumValue kTxnEventOperations[] = {{"Add", 0}, {"Modify", 2}, {"Delete", 1}};
constexpr EnumValue kCompanyFileEvents[] = {{"Open", 0}, {"Close", 1}};
constexpr EnumValue kMenus[] = {{"File", 0},    {"Company", 1},   {"Customers", 2},
                                {"Vendors", 3}, {"Employees", 4}, {"Banking", 5}};
constexpr EnumValue kDisplayConditions[] = {
    {"MultiUserMode", 0},        {"HasCustomers", 1},         {"HasVendors", 2},          {"InventoryEnabled", 3},
    {"ClassesEnabled", 4},       {"PayrollEnabled", 5},       {"TimeTrackingEnabled", 6}, {"PriceLevelsEnabled", 7},
    {"AssemblyItemsEnabled", 8}, {"SalesOrdersEnabled", 9},   {"EstimatesEnabled", 10},   {"SalesTaxEnabled", 11},
    {"IsAccountantCopy", 12},    {"AccountantCopyExists", 13}};
constexpr EnumValue kSubscriptionTypes[] = {{"Data", 0}, {"UI", 1}, {"UIExtension", 2}};

constexpr Element kProgCLSIDBranches[] = {
    Text("ProgID", 128),
    Leaf("CLSID", Type::Guid),
};

constexpr Element kCOMCallbackInfo[] = {
    Text("AppName", 128),
    Choice("ORProgCLSID", kProgCLSIDBranches),
};

constexpr Element kListEventSubscription[] = {
    Enumeration("ListEventType", kListEventTypes).Rep(),
    Enumeration("ListEventOperation", kListEventOperations).Rep(),
};

constexpr Element kTxnEventSubscription[] = {
    Enumeration("TxnEventType", kTxnEventTypes).Rep(),
    Enumeration("TxnEventOperation", kTxnEventOperations).Rep(),
};

constexpr Element kDataEventSubscriptionAdd[] = {
    Leaf("SubscriberID", Type::Guid),
    Aggregate("COMCallbackInfo", kCOMCallbackInfo),
    Enumeration("DeliveryPolicy", kDeliveryPolicies),
    Enumeration("TrackLostEvents", kTrackLostEvents).Opt(),
    Aggregate("ListEventSubscription", kListEventSubscription).Opt().Rep(),
    Aggregate("TxnEventSubscription", kTxnEventSubscription).Opt().Rep(),
};

constexpr Element kDataEventSubscriptionAddRequest[] = {
    Aggregate("DataEventSubscriptionAdd", kDataEventSubscriptionAdd),
};

constexpr Element kDataEventSubscriptionRet[] = {
    Leaf("SubscriberID", Type::Guid),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeLastProcessed", Type::DateTime).Opt(),
    Aggregate("COMCallbackInfo", kCOMCallbackInfo),
    Enumeration("DeliveryPolicy", kDeliveryPolicies),
    Enumeration("TrackLostEvents", kTrackLostEvents),
    Aggregate("ListEventSubscription", kListEventSubscription).Opt().Rep(),
    Aggregate("TxnEventSubscription", kTxnEventSubscription).Opt().Rep(),
};

constexpr Element kDataEventSubscriptionAddResponse[] = {
    Aggregate("DataEventSubscriptionRet", kDataEventSubscriptionRet).Opt(),
};

constexpr Element kCompanyFileEventSubscription[] = {
    Enumeration("CompanyFileEventOperation", kCompanyFileEvents).Rep(),
};

constexpr Element kUIEventSubscriptionAdd[] = {
    Leaf("SubscriberID", Type::Guid),
    Aggregate("COMCallbackInfo", kCOMCallbackInfo),
    Enumeration("DeliveryPolicy", kDeliveryPolicies),
    Aggregate("CompanyFileEventSubscription", kCompanyFileEventSubscription),
};

constexpr Element kUIEventSubscriptionAddRequest[] = {
    Aggregate("UIEventSubscriptionAdd", kUIEventSubscriptionAdd),
};

constexpr Element kDisplayCondition[] = {
    Enumeration("VisibleIf", kDisplayConditions).Opt().Rep(),
    Enumeration("VisibleIfNot", kDisplayConditions).Opt().Rep(),
    Enumeration("EnabledIf", kDisplayConditions).Opt().Rep(),
    Enumeration("EnabledIfNot", kDisplayConditions).Opt().Rep(),
};

constexpr Element kMenuItem[] = {
    Text("MenuText", 50),
    Text("EventTag", 50),
    Aggregate("DisplayCondition", kDisplayCondition).Opt(),
};

constexpr Element kSubmenu[] = {
    Aggregate("DisplayCondition", kDisplayCondition).Opt(),
    Aggregate("MenuItem", kMenuItem).Rep(),
};

constexpr Element kSubmenuMenuItemBranches[] = {
    Aggregate("Submenu", kSubmenu),
    Aggregate("MenuItem", kMenuItem),
};

constexpr Element kMenuExtensionSubscription[] = {
    Enumeration("AddToMenu", kMenus),
    Choice("ORSubmenuMenuItem", kSubmenuMenuItemBranches),
};

constexpr Element kUIExtensionSubscriptionAdd[] = {
    Leaf("SubscriberID", Type::Guid),
    Aggregate("COMCallbackInfo", kCOMCallbackInfo),
    Aggregate("MenuExtensionSubscription", kMenuExtensionSubscription),
};

constexpr Element kUIExtensionSubscriptionAddRequest[] = {
    Aggregate("UIExtensionSubscriptionAdd", kUIExtensionSubscriptionAdd),
};

constexpr Element kSubscriptionDelRequest[] = {
    Leaf("SubscriberID", Type::Guid),
    Enumeration("SubscriptionType", kSubscriptionTypes),
};

constexpr Element kSubscriber[] = {Leaf("SubscriberID", Type::Guid)};

constexpr Message kMessages[] = {
    {.name = "DataEventSubscriptionAdd",
     .request = kDataEventSubscriptionAddRequest,
     .response = kDataEventSubscriptionAddResponse,
     .since = {3, 0},
     .set = MessageSet::Subscription},
    {.name = "UIEventSubscriptionAdd",
     .request = kUIEventSubscriptionAddRequest,
     .response = {},
     .since = {3, 0},
     .set = MessageSet::Subscription},
    {.name = "UIExtensionSubscriptionAdd",
     .request = kUIExtensionSubscriptionAddRequest,
     .response = {},
     .since = {3, 0},
     .set = MessageSet::Subscription},
    {.name = "SubscriptionDel",
     .request = kSubscriptionDelRequest,
     .response = {},
     .since = {3, 0},
     .set = MessageSet::Subscription},
    // Answers with its status alone: 0 subscribed, 1 not.
    {.name = "SubscriptionQuery",
     .request = kSubscriber,
     .response = {},
     .since = {3, 0},
     .set = MessageSet::Subscription},
};

}  // namespace

std::span<const Message> SubscriptionMessages() { return kMessages; }

}  // namespace twqb::messages
