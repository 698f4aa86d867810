#include "cli/preview/Preview.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/snapshot/Snapshot.h"
#include "adapters/terminal/EndSignals.h"
#include "adapters/terminal/TextLayout.h"
#include "adapters/transcript/Masking.h"
#include "cli/preview/Attribution.h"
#include "cli/preview/PreviewChanges.h"
#include "cli/preview/PreviewSeams.h"
#include "cli/runs/BridgeRun.h"
#include "cli/runs/Checks.h"
#include "cli/runs/RunAccount.h"
#include "cli/workplace/RunFiles.h"
#include "cli/workplace/Surroundings.h"

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
  // Of a link that is found again in the copies alone.
  void LostLinkTold(const LostLinkAccount& link) override {
    preview_.told.push_back(link.text);
    account_.CountLostLink(link);
  }
  void TableSkipped(const TableInHand& table) override {
    preview_.skipped.push_back(table);
    account_.TableSkipped(table);
  }
  void TableEnded(const TableInHand& table, std::string_view narrowed) override {
    account_.TableEnded(table, narrowed);
  }

 private:
  RunAccount& account_;
  Preview& preview_;
};

// --- The run ---------------------------------------------------------------------------------------------------------

// Calls `body`, which works on the copies. What could not be written of them is no fault of the firm's rows, whoever
// told of it.
template <typename Body>
void WithRoom(PreviewSeams& seams, Body body) {
  auto& files = seams.Files();
  try {
    body();
  } catch (const std::exception& failure) {
    files.NoteFailure(failure.what());
    if (files.LacksRoom()) RefuseForRoom(files);
    throw;
  }
  if (files.LacksRoom()) RefuseForRoom(files);
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

// With QuickBooks itself there is no copy ahead of the first session.
void OpenCompany(const Workplace& place, const Options& options, const Surroundings& surroundings,
                 const PreviewSeams& seams) {
  Composition composition(place, surroundings);
  CTWQBBridge bridge;
  SetUp(bridge, composition, options);
  const bool isOpen = bridge.ConnectToQB(true);
  static_cast<void>(bridge.ConnectToQB(false));
  if (isOpen) return;
  const auto& boxes = seams.Asked().Boxes();
  throw UsageError(fmt::format("There is no session with QuickBooks.{}",
                               boxes.empty() ? "" : " It says: " + OneLine(boxes.back().text)));
}

void AddChanges(const Workplace& place, PreviewSeams& seams, Machine& machine, Preview& preview) {
  auto changes = BillingChanges(place.billing, seams.Billing());
  if (const auto* company = seams.QuickBooks().opened) {
    std::ranges::move(QuickBooksChanges(*company, seams.QuickBooks().touched, machine), std::back_inserter(changes));
  }
  Attribute(std::move(changes), preview);
  if (const auto* company = seams.QuickBooks().opened) {
    MarkPaymentsOf(company::CompanyFile(company->worked, machine).UnknownAmounts(), place.billing, seams.Billing(),
                   preview);
  }
  preview.settings = SettingChanges(seams.Settings());
}

Preview RunOnCopies(const Options& options, const std::vector<TransferRequest>& requests, const Arrange& arrange,
                    PreviewSources& sources) {
  const auto place = WorkplaceOf(options);
  auto surroundings = ReadSurroundings(options);
  CheckApart(place, options);
  if (!options.settingsTable) CheckSettings(place);
  const EndSignals signals;
  const auto machine = MakeMachine(place, options.clock);
  PreviewSeams seams(place, *machine, surroundings.answers, sources);
  surroundings.instead = &seams.Seams();
  surroundings.log = nullptr;
  WithRoom(seams, [&] {
    CheckCopies(seams);
    if (!arrange) return;
    if (place.quickBooks == QuickBooksSide::Itself) OpenCompany(place, options, surroundings, seams);
    arrange(seams.Worked());
    arrange(seams.Before());
  });
  Preview preview{.request = requests.back()};
  RunAccount account(seams.Copied());
  PreviewAccount observer(account, preview);
  surroundings.observer = &observer;
  WithRoom(seams, [&] {
    for (const auto& request : requests) {
      preview.request = request;
      account.Expect(TablesOf(request));
      Run(place, options, surroundings, request, preview);
      if (!preview.done || preview.unanswered) break;
    }
    if (EndSignals::Came() != 0) throw EndedBySignal();
    AddChanges(place, seams, *machine, preview);
  });
  preview.boxes = seams.Asked().Boxes();
  preview.log = seams.Copied().Log();
  preview.summary = account.Summary(preview.request);
  preview.troubles = account.Troubles();
  return preview;
}

}  // namespace

bool HangsOnUnknown(const Preview& preview) {
  return std::ranges::any_of(preview.records, &PreviewedRecord::hangsOnUnknown);
}

Preview RunPreview(const Options& options, const TransferRequest& request) {
  PreviewSources sources(options);
  return RunPreview(options, std::vector{request}, {}, sources);
}

Preview RunPreview(const Options& options, const std::vector<TransferRequest>& requests, const Arrange& arrange,
                   PreviewSources& sources) {
  try {
    return RunOnCopies(options, requests, arrange, sources);
  } catch (const snapshot::SnapshotError& failure) {
    throw UsageError(
        fmt::format("{}\nWithout that there is no preview. Nothing has been changed.", MaskPasswords(failure.what())));
  }
}

}  // namespace twqb::cli
