#include "events/SubscriptionSets.h"

#include <array>

namespace twqb {

namespace {

constexpr std::string_view kApplicationName = "Tallywick 2008 Events Call Back";
constexpr std::string_view kCallbackClass = "TWQBCallback90.CMain";

// What the requests say, in QuickBooks' numbers and in the order in which it goes on the wire.
enum DeliveryPolicy : int { kDeliverAlways = 0 };
enum TrackLostEvents : int { kTrackNone = 0 };
enum ListEventType : int { kCustomer = 2, kEmployee = 6, kItemOtherCharge = 13, kItemService = 17, kVendor = 28 };
enum ListEventOperation : int { kListAdd = 0, kListDelete = 1, kListMerge = 2, kListModify = 3 };
enum TxnEventType : int { kBill = 1, kCheck = 5, kInvoice = 12, kReceivePayment = 16, kTimeTracking = 20 };
enum TxnEventOperation : int { kTxnAdd = 0, kTxnDelete = 1, kTxnModify = 2 };
enum CompanyFileEvent : int { kOpen = 0, kClose = 1 };
enum Menu : int { kFileMenu = 0 };

constexpr std::array kListTypes = {kEmployee, kCustomer, kVendor, kItemOtherCharge, kItemService};
constexpr std::array kListOperations = {kListAdd, kListDelete, kListModify, kListMerge};
constexpr std::array kTxnTypes = {kBill, kCheck, kInvoice, kReceivePayment, kTimeTracking};
constexpr std::array kTxnOperations = {kTxnAdd, kTxnDelete, kTxnModify};
constexpr std::array kCompanyFileEvents = {kOpen, kClose};

struct MenuItem {
  std::string_view text;
  std::string_view tag;  // by which the call-back class knows the item
};
constexpr std::array kMenuItems = {
    MenuItem{.text = "Unsubscribe", .tag = "Unsubscribe"},
    MenuItem{.text = "Sync Settings ...", .tag = "SyncSettings"},
    MenuItem{.text = "Sync Employees", .tag = "SyncEmployees"},
    MenuItem{.text = "Sync Customers", .tag = "SyncCustomers"},
    MenuItem{.text = "Sync Jobs", .tag = "SyncJobs"},
    MenuItem{.text = "Sync ItemServices", .tag = "SyncItemServices"},
    MenuItem{.text = "Sync ItemOtherCharges", .tag = "SyncItemOtherCharges"},
    MenuItem{.text = "Sync Checks/Bills", .tag = "SyncChecks/Bills"},
    MenuItem{.text = "Sync TimeEntries", .tag = "SyncTimeEntries"},
    MenuItem{.text = "Sync Invoices", .tag = "SyncInvoices"},
    MenuItem{.text = "Sync Payments", .tag = "SyncPayments"},
    MenuItem{.text = "Sync Vendors", .tag = "SyncVendors"},
    MenuItem{.text = "Sync All", .tag = "SyncAll"},
};

RequestField AppendFor(MsgSetRequest& set, std::string_view requestName) {
  auto request = set.Append(requestName);
  request["SubscriberID"].SetValue(kSubscriberId);
  request["COMCallbackInfo"]["AppName"].SetValue(kApplicationName);
  request["COMCallbackInfo"]["ORProgCLSID"]["ProgID"].SetValue(kCallbackClass);
  return request;
}

template <typename Numbers>
void AddAll(const RequestField& list, const Numbers& numbers) {
  for (const auto number : numbers) list.Add(number);
}

void AppendDataEvents(MsgSetRequest& set) {
  const auto request = AppendFor(set, "DataEventSubscriptionAddRq");
  request["DeliveryPolicy"].SetValue(kDeliverAlways);
  request["TrackLostEvents"].SetValue(kTrackNone);
  const auto lists = request["ListEventSubscriptionList"].Append();
  AddAll(lists["ListEventTypeList"], kListTypes);
  AddAll(lists["ListEventOperationList"], kListOperations);
  const auto transactions = request["TxnEventSubscriptionList"].Append();
  AddAll(transactions["TxnEventTypeList"], kTxnTypes);
  AddAll(transactions["TxnEventOperationList"], kTxnOperations);
}

void AppendCompanyFileEvents(MsgSetRequest& set) {
  const auto request = AppendFor(set, "UIEventSubscriptionAddRq");
  request["DeliveryPolicy"].SetValue(kDeliverAlways);
  AddAll(request["CompanyFileEventSubscription"]["CompanyFileEventOperationList"], kCompanyFileEvents);
}

void AppendMenuItems(MsgSetRequest& set) {
  const auto menu = AppendFor(set, "UIExtensionSubscriptionAddRq")["MenuExtensionSubscription"];
  menu["AddToMenu"].SetValue(kFileMenu);
  const auto items = menu["ORSubmenuMenuItem"]["Submenu"]["MenuItemList"];
  for (const auto& row : kMenuItems) {
    const auto item = items.Append();
    item["MenuText"].SetValue(row.text);
    item["EventTag"].SetValue(row.tag);
  }
}

}  // namespace

void AppendSubscriptions(MsgSetRequest& set) {
  AppendDataEvents(set);
  AppendCompanyFileEvents(set);
  AppendMenuItems(set);
}

}  // namespace twqb
