// FileReplacement: new contents for a file, put in place as a whole or not at all.
//
// The contents go to a temporary file in the same folder; `Commit` makes them durable and renames them over the target.
// Whoever reads the target meanwhile sees the old file or the new one. Without a commit nothing is left behind, but by
// a process that is killed: the next one removes that.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/system/FileDescriptor.h"

namespace twqb {

// What becomes of a target that is a symbolic link: the file behind it is replaced, or the link itself.
enum class Links : std::uint8_t { Followed, Replaced };

class FileReplacement {
 public:
  // Begins to replace `target`, or to make it. Nothing, with `errno` set, when the target is read-only or no regular
  // file, or when its folder is missing or takes no file.
  [[nodiscard]] static std::optional<FileReplacement> Begin(const std::string& target, Links links = Links::Followed);

  FileReplacement(FileReplacement&& other) noexcept
      : target_(std::move(other.target_)),
        temporary_(std::exchange(other.temporary_, {})),
        file_(std::move(other.file_)) {}
  FileReplacement& operator=(FileReplacement&& other) = delete;
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  ~FileReplacement();

  // The file that is being written.
  [[nodiscard]] const FileDescriptor& File() const { return file_; }
  [[nodiscard]] const std::string& TemporaryPath() const { return temporary_; }
  // False, with `errno` set, when it could not be done; the target is then as it was.
  [[nodiscard]] bool Commit();

 private:
  FileReplacement(std::string target, std::string temporary, FileDescriptor file)
      : target_(std::move(target)), temporary_(std::move(temporary)), file_(std::move(file)) {}

  std::string target_;
  std::string temporary_;  // empty once it is renamed or moved from
  FileDescriptor file_;
};

// Removes the temporary files of `target` that a killed process has left: those that carry its name, belong to this
// user, name a process that is dead, and that nobody holds the lock of. Never fails.
void RemoveAbandonedReplacements(const std::string& target);

// Replaces the contents of `target` by `bytes`. False, with `errno` set, on failure.
[[nodiscard]] bool ReplaceFile(const std::string& target, std::string_view bytes);

// Makes durable what was made, renamed or removed in the folder of `file`. Never fails.
void SynchroniseFolderOf(const std::string& file);

}  // namespace twqb
