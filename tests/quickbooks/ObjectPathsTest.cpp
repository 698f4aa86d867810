// Every object path that requests are filled by and records are read by, request for request.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "messages/Schema.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "quickbooks/RequestModel.h"
#include "quickbooks/ResponseModel.h"
#include "tests/quickbooks/CannedQuickBooks.h"

namespace twqb {
namespace {

using messages::Country;
using messages::MessageSet;

// Blank-separated paths below one request. A "+" behind a step appends to the list and goes on in what was appended.
struct RequestPaths {
  std::string_view request;
  std::string_view paths;
};

constexpr RequestPaths kRequestPaths[] = {
    {"AccountAddRq",
     "Name AccountType Desc IsActive OpenBalance OpenBalanceDate AccountNumber ParentRef.ListID ParentRef.FullName"},
    {"AccountQueryRq",
     "ORAccountListQuery.ListIDList ORAccountListQuery.FullNameList ORAccountListQuery.ListFilter.ActiveStatus "
     "ORAccountListQuery.ListFilter.FromModifiedDate ORAccountListQuery.ListFilter.ToModifiedDate "
     "ORAccountListQuery.ListFilter.ORNameFilter.NameRangeFilter.FromName"},
    {"BillAddRq",
     "VendorRef.ListID TxnDate DueDate RefNumber ORItemLineAddList+.ItemLineAdd.ItemRef.ListID "
     "ORItemLineAddList+.ItemLineAdd.Desc ORItemLineAddList+.ItemLineAdd.Quantity ORItemLineAddList+.ItemLineAdd.Cost "
     "ORItemLineAddList+.ItemLineAdd.Amount ORItemLineAddList+.ItemLineAdd.CustomerRef.ListID "
     "ORItemLineAddList+.ItemLineAdd.ClassRef.ListID ORItemLineAddList+.ItemLineAdd.BillableStatus "
     "ExpenseLineAddList+.AccountRef.FullName ExpenseLineAddList+.Amount"},
    {"BillQueryRq",
     "IncludeLineItems ORBillQuery.TxnIDList ORBillQuery.TxnFilter.EntityFilter.OREntityFilter.FullNameList "
     "ORBillQuery.TxnFilter.ORDateRangeFilter.ModifiedDateRangeFilter.FromModifiedDate "
     "ORBillQuery.TxnFilter.ORDateRangeFilter.TxnDateRangeFilter.ORTxnDateRangeFilter.TxnDateFilter.FromTxnDate"},
    {"CheckQueryRq",
     "IncludeLineItems ORTxnQuery.TxnIDList "
     "ORTxnQuery.TxnFilter.ORDateRangeFilter.ModifiedDateRangeFilter.ToModifiedDate"},
    {"ClassQueryRq", "ORListQuery.ListFilter.ActiveStatus"},
    {"CreditCardChargeQueryRq", "IncludeLineItems ORTxnQuery.TxnIDList ORTxnQuery.TxnFilter.EntityFilter"},
    {"CreditMemoQueryRq", "IncludeLineItems ORTxnQuery.TxnIDList ORTxnQuery.TxnFilter.ORDateRangeFilter"},
    {"CustomerAddRq",
     "CompanyName FirstName LastName MiddleName Salutation BillAddress.Addr1 BillAddress.Addr2 BillAddress.Addr3 "
     "BillAddress.City BillAddress.Province BillAddress.County BillAddress.State BillAddress.PostalCode Phone AltPhone "
     "Fax Email Name ParentRef.ListID JobDesc JobStatus JobStartDate AltContact ShipAddress.Addr1 ShipAddress.Addr2 "
     "ShipAddress.PostalCode ShipAddress.City ShipAddress.Province ShipAddress.County ShipAddress.State"},
    {"CustomerModRq",
     "ListID EditSequence CompanyName Name JobStatus JobStartDate AltContact BillAddress.Province ShipAddress.State"},
    {"CustomerQueryRq",
     "ORCustomerListQuery.ListIDList ORCustomerListQuery.FullNameList ORCustomerListQuery.ListFilter.ActiveStatus "
     "ORCustomerListQuery.ListFilter.FromModifiedDate ORCustomerListQuery.ListFilter.ToModifiedDate "
     "ORCustomerListQuery.ListFilter.ORNameFilter.NameRangeFilter.FromName "
     "ORCustomerListQuery.ListFilter.ORNameFilter.NameRangeFilter.ToName"},
    {"EmployeeAddRq",
     "Name AltPhone HiredDate ReleasedDate Sin NiNumber SSN Salutation FirstName MiddleName LastName Phone Mobile "
     "Email "
     "Fax EmployeeAddress.Addr1 EmployeeAddress.Addr2 EmployeeAddress.City EmployeeAddress.Province "
     "EmployeeAddress.County EmployeeAddress.State EmployeeAddress.PostalCode IsActive BirthDate "
     "EmployeePayrollInfo.UseTimeDataToCreatePaychecks EmployeePayrollInfo.IsUsingTimeDataToCreatePaychecks "
     "EmployeePayrollInfo.OREarnings.EarningsList+.PayrollItemWageRef.FullName "
     "EmployeePayrollInfo.OREarnings.EarningsList+.ORRate.Rate"},
    {"EmployeeModRq",
     "ListID EditSequence Name AltPhone Salutation FirstName MiddleName LastName Phone Mobile Email Fax "
     "EmployeeAddress.State IsActive BirthDate EmployeePayrollInfoMod.OREarnings.EarningsList+.ORRate.Rate "
     "EmployeePayrollInfoMod.OREarnings.ClearEarnings"},
    {"EmployeeQueryRq",
     "ORListQuery.ListIDList ORListQuery.ListFilter.FromModifiedDate ORListQuery.ListFilter.ORNameFilter"},
    {"EstimateQueryRq",
     "IncludeLineItems ORTxnQuery.TxnIDList ORTxnQuery.TxnFilter.EntityFilter.OREntityFilter.ListIDList"},
    {"HostQueryRq", ""},
    {"InvoiceAddRq",
     "IsToBePrinted IsPending CustomerRef.ListID BillAddress.Addr1 BillAddress.Addr2 BillAddress.Addr3 "
     "BillAddress.City "
     "BillAddress.State BillAddress.Province BillAddress.County BillAddress.PostalCode TxnDate DueDate RefNumber "
     "ClassRef.ListID ARAccountRef.FullName ORInvoiceLineAddList+.InvoiceLineAdd.ItemRef.FullName "
     "ORInvoiceLineAddList+.InvoiceLineAdd.Desc ORInvoiceLineAddList+.InvoiceLineAdd.Quantity "
     "ORInvoiceLineAddList+.InvoiceLineAdd.ORRatePriceLevel.Rate ORInvoiceLineAddList+.InvoiceLineAdd.ORRate.Rate "
     "ORInvoiceLineAddList+.InvoiceLineAdd.ClassRef.ListID ORInvoiceLineAddList+.InvoiceLineAdd.Amount "
     "ORInvoiceLineAddList+.InvoiceLineAdd.SalesTaxCodeRef.FullName "
     "ORInvoiceLineAddList+.InvoiceLineAdd.TaxCodeRef.FullName "
     "ORInvoiceLineAddList+.InvoiceLineGroupAdd.ItemGroupRef.FullName"},
    {"InvoiceQueryRq",
     "IncludeLineItems ORInvoiceQuery.TxnIDList ORInvoiceQuery.RefNumberList "
     "ORInvoiceQuery.TxnFilter.ORDateRangeFilter.TxnDateRangeFilter.ORTxnDateRangeFilter.TxnDateFilter.ToTxnDate "
     "ORInvoiceQuery.TxnFilter.ORRefNumberFilter.RefNumberRangeFilter.FromRefNumber "
     "ORInvoiceQuery.TxnFilter.PaidStatus"},
    {"ItemInventoryModRq", "ListID EditSequence Name IsActive SalesDesc PurchaseCost SalesPrice"},
    {"ItemInventoryQueryRq", "ORListQuery.ListIDList ORListQuery.ListFilter.ActiveStatus"},
    {"ItemNonInventoryModRq",
     "ListID EditSequence Name IsActive ORSalesPurchaseMod.SalesAndPurchaseMod.SalesDesc "
     "ORSalesPurchaseMod.SalesAndPurchaseMod.PurchaseCost ORSalesPurchaseMod.SalesAndPurchaseMod.SalesPrice "
     "ORSalesPurchaseMod.SalesOrPurchaseMod.Desc ORSalesPurchaseMod.SalesOrPurchaseMod.ORPrice.PRICE"},
    {"ItemNonInventoryQueryRq", "ORListQuery.ListIDList ORListQuery.ListFilter.ORNameFilter"},
    {"ItemOtherChargeAddRq",
     "Name IsActive SalesTaxCodeRef.FullName TaxCodeForSaleRef.FullName ORSalesPurchase.SalesAndPurchase.PurchaseDesc "
     "ORSalesPurchase.SalesAndPurchase.SalesDesc ORSalesPurchase.SalesAndPurchase.PurchaseCost "
     "ORSalesPurchase.SalesAndPurchase.SalesPrice ORSalesPurchase.SalesAndPurchase.IncomeAccountRef.ListID "
     "ORSalesPurchase.SalesAndPurchase.ExpenseAccountRef.FullName"},
    {"ItemOtherChargeModRq",
     "ListID EditSequence Name IsActive ORSalesPurchaseMod.SalesOrPurchaseMod.ORPrice.PRICE "
     "ORSalesPurchaseMod.SalesAndPurchaseMod.SalesPrice"},
    {"ItemOtherChargeQueryRq", "ORListQuery.ListIDList ORListQuery.ListFilter.ToModifiedDate"},
    {"ItemPaymentAddRq", "Name IsActive ItemDesc PaymentMethodRef.FullName"},
    {"ItemSalesTaxAddRq", "Name ItemDesc TaxRate TaxVendorRef.FullName"},
    {"ItemSalesTaxQueryRq", "ORListQuery.ListFilter.ActiveStatus"},
    {"ItemServiceAddRq",
     "Name IsActive SalesTaxCodeRef.FullName TaxCodeForSaleRef.FullName "
     "ORSalesPurchase.SalesAndPurchase.IncomeAccountRef.ListID "
     "ORSalesPurchase.SalesAndPurchase.IncomeAccountRef.FullName "
     "ORSalesPurchase.SalesAndPurchase.ExpenseAccountRef.ListID ORSalesPurchase.SalesAndPurchase.SalesDesc "
     "ORSalesPurchase.SalesAndPurchase.PurchaseCost ORSalesPurchase.SalesAndPurchase.SalesPrice "
     "ORSalesPurchase.SalesOrPurchase.ORPrice.Price"},
    {"ItemServiceModRq",
     "ListID EditSequence Name IsActive ORSalesPurchaseMod.SalesOrPurchaseMod.Desc "
     "ORSalesPurchaseMod.SalesOrPurchaseMod.ORPrice.PRICE ORSalesPurchaseMod.SalesAndPurchaseMod.SalesDesc"},
    {"ItemServiceQueryRq", "ORListQuery.ListIDList ORListQuery.ListFilter.ActiveStatus"},
    {"ListDelRq", "ListDelType ListID"},
    {"PaymentMethodAddRq", "Name IsActive"},
    {"PayrollItemWageAddRq", "Name IsActive WageType ExpenseAccountRef.FullName"},
    {"PayrollItemWageQueryRq", "ORListQuery.ListFilter.ActiveStatus"},
    {"ReceivePaymentAddRq",
     "PaymentMethodRef.FullName TxnDate TotalAmount Memo RefNumber CustomerRef.ListID ARAccountRef.FullName "
     "DepositToAccountRef.FullName ORApplyPayment.IsAutoApply ORApplyPayment.AppliedToTxnAddList+.TxnID "
     "ORApplyPayment.AppliedToTxnAddList+.PaymentAmount ORApplyPayment.AppliedToTxnAddList+.DiscountAmount "
     "ORApplyPayment.AppliedToTxnAddList+.DiscountAccountRef.FullName"},
    {"ReceivePaymentQueryRq",
     "IncludeLineItems ORTxnQuery.TxnIDList "
     "ORTxnQuery.TxnFilter.ORDateRangeFilter.ModifiedDateRangeFilter.FromModifiedDate "
     "ORTxnQuery.TxnFilter.ORDateRangeFilter.TxnDateRangeFilter.ORTxnDateRangeFilter.TxnDateFilter.FromTxnDate"},
    {"TimeTrackingAddRq",
     "TxnDate EntityRef.ListID CustomerRef.ListID ItemServiceRef.ListID Rate Duration ClassRef.ListID "
     "PayrollItemWageRef.FullName PayrollItemWageRef.ListID Notes IsBillable"},
    {"TimeTrackingQueryRq",
     "ORTimeTrackingTxnQuery.TxnIDList "
     "ORTimeTrackingTxnQuery.TxnFilter.ORDateRangeFilter.ModifiedDateRangeFilter.FromModifiedDate "
     "ORTimeTrackingTxnQuery.TxnFilter.TimeTrackingEntityFilter.ORTimeTrackingEntityFilter.FullNameList"},
    {"TxnDelRq", "TxnDelType TxnID"},
    {"TxnDisplayModRq", "TxnDisplayModType TxnID"},
    {"VendorAddRq",
     "Name AltPhone OpenBalanceDate Salutation FirstName MiddleName LastName CompanyName Phone Mobile Email Fax "
     "VendorAddress.Addr1 VendorAddress.Addr2 VendorAddress.Addr3 VendorAddress.City VendorAddress.Province "
     "VendorAddress.County VendorAddress.State VendorAddress.PostalCode IsActive VendorTaxIdent"},
    {"VendorModRq", "ListID EditSequence Name CompanyName Mobile VendorAddress.State IsActive VendorTaxIdent"},
    {"VendorQueryRq", "ORVendorListQuery.ListIDList ORVendorListQuery.ListFilter.ORNameFilter.NameRangeFilter.ToName"},
    {"DataEventSubscriptionAddRq",
     "SubscriberID COMCallbackInfo.AppName COMCallbackInfo.ORProgCLSID.ProgID DeliveryPolicy TrackLostEvents "
     "ListEventSubscriptionList+.ListEventTypeList+ ListEventSubscriptionList+.ListEventOperationList+ "
     "TxnEventSubscriptionList+.TxnEventTypeList+ TxnEventSubscriptionList+.TxnEventOperationList+"},
    {"UIEventSubscriptionAddRq",
     "SubscriberID COMCallbackInfo.AppName DeliveryPolicy "
     "CompanyFileEventSubscription.CompanyFileEventOperationList+"},
    {"UIExtensionSubscriptionAddRq",
     "SubscriberID COMCallbackInfo.ORProgCLSID.ProgID MenuExtensionSubscription.AddToMenu "
     "MenuExtensionSubscription.ORSubmenuMenuItem.Submenu.MenuItemList+.MenuText "
     "MenuExtensionSubscription.ORSubmenuMenuItem.Submenu.MenuItemList+.EventTag"},
    {"SubscriptionDelRq", "SubscriberID SubscriptionType"},
    {"SubscriptionQueryRq", "SubscriberID"},
};

MsgSetRequest NewSet(std::string_view request, Country country = Country::US) {
  const auto* message = messages::FindMessage(request);
  return {{.country = country, .version = {3, 0}}, message == nullptr ? MessageSet::Company : message->set};
}

std::vector<std::string> Words(std::string_view text, char between) {
  return text.empty() ? std::vector<std::string>{} : Split(text, between);
}

RequestField Reach(RequestField field, std::string_view path) {
  for (auto& step : Words(path, '.')) {
    const bool appends = step.ends_with('+');
    if (appends) step.pop_back();
    field = appends ? field[step].Append() : field[step];
  }
  return field;
}

TEST(ObjectPaths, Of_every_request_resolve) {
  for (const auto& [request, paths] : kRequestPaths) {
    for (const auto& path : Words(paths, ' ')) {
      auto set = NewSet(request);
      EXPECT_NO_THROW((void)Reach(set.Append(request), path).IsSet()) << request << " " << path;
    }
  }
}

TEST(ObjectPaths, Are_told_for_every_request_but_those_that_only_set_a_company_up) {
  // What a company file answers beyond what is sent to one.
  const std::vector<std::string_view> others = {"ClassAdd",
                                                "CheckAdd",
                                                "CreditCardChargeAdd",
                                                "CreditMemoAdd",
                                                "EstimateAdd",
                                                "ItemInventoryAdd",
                                                "ItemNonInventoryAdd",
                                                "ItemGroupAdd",
                                                "ItemGroupQuery",
                                                "JobTypeAdd",
                                                "JobTypeQuery",
                                                "SalesTaxCodeAdd",
                                                "SalesTaxCodeQuery",
                                                "TaxCodeAdd",
                                                "TaxCodeQuery",
                                                "PaymentMethodQuery",
                                                "ItemPaymentQuery",
                                                "CustomerTypeAdd",
                                                "CustomerTypeQuery",
                                                "VendorTypeAdd",
                                                "VendorTypeQuery",
                                                "StandardTermsAdd",
                                                "StandardTermsQuery",
                                                "DateDrivenTermsAdd",
                                                "DateDrivenTermsQuery",
                                                "TermsQuery",
                                                "TemplateQuery"};
  for (const auto& message : messages::AllMessages()) {
    const auto told = std::ranges::find(kRequestPaths, message.RequestName(), &RequestPaths::request);
    EXPECT_NE(told != std::end(kRequestPaths), std::ranges::find(others, message.name) != others.end()) << message.name;
  }
}

ErrorNumber NumberOf(const auto& body) {
  try {
    body();
  } catch (const PlatformError& raised) {
    return raised.number();
  }
  return 0;
}

TEST(ObjectPaths, A_credit_memo_query_does_not_know_the_choice_of_the_invoice_query) {
  auto set = NewSet("CreditMemoQueryRq");
  const auto query = set.Append("CreditMemoQueryRq");
  EXPECT_EQ(NumberOf([&] { (void)query["ORInvoiceQuery"]; }), error::kNameUnknown);
}

TEST(ObjectPaths, A_modification_of_invoice_lines_is_in_no_message) {
  auto set = NewSet("InvoiceAddRq");
  const auto invoice = set.Append("InvoiceAddRq");
  EXPECT_EQ(NumberOf([&] { (void)invoice["ORInvoiceLineModList"]; }), error::kNameUnknown);
}

// Records: a path is read from an answer that has everything on it.
struct RecordPaths {
  std::string_view response;
  std::string_view record;
  std::string_view paths;
};

constexpr std::string_view kIdentity = "ListID TimeCreated TimeModified EditSequence Name IsActive";
constexpr std::string_view kTxnIdentity = "TxnID TimeCreated TimeModified EditSequence TxnDate";

constexpr RecordPaths kRecordPaths[] = {
    {"AccountQueryRs", "AccountRet",
     "FullName ParentRef.ListID AccountType AccountNumber Desc Balance TotalBalance Sublevel"},
    {"EmployeeQueryRs", "EmployeeRet",
     "FirstName LastName MiddleName Phone AltPhone Mobile Email Salutation HiredDate ReleasedDate Sin NiNumber SSN "
     "EmployeeAddress.Addr1 EmployeeAddress.Addr2 EmployeeAddress.City EmployeeAddress.State EmployeeAddress.Province "
     "EmployeeAddress.County EmployeeAddress.PostalCode EmployeePayrollInfo.OREarnings.EarningsList.ORRate.Rate"},
    {"VendorQueryRs", "VendorRet",
     "FirstName LastName MiddleName Phone Fax CompanyName AltPhone Mobile Email Salutation VendorAddress.Addr1 "
     "VendorAddress.Addr3 VendorAddress.PostalCode"},
    {"CustomerQueryRs", "CustomerRet",
     "FullName Sublevel ParentRef.ListID Contact AltContact BillAddress.Addr4 ShipAddress.Addr3 JobStatus JobStartDate "
     "JobTypeRef.FullName Balance TotalBalance"},
    {"ItemServiceQueryRs", "ItemServiceRet",
     "FullName ORSalesPurchase.SalesAndPurchase.IncomeAccountRef.ListID ORSalesPurchase.SalesAndPurchase.SalesPrice "
     "ORSalesPurchase.SalesOrPurchase.ORPrice.PRICE"},
    {"ItemOtherChargeQueryRs", "ItemOtherChargeRet",
     "FullName ORSalesPurchase.SalesAndPurchase.ExpenseAccountRef.ListID ORSalesPurchase.SalesOrPurchase.Desc"},
    {"ItemNonInventoryQueryRs", "ItemNonInventoryRet", "FullName ORSalesPurchase.SalesAndPurchase.PurchaseCost"},
    {"ItemInventoryQueryRs", "ItemInventoryRet",
     "FullName SalesDesc IncomeAccountRef.ListID COGSAccountRef.ListID PurchaseCost SalesPrice"},
    {"PayrollItemWageQueryRs", "PayrollItemWageRet", "WageType ExpenseAccountRef.FullName"},
    {"InvoiceQueryRs", "InvoiceRet",
     "TxnID TxnDate RefNumber Subtotal Memo IsToBePrinted AppliedAmount BalanceRemaining IsPending "
     "CustomerRef.FullName CustomerRef.ListID "
     "ARAccountRef.FullName ORInvoiceLineRetList.InvoiceLineRet.Desc ORInvoiceLineRetList.InvoiceLineRet.Amount "
     "ORInvoiceLineRetList.InvoiceLineRet.ORRate.Rate ORInvoiceLineRetList.InvoiceLineGroupRet.Desc "
     "ORInvoiceLineRetList.InvoiceLineGroupRet.TotalAmount"},
    {"CreditMemoQueryRs", "CreditMemoRet",
     "TxnID RefNumber IsPending Subtotal TotalAmount Memo IsToBePrinted CustomerRef.FullName CustomerRef.ListID "
     "ORCreditMemoLineRetList.CreditMemoLineRet.Desc ORCreditMemoLineRetList.CreditMemoLineRet.Amount "
     "ORCreditMemoLineRetList.CreditMemoLineGroupRet.Desc ORCreditMemoLineRetList.CreditMemoLineGroupRet.TotalAmount"},
    {"ReceivePaymentQueryRs", "ReceivePaymentRet",
     "TxnID TotalAmount PaymentMethodRef.FullName Memo CustomerRef.FullName CustomerRef.ListID RefNumber "
     "AppliedToTxnRetList.RefNumber "
     "AppliedToTxnRetList.Amount AppliedToTxnRetList.DiscountAmount AppliedToTxnRetList.TxnID"},
    {"BillQueryRs", "BillRet",
     "VendorRef.ListID VendorRef.FullName TxnID TimeCreated TimeModified TxnDate DueDate RefNumber Memo "
     "ORItemLineRetList.ItemLineRet.TxnLineID ORItemLineRetList.ItemLineRet.ItemRef.ListID "
     "ORItemLineRetList.ItemLineRet.Desc ORItemLineRetList.ItemLineRet.Quantity "
     "ORItemLineRetList.ItemLineRet.Cost ORItemLineRetList.ItemLineRet.Amount "
     "ORItemLineRetList.ItemLineRet.CustomerRef.ListID ORItemLineRetList.ItemLineRet.CustomerRef.FullName "
     "ORItemLineRetList.ItemLineRet.BillableStatus ExpenseLineRetList.TxnLineID "
     "ExpenseLineRetList.AccountRef.FullName ExpenseLineRetList.Amount ExpenseLineRetList.Memo "
     "ExpenseLineRetList.CustomerRef.ListID ExpenseLineRetList.CustomerRef.FullName "
     "ExpenseLineRetList.ClassRef.ListID ExpenseLineRetList.ClassRef.FullName "
     "ExpenseLineRetList.BillableStatus"},
    {"CheckQueryRs", "CheckRet",
     "PayeeEntityRef.ListID PayeeEntityRef.FullName TxnID TimeModified TxnDate Amount Memo "
     "ORItemLineRetList.ItemLineRet.Quantity ExpenseLineRetList.Amount"},
    {"CreditCardChargeQueryRs", "CreditCardChargeRet",
     "PayeeEntityRef.ListID TxnDate Amount ORItemLineRetList.ItemLineRet.Desc ExpenseLineRetList.Memo"},
    {"EstimateQueryRs", "EstimateRet",
     "TxnID TimeModified CustomerRef.ListID CustomerRef.FullName RefNumber "
     "OREstimateLineRetList.EstimateLineRet.TxnLineID OREstimateLineRetList.EstimateLineRet.ItemRef.ListID "
     "OREstimateLineRetList.EstimateLineRet.Desc OREstimateLineRetList.EstimateLineRet.Quantity "
     "OREstimateLineRetList.EstimateLineRet.Amount"},
    {"TimeTrackingQueryRs", "TimeTrackingRet",
     "EntityRef.FullName CustomerRef.ListID ItemServiceRef.FullName Duration Notes IsBillable IsBilled Rate "
     "PayrollItemWageRef.ListID"},
};

// Every element below `rows`, those of all branches of a choice too.
std::string Filled(std::span<const messages::Element> rows) {
  std::string text;
  for (const auto& row : rows) {
    const auto inner = Filled(row.Children());
    text +=
        row.LeavesNoElement() ? inner : "<" + std::string(row.name) + ">" + inner + "</" + std::string(row.name) + ">";
  }
  return text;
}

// An entry of a repeating choice is one of its branches only: the one that has the next step of the path.
Record Read(Record record, std::string_view path) {
  const auto steps = Words(path, '.');
  for (std::size_t i = 0; i < steps.size(); ++i) {
    auto next = record[steps[i]];
    for (std::size_t entry = 1; i + 1 < steps.size() && entry < next.Count() && next[steps[i + 1]].IsNothing();
         ++entry) {
      next = record[steps[i]].GetAt(entry);
    }
    record = next;
  }
  return record;
}

TEST(ObjectPaths, Of_every_record_resolve_and_find_what_is_there) {
  for (const auto& [response, record, paths] : kRecordPaths) {
    const auto* message = messages::FindMessage(response);
    ASSERT_NE(message, nullptr) << response;
    const MsgSetResponse answer(CannedAnswer(response, kStatusOk, Filled(message->response)));
    const auto detail = answer.GetAt(0).Detail();
    EXPECT_EQ(detail.GetAsString(), record);
    const bool isTxn = !detail.IsNothing() && messages::FindChild(message->response[0].Children(), "TxnID") != nullptr;
    for (const auto& path : Words(isTxn ? kTxnIdentity : kIdentity, ' ')) {
      EXPECT_NO_THROW(EXPECT_FALSE(Read(detail, path).IsNothing()) << record << " " << path) << record << " " << path;
    }
    for (const auto& path : Words(paths, ' ')) {
      EXPECT_NO_THROW(EXPECT_FALSE(Read(detail, path).IsNothing()) << record << " " << path) << record << " " << path;
    }
  }
}

}  // namespace
}  // namespace twqb
