#include "cli/Preview.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "adapters/sqlite/ConnectionText.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/Attribution.h"
#include "cli/BridgeRun.h"
#include "cli/Checks.h"
#include "cli/PreviewChanges.h"
#include "cli/PreviewSeams.h"
#include "cli/RunAccount.h"
#include "cli/RunFiles.h"
#include "cli/Surroundings.h"

namespace twqb::cli {

namespace {

// Hears what a transfer's own account hears, and keeps it.
class PreviewAccount final : public RunObserver {
 public:
  PreviewAccount(RunAccount& account, Preview& preview) : account_(account), preview_(preview) {}

  void RecordTold(const RecordAccount& record) override {
    preview_.records.push_back({.account = record});
    account_.RecordTold(record);
  }
  void ErrorTold(const ErrorAccount& error) override {
    preview_.errors.push_back(error);
    account_.ErrorTold(error);
  }
  void WalkEnded(const TableInHand& table, const Extent& extent) override { account_.WalkEnded(table, extent); }
  void LostLinkTold(const LostLinkAccount& link) override { account_.LostLinkTold(link); }
  void TableSkipped(const TableInHand& table) override { account_.TableSkipped(table); }
  void TableEnded(const TableInHand& table, std::string_view narrowed) override {
    account_.TableEnded(table, narrowed);
  }

 private:
  RunAccount& account_;
  Preview& preview_;
};

// --- The run ---------------------------------------------------------------------------------------------------------

// What a preview copies has to be a file.
void RequireFiles(const Workplace& place) {
  if (place.quickBooks == QuickBooksSide::Embedded && sqlite::NamesEmbeddedEngine(place.billing)) return;
  throw UsageError(
      "A preview runs on copies of both sides, and has none of QuickBooks itself or of a database of another maker.\n"
      "Make the transfer on a backup of them; \"twqb check\" tells beforehand what a send would refuse or cut.");
}

// The checks of a transfer, on the copies: an old company file is brought to today's format as it is looked at.
void CheckCopies(const PreviewSeams& seams) {
  try {
    CheckBilling(seams.Worked());
    CheckCompany(seams.Worked());
  } catch (const UsageError& refusal) {
    throw UsageError(seams.InOwnNames(refusal.what()));
  }
}

void Run(const Workplace& place, const Options& options, const Surroundings& surroundings,
         const TransferRequest& request, Preview& preview) {
  Composition composition(place, surroundings);
  try {
    preview.done = RunTransfer(composition, options, request);
  } catch (const DeskGaveUp& gaveUp) {
    preview.unanswered = gaveUp.question();
  }
  if (!composition.TranscriptIsWhole()) RefuseTranscript(options);
}

void AddChanges(const Workplace& place, PreviewSeams& seams, Machine& machine, Preview& preview) {
  auto changes = BillingChanges(place.billing, seams.Billing());
  if (const auto* company = seams.QuickBooks().Opened()) {
    std::ranges::move(QuickBooksChanges(*company, seams.QuickBooks().Touched(), machine), std::back_inserter(changes));
  }
  Attribute(std::move(changes), preview);
  preview.settings = SettingChanges(seams.Settings());
}

}  // namespace

Preview RunPreview(const Options& options, const TransferRequest& request, const Arrange& arrange) {
  return RunPreview(options, std::vector{request}, arrange);
}

Preview RunPreview(const Options& options, const std::vector<TransferRequest>& requests, const Arrange& arrange) {
  const auto place = WorkplaceOf(options);
  auto surroundings = ReadSurroundings(options);
  RequireFiles(place);
  CheckApart(place, options);
  if (!options.settingsTable) CheckSettings(place);
  const EndSignals signals;
  const auto machine = MakeMachine(place, options.clock);
  PreviewSeams seams(place, *machine, surroundings.answers);
  CheckCopies(seams);
  if (arrange) {
    arrange(seams.Worked());
    arrange(seams.Before());
  }
  Preview preview{.request = requests.back()};
  RunAccount account(seams.Copied());
  PreviewAccount observer(account, preview);
  surroundings.instead = &seams.Seams();
  surroundings.observer = &observer;
  surroundings.log = nullptr;
  for (const auto& request : requests) {
    account.Expect(TablesOf(request));
    Run(place, options, surroundings, request, preview);
    if (!preview.done || preview.unanswered) break;
  }
  if (EndSignals::Came() != 0) throw EndedBySignal();
  AddChanges(place, seams, *machine, preview);
  preview.boxes = seams.Asked().Boxes();
  preview.log = seams.Copied().Log();
  preview.summary = account.Summary(preview.request);
  preview.troubles = account.Troubles();
  return preview;
}

}  // namespace twqb::cli
