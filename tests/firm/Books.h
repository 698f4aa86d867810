// Both sides of a firm as texts that can be compared with those of another run: without identifiers and times, which
// differ between runs, and without an order. A link is told by the record that it leads to.
#pragma once

#include <map>
#include <set>
#include <string>

#include "tests/firm/FirmHouse.h"

namespace twqb {

struct Books {
  std::multiset<std::string> records;  // of QuickBooks
  std::multiset<std::string> rows;     // of BillingDb, those of tables that are sent
};

// Fields and columns by what they stand in: "CustomerRet.JobStatus", "VendorAddress.Addr1", "Project.ProjectStatus"; a
// row of Employee is an Employee or a Vendor.
[[nodiscard]] Books ReadBooks(FirmHouse& house, const std::set<std::string>& without = {});

// What one has and the other has not, a few of each, for a failure's message.
[[nodiscard]] std::string DifferenceOf(const std::multiset<std::string>& one, const std::multiset<std::string>& other);

}  // namespace twqb
