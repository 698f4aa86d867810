// What goes to QuickBooks comes back into an empty BillingDb as it was, column by column, but for the exceptions that
// are named here. The exceptions are the rules of the link, seen from a row.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/firm/Properties.h"
#include "tests/firm/Return.h"

namespace twqb {

void ExpectThatAllComesBack(FirmHouse& house, Exceptions& exceptions) {
  // Of vendors, and of some cents at least: a bill that comes to nothing does not go.
  std::vector<std::string> named;
  for (const auto& row :
       house.RowsOf("SELECT ELID FROM ExpenseLog WHERE isSub <> 0 AND ELPosted <> 0 AND VendorBillID IS "
                    "NULL AND ELUnits * ELCost >= 1 ORDER BY EmployeeID")) {
    named.push_back(row.at("ELID").value());
  }
  if (!named.empty()) house.SendExpenses(named);
  const TemporaryFolder folder;
  CopyFiles(house.Folder(), folder.Path(), "company.twq");
  FirmHouse empty(HouseOptions{.now = house.machine.Now(), .folder = folder.Path()});
  empty.Get();
  Return(house, empty, exceptions).Compare();
}

namespace {

TEST(FirmExceptions, Are_all_met_in_a_few_larger_firms) {
  Exceptions exceptions;
  for (const std::uint64_t seed : {1, 2, 3, 4}) {
    FirmHouse house({.clients = 80, .seed = seed, .months = 1, .hours = 1});
    house.Send();
    ExpectThatAllComesBack(house, exceptions);
  }
  for (const auto& [exception, times] : exceptions) EXPECT_GT(times, 0) << exception << " is never met";
}

}  // namespace
}  // namespace twqb
