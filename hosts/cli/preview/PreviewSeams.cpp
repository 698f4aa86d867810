#include "cli/preview/PreviewSeams.h"

#include <fmt/core.h>

#include <filesystem>
#include <system_error>

#include "adapters/terminal/EndSignals.h"
#include "adapters/transcript/Masking.h"
#include "cli/options/ExitStatus.h"
#include "cli/options/SystemSides.h"
#include "cli/screen/Output.h"
#include "cli/workplace/SampleTexts.h"
#include "cli/workplace/SqlScript.h"
#include "cli/workplace/TransferLock.h"

namespace twqb::cli {

namespace {

const preview::ScratchFile* CopyOf(const std::string& path, std::string_view called, preview::ScratchFiles& files) {
  try {
    return &files.Of(path);
  } catch (const PlatformError& failure) {
    std::error_code unknown;
    const auto space = std::filesystem::space(files.Place(), unknown);
    const auto size = std::filesystem::file_size(path, unknown);
    if (!unknown && space.available < 2 * size) RefuseForRoom(files);
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

void RefuseForRoom(const preview::ScratchFiles& files) {
  throw UsageError(
      fmt::format("There is no room for the copies of a preview in \"{}\": a write to them failed. Make room there, or "
                  "name another folder with TMPDIR. Nothing has been changed.",
                  files.Place()));
}

PreviewSources::PreviewSources(const Options& options)
    : sides_(options.sides),
      taken_(
          [quiet = options.noProgress](std::string_view side) {
            if (quiet) return;
            Tell(fmt::format("Reading {} as a whole, to copy it: in a big firm that takes a while.", side));
          },
          [](std::string_view /*next*/) {
            if (EndSignals::Came() != 0) throw EndedBySignal();
          }) {}

const preview::Snapshots::Billing& PreviewSources::BillingOf(const Workplace& place) {
  if (!billing_) billing_ = BillingProviderOf(sides_);
  try {
    return taken_.BillingOf(*billing_, place.billing, SplitStatements(BillingSchema()));
  } catch (const PlatformError& failure) {
    throw UsageError(fmt::format("BillingDb can't be read for the preview: {}", MaskPasswords(failure.description())));
  }
}

TransportFactory& PreviewSources::QuickBooksItself() {
  if (!quickBooks_) quickBooks_ = QuickBooksItselfOf(sides_);
  return *quickBooks_;
}

PreviewSeams::PreviewSeams(const Workplace& place, Machine& machine, const std::optional<Answers>& answers,
                           PreviewSources& sources)
    : place_(place),
      files_(machine),
      billing_(nullptr),
      company_(nullptr),
      settings_(CopyOf(place.settings, "the settings file", files_)),
      copiedMachine_(machine, files_),
      terminal_(Watched()),
      desk_(terminal_, answers),
      ending_(desk_, Confirms::No) {
  if (const auto file = BillingFileOf(place); !file.empty()) {
    billing_ = CopyOf(file, "BillingDb", files_);
    copiedDatabase_.emplace(database_, files_);
  } else {
    const auto& read = sources.BillingOf(place);
    billing_ = &files_.Put(preview::kOtherDatabase, read.file);
    copiedDatabase_.emplace(database_, files_, read.provider);
  }
  TransportFactory* quickBooks = nullptr;
  if (place.quickBooks == QuickBooksSide::Itself) {
    quickBooks = &snapshotQuickBooks_.emplace(sources.QuickBooksItself(), sources.Taken(), files_, copiedMachine_);
  } else {
    company_ = CopyOf(place.company, "the company file", files_);
    quickBooks = &copiedQuickBooks_.emplace(quickBooks_.emplace(company_->worked, copiedMachine_), files_);
  }
  seams_ = {.database = &*copiedDatabase_,
            .quickbooks = quickBooks,
            .desk = &ending_,
            .machine = &copiedMachine_,
            .callback = &callback_};
}

Workplace PreviewSeams::With(std::string preview::ScratchFile::*copy) const {
  auto place = place_;
  place.billing = preview::ConnectionTo(place.billing, billing_->*copy);
  const auto* company = company_ != nullptr ? company_ : QuickBooks().opened;
  if (company != nullptr) place.company = company->*copy;
  place.settings = settings_->*copy;
  return place;
}

}  // namespace twqb::cli
