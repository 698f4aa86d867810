#include "messages/Rows.h"
#include "messages/Tables.h"
#include "messages/TxnRows.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr Element kSetCredit[] = {
    Leaf("CreditTxnID", Type::Id),
    Leaf("AppliedAmount", Type::Amt),
};

constexpr Element kAppliedToTxnAdd[] = {
    Leaf("TxnID", Type::Id),
    Leaf("PaymentAmount", Type::Amt).Opt(),
    Aggregate("SetCredit", kSetCredit).Opt().Rep(),
    Leaf("DiscountAmount", Type::Amt).Opt(),
    Ref<159>("DiscountAccountRef").Opt(),
};

constexpr Element kApplyPaymentBranches[] = {
    Leaf("IsAutoApply", Type::Bool),
    Aggregate("AppliedToTxnAdd", kAppliedToTxnAdd).Rep(),
};

constexpr Element kReceivePaymentAdd[] = {
    Ref<209>("CustomerRef"),
    Ref<159>("ARAccountRef").Opt(),
    Leaf("TxnDate", Type::Date).Opt(),
    Text("RefNumber", 20).Opt(),
    Leaf("TotalAmount", Type::Amt).Opt(),
    Ref<31>("PaymentMethodRef").Opt(),
    Text("Memo", 4095).Opt(),
    Ref<159>("DepositToAccountRef").Opt(),
    Choice("ORApplyPayment", kApplyPaymentBranches),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
};

constexpr Element kReceivePaymentAddRequest[] = {
    Aggregate("ReceivePaymentAdd", kReceivePaymentAdd),
};

constexpr Element kAppliedToTxnRet[] = {
    Leaf("TxnID", Type::Id),
    Enumeration("TxnType", kTxnTypes),
    Leaf("TxnDate", Type::Date).Opt(),
    Text("RefNumber", 20).Opt(),
    Leaf("BalanceRemaining", Type::Amt).Opt(),
    Leaf("Amount", Type::Amt).Opt(),
    Leaf("DiscountAmount", Type::Amt).Opt(),
    Ref<159>("DiscountAccountRef").Opt(),
};

constexpr Element kReceivePaymentRet[] = {
    Leaf("TxnID", Type::Id).Opt(),
    Leaf("TimeCreated", Type::DateTime).Opt(),
    Leaf("TimeModified", Type::DateTime).Opt(),
    Text("EditSequence", 16).Opt(),
    Leaf("TxnNumber", Type::Int).Opt(),
    Ref<209>("CustomerRef").Opt(),
    Ref<159>("ARAccountRef").Opt(),
    Leaf("TxnDate", Type::Date).Opt(),
    Text("RefNumber", 20).Opt(),
    Leaf("TotalAmount", Type::Amt).Opt(),
    Ref<31>("PaymentMethodRef").Opt(),
    Text("Memo", 4095).Opt(),
    Ref<159>("DepositToAccountRef").Opt(),
    Leaf("UnusedPayment", Type::Amt).Opt(),
    Leaf("UnusedCredits", Type::Amt).Opt(),
    Leaf("ExchangeRate", Type::Float).Opt().Since(2, 0).In(kCanada),
    Aggregate("AppliedToTxnRet", kAppliedToTxnRet).Opt().Rep(),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().Since(2, 0),
};

constexpr Element kReceivePaymentQueryResponse[] = {
    Aggregate("ReceivePaymentRet", kReceivePaymentRet).Opt().Rep(),
};

constexpr Element kOneReceivePayment[] = {Aggregate("ReceivePaymentRet", kReceivePaymentRet).Opt()};

constexpr Message kMessages[] = {
    {.name = "ReceivePaymentAdd", .request = kReceivePaymentAddRequest, .response = kOneReceivePayment},
    {.name = "ReceivePaymentQuery", .request = kTxnQuery, .response = kReceivePaymentQueryResponse},
};

}  // namespace

std::span<const Message> PaymentMessages() { return kMessages; }

}  // namespace twqb::messages
