// ProfileFile: one profile (INI) file on disk, with the reading and writing that the platform gives such files.
//
// It stands under SystemMachine's profile calls and its registry file, and is fit for a host that makes or lists such a
// file. The file is taken apart once and again only when it has changed, whoever changed it. Nothing here raises: a
// file that can't be read is an empty one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/system/ProfileText.h"

namespace twqb {

class ProfileFile {
 public:
  explicit ProfileFile(std::string path) : path_(std::move(path)) {}

  // The value without outer blanks and without the quotes around it; nothing when file, section or key is missing.
  [[nodiscard]] std::optional<std::string> Read(std::string_view section, std::string_view key);
  // Every entry, in the order of the file.
  [[nodiscard]] std::vector<ProfileEntry> Entries();
  // What else stands in it, see ProfileText.
  [[nodiscard]] std::vector<std::string> OtherLines();
  // Sets one value, see ProfileText::With, making file and section where they are missing. The file is replaced as a
  // whole and is durable when this returns; writers in other processes wait for each other. False when the value can't
  // be expressed or the file can't be written; it is then as it was.
  [[nodiscard]] bool Write(std::string_view section, std::string_view key, std::string_view value);

 private:
  // What tells one state of the file from another.
  struct Stamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modified = 0;  // nanoseconds since 1970
    friend bool operator==(const Stamp&, const Stamp&) = default;
  };

  [[nodiscard]] static std::optional<Stamp> StampOf(const std::string& path);
  [[nodiscard]] const ProfileText& Current();

  std::string path_;
  std::optional<ProfileText> text_;
  std::optional<Stamp> stamp_;  // of text_; nothing when text_ must not be used again
};

}  // namespace twqb
