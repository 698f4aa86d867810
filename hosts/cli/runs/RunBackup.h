// The set that is made before a run which writes both sides, and the note of how it left them.
//
// BridgeRun makes one for every such run; a command that writes by other ways makes its own, while it holds the files.
// What a set is made of stands in adapters/backup.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "adapters/backup/BackupFolder.h"
#include "cli/options/Options.h"

namespace twqb::cli {

// The folder of the backups of a working folder; a signal ends what it does.
[[nodiscard]] backup::BackupFolder BackupsOf(const Workplace& place);

// The files of a run that belong into a set.
[[nodiscard]] std::vector<backup::PartFile> PartsOf(const Workplace& place);

// Makes a set of them now, of the parts in `known` with what is told there. Raises BackupError and BackupEnded.
[[nodiscard]] backup::Set MakeSet(backup::BackupFolder& folder, const Workplace& place, const Options& options,
                                  const std::vector<backup::PartFile>& parts, backup::MadeBy by,
                                  const std::string& before, const std::vector<backup::KeptFile>& known = {},
                                  backup::Condition condition = backup::Condition::Whole);

// The time, with its zone: "2026-11-22T14:30:05-05:00".
[[nodiscard]] std::string TimeWithZone(const Workplace& place, const Options& options);

class RunBackup {
 public:
  // Makes the set, unless the options say not to. Both sides must be held. Raises UsageError, which says what to do,
  // and EndedBySignal; nothing has been changed then.
  RunBackup(const Workplace& place, const Options& options);
  // The same of these files, ahead of something else than a transfer.
  RunBackup(const Workplace& place, const Options& options, const std::vector<backup::PartFile>& parts,
            backup::MadeBy by, backup::Condition condition = backup::Condition::Whole);

  // A company file that turns out to be the one of the run.
  void CompanyOpened(const std::string& path);
  // To be called when the run is over and has let go of the files. Never fails: what can't be noted is told.
  void NoteEnd() noexcept;

  // Takes the set away again: what it was made before does not come. Never fails.
  void Drop() noexcept;

  // The name of the set; empty when there is none.
  [[nodiscard]] std::string Name() const { return set_ ? set_->name : std::string(); }

 private:
  template <typename Body>
  void OrRefuse(Body body);

  Workplace place_;
  const Options& options_;
  backup::BackupFolder folder_;
  std::optional<backup::Set> set_;
};

}  // namespace twqb::cli
