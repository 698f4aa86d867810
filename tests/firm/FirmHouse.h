// A house with a made firm on both sides, and all that a test asks of it: transfers an hour apart, rows, counts.
//
// The firms of these tests are tiny: what holds of a firm shows in many small ones.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
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
  // The firm on both sides; or its rows alone.
  enum class Books : bool { BillingAlone, Both };
  explicit FirmHouse(const firm::FirmPlan& plan, HouseOptions options = {}, Books books = Books::Both);
  // A house without rows, for `folder`, which has a company file already.
  explicit FirmHouse(HouseOptions options);

  // All tables an hour behind the transfer before, or one of them a minute. The test fails unless it is done.
  void Send(enTables table = enAll);
  void Get(enTables table = enAll);
  // All of them; the calls through the seams that that took, by their names.
  [[nodiscard]] std::vector<std::string> SendAndName();
  // Expenses of those keys, which go when they are named.
  void SendExpenses(const std::vector<std::string>& keys);
  // A send that need not be done.
  void TrySend(enTables table);

  // What QuickBooks answers to one request in its own form: records are the response's children.
  [[nodiscard]] pugi::xml_document Ask(const std::string& request);
  template <typename Take>
  void ForEachRecord(const std::string& kind, const std::string& fields, Take take) {
    const auto answer = Ask("<" + kind + "QueryRq>" + fields + "</" + kind + "QueryRq>");
    for (const auto& record : answer.child("QBXML").child("QBXMLMsgsRs").first_child().children()) take(record);
  }

  [[nodiscard]] std::vector<Fields> RowsOf(const std::string& statement);
  // How many rows each table has that transfers write.
  [[nodiscard]] Counts CountRows();
  // How many records QuickBooks has of each kind.
  [[nodiscard]] Counts CountRecords();

 private:
  void FillBilling(const firm::FirmPlan& plan);
  void FillCompany(const firm::FirmPlan& plan);

  std::string tag_;  // of the version line that the company file takes
};

// A property over many firms: ten in each of its parts, so that parts may run beside each other.
class AnyFirm : public testing::TestWithParam<unsigned> {
 protected:
  // Calls `holds` with the plan of each; what fails names the seed.
  template <typename Holds>
  void ForEachFirm(Holds holds) {
    constexpr unsigned kFirms = 10;
    for (unsigned number = GetParam() * kFirms; number < (GetParam() + 1) * kFirms; ++number) {
      const auto plan = TinyFirm(number);
      SCOPED_TRACE("seed " + std::to_string(plan.seed) + ", clients " + std::to_string(plan.clients));
      holds(plan);
      if (HasFailure()) return;
    }
  }
};
inline constexpr unsigned kPartsOfFirms = 10;

// Copies the files of a house that no transfer is at into another folder: all of them, or those whose names begin so.
void CopyFiles(const std::string& from, const std::string& to, std::string_view beginning = "");

}  // namespace twqb
