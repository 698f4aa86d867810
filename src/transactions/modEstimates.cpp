#include "transactions/modEstimates.h"

#include <array>

#include "transactions/EstimatesIn.h"

namespace twqb {

namespace {

// A regular run that does nothing.
void SendNothing(const SendCall& call) { call.run.g_TableOk = TableOk::True; }

constexpr std::array kReads = {QuickBooksRead{
    .filterRoutine = "ApplyQBEstimateFilters",
    .copyRoutine = "GetQBEstimateRecordsInCollectionObject",
    .errors = ErrorReport::OwnBox,
    .requests = {"EstimateQueryRq"},
    .choice = "ORTxnQuery",
    .transaction = TransactionQuery{.takesTransactionDates = true, .names = NamePair::Entities},
}};

}  // namespace

constinit const Table kEstimatesTable = {
    .number = enEstimates,
    .name = "Estimates",
    .names = {.send = "Estimates", .get = "Estimates(QB)"},
    .rows = {.table = "Budget", .condition = "IsEstimate = -1"},
    .send = SendNothing,
    .reads = kReads,
    .get = MoveEstimatesToTW,
};

}  // namespace twqb
