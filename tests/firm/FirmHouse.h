// A house with a made firm on both sides, and all that a test asks of it: transfers an hour apart, rows, counts.
//
// The firms of these tests are tiny: what holds of a firm shows in many small ones.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "adapters/companyfile/CompanyFile.h"
#include "samples/firm/FirmPlan.h"
#include "tests/support/TestHouse.h"
#include "twqb/enTables.h"

namespace twqb {

// A few rows for each table. A round of ./run soak is told by the variable TWQB_ROUND, and has other seeds.
[[nodiscard]] firm::FirmPlan TinyFirm(unsigned number);

// A row as texts; nothing for NULL.
using Fields = std::map<std::string, std::optional<std::string>, std::less<>>;
using Counts = std::map<std::string, std::int64_t>;

class FirmHouse : public TestHouse {
 public:
  // Any folder's files that are there already stay as they are; else the firm is put on both sides.
  explicit FirmHouse(const firm::FirmPlan& plan, HouseOptions options = {});
  // A house without rows, for `folder`, which has a company file already.
  explicit FirmHouse(HouseOptions options);

  // One table, or all, an hour behind the transfer before. The test fails unless it is done.
  void Send(enTables table = enAll);
  void Get(enTables table = enAll);

  [[nodiscard]] std::vector<Fields> RowsOf(const std::string& statement);
  // How many rows each table has that transfers write.
  [[nodiscard]] Counts CountRows();
  // How many records QuickBooks has of each kind.
  [[nodiscard]] Counts CountRecords();

 private:
  void FillBilling(const firm::FirmPlan& plan);
  void FillCompany(const firm::FirmPlan& plan, const company::CompanyOptions& options);
};

// Copies the company file of a house that no transfer is at into another folder.
void CopyCompany(const FirmHouse& house, const std::string& folder);

}  // namespace twqb
