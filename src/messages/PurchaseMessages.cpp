#include "messages/Rows.h"
#include "messages/Tables.h"
#include "messages/TxnRows.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr EnumValue kBillableStatuses[] = {{"Billable", 0}, {"NotBillable", 1}, {"HasBeenBilled", 2}};

constexpr Element kExpenseLineAdd[] = {
    Ref<159>("AccountRef").Opt(),
    Leaf("Amount", Type::Amt).Opt(),
    Text("Memo", 4095).Opt(),
    Ref<209>("CustomerRef").Opt(),
    Ref<159>("ClassRef").Opt(),
    Enumeration("BillableStatus", kBillableStatuses).Opt().Since(2, 0),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
};

constexpr Element kItemLineAdd[] = {
    Ref<0>("ItemRef").Opt(),
    Text("Desc", 4095).Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
    Leaf("Cost", Type::Price).Opt(),
    Leaf("Amount", Type::Amt).Opt(),
    Ref<209>("CustomerRef").Opt(),
    Ref<159>("ClassRef").Opt(),
    Enumeration("BillableStatus", kBillableStatuses).Opt().Since(2, 0),
    Ref<159>("OverrideItemAccountRef").Opt().Since(2, 0),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
};

constexpr Element kItemLineAddBranches[] = {
    Aggregate("ItemLineAdd", kItemLineAdd),
    Aggregate("ItemGroupLineAdd", kItemGroupLineAdd),
};

constexpr Element kBillAdd[] = {
    Ref<41>("VendorRef"),
    Ref<159>("APAccountRef").Opt().Since(2, 0),
    Leaf("TxnDate", Type::Date).Opt(),
    Leaf("DueDate", Type::Date).Opt(),
    Text("RefNumber", 20).Opt(),
    Ref<31>("TermsRef").Opt(),
    Text("Memo", 4095).Opt(),
    Aggregate("ExpenseLineAdd", kExpenseLineAdd).Opt().Rep(),
    Choice("ORItemLineAdd", kItemLineAddBranches).Opt().Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
};

constexpr Element kBillAddRequest[] = {
    Aggregate("BillAdd", kBillAdd),
};

constexpr Element kBillQueryRequest[] = {
    Choice("ORBillQuery", kPaidTxnQueryBranches).Opt(),
    Leaf("IncludeLineItems", Type::Bool).Opt(),
    Leaf("IncludeLinkedTxns", Type::Bool).Opt().Since(2, 0),
    Leaf("OwnerID", Type::Guid).Opt().Rep().Since(2, 0),
};

constexpr Element kExpenseLineRet[] = {
    Leaf("TxnLineID", Type::Id),
    Ref<159>("AccountRef").Opt(),
    Leaf("Amount", Type::Amt).Opt(),
    Text("Memo", 4095).Opt(),
    Ref<209>("CustomerRef").Opt(),
    Ref<159>("ClassRef").Opt(),
    Enumeration("BillableStatus", kBillableStatuses).Opt().SinceInCanada(2, 0),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
};

constexpr Element kItemLineRet[] = {
    Leaf("TxnLineID", Type::Id),
    Ref<0>("ItemRef").Opt(),
    Text("Desc", 4095).Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
    Leaf("Cost", Type::Price).Opt(),
    Leaf("Amount", Type::Amt).Opt(),
    Ref<209>("CustomerRef").Opt(),
    Ref<159>("ClassRef").Opt(),
    Enumeration("BillableStatus", kBillableStatuses).Opt().SinceInCanada(2, 0),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
};

constexpr Element kItemGroupLineRet[] = {
    Leaf("TxnLineID", Type::Id).SinceInCanada(3, 0),
    Ref<31>("ItemGroupRef"),
    Text("Desc", 4095).Opt(),
    Leaf("Quantity", Type::Quan).Opt(),
    Leaf("TotalAmount", Type::Amt),
    Aggregate("ItemLineRet", kItemLineRet).Opt().Rep(),
};

constexpr Element kItemLineRetBranches[] = {
    Aggregate("ItemLineRet", kItemLineRet),
    Aggregate("ItemGroupLineRet", kItemGroupLineRet),
};

