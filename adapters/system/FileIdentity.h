// FileIdentity: which file of this system a path leads to, whatever way it is spelled.
//
// Two paths lead to one file when device and number agree: so do other spellings, symbolic links and hard links. Paths
// to files that are not there are compared as the system would resolve them. It opens and changes nothing.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>

namespace twqb {

struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t number = 0;
  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

[[nodiscard]] FileIdentity IdentityOf(const struct stat& status);
// Of the file behind symbolic links; nothing where there is none.
[[nodiscard]] std::optional<FileIdentity> IdentityOf(const std::string& path);

// Whether both lead to one file, or would once it is made.
[[nodiscard]] bool AreOneFile(const std::string& one, const std::string& other);

// The full path without links and without "." and ".."; of a file that is not there, as far as its folders are. The
// path as it is given where the system can't tell.
[[nodiscard]] std::string ResolvedPath(const std::string& path);

}  // namespace twqb
