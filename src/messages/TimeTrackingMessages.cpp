#include "messages/Rows.h"
#include "messages/Tables.h"
#include "messages/TxnRows.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr Element kTimeTrackingAdd[] = {
    Leaf("TxnDate", Type::Date).Opt(),
    Ref<209>("EntityRef"),
    Ref<209>("CustomerRef").Opt(),
    Ref<159>("ItemServiceRef").Opt(),
    Leaf("Rate", Type::Price).Opt().In(kNowhere),
    Leaf("Duration", Type::TimeInterval),
    Ref<159>("ClassRef").Opt(),
    Ref<31>("PayrollItemWageRef").Opt(),
    Text("Notes", 4095).Opt(),
    Leaf("IsBillable", Type::Bool).Opt(),
};

constexpr Element kTimeTrackingAddRequest[] = {
    Aggregate("TimeTrackingAdd", kTimeTrackingAdd),
};

constexpr Element kTimeTrackingEntityFilterBranches[] = {
    Leaf("ListID", Type::Id).Rep(),
    Text("FullName").Rep(),
};

constexpr Element kTimeTrackingEntityFilter[] = {
    Choice("ORTimeTrackingEntityFilter", kTimeTrackingEntityFilterBranches),
};

constexpr Element kTimeTrackingFilter[] = {
    Leaf("MaxReturned", Type::Int).Opt(),
    Choice("ORDateRangeFilter", kDateRangeFilterBranches).Opt(),
    Aggregate("TimeTrackingEntityFilter", kTimeTrackingEntityFilter).Opt(),
};

constexpr Element kTimeTrackingTxnQueryBranches[] = {
    Leaf("TxnID", Type::Id).Rep(),
    Step("TxnFilter", kTimeTrackingFilter),
};

constexpr Element kTimeTrackingQueryRequest[] = {
    Choice("ORTimeTrackingTxnQuery", kTimeTrackingTxnQueryBranches).Opt(),
};

constexpr Element kTimeTrackingRet[] = {
    Leaf("TxnID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Leaf("TxnNumber", Type::Int).Opt(),
    Leaf("TxnDate", Type::Date),
    Ref<209>("EntityRef"),
    Ref<209>("CustomerRef").Opt(),
    Ref<159>("ItemServiceRef").Opt(),
    Leaf("Rate", Type::Price).Opt().In(kNowhere),
    Leaf("Duration", Type::TimeInterval),
    Ref<159>("ClassRef").Opt(),
    Ref<31>("PayrollItemWageRef").Opt(),
    Text("Notes", 4095).Opt(),
    Leaf("IsBillable", Type::Bool).Opt(),
    Leaf("IsBilled", Type::Bool).Opt(),
};

constexpr Element kTimeTrackingQueryResponse[] = {
    Aggregate("TimeTrackingRet", kTimeTrackingRet).Opt().Rep(),
};

constexpr Element kOneTimeTracking[] = {Aggregate("TimeTrackingRet", kTimeTrackingRet).Opt()};

constexpr Message kMessages[] = {
    {.name = "TimeTrackingAdd", .request = kTimeTrackingAddRequest, .response = kOneTimeTracking},
    {.name = "TimeTrackingQuery", .request = kTimeTrackingQueryRequest, .response = kTimeTrackingQueryResponse},
};

}  // namespace

std::span<const Message> TimeTrackingMessages() { return kMessages; }

}  // namespace twqb::messages
