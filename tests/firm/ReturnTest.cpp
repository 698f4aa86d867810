// What goes to QuickBooks comes back into an empty BillingDb as it was, column by column, but for the exceptions that
// are named here. The exceptions are the rules of the link, seen from a row.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/firm/Return.h"

namespace twqb {
namespace {

void SendAndCompare(const firm::FirmPlan& plan, Exceptions& exceptions) {
  FirmHouse house(plan);
  house.Send();
  // Of vendors, and of some cents at least: a bill that comes to nothing does not go.
  std::vector<std::string> named;
  for (const auto& row :
       house.RowsOf("SELECT ELID FROM ExpenseLog WHERE isSub <> 0 AND ELPosted <> 0 AND VendorBillID IS "
                    "NULL AND ELUnits * ELCost >= 1 ORDER BY EmployeeID")) {
    named.push_back(row.at("ELID").value());
  }
  if (!named.empty()) house.SendExpenses(named);
  const TemporaryFolder folder;
  CopyCompany(house, folder.Path());
  FirmHouse empty(HouseOptions{.now = house.machine.Now(), .folder = folder.Path()});
  empty.Get();
  Return(house, empty, exceptions).Compare();
}

class FirmReturn : public AnyFirm {};

TEST_P(FirmReturn, Into_an_empty_database_brings_each_column_back_but_for_named_exceptions) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    Exceptions exceptions;
    SendAndCompare(plan, exceptions);
  });
}

INSTANTIATE_TEST_SUITE_P(Firm, FirmReturn, testing::Range(0U, kPartsOfFirms));

TEST(FirmExceptions, Are_all_met_in_a_few_larger_firms) {
  Exceptions exceptions;
  for (const std::uint64_t seed : {1, 2, 3, 4}) {
    SendAndCompare({.clients = 80, .seed = seed, .months = 1, .hours = 1}, exceptions);
  }
  for (const auto& [exception, times] : exceptions) EXPECT_GT(times, 0) << exception << " is never met";
}

}  // namespace
}  // namespace twqb
