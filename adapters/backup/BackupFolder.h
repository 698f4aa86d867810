// The folder of the backups: sets that are made whole or not at all, and go again when there are too many.
//
// Stands in the working folder, as the log does. A set is a folder of its own with a manifest; one without is half and
// is cleared up. One that somebody has copied or given another name stays, and so does whatever else stands there.
// Databases are copied as one state, whoever has them open. It puts nothing back (RestoreJournal.h).
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/backup/Manifest.h"
#include "adapters/backup/PieceStore.h"

namespace twqb::backup {

inline constexpr const char* kBackupFolder = "backups";
// Of sets that were made by themselves, for each pair of databases: so many ahead of runs that can be taken back, and
// so many others, those of undo and of what was taken back. Those made by hand stay.
inline constexpr std::size_t kKeptSets = 10;

struct PartFile {
  Part part;
  std::string path;
};

class BackupFolder {
 public:
  // `folder` is the working folder, whose backups need not exist yet. `goOn` is asked now and then while files are
  // read: False ends it by BackupEnded.
  explicit BackupFolder(
      std::string folder, std::function<bool()> goOn = [] { return true; });

  [[nodiscard]] const std::string& Folder() const { return folder_; }

  // Those that are whole, the oldest first.
  [[nodiscard]] std::vector<Set> Sets() const;
  // Names of those whose manifest can't be read. While there is one, no piece of any set goes.
  [[nodiscard]] std::vector<std::string> UnreadableSets() const;

  // Makes a set of the files, named by `stamp` ("2026-11-22-143005"), or so that it comes behind all that are there. Of
  // the parts in `known` it has what is told there, whose pieces must be in the folder, and not what the file is now.
  // Ahead of a transfer alone a database that has not changed since another set is not read again.
  // Raises BackupError, and leaves nothing behind.
  [[nodiscard]] Set Make(const Manifest& manifest, const std::vector<PartFile>& files, std::string_view stamp,
                         const std::vector<KeptFile>& known = {});
  // A file that turns out to belong to a set, too. Raises likewise.
  void Add(Set& set, const PartFile& file);
  // Notes how the files are now, when what the set was made before has ended. A set whose files are all as they were
  // goes. Raises likewise.
  void NoteEnd(const Set& set, const std::string& at);
  // The same for who knows how they are. No other set goes.
  void NoteEnd(const Set& set, const EndNote& end);
  // Takes one away. Never fails: what can't be removed stays.
  void Remove(const Set& set) const noexcept;
  // Removes sets that are too many, and what no set needs. Never fails.
  void ClearUp() const noexcept;
  // What it was made before has been taken back.
  void MarkUndone(const std::string& set) const;

  // How the file is now, its pieces among those of the folder until sets go. Raises likewise.
  [[nodiscard]] KeptFile Look(const PartFile& file);
  // Whether what stands at `path` has the bytes that are kept of the file. Raises BackupEnded alone.
  [[nodiscard]] bool IsAt(const std::string& path, const KeptFile& file) const;
  // Writes the file into `path`, which must be free, onto the disk. Raises BackupError, too, for pieces that are not
  // what they were; nothing is left then.
  void WriteTo(const KeptFile& file, const std::string& path) const;

 private:
  class Hold;
  enum class Whole : bool { No, Yes };

  [[nodiscard]] std::string Path(std::string_view name) const;
  [[nodiscard]] KeptFile Keep(const PartFile& file, const std::vector<Set>& sets);
  [[nodiscard]] std::string FreeName(std::string_view stamp) const;
  void Write(const std::string& path, const std::string& text) const;
  void WriteManifest(const Set& set) const;
  [[nodiscard]] std::vector<std::string> SetFolders(Whole whole) const;  // those with a manifest, or without
  void RemoveSet(const std::string& name) const;
  void RemoveHalfSets() const;
  [[nodiscard]] bool WriteEnd(const Set& set, const EndNote& end);
  // Those that go are taken out of `sets`, too, which must be all.
  void RemoveOldSets(std::vector<Set>& sets) const;
  void RemoveUnusedPieces(const std::vector<Set>& sets) const;

  std::string folder_;
  std::function<bool()> goOn_;
  PieceStore pieces_;
};

}  // namespace twqb::backup
