// The sample firm's quarter as it goes by: what comes about at the billing desk and at QuickBooks, put in on its day.
//
// It knows the two sides and not the link. Whoever tells the story says how far time has come; what it puts in is the
// sample firm's own, and at the end all of it is there.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/options/Options.h"
#include "platform/Currency.h"
#include "platform/ado.h"
#include "platform/machine.h"

namespace twqb::company {
class CompanyFile;
}

namespace twqb::cli {

// Something with an amount: an invoice, a payment, a bill.
struct DemoPaper {
  std::string kind;    // of QuickBooks': "Invoice"; of a payment here, how it was paid
  std::string number;  // empty without one
  std::string who;
  std::string what;  // the project, or what the payment is for
  Currency amount;
};

// What came about since the last time.
struct DemoArrivals {
  std::int64_t hourEntries = 0;
  std::string hours;
  std::int64_t expenses = 0;
  Currency spent;
  std::int64_t revised = 0;  // rows of the lists that somebody has changed
  std::vector<DemoPaper> invoices;
  std::vector<DemoPaper> payments;
  std::vector<DemoPaper> bills;

  std::int64_t bookedHours = 0;  // entries in QuickBooks
  std::vector<DemoPaper> booked;
};

class DemoQuarter {
 public:
  // Takes what BillingDb has of the quarter out of it, to be put in again; the company file is to be without it.
  // `machine` tells when QuickBooks' records are entered, and must outlive the object.
  DemoQuarter(const Workplace& place, Machine& machine);
  ~DemoQuarter();
  DemoQuarter(const DemoQuarter&) = delete;
  DemoQuarter& operator=(const DemoQuarter&) = delete;

  // Puts in what is dated before that day ("2008-01-01") and was not put in yet. Raises std::runtime_error when
  // QuickBooks refuses a record, and PlatformError when BillingDb refuses a row.
  DemoArrivals Until(std::string_view day);

 private:
  struct Request {
    std::string date;  // empty: ahead of all
    std::string text;
  };

  void Run(const std::string& statement);
  [[nodiscard]] std::vector<std::vector<std::string>> Rows(const std::string& statement);
  void TellBilling(DemoArrivals& arrivals, std::string_view day);
  void EnterInBilling(std::string_view day);
  void EnterInQuickBooks(DemoArrivals& arrivals, std::string_view day);

  std::unique_ptr<ado::Connection> billing_;
  std::unique_ptr<company::CompanyFile> company_;  // open, for later records name earlier ones
  std::vector<Request> requests_;
};

}  // namespace twqb::cli
