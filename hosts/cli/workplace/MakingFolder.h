// Where files of a folder are made before they stand in it: all of them come into place or none.
//
// It is a folder of its own in the one that gets the files, and goes when they are in place. What a killed process has
// left, the folder and files that it had put in place before the last one, goes with the next making there.
#pragma once

#include <filesystem>
#include <span>

#include "adapters/system/FileDescriptor.h"

namespace twqb::cli {

using FileNames = std::span<const char* const>;

class MakingFolder {
 public:
  // Makes it in `above`, after removing what killed processes have left there. Raises UsageError.
  MakingFolder(const std::filesystem::path& above, FileNames names);
  // Removes it with all that is in it.
  ~MakingFolder();
  MakingFolder(const MakingFolder&) = delete;
  MakingFolder& operator=(const MakingFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

  // Puts the files, which have been made here, in place. Raises UsageError when one of that name is there, and
  // EndedBySignal; none is in place then.
  void PutInPlace() const;

 private:
  std::filesystem::path above_;
  FileNames names_;
  std::filesystem::path path_;
  FileDescriptor lock_;
};

// Removes from `above` what killed processes have left of making `names`: never a file that has been changed since, nor
// any of a set that was complete. Never fails.
void RemoveUnfinished(const std::filesystem::path& above, FileNames names);

// Raises the UsageError for a file that is there already.
[[noreturn]] void RefuseExisting(const std::filesystem::path& file);

}  // namespace twqb::cli
