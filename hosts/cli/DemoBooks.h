// The two sides of the demonstration as a person at either of them sees and changes them: rows of BillingDb, and
// records of the company file; what is changed is the e-mail address of a client.
//
// It does not know the link: whatever the two sides have in common, a transfer has brought there.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "cli/Options.h"
#include "platform/ado.h"
#include "platform/machine.h"

namespace twqb::cli {

class DemoBooks {
 public:
  // `machine` tells the time of each change, and must outlive the object.
  DemoBooks(const Workplace& place, Machine& machine);

  // The rows of a table of BillingDb that a condition holds for, and how many of them are linked.
  struct RowCount {
    std::int64_t rows = 0;
    std::int64_t linked = 0;
  };
  [[nodiscard]] RowCount Rows(std::string_view table, std::string_view condition);
  // The part of QuickBooks that a table of BillingDb is linked with.
  enum class ListedIn : std::uint8_t {
    Employees,
    Vendors,
    Customers,
    Jobs,
    ServiceItems,
    OtherItems,
    Accounts,
    TimeEntries,
    Invoices,
    Payments,
    Bills
  };
  // Its records, inactive ones too: the edit sequence of each by its identifier.
  using Records = std::map<std::string, std::string>;
  [[nodiscard]] Records RecordsOf(ListedIn list);

  // The e-mail address of a client on either side; the side of QuickBooks is found by the client's link. Empty where
  // there is none.
  [[nodiscard]] std::string EmailInBilling(std::string_view client);
  [[nodiscard]] std::string EmailInQuickBooks(std::string_view client);
  // Carries the statements out, in one transaction.
  void EnterInBilling(std::string_view script);
  // Each also stamps the time of the change. Raises std::runtime_error when QuickBooks refuses.
  void ChangeInBilling(std::string_view client, std::string_view email);
  void ChangeInQuickBooks(std::string_view client, std::string_view email);

 private:
  [[nodiscard]] std::string FirstField(const std::string& statement);
  [[nodiscard]] std::string LinkOf(std::string_view client);

  std::string company_;
  Machine& machine_;
  std::unique_ptr<ado::Connection> billing_;
};

}  // namespace twqb::cli
