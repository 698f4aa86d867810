// Files put back, all of them whenever the process dies: what is to be done stands in a journal before it begins, and
// the next run completes it.
//
// The new files stand beside those that they replace by then, whole and on the disk, so each step is a rename; a step
// that is done already does no harm. What has the name of a new file and is none is laid ready anew. Without a journal
// nothing has begun, and what stands beside is cleared up. Whoever carries it out must hold the files against
// others.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "adapters/backup/BackupFolder.h"
#include "adapters/backup/Manifest.h"

namespace twqb::backup {

// New files have either of two names. Those of a restore that was broken off must stay, for by them it is known how far
// it came, until a journal that tells the other name stands in the place of its own.
enum class Staging : std::uint8_t { First, Second };
// Where the new file stands until it takes the place of `target`.
[[nodiscard]] std::string StagedName(const std::string& target, Staging staging);
// Whether a new file has the owner and the group of the one that it replaces.
enum class Ownership : std::uint8_t { AsItWas, Other };
// Writes the new file there, with the rights of the one that it is to replace, and with its owner and its group as far
// as this user may give them. Raises BackupError, and leaves what was there.
[[nodiscard]] Ownership LayReady(const BackupFolder& folder, const KeptFile& file, Staging staging);
// Removes such a file, of a run that died before it began, or while it wrote it. Never fails.
void RemoveStaged(const std::string& target, Staging staging);
void RemoveStaged(const std::string& target);  // by either name
// Has nothing stand beside a database that is about to be replaced. Raises BackupError while somebody writes to it.
void RequireReplaceable(const std::string& database);

struct RestoreStep {
  KeptFile file;                         // what is to stand there, or that nothing is
  KeptFile was;                          // what stood there when the restore began
  std::optional<KeptFile> changed = {};  // what somebody else has made of it since, where a set has that already
};

struct RestoreJournal {
  std::string set;
  bool isUndo = false;                    // the run that the set was made before counts as taken back in the end
  std::string kept = {};                  // the set of how the files were; empty where none was made
  std::vector<std::string> changes = {};  // the sets of what somebody else has changed since
  Staging staging = Staging::First;       // by which of their names the new files stand there
  std::vector<RestoreStep> steps = {};
};

// `folder` is the working folder. Nothing when no restore has begun. Raises BackupError for a journal that can't be
// read: the files may be half put back, so nothing else must be done then.
[[nodiscard]] std::optional<RestoreJournal> ReadRestoreJournal(const std::string& folder);
// From here on the restore is carried out, now or by a later run. Raises BackupError, and nothing has begun.
void BeginRestore(const std::string& folder, const RestoreJournal& journal);
// What a file was before somebody changed it: as it stood when the restore began, or already as the set has it.
enum class ChangedFrom : std::uint8_t { Was, Set };
struct Change {
  KeptFile now;
  ChangedFrom from = ChangedFrom::Set;
};
// What somebody has changed since it began and no set has yet, to be asked ahead of completing it. Raises BackupError.
[[nodiscard]] std::vector<Change> ChangedSinceItBegan(const std::string& folder, const RestoreJournal& journal);
// As often as it takes: what is in place stays as it is. The files that it laid ready itself, and that have another
// owner or group now. Raises BackupError when a step can't be done; the journal stays in any case.
[[nodiscard]] std::vector<std::string> CarryOutRestore(const std::string& folder, const RestoreJournal& journal);
// There is nothing left to do. Raises BackupError.
void EndRestore(const std::string& folder, const RestoreJournal& journal);

}  // namespace twqb::backup
