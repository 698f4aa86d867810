#include "messages/Rows.h"
#include "messages/Tables.h"
#include "messages/TxnRows.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr Element kInvoiceLineAdd[] = {
    Ref<0>("ItemRef").Opt(),
    Text("Desc", 4095).Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
    Choice("ORRatePriceLevel", kRateBranches).Opt().In(kUnitedStates),
    Choice("ORRate", kRateBranches).Opt().In(kCanada | kBritain),
    Ref<159>("ClassRef").Opt(),
    Leaf("Amount", Type::Amt).Opt(),
    Leaf("ServiceDate", Type::Date).Opt(),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
    Ref<159>("OverrideItemAccountRef").Opt().Since(2, 0),
};

constexpr Element kInvoiceLineAddBranches[] = {
    Aggregate("InvoiceLineAdd", kInvoiceLineAdd),
    Aggregate("InvoiceLineGroupAdd", kItemGroupLineAdd),
};

constexpr Element kInvoiceAdd[] = {
    Ref<209>("CustomerRef"),
    Ref<159>("ClassRef").Opt(),
    Ref<159>("ARAccountRef").Opt(),
    Ref<31>("TemplateRef").Opt().Since(3, 0),
    Leaf("TxnDate", Type::Date).Opt(),
    Text("RefNumber", 11).Opt(),
    Aggregate("BillAddress", kAddress).Opt(),
    Aggregate("ShipAddress", kAddress).Opt(),
    Leaf("IsPending", Type::Bool).Opt(),
    Text("PONumber", 25).Opt(),
    Ref<31>("TermsRef").Opt(),
    Leaf("DueDate", Type::Date).Opt(),
    Ref<5>("SalesRepRef").Opt(),
    Text("FOB", 13).Opt(),
    Leaf("ShipDate", Type::Date).Opt(),
    Ref<15>("ShipMethodRef").Opt(),
    Ref<31>("ItemSalesTaxRef").Opt().In(kUnitedStates),
    Text("Memo", 4095).Opt(),
    Ref<101>("CustomerMsgRef").Opt(),
    Leaf("IsToBePrinted", Type::Bool).Opt(),
    Ref<3>("CustomerSalesTaxCodeRef").Opt().In(kUnitedStates),
    Choice("ORInvoiceLineAdd", kInvoiceLineAddBranches).Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
};

constexpr Element kInvoiceAddRequest[] = {
    Aggregate("InvoiceAdd", kInvoiceAdd),
};

constexpr Element kInvoiceQueryRequest[] = {
    Choice("ORInvoiceQuery", kPaidTxnQueryBranches).Opt(),
    Leaf("IncludeLineItems", Type::Bool).Opt(),
    Leaf("IncludeLinkedTxns", Type::Bool).Opt().Since(1, 1),
    Leaf("OwnerID", Type::Guid).Opt().Rep().Since(2, 0),
};

