// The e-mail addresses of eight clients that both sides of the demonstration change, or one, and which of them has to
// win.
//
// It changes and looks; what brings the two sides together is a transfer.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/system/FrozenMachine.h"
#include "cli/demo/DemoBooks.h"

namespace twqb::cli {

class DemoConflicts {
 public:
  // Both must outlive the object.
  DemoConflicts(DemoBooks& books, FrozenMachine& clock) : books_(books), clock_(clock) {}

  // Two clients in BillingDb alone, two in QuickBooks alone, four on both sides; half of these here first. Takes the
  // clock on by hours.
  void Make();
  // What both sides have behind the transfers.
  void Look();
  // One line for each client.
  void PrintResult() const;
  // Of each side of each client that has not what it should have, what it has.
  [[nodiscard]] std::vector<std::string> Unexpected() const;

 private:
  // In the order of time, where both sides change a record.
  enum class Changed : std::uint8_t { BillingAlone, QuickBooksAlone, QuickBooksThenBilling, BillingThenQuickBooks };
  struct Change {
    std::string_view client;
    Changed changed;
  };
  // What the two sides hold of a client, before the transfers and after.
  struct Compared {
    Change change;
    std::string billingBefore;
    std::string quickBooksBefore;
    std::string billingAfter = {};
    std::string quickBooksAfter = {};

    [[nodiscard]] const std::string& Expected() const;
  };
  static const std::vector<Change> kChanges;

  void ChangeHere(const Change& change);
  void ChangeThere(const Change& change);
  [[nodiscard]] static bool BillingWins(Changed changed);
  [[nodiscard]] static std::string_view WinnerText(Changed changed);

  DemoBooks& books_;
  FrozenMachine& clock_;
  std::vector<Compared> compared_;
};

}  // namespace twqb::cli
