// Rows that several kinds of transactions share: the filters of their queries, links between transactions, item groups.
// Only the files that hold rows include this.
#pragma once

#include "messages/Rows.h"

namespace twqb::messages::rows {

inline constexpr EnumValue kDateMacros[] = {{"All", 0},
                                            {"Today", 1},
                                            {"ThisWeek", 2},
                                            {"ThisWeekToDate", 3},
                                            {"ThisMonth", 4},
                                            {"ThisMonthToDate", 5},
                                            {"ThisCalendarQuarter", 6},
                                            {"ThisCalendarQuarterToDate", 7},
                                            {"ThisFiscalQuarter", 8},
                                            {"ThisFiscalQuarterToDate", 9},
                                            {"ThisCalendarYear", 10},
                                            {"ThisCalendarYearToDate", 11},
                                            {"ThisFiscalYear", 12},
                                            {"ThisFiscalYearToDate", 13},
                                            {"Yesterday", 14},
                                            {"LastWeek", 15},
                                            {"LastWeekToDate", 16},
                                            {"LastMonth", 17},
                                            {"LastMonthToDate", 18},
                                            {"LastCalendarQuarter", 19},
                                            {"LastCalendarQuarterToDate", 20},
                                            {"LastFiscalQuarter", 21},
                                            {"LastFiscalQuarterToDate", 22},
                                            {"LastCalendarYear", 23},
                                            {"LastCalendarYearToDate", 24},
                                            {"LastFiscalYear", 25},
                                            {"LastFiscalYearToDate", 26},
                                            {"NextWeek", 27},
                                            {"NextFourWeeks", 28},
                                            {"NextMonth", 29},
                                            {"NextCalendarQuarter", 30},
                                            {"NextCalendarYear", 31},
                                            {"NextFiscalQuarter", 32},
                                            {"NextFiscalYear", 33}};
inline constexpr EnumValue kPaidStatuses[] = {{"All", 0}, {"PaidOnly", 1}, {"NotPaidOnly", 2}};
inline constexpr EnumValue kTxnTypes[] = {
    {.name = "Bill", .number = 0},
    {.name = "BillPaymentCheck", .number = 1},
    {.name = "BillPaymentCreditCard", .number = 2},
    {.name = "Charge", .number = 3},
    {.name = "Check", .number = 4},
    {.name = "CreditCardCharge", .number = 5},
    {.name = "CreditCardCredit", .number = 6},
    {.name = "CreditMemo", .number = 7},
    {.name = "Deposit", .number = 8},
    {.name = "Estimate", .number = 9},
    {.name = "Invoice", .number = 10},
    {.name = "InventoryAdjustment", .number = 11},
    {.name = "ItemReceipt", .number = 12},
    {.name = "JournalEntry", .number = 13},
    {.name = "LiabilityAdjustment", .number = 14},
    {.name = "PurchaseOrder", .number = 15},
    {.name = "ReceivePayment", .number = 16},
    {.name = "SalesOrder", .number = 17},
    {.name = "SalesReceipt", .number = 18},
    {.name = "SalesTaxPaymentCheck", .number = 19, .countries = kUnitedStates | kBritain},
    {.name = "Transfer", .number = 20},
    {.name = "VendorCredit", .number = 21}};
inline constexpr EnumValue kLinkTypes[] = {{"AMTTYPE", 0}, {"QUANTYPE", 1}};

inline constexpr Element kModifiedDateRangeFilter[] = {
    Leaf("FromModifiedDate", Type::DateTime).Opt(),
    Leaf("ToModifiedDate", Type::DateTime).Opt(),
};

inline constexpr Element kTxnDateFilter[] = {
    Leaf("FromTxnDate", Type::Date).Opt(),
    Leaf("ToTxnDate", Type::Date).Opt(),
};

inline constexpr Element kTxnDateRangeFilterBranches[] = {
    Step("TxnDateFilter", kTxnDateFilter),
    Enumeration("DateMacro", kDateMacros),
};

inline constexpr Element kTxnDateRangeFilter[] = {
    Choice("ORTxnDateRangeFilter", kTxnDateRangeFilterBranches),
};

inline constexpr Element kDateRangeFilterBranches[] = {
    Aggregate("ModifiedDateRangeFilter", kModifiedDateRangeFilter),
    Aggregate("TxnDateRangeFilter", kTxnDateRangeFilter),
};

inline constexpr Element kItemGroupLineAdd[] = {
    Ref<31>("ItemGroupRef"),
    Leaf("Quantity", Type::Quan).Opt(),
};

inline constexpr Element kEntityFilterBranches[] = {
    Leaf("ListID", Type::Id).Rep().Since(2, 0),
    Text("FullName").Rep(),
    Leaf("ListIDWithChildren", Type::Id).Since(2, 0),
    Text("FullNameWithChildren"),
};

inline constexpr Element kEntityFilter[] = {
    Choice("OREntityFilter", kEntityFilterBranches),
};

inline constexpr Element kAccountFilter[] = {
    Choice("ORAccountFilter", kEntityFilterBranches),
};

inline constexpr Element kRefNumberFilter[] = {
    Enumeration("MatchCriterion", kMatchCriteria),
    Text("RefNumber"),
};

inline constexpr Element kRefNumberRangeFilter[] = {
    Text("FromRefNumber").Opt(),
    Text("ToRefNumber").Opt(),
};

inline constexpr Element kRefNumberFilterBranches[] = {
    Aggregate("RefNumberFilter", kRefNumberFilter),
    Aggregate("RefNumberRangeFilter", kRefNumberRangeFilter),
};

inline constexpr Element kPaidTxnFilter[] = {
    Leaf("MaxReturned", Type::Int).Opt(),
    Choice("ORDateRangeFilter", kDateRangeFilterBranches).Opt(),
    Aggregate("EntityFilter", kEntityFilter).Opt(),
    Aggregate("AccountFilter", kAccountFilter).Opt(),
    Choice("ORRefNumberFilter", kRefNumberFilterBranches).Opt(),
    Enumeration("PaidStatus", kPaidStatuses).Opt(),
};

inline constexpr Element kPaidTxnQueryBranches[] = {
    Leaf("TxnID", Type::Id).Rep(),
    Text("RefNumber").Rep(),
    Step("TxnFilter", kPaidTxnFilter),
};

inline constexpr Element kLinkedTxn[] = {
    Leaf("TxnID", Type::Id),
    Enumeration("TxnType", kTxnTypes),
    Leaf("TxnDate", Type::Date),
    Text("RefNumber", 20).Opt(),
    Enumeration("LinkType", kLinkTypes).Opt().SinceInCanada(3, 0),
    Leaf("Amount", Type::Amt),
};

inline constexpr Element kTxnFilter[] = {
    Leaf("MaxReturned", Type::Int).Opt(),
    Choice("ORDateRangeFilter", kDateRangeFilterBranches).Opt(),
    Aggregate("EntityFilter", kEntityFilter).Opt(),
    Aggregate("AccountFilter", kAccountFilter).Opt(),
    Choice("ORRefNumberFilter", kRefNumberFilterBranches).Opt(),
};

inline constexpr Element kTxnQueryBranches[] = {
    Leaf("TxnID", Type::Id).Rep(),
    Text("RefNumber").Rep(),
    Step("TxnFilter", kTxnFilter),
};

inline constexpr Element kTxnQuery[] = {
    Choice("ORTxnQuery", kTxnQueryBranches).Opt(),
    Leaf("IncludeLineItems", Type::Bool).Opt(),
    Leaf("OwnerID", Type::Guid).Opt().Rep().Since(2, 0),
};

}  // namespace twqb::messages::rows