constexpr Element kInvoiceLineRet[] = {
    Leaf("TxnLineID", Type::Id),
    Ref<0>("ItemRef").Opt(),
    Text("Desc", 4095).Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
    Choice("ORRate", kRateBranches).Opt(),
    Ref<159>("ClassRef").Opt(),
    Leaf("Amount", Type::Amt).Opt(),
    Leaf("ServiceDate", Type::Date).Opt(),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeRef").Opt().In(kCanada | kBritain),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kInvoiceLineGroupRet[] = {
    Leaf("TxnLineID", Type::Id).SinceInCanada(2, 1),
    Ref<31>("ItemGroupRef"),
    Text("Desc", 4095).Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
    Leaf("IsPrintItemsInGroup", Type::Bool),
    Leaf("TotalAmount", Type::Amt),
    Aggregate("InvoiceLineRet", kInvoiceLineRet).Opt().Rep(),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kInvoiceLineRetBranches[] = {
    Aggregate("InvoiceLineRet", kInvoiceLineRet),
    Aggregate("InvoiceLineGroupRet", kInvoiceLineGroupRet),
};

constexpr Element kInvoiceRet[] = {
    Leaf("TxnID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Leaf("TxnNumber", Type::Int).Opt(),
    Ref<209>("CustomerRef"),
    Ref<159>("ClassRef").Opt(),
    Ref<159>("ARAccountRef").Opt(),
    Ref<31>("TemplateRef").Opt().Since(3, 0),
    Leaf("TxnDate", Type::Date),
    Text("RefNumber", 11).Opt(),
    Aggregate("BillAddress", kAddress).Opt(),
    Aggregate("ShipAddress", kAddress).Opt(),
    Leaf("IsPending", Type::Bool).Opt(),
    Leaf("IsFinanceCharge", Type::Bool).Opt(),
    Text("PONumber", 25).Opt(),
    Ref<31>("TermsRef").Opt(),
    Leaf("DueDate", Type::Date).Opt(),
    Ref<5>("SalesRepRef").Opt(),
    Text("FOB", 13).Opt(),
    Leaf("ShipDate", Type::Date).Opt(),
    Ref<15>("ShipMethodRef").Opt(),
    Leaf("Subtotal", Type::Amt).Opt(),
    Ref<31>("ItemSalesTaxRef").Opt().In(kUnitedStates),
    Leaf("SalesTaxPercentage", Type::Percent).Opt().In(kUnitedStates | kBritain),
    Leaf("SalesTaxTotal", Type::Amt).Opt().In(kUnitedStates | kBritain),
    Leaf("AppliedAmount", Type::Amt).Opt(),
    Leaf("BalanceRemaining", Type::Amt).Opt(),
    Text("Memo", 4095).Opt(),
    Leaf("IsPaid", Type::Bool).Opt().SinceInCanada(2, 0),
    Ref<101>("CustomerMsgRef").Opt(),
    Leaf("IsToBePrinted", Type::Bool).Opt(),
    Ref<3>("CustomerSalesTaxCodeRef").Opt().In(kUnitedStates),
    Leaf("SuggestedDiscountAmount", Type::Amt).Opt(),
    Leaf("SuggestedDiscountDate", Type::Date).Opt(),
    Aggregate("LinkedTxn", kLinkedTxn).Opt().Rep().SinceInCanada(1, 1),
    Choice("ORInvoiceLineRet", kInvoiceLineRetBranches).Opt().Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kInvoiceQueryResponse[] = {
    Aggregate("InvoiceRet", kInvoiceRet).Opt().Rep(),
};

constexpr Element kCreditMemoLineAddBranches[] = {
    Aggregate("CreditMemoLineAdd", kInvoiceLineAdd),
    Aggregate("CreditMemoLineGroupAdd", kItemGroupLineAdd),
};

constexpr Element kCreditMemoAdd[] = {
    Ref<209>("CustomerRef"),
    Ref<159>("ClassRef").Opt(),
    Ref<159>("ARAccountRef").Opt(),
    Ref<31>("TemplateRef").Opt().Since(3, 0),
    Leaf("TxnDate", Type::Date).Opt(),
    Text("RefNumber", 11).Opt(),
    Aggregate("BillAddress", kAddress).Opt(),
    Aggregate("ShipAddress", kAddress).Opt(),
    Leaf("IsPending", Type::Bool).Opt(),
    Text("PONumber", 25).Opt(),
    Ref<31>("TermsRef").Opt(),
    Leaf("DueDate", Type::Date).Opt(),
    Ref<5>("SalesRepRef").Opt(),
    Text("FOB", 13).Opt(),
    Leaf("ShipDate", Type::Date).Opt(),
    Ref<15>("ShipMethodRef").Opt(),
    Ref<31>("ItemSalesTaxRef").Opt().In(kUnitedStates),
    Text("Memo", 4095).Opt(),
    Ref<101>("CustomerMsgRef").Opt(),
    Leaf("IsToBePrinted", Type::Bool).Opt(),
    Ref<3>("CustomerSalesTaxCodeRef").Opt().In(kUnitedStates),
    Choice("ORCreditMemoLineAdd", kCreditMemoLineAddBranches).Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
};

constexpr Element kCreditMemoAddRequest[] = {
    Aggregate("CreditMemoAdd", kCreditMemoAdd),
};

constexpr Element kCreditMemoQueryRequest[] = {
    Choice("ORTxnQuery", kTxnQueryBranches).Opt(),
    Leaf("IncludeLineItems", Type::Bool).Opt(),
    Leaf("IncludeLinkedTxns", Type::Bool).Opt().Since(1, 1),
    Leaf("OwnerID", Type::Guid).Opt().Rep().Since(2, 0),
};

constexpr Element kCreditMemoLineRet[] = {
    Leaf("TxnLineID", Type::Id),
    Ref<0>("ItemRef").Opt(),
    Text("Desc", 4095).Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
    Choice("ORRate", kRateBranches).Opt(),
    Ref<159>("ClassRef").Opt(),
    Leaf("Amount", Type::Amt).Opt(),
    Leaf("ServiceDate", Type::Date).Opt(),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kCreditMemoLineGroupRet[] = {
    Leaf("TxnLineID", Type::Id).SinceInCanada(3, 0),
    Ref<31>("ItemGroupRef"),
    Text("Desc", 4095).Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
    Leaf("IsPrintItemsInGroup", Type::Bool),
    Leaf("TotalAmount", Type::Amt),
    Aggregate("CreditMemoLineRet", kCreditMemoLineRet).Opt().Rep(),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kCreditMemoLineRetBranches[] = {
    Aggregate("CreditMemoLineRet", kCreditMemoLineRet),
    Aggregate("CreditMemoLineGroupRet", kCreditMemoLineGroupRet),
};

constexpr Element kCreditMemoRet[] = {
    Leaf("TxnID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Leaf("TxnNumber", Type::Int).Opt(),
    Ref<209>("CustomerRef"),
    Ref<159>("ClassRef").Opt(),
    Ref<159>("ARAccountRef").Opt(),
    Ref<31>("TemplateRef").Opt().SinceInCanada(3, 0),
    Leaf("TxnDate", Type::Date),
    Text("RefNumber", 11).Opt(),
    Aggregate("BillAddress", kAddress).Opt(),
    Aggregate("ShipAddress", kAddress).Opt(),
    Leaf("IsPending", Type::Bool).Opt(),
    Text("PONumber", 25).Opt(),
    Ref<31>("TermsRef").Opt(),
    Leaf("DueDate", Type::Date).Opt(),
    Ref<5>("SalesRepRef").Opt(),
    Text("FOB", 13).Opt(),
    Leaf("ShipDate", Type::Date).Opt(),
    Ref<15>("ShipMethodRef").Opt(),
    Leaf("Subtotal", Type::Amt).Opt(),
    Ref<31>("ItemSalesTaxRef").Opt().In(kUnitedStates),
    Leaf("SalesTaxPercentage", Type::Percent).Opt().In(kUnitedStates | kBritain),
    Leaf("SalesTaxTotal", Type::Amt).Opt().In(kUnitedStates | kBritain),
    Leaf("TotalAmount", Type::Amt).Opt(),
    Leaf("CreditRemaining", Type::Amt).Opt().SinceInCanada(2, 0),
    Text("Memo", 4095).Opt(),
    Ref<101>("CustomerMsgRef").Opt(),
    Leaf("IsToBePrinted", Type::Bool).Opt(),
    Ref<3>("CustomerSalesTaxCodeRef").Opt().In(kUnitedStates),
    Aggregate("LinkedTxn", kLinkedTxn).Opt().Rep().SinceInCanada(1, 1),
    Choice("ORCreditMemoLineRet", kCreditMemoLineRetBranches).Opt().Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kCreditMemoQueryResponse[] = {
    Aggregate("CreditMemoRet", kCreditMemoRet).Opt().Rep(),
};

constexpr Element kMarkupRateBranches[] = {
    Leaf("MarkupRate", Type::Price),
    Leaf("MarkupRatePercent", Type::Percent),
};

constexpr Element kEstimateLineAdd[] = {
    Ref<0>("ItemRef").Opt(),
    Text("Desc", 4095).Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
    Choice("ORRate", kRateBranches).Opt(),
    Ref<159>("ClassRef").Opt(),
    Leaf("Amount", Type::Amt).Opt(),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
    Choice("ORMarkupRate", kMarkupRateBranches).Opt(),
    Ref<159>("OverrideItemAccountRef").Opt().Since(2, 0),
};

constexpr Element kEstimateLineAddBranches[] = {
    Aggregate("EstimateLineAdd", kEstimateLineAdd),
    Aggregate("EstimateLineGroupAdd", kItemGroupLineAdd),
};

constexpr Element kEstimateAdd[] = {
    Ref<209>("CustomerRef"),
    Ref<159>("ClassRef").Opt(),
    Ref<31>("TemplateRef").Opt().Since(3, 0),
    Leaf("TxnDate", Type::Date).Opt(),
    Text("RefNumber", 11).Opt(),
    Aggregate("BillAddress", kAddress).Opt(),
    Leaf("IsActive", Type::Bool).Opt().Since(3, 0),
    Text("PONumber", 25).Opt(),
    Ref<31>("TermsRef").Opt(),
    Leaf("DueDate", Type::Date).Opt(),
    Ref<5>("SalesRepRef").Opt(),
    Text("FOB", 13).Opt(),
    Ref<31>("ItemSalesTaxRef").Opt().In(kUnitedStates),
    Text("Memo", 4095).Opt(),
    Ref<101>("CustomerMsgRef").Opt(),
    Ref<3>("CustomerSalesTaxCodeRef").Opt().In(kUnitedStates),
    Choice("OREstimateLineAdd", kEstimateLineAddBranches).Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
};

constexpr Element kEstimateAddRequest[] = {
    Aggregate("EstimateAdd", kEstimateAdd),
};

constexpr Element kEstimateQueryRequest[] = {
    Choice("ORTxnQuery", kTxnQueryBranches).Opt(),
    Leaf("IncludeLineItems", Type::Bool).Opt(),
    Leaf("IncludeLinkedTxns", Type::Bool).Opt().Since(3, 0),
    Leaf("OwnerID", Type::Guid).Opt().Rep().Since(2, 0),
};

constexpr Element kEstimateLineRet[] = {
    Leaf("TxnLineID", Type::Id),
    Ref<0>("ItemRef").Opt(),
    Text("Desc", 4095).Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
    Choice("ORRate", kRateBranches).Opt(),
    Ref<159>("ClassRef").Opt(),
    Leaf("Amount", Type::Amt).Opt(),
    Ref<3>("SalesTaxCodeRef").Opt().In(kUnitedStates),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
    Choice("ORMarkupRate", kMarkupRateBranches).Opt(),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kEstimateLineGroupRet[] = {
    Leaf("TxnLineID", Type::Id).SinceInCanada(3, 0),
    Ref<31>("ItemGroupRef"),
    Text("Desc", 4095).Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
    Leaf("IsPrintItemsInGroup", Type::Bool),
    Leaf("TotalAmount", Type::Amt),
    Aggregate("EstimateLineRet", kEstimateLineRet).Opt().Rep(),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kEstimateLineRetBranches[] = {
    Aggregate("EstimateLineRet", kEstimateLineRet),
    Aggregate("EstimateLineGroupRet", kEstimateLineGroupRet),
};

constexpr Element kEstimateRet[] = {
    Leaf("TxnID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Leaf("TxnNumber", Type::Int).Opt(),
    Ref<209>("CustomerRef"),
    Ref<159>("ClassRef").Opt(),
    Ref<31>("TemplateRef").Opt().SinceInCanada(3, 0),
    Leaf("TxnDate", Type::Date),
    Text("RefNumber", 11).Opt(),
    Aggregate("BillAddress", kAddress).Opt(),
    Leaf("IsActive", Type::Bool).Opt().SinceInCanada(3, 0),
    Text("PONumber", 25).Opt(),
    Ref<31>("TermsRef").Opt(),
    Leaf("DueDate", Type::Date).Opt(),
    Ref<5>("SalesRepRef").Opt(),
    Text("FOB", 13).Opt(),
    Leaf("Subtotal", Type::Amt).Opt(),
    Ref<31>("ItemSalesTaxRef").Opt().In(kUnitedStates),
    Leaf("SalesTaxPercentage", Type::Percent).Opt().In(kUnitedStates | kBritain),
    Leaf("SalesTaxTotal", Type::Amt).Opt().In(kUnitedStates | kBritain),
    Leaf("TotalAmount", Type::Amt).Opt(),
    Text("Memo", 4095).Opt(),
    Ref<101>("CustomerMsgRef").Opt(),
    Ref<3>("CustomerSalesTaxCodeRef").Opt().In(kUnitedStates),
    Aggregate("LinkedTxn", kLinkedTxn).Opt().Rep().SinceInCanada(3, 0),
    Choice("OREstimateLineRet", kEstimateLineRetBranches).Opt().Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kEstimateQueryResponse[] = {
    Aggregate("EstimateRet", kEstimateRet).Opt().Rep(),
};

constexpr Element kOneInvoice[] = {Aggregate("InvoiceRet", kInvoiceRet).Opt()};
constexpr Element kOneCreditMemo[] = {Aggregate("CreditMemoRet", kCreditMemoRet).Opt()};
constexpr Element kOneEstimate[] = {Aggregate("EstimateRet", kEstimateRet).Opt()};

constexpr Message kMessages[] = {
    {.name = "InvoiceAdd", .request = kInvoiceAddRequest, .response = kOneInvoice},
    {.name = "InvoiceQuery", .request = kInvoiceQueryRequest, .response = kInvoiceQueryResponse},
    {.name = "CreditMemoAdd", .request = kCreditMemoAddRequest, .response = kOneCreditMemo},
    {.name = "CreditMemoQuery", .request = kCreditMemoQueryRequest, .response = kCreditMemoQueryResponse},
    {.name = "EstimateAdd", .request = kEstimateAddRequest, .response = kOneEstimate},
    {.name = "EstimateQuery", .request = kEstimateQueryRequest, .response = kEstimateQueryResponse},
};

}  // namespace

std::span<const Message> SalesMessages() { return kMessages; }

}  // namespace twqb::messages
