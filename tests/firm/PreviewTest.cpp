// What a preview says is what the transfer right behind it does, and a preview itself does nothing: over made firms and
// the demonstration firm, in both directions, for all tables and for one.

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cli/preview/Diff.h"
#include "samples/firm/Firm.h"
#include "tests/firm/FirmHouse.h"
#include "tests/firm/PreviewedFolder.h"

namespace twqb {
namespace {

using cli::ChangedSide;
using cli::Preview;
using cli::TransferRequest;

constexpr TransferRequest kSendAll = {.direction = Direction::Send};
constexpr TransferRequest kGetAll = {.direction = Direction::Get};

// Somebody works on the billing side.
void ChangeSomething(const FirmFolder& folder) {
  folder.Sql("UPDATE Client SET ClientEmail = 'new@' || ClientID || '.example', LastUpdated = '2008-03-05 20:00:00'");
  folder.Sql("UPDATE Employee SET EmpCity = 'Elsewhere', LastUpdated = '2008-03-05 20:00:00'");
  folder.Sql("UPDATE Activity SET QBLinkID = '80000FFF-1' WHERE ActivityID = (SELECT MIN(ActivityID) FROM Activity)");
}

class FirmPreview : public AnyFirm {};

TEST_P(FirmPreview, Says_what_the_transfer_behind_it_does_and_changes_nothing) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    FirmFolder folder({.content = cli::Content::Firm, .firm = plan});
    const bool sendsFirst = plan.seed % 2 == 0;
    folder.ExpectPreviewThenTransfer(sendsFirst ? kSendAll : kGetAll);
    folder.ExpectPreviewThenTransfer(sendsFirst ? kGetAll : kSendAll);
    ChangeSomething(folder);
    folder.ExpectPreviewThenTransfer({.direction = sendsFirst ? Direction::Send : Direction::Get, .sync = true});
    EXPECT_GT(folder.moved, 10);
  });
}

// Each firm is read whole four times: less of them do.
constexpr unsigned kParts = 4;
INSTANTIATE_TEST_SUITE_P(Firm, FirmPreview, testing::Range(0U, kParts));

// What of a preview of a send is in QuickBooks already, by identifier.
std::map<std::string, std::vector<cli::FieldChange>> ChangedRecords(const Preview& preview) {
  std::map<std::string, std::vector<cli::FieldChange>> changed;
  for (const auto& record : preview.records) {
    for (const auto& change : record.changes) {
      const bool isTwin = change.side == ChangedSide::QuickBooks && change.kind == cli::ChangeKind::Changed;
      if (isTwin && !change.fields.empty()) changed[change.key] = change.fields;
    }
  }
  return changed;
}

class FirmDifference : public AnyFirm {};

TEST_P(FirmDifference, Is_what_a_send_in_which_the_newer_side_wins_writes_where_it_takes_its_side) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    FirmFolder folder({.content = cli::Content::Firm, .firm = plan});
    folder.ExpectPreviewThenTransfer(kSendAll);
    ChangeSomething(folder);
    const auto options = folder.OptionsAnHourLater();
    const auto written = ChangedRecords(
        cli::RunPreview(options, {.direction = Direction::Send, .table = enClients, .id = "", .sync = true}));
    std::map<std::string, std::vector<cli::FieldChange>> said;
    for (const auto& pair : cli::FindDifference(options, enClients, std::nullopt).pairs) {
      if (pair.send == cli::Takes::Yes && !pair.inQuickBooks.empty()) said[pair.identifier] = pair.inQuickBooks;
    }
    EXPECT_FALSE(said.empty());
    EXPECT_TRUE(said == written);
  });
}

INSTANTIATE_TEST_SUITE_P(Firm, FirmDifference, testing::Range(0U, 1U));

TEST(DemonstrationFirmPreview, Says_what_a_run_over_all_does_in_both_directions) {
  FirmFolder folder({.content = cli::Content::Sample});
  folder.ExpectPreviewThenTransfer(kSendAll);
  folder.ExpectPreviewThenTransfer(kGetAll);
  ChangeSomething(folder);
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .sync = true});
  folder.ExpectPreviewThenTransfer({.direction = Direction::Get, .sync = true});
  EXPECT_GT(folder.moved, 1000);
}

TEST(DemonstrationFirmPreview, Says_what_a_run_does_with_a_server_and_with_QuickBooks_itself) {
  FirmFolder folder({.content = cli::Content::Sample}, FirmFolder::Stand::Elsewhere);
  folder.ExpectPreviewThenTransfer(kSendAll);
  folder.ExpectPreviewThenTransfer(kGetAll);
  ChangeSomething(folder);
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .sync = true});
  EXPECT_GT(folder.moved, 1000);
}

TEST(DemonstrationFirmPreview, Says_what_each_table_does_by_itself_with_what_it_pulls) {
  FirmFolder folder({.content = cli::Content::Sample});
  for (const auto table : {enInvoices, enPayments, enTimeEntries, enVendorBill, enExpenseLog, enProjects, enClients,
                           enEmployees, enVendors, enActivities, enExpenseCodes, enAccounts}) {
    folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = table});
  }
  for (const auto table : {enEstimates, enInvoices, enPayments, enTimeEntries, enVendorBill, enExpenseLog, enProjects,
                           enClients, enEmployees, enVendors, enActivities, enExpenseCodes, enAccounts}) {
    folder.ExpectPreviewThenTransfer({.direction = Direction::Get, .table = table});
  }
  EXPECT_GT(folder.moved, 500);
}

TEST(DemonstrationFirmPreview, Says_what_a_single_record_does) {
  FirmFolder folder({.content = cli::Content::Sample});
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = enClients, .id = "ABBOTT"});
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = enProjects, .id = "HARBOR:SURVEY"});
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = enInvoices, .id = "HARBOR:SURVEY,1041"});
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = enClients, .id = "NOBODY"});
  EXPECT_GE(folder.moved, 3);
}

}  // namespace
}  // namespace twqb
