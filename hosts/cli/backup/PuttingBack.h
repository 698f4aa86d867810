// Files of a set put back in the place of those that are there: held against others, laid ready, compared, replaced.
//
// restore and undo stand on it. Until PutBack nothing is changed, and what was laid ready goes again. It asks nothing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "adapters/backup/RestoreJournal.h"
#include "adapters/companyfile/FileLock.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/backup/Differences.h"
#include "cli/runs/RunBackup.h"
#include "cli/workplace/TransferLock.h"

namespace twqb::cli {

// For a set that has nothing of the part that was asked for, or nothing at all.
[[noreturn]] void RaiseForNothing(const backup::Set& set, std::optional<backup::Part> only);

class PuttingBack {
 public:
  // Of the parts named, or of all that the set has, in the place of files in that condition. Raises UsageError for
  // files that can't be held or made ready, and for a set that is damaged; HeldByOther; EndedBySignal.
  PuttingBack(const Options& options, backup::Set set, std::optional<backup::Part> only,
              backup::Condition condition = backup::Condition::Whole);
  ~PuttingBack();
  PuttingBack(const PuttingBack&) = delete;
  PuttingBack& operator=(const PuttingBack&) = delete;

  [[nodiscard]] const backup::Set& WhichSet() const { return set_; }

  // What differs between the files as they are and as they were, the earlier ones being those of the set. Raises
  // UsageError and EndedBySignal, as the next one does.
  [[nodiscard]] std::vector<SideDifferences> Differences();
  // What differs between the files as they are and as the note of an end tells them.
  [[nodiscard]] std::vector<SideDifferences> ChangedSince(const backup::EndNote& end);

  // Keeps how the files are as a set of its own, and puts those of this set in their place. The name of the set that
  // was kept; empty where the options say to keep none. Raises UsageError, too when a file is not what it was when the
  // differences were looked for.
  std::string PutBack(backup::MadeBy by, const std::string& what);

 private:
  [[nodiscard]] backup::KeptFile Seen(const backup::PartFile& file);
  [[nodiscard]] backup::KeptFile Now(const backup::PartFile& file);
  [[nodiscard]] std::optional<company::FileLock> TakeSession() const;
  void TakeUpLogs() const;
  void LayReady();
  void RequireAlone() const;
  [[nodiscard]] std::vector<backup::RestoreStep> Steps();
  void RemoveLaidReady() const;
  void ChooseStaging();

  const Options& options_;
  Workplace place_;
  backup::Set set_;
  std::vector<backup::KeptFile> files_;
  backup::Condition condition_;  // of what stands there
  backup::Staging staging_ = backup::Staging::First;
  EndSignals signals_;
  std::optional<TransferLock> held_;
  backup::BackupFolder folder_;
  std::vector<std::string> others_;     // files that have another owner when they are put back
  std::vector<backup::KeptFile> seen_;  // how the files were when their differences were first looked for
};

// Completes a restore that a killed run has left in the current folder, ahead of anything else there. Raises UsageError
// when it can't be done, and HeldByOther while it is at work.
void CompleteRestore(const Options& options);
// Whether files that another run holds end the command, or are a reason that is told.
enum class WhenHeld : std::uint8_t { Raises, IsTold };
// The same for who goes on all the same: why it can't be done, and what to do then.
[[nodiscard]] std::optional<std::string> WhyNotCompleted(const Options& options, WhenHeld held);
// Raises UsageError for a set that does not have all the files of such a restore: they would stay put back in part when
// this set is put back in its place.
void RequireInPlaceOfBrokenOff(const backup::Set& set);

}  // namespace twqb::cli
