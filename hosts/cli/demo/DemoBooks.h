// The two sides of the demonstration as a person at either of them sees and changes them: rows of BillingDb, and
// records of the company file; what is changed is the e-mail address of a client.
//
// It does not know the link: whatever the two sides have in common, a transfer has brought there.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/options/Options.h"
#include "platform/ado.h"
#include "platform/machine.h"

namespace twqb::cli {

class DemoBooks {
 public:
  // `machine` tells the time of each change, and must outlive the object.
  DemoBooks(const Workplace& place, Machine& machine);

  // How many rows of a table of BillingDb a condition holds for.
  [[nodiscard]] std::int64_t Rows(std::string_view table, std::string_view condition);
  // How many rows of a table have a link that another of its rows has, too.
  [[nodiscard]] std::int64_t SharedLinks(std::string_view table, std::string_view condition);
  // How many records QuickBooks has of a kind ("Customer"), inactive ones too; those with a parent, where it can have
  // one.
  struct Count {
    std::int64_t all = 0;
    std::int64_t below = 0;
  };
  [[nodiscard]] Count ListedOf(std::string_view kind);
  // The same of a kind of transactions ("Bill").
  [[nodiscard]] std::int64_t BookedOf(std::string_view kind);
  // The keys of rows, in their order.
  [[nodiscard]] std::vector<std::string> Keys(const std::string& statement);

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