constexpr Element kBillRet[] = {
    Leaf("TxnID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Leaf("TxnNumber", Type::Int).Opt(),
    Ref<41>("VendorRef"),
    Ref<159>("APAccountRef").Opt().SinceInCanada(2, 0),
    Leaf("TxnDate", Type::Date),
    Leaf("DueDate", Type::Date).Opt(),
    Leaf("AmountDue", Type::Amt),
    Text("RefNumber", 20).Opt(),
    Ref<31>("TermsRef").Opt(),
    Text("Memo", 4095).Opt(),
    Leaf("IsPaid", Type::Bool).Opt().SinceInCanada(2, 0),
    Aggregate("LinkedTxn", kLinkedTxn).Opt().Rep().SinceInCanada(2, 0),
    Aggregate("ExpenseLineRet", kExpenseLineRet).Opt().Rep(),
    Choice("ORItemLineRet", kItemLineRetBranches).Opt().Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
    Leaf("OpenAmount", Type::Amt).Opt(),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().SinceInCanada(2, 0),
};

constexpr Element kBillQueryResponse[] = {
    Aggregate("BillRet", kBillRet).Opt().Rep(),
};

constexpr Element kCheckAdd[] = {
    Ref<159>("AccountRef"),
    Ref<209>("PayeeEntityRef").Opt(),
    Text("RefNumber", 11).Opt(),
    Leaf("TxnDate", Type::Date).Opt(),
    Text("Memo", 4095).Opt(),
    Aggregate("Address", kAddress).Opt(),
    Leaf("IsToBePrinted", Type::Bool).Opt(),
    Aggregate("ExpenseLineAdd", kExpenseLineAdd).Opt().Rep(),
    Choice("ORItemLineAdd", kItemLineAddBranches).Opt().Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
};

constexpr Element kCheckAddRequest[] = {
    Aggregate("CheckAdd", kCheckAdd),
};

constexpr Element kCheckRet[] = {
    Leaf("TxnID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Leaf("TxnNumber", Type::Int).Opt(),
    Ref<159>("AccountRef"),
    Ref<209>("PayeeEntityRef").Opt(),
    Text("RefNumber", 11).Opt(),
    Leaf("TxnDate", Type::Date),
    Leaf("Amount", Type::Amt),
    Text("Memo", 4095).Opt(),
    Aggregate("Address", kAddress).Opt(),
    Leaf("IsToBePrinted", Type::Bool).Opt(),
    Aggregate("ExpenseLineRet", kExpenseLineRet).Opt().Rep(),
    Choice("ORItemLineRet", kItemLineRetBranches).Opt().Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().Since(2, 0),
};

constexpr Element kCheckQueryResponse[] = {
    Aggregate("CheckRet", kCheckRet).Opt().Rep(),
};

constexpr Element kCreditCardChargeAdd[] = {
    Ref<159>("AccountRef"),
    Ref<209>("PayeeEntityRef").Opt(),
    Leaf("TxnDate", Type::Date).Opt(),
    Text("RefNumber", 11).Opt(),
    Text("Memo", 4095).Opt(),
    Aggregate("ExpenseLineAdd", kExpenseLineAdd).Opt().Rep(),
    Choice("ORItemLineAdd", kItemLineAddBranches).Opt().Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
};

constexpr Element kCreditCardChargeAddRequest[] = {
    Aggregate("CreditCardChargeAdd", kCreditCardChargeAdd),
};

constexpr Element kCreditCardChargeRet[] = {
    Leaf("TxnID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Leaf("TxnNumber", Type::Int).Opt(),
    Ref<159>("AccountRef"),
    Ref<209>("PayeeEntityRef").Opt(),
    Leaf("TxnDate", Type::Date),
    Leaf("Amount", Type::Amt),
    Text("RefNumber", 11).Opt(),
    Text("Memo", 4095).Opt(),
    Aggregate("ExpenseLineRet", kExpenseLineRet).Opt().Rep(),
    Choice("ORItemLineRet", kItemLineRetBranches).Opt().Rep(),
    Leaf("Tax1Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("Tax2Total", Type::Amt).Opt().Since(2, 0).In(kCanada),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().Since(2, 0),
};

constexpr Element kCreditCardChargeQueryResponse[] = {
    Aggregate("CreditCardChargeRet", kCreditCardChargeRet).Opt().Rep(),
};

constexpr Element kOneBill[] = {Aggregate("BillRet", kBillRet).Opt()};
constexpr Element kOneCheck[] = {Aggregate("CheckRet", kCheckRet).Opt()};
constexpr Element kOneCreditCardCharge[] = {Aggregate("CreditCardChargeRet", kCreditCardChargeRet).Opt()};

constexpr Message kMessages[] = {
    {.name = "BillAdd", .request = kBillAddRequest, .response = kOneBill},
    {.name = "BillQuery", .request = kBillQueryRequest, .response = kBillQueryResponse},
    {.name = "CheckAdd", .request = kCheckAddRequest, .response = kOneCheck},
    {.name = "CheckQuery", .request = kTxnQuery, .response = kCheckQueryResponse},
    {.name = "CreditCardChargeAdd", .request = kCreditCardChargeAddRequest, .response = kOneCreditCardCharge},
    {.name = "CreditCardChargeQuery", .request = kTxnQuery, .response = kCreditCardChargeQueryResponse},
};

}  // namespace

std::span<const Message> PurchaseMessages() { return kMessages; }

}  // namespace twqb::messages
