// What a preview stands on: copies of the files that a run would write, in the place of the files themselves.
//
// Every seam is there, so that the library runs as it would; Composition takes them in the place of its own. Of a
// BillingDb or a QuickBooks that is in no file of this machine there are no copies, and no preview.
#pragma once

#include <optional>
#include <string>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/preview/CopiedDatabase.h"
#include "adapters/preview/CopiedMachine.h"
#include "adapters/preview/CopiedQuickBooks.h"
#include "adapters/preview/ScratchFiles.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/Callbacks.h"
#include "adapters/terminal/TerminalDesk.h"
#include "cli/EndingDesk.h"
#include "cli/Options.h"
#include "cli/PreviewDesk.h"
#include "platform/Platform.h"

namespace twqb::cli {

class PreviewSeams {
 public:
  // Copies the files of `place`. `machine` must outlive the object. Raises UsageError for what can't be copied.
  PreviewSeams(const Workplace& place, Machine& machine, const std::optional<Answers>& answers);

  [[nodiscard]] const Platform& Seams() const { return seams_; }

  // The workplace with copies in the place of its files.
  [[nodiscard]] Workplace Worked() const { return With(&preview::ScratchFile::worked); }
  [[nodiscard]] Workplace Before() const { return With(&preview::ScratchFile::before); }
  [[nodiscard]] std::string InOwnNames(std::string text) const { return files_.InOwnNames(std::move(text)); }

  [[nodiscard]] const preview::ScratchFile& Billing() const { return *billing_; }
  [[nodiscard]] const preview::ScratchFile& Settings() const { return *settings_; }
  [[nodiscard]] const preview::CopiedQuickBooks& QuickBooks() const { return copiedQuickBooks_; }
  [[nodiscard]] const PreviewDesk& Asked() const { return desk_; }
  // With the lines that the log would get.
  [[nodiscard]] preview::CopiedMachine& Copied() { return copiedMachine_; }

 private:
  [[nodiscard]] Workplace With(std::string preview::ScratchFile::*copy) const;

  Workplace place_;
  preview::ScratchFiles files_;
  const preview::ScratchFile* billing_;
  const preview::ScratchFile* company_;
  const preview::ScratchFile* settings_;
  preview::CopiedMachine copiedMachine_;
  SqliteProvider database_;
  preview::CopiedProvider copiedDatabase_;
  company::CompanyTransportFactory quickBooks_;
  preview::CopiedQuickBooks copiedQuickBooks_;
  TerminalDesk terminal_;
  PreviewDesk desk_;
  EndingDesk ending_;
  RecordingCallbackFactory callback_;
  Platform seams_;
};

}  // namespace twqb::cli
