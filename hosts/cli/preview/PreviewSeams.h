// What a preview stands on: copies of the files that a run would write, in the place of the files themselves.
//
// Every seam is there, so that the library runs as it would; Composition takes them in the place of its own. Of a
// BillingDb or a QuickBooks that is in no file of this machine the copies are of a snapshot.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/preview/CopiedDatabase.h"
#include "adapters/preview/CopiedMachine.h"
#include "adapters/preview/CopiedQuickBooks.h"
#include "adapters/preview/ScratchFiles.h"
#include "adapters/preview/SnapshotQuickBooks.h"
#include "adapters/preview/Snapshots.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/Callbacks.h"
#include "adapters/terminal/TerminalDesk.h"
#include "cli/options/Options.h"
#include "cli/preview/PreviewDesk.h"
#include "cli/runs/EndingDesk.h"
#include "platform/Platform.h"

namespace twqb::cli {

struct OtherSides;

// Raises the UsageError of copies that could not be written.
[[noreturn]] void RefuseForRoom(const preview::ScratchFiles& files);

// Where what is no file is read from, and what has been read of it: for previews one behind the other.
class PreviewSources {
 public:
  explicit PreviewSources(const Options& options);

  // Both raise UsageError for a side that can't be had.
  [[nodiscard]] const preview::Snapshots::Billing& BillingOf(const Workplace& place);
  [[nodiscard]] TransportFactory& QuickBooksItself();
  [[nodiscard]] preview::Snapshots& Taken() { return taken_; }

 private:
  const OtherSides* sides_;
  std::unique_ptr<ado::Provider> billing_;
  std::unique_ptr<TransportFactory> quickBooks_;
  preview::Snapshots taken_;
};

class PreviewSeams {
 public:
  // Copies the files of `place`. `machine` and `sources` must outlive the object. Raises UsageError for what can't be
  // copied, and SnapshotError for what can't be read.
  PreviewSeams(const Workplace& place, Machine& machine, const std::optional<Answers>& answers,
               PreviewSources& sources);

  [[nodiscard]] const Platform& Seams() const { return seams_; }

  // The workplace with copies in the place of its files; of QuickBooks itself, behind the first session.
  [[nodiscard]] Workplace Worked() const { return With(&preview::ScratchFile::worked); }
  [[nodiscard]] Workplace Before() const { return With(&preview::ScratchFile::before); }
  [[nodiscard]] std::string InOwnNames(std::string text) const { return files_.InOwnNames(std::move(text)); }

  [[nodiscard]] preview::ScratchFiles& Files() { return files_; }
  [[nodiscard]] const preview::ScratchFile& Billing() const { return *billing_; }
  [[nodiscard]] const preview::ScratchFile& Settings() const { return *settings_; }
  [[nodiscard]] const preview::CopyNotes& QuickBooks() const {
    return snapshotQuickBooks_ ? snapshotQuickBooks_->Notes() : copiedQuickBooks_->Notes();
  }
  [[nodiscard]] const PreviewDesk& Asked() const { return desk_; }
  // With the lines that the log would get.
  [[nodiscard]] preview::CopiedMachine& Copied() { return copiedMachine_; }

 private:
  [[nodiscard]] Workplace With(std::string preview::ScratchFile::*copy) const;

  Workplace place_;
  preview::ScratchFiles files_;
  const preview::ScratchFile* billing_;
  const preview::ScratchFile* company_;  // none with QuickBooks itself
  const preview::ScratchFile* settings_;
  preview::CopiedMachine copiedMachine_;
  SqliteProvider database_;
  std::optional<preview::CopiedProvider> copiedDatabase_;
  std::optional<company::CompanyTransportFactory> quickBooks_;
  std::optional<preview::CopiedQuickBooks> copiedQuickBooks_;
  std::optional<preview::SnapshotQuickBooks> snapshotQuickBooks_;
  TerminalDesk terminal_;
  PreviewDesk desk_;
  EndingDesk ending_;
  RecordingCallbackFactory callback_;
  Platform seams_;
};

}  // namespace twqb::cli
