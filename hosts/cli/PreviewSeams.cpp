#include "cli/PreviewSeams.h"

#include <fmt/core.h>

#include "cli/ExitStatus.h"
#include "cli/TransferLock.h"

namespace twqb::cli {

namespace {

const preview::ScratchFile* CopyOf(const std::string& path, std::string_view called, preview::ScratchFiles& files) {
  try {
    return &files.Of(path);
  } catch (const PlatformError& failure) {
    throw UsageError(
        fmt::format("A preview works on copies, and {} can't be copied: {}", called, failure.description()));
  }
}

// Nobody is asked anything.
TerminalOptions Watched() {
  auto options = TerminalOptions::Detect();
  options.interrupts = Interrupts::AreTheHosts;
  options.interactive = false;
  return options;
}

}  // namespace

PreviewSeams::PreviewSeams(const Workplace& place, Machine& machine, const std::optional<Answers>& answers)
    : place_(place),
      files_(machine),
      billing_(CopyOf(BillingFileOf(place), "BillingDb", files_)),
      company_(CopyOf(place.company, "the company file", files_)),
      settings_(CopyOf(place.settings, "the settings file", files_)),
      copiedMachine_(machine, files_),
      copiedDatabase_(database_, files_),
      quickBooks_(company_->worked, copiedMachine_),
      copiedQuickBooks_(quickBooks_, files_),
      terminal_(Watched()),
      desk_(terminal_, answers),
      ending_(desk_, Confirms::No),
      seams_{.database = &copiedDatabase_,
             .quickbooks = &copiedQuickBooks_,
             .desk = &ending_,
             .machine = &copiedMachine_,
             .callback = &callback_} {}

Workplace PreviewSeams::With(std::string preview::ScratchFile::*copy) const {
  auto place = place_;
  place.billing = preview::ConnectionTo(place.billing, billing_->*copy);
  place.company = company_->*copy;
  place.settings = settings_->*copy;
  return place;
}

}  // namespace twqb::cli
